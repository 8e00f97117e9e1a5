// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files.h"
#include "platform/identifiers.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace {

TEST(Files, AnEmptyFolderIsNowhere) {
    const TemporaryFolder folder;
    EXPECT_EQ(JoinPath("", "etc"), "") << "and never the root";
    EXPECT_EQ(JoinPath("/a/", "b"), "/a/b");
    EXPECT_EQ(FolderOf("/a/b/c"), "/a/b");
    EXPECT_EQ(FolderOf("c"), "");
    EXPECT_FALSE(FindFile("", "passwd"));
    EXPECT_TRUE(DirectoryListing("").Names().empty());
    EXPECT_TRUE(DirectoryListing(folder.Path("missing")).Names().empty());
}

TEST(Files, AFoldersNameIsFoundInWhateverCase) {
    TemporaryFolder folder;
    folder.WriteFile("INF/PC1.ORG", "");
    folder.WriteFile("both/x", "");
    folder.WriteFile("Both/x", "");
    folder.WriteFile("file", "");
    const struct {
        const char *sought, *found, *why;
    } cases[] = {
        {"inf", "INF", "another case"},
        {"INF", "INF", "its own"},
        {"inf/", "INF", "a separator at the end names the same folder"},
        {"both", "both", "the exact one first"},
        {"BOTH", "Both", "else the first by bytes"},
        {"FILE", "FILE", "a file is no folder"},
        {"none", "none", "what is not there keeps its name"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FolderOnDisk(folder.Path(c.sought)), folder.Path(c.found)) << c.why;
    EXPECT_EQ(FolderOnDisk("/TMP"), "/tmp");
    EXPECT_EQ(FolderOnDisk("/"), "/");
    EXPECT_EQ(FolderOnDisk(""), "");
}

TEST(Files, NamesAreListedAndFoundWithoutRegardToCase) {
    TemporaryFolder folder;
    for (const char* name : {"b.ORG", "A.org", "a.ORG", "c.organ", ".d.org", "sub/e.org"})
        folder.WriteFile(name, "x");
    symlink(folder.Path("b.ORG").c_str(), folder.Path("link.org").c_str());
    symlink(folder.Path("missing").c_str(), folder.Path("dangling.org").c_str());
    const DirectoryListing listing(folder.Path());
    EXPECT_EQ(listing.WithExtension(".org"), (std::vector<std::string>{"A.org", "b.ORG", "link.org"}))
        << "two spellings are one name, folders and hidden files are none";
    EXPECT_EQ(listing.Find("a.ORG"), "a.ORG") << "the exact spelling first";
    EXPECT_EQ(listing.Find("a.oRg"), "A.org");
    EXPECT_EQ(listing.Find("B.org"), "b.ORG");
    EXPECT_FALSE(listing.Find("x.org"));
    EXPECT_EQ(FindFile(folder.Path(), "B.org"), folder.Path("b.ORG"));
}

TEST(Files, ReadsRegularFilesOnly) {
    TemporaryFolder folder;
    const std::string bytes("a\0b", 3);
    EXPECT_EQ(ReadFile(folder.WriteFile("x", bytes)), bytes);
    const auto errorOf = [](const std::string& path) { return ErrorOf([&] { ReadFile(path); }); };
    EXPECT_EQ(errorOf(folder.Path("missing")), Errors::kFileNotFound);
    EXPECT_EQ(errorOf(folder.Path()), Errors::kPathAccess);
    mkfifo(folder.Path("pipe").c_str(), 0600);
    EXPECT_EQ(errorOf(folder.Path("pipe")), Errors::kPathAccess) << "without waiting for a writer";
    const std::string large = folder.WriteFile("large", "");
    std::filesystem::resize_file(large, kLargestFile + 1);
    EXPECT_EQ(errorOf(large), Errors::kOutOfMemory);
}

TEST(Files, ACopyBelongsToItsOwnerAlone) {
    TemporaryFolder folder;
    const std::string source = folder.WriteFile("source", std::string(3000000, 'x'));
    const std::string target = folder.WriteFile("target", "an older and public file");
    chmod(target.c_str(), 0644);
    CopyFile(source, target);
    EXPECT_EQ(FileLength(target), 3000000U);
    EXPECT_EQ(folder.Rights("target"), 0600U);
}

TEST(Files, OfADatabaseNothingIsLeftHoweverItIsNamed) {
    TemporaryFolder folder;
    for (const char* name : {"A.MDB", "a.mdb-wal", "a.mdb-shm", ".a.mdb", ".a.mdb-wal", "aa.mdb"})
        folder.WriteFile(name, "x");
    std::filesystem::create_symlink("nowhere", folder.Path("b.mdb"));
    for (const char* name : {"a.mdb", ".a.mdb", "b.mdb", "missing.mdb"})
        DeleteDatabase(folder.Path(name));
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"aa.mdb"});
}

TEST(Identifiers, GrowAndNeverRepeat) {
    Identifier last;
    for (int i = 0; i < 20000; ++i) {
        Identifier next;
        ASSERT_EQ(CoCreateGuid(next), 0);
        ASSERT_LT(std::tie(last.data1, last.data2, last.data3), std::tie(next.data1, next.data2, next.data3));
        last = next;
    }
}

} // namespace
