// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are written whole or not at all: what becomes of the target, of its rights, and of the folder
// when the writing fails or is given up.
#include "platform/ReplacedFile.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/SmallFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace {

using Rights = ReplacedFile::Rights;

TEST(ReplacedFile, StandsUnderItsNameOnlyWhenItIsWhole) {
    const TemporaryFolder folder;
    folder.WriteFile("report", "old");
    {
        ReplacedFile file(folder.Path("report"));
        file.Write(std::string(300000, 'x'));
        EXPECT_EQ(folder.ReadFile("report"), "old");
    }
    EXPECT_EQ(folder.ReadFile("report"), "old") << "given up";
    EXPECT_EQ(folder.Names().size(), 1U) << "and nothing left beside it";

    ReplacedFile file(folder.Path("report"));
    file.Write("new ");
    file.Write("text");
    file.Commit();
    EXPECT_EQ(folder.ReadFile("report"), "new text");
    EXPECT_EQ(folder.Names().size(), 1U);
}

TEST(ReplacedFile, HasTheRightsThatItsUseAsksFor) {
    const TemporaryFolder folder;
    const mode_t mask = umask(027);
    const struct {
        const char* why;
        int before;
        Rights rights;
        unsigned after;
    } cases[] = {
        {"a new file as the user makes any", -1, Rights::Usual, 0640},
        {"an older one keeps its own", 0604, Rights::Usual, 0604},
        {"a new private one", -1, Rights::OwnerOnly, 0600},
        {"a private one in place of a public one", 0666, Rights::OwnerOnly, 0600},
    };
    for (const auto& c : cases) {
        const std::string path = folder.Path("file");
        unlink(path.c_str());
        if (c.before >= 0) {
            folder.WriteFile("file", "old");
            chmod(path.c_str(), static_cast<mode_t>(c.before));
        }
        ReplacedFile file(path, c.rights);
        EXPECT_EQ(folder.Rights(std::filesystem::path(file.TemporaryPath()).filename().string()), 0600U)
            << "until it is whole, nobody else's: " << c.why;
        file.Commit();
        EXPECT_EQ(folder.Rights("file"), c.after) << c.why;
    }
    umask(mask);
}

TEST(ReplacedFile, StaysWithTheGroupOfItsTarget) {
    constexpr gid_t kGroup = 4711;
    const TemporaryFolder folder;
    const std::string path = folder.WriteFile("file", "old");
    if (chown(path.c_str(), static_cast<uid_t>(-1), kGroup) != 0)
        GTEST_SKIP() << "only the superuser can give a file to any group";
    ReplacedFile(path).Commit();
    struct stat status {};
    stat(path.c_str(), &status);
    EXPECT_EQ(status.st_gid, kGroup);
}

TEST(ReplacedFile, FollowsALinkAndLeavesItALink) {
    const TemporaryFolder folder;
    folder.WriteFile("share/real", "old");
    symlink("share/real", folder.Path("link").c_str());
    ReplacedFile file(folder.Path("link"));
    file.Write("new");
    file.Commit();
    EXPECT_EQ(folder.ReadFile("share/real"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
}

TEST(ReplacedFile, RefusesWhatItCouldNotReplace) {
    const TemporaryFolder folder;
    folder.WriteFile("file", "");
    mkfifo(folder.Path("pipe").c_str(), 0600);
    const struct {
        std::string path;
        int error;
        const char* why;
    } cases[] = {
        {folder.Path("none/report"), Errors::kPathNotFound, "a folder that is not there"},
        {folder.Path("file/report"), Errors::kPathNotFound, "a file where a folder belongs"},
        {folder.Path(), Errors::kPathAccess, "a folder"},
        {folder.Path("pipe"), Errors::kPathAccess, "a pipe"},
        {folder.Path("none/"), Errors::kPathNotFound, "no name"},
        {"", Errors::kPathNotFound, "nothing"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ErrorOf([&] { const ReplacedFile file(c.path); }), c.error) << c.why;
    }
    EXPECT_EQ(folder.Names().size(), 2U);
}

TEST(ReplacedFile, AFailureToWriteLeavesTheOldFile) {
    const TemporaryFolder folder;
    folder.WriteFile("report", "old");
    {
        const SmallFiles limit(100000);
        ReplacedFile file(folder.Path("report"));
        EXPECT_THROW(file.Write(std::string(200000, 'x')), RunTimeError);
    }
    {
        const SmallFiles limit(3);
        ReplacedFile file(folder.Path("report"));
        file.Write("in the buffer");
        EXPECT_THROW(file.Commit(), RunTimeError) << "what is seen at the end alone";
    }
    EXPECT_EQ(folder.ReadFile("report"), "old");
    EXPECT_EQ(folder.Names().size(), 1U);
}

TEST(ReplacedFile, OnlyWhatAKilledProgramLeftIsCleared) {
    const TemporaryFolder folder;
    folder.WriteFile(".velmora-abc123", "left behind");
    folder.WriteFile(".velmora-notes.txt", "another's");
    folder.WriteFile("backup", "old");
    std::filesystem::create_directory(folder.Path(".velmora-folder"));
    std::filesystem::create_symlink("backup", folder.Path(".velmora-linked"));
    mkfifo(folder.Path(".velmora-fifo12").c_str(), 0600);
    const std::size_t others = folder.Names().size() - 1;
    ReplacedFile file(folder.Path("backup"));
    file.Write("new");
    ReplacedFile::ClearAbandoned(folder.Path());
    EXPECT_FALSE(folder.Exists(".velmora-abc123"));
    EXPECT_EQ(folder.Names().size(), others + 1) << "this one is being written";
    file.Commit();
    ReplacedFile::ClearAbandoned(folder.Path());
    EXPECT_EQ(folder.ReadFile("backup"), "new");
    EXPECT_EQ(folder.Names().size(), others);
    ReplacedFile::ClearAbandoned(folder.Path("gone"));
}

} // namespace
