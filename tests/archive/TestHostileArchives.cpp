// SPDX-License-Identifier: GPL-3.0-or-later
// A backup file may have been damaged, or made to do harm. Whatever it holds, the database that was there is
// still there, and nothing is written outside of the temporary folder.
#include "core/Globals.h"
#include "tests/archive/ArchiveTest.h"
#include "tests/support/SmallFiles.h"

#include <filesystem>

namespace {

constexpr const char* kNotOpened =
    "This is either not a MOVA database or it's an incompatible database.\r\n\r\nIf you are sure it's a MOVA "
    "database try repairing it.\r\n\r\nError Description: ";

/// An entry as no packer would write it: stored as it is, it says of itself what a test wants it to.
struct RawEntry {
    std::string name;
    std::string bytes;
    /// Kind and rights of the file, such as 0120777 for a link.
    unsigned mode = 0100644;
    /// Bit 0 says that it is encrypted.
    unsigned flags = 0;
    unsigned method = 0;
    /// What it says where that is not so.
    std::optional<std::uint32_t> checksum = {};
    std::optional<std::uint64_t> size = {};
    std::optional<std::uint64_t> packedSize = {};
};

std::string Number(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i) & 0xFFU);
    return text;
}

std::uint32_t Checksum(const std::string& bytes) {
    std::uint32_t sum = ~0U;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1U ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~sum;
}

/// The bytes of an archive, by the layout of PKWARE's APPNOTE 6.3, with 64-bit sizes.
std::string RawZip(const std::vector<RawEntry>& entries) {
    constexpr std::uint32_t kInExtra = 0xFFFFFFFFU;
    std::string local;
    std::string central;
    for (const RawEntry& entry : entries) {
        const std::string head = Number(45, 2) + Number(entry.flags, 2) + Number(entry.method, 2) +
                                 Number(0, 4) + Number(entry.checksum.value_or(Checksum(entry.bytes)), 4) +
                                 Number(kInExtra, 4) + Number(kInExtra, 4) + Number(entry.name.size(), 2) +
                                 Number(20, 2);
        const std::string extra = Number(1, 2) + Number(16, 2) +
                                  Number(entry.size.value_or(entry.bytes.size()), 8) +
                                  Number(entry.packedSize.value_or(entry.bytes.size()), 8);
        // Made on the system whose kinds of files the mode tells.
        central += "PK\1\2" + Number(3 << 8, 2) + head + Number(0, 6) +
                   Number(std::uint64_t{entry.mode} << 16U, 4) + Number(local.size(), 4) + entry.name + extra;
        local += "PK\3\4" + head + entry.name + extra + entry.bytes;
    }
    return local + central + "PK\5\6" + Number(0, 4) + Number(entries.size(), 2) + Number(entries.size(), 2) +
           Number(central.size(), 4) + Number(local.size(), 4) + Number(0, 2);
}

class HostileArchiveTest : public ArchiveTest {
protected:
    HostileArchiveTest() {
        const std::string good = MakeDatabase("Good.mdb", {"RESTORED"});
        database = folder.ReadFile("Good.mdb");
        std::filesystem::remove(good);
    }

    /// Chooses these bytes to be restored over an open database that has the machine PC1.
    void Choose(const std::string& bytes) {
        std::filesystem::remove_all(program);
        std::filesystem::create_directory(program);
        std::filesystem::remove(folder.Path("Site.mdb"));
        Open(MakeDatabase("Site.mdb", {"PC1"}));
        before = Contents(gDatabasePath);
        prompts.Expect(OpenFile("Please select a backup file"), folder.WriteFile("hostile.zbk", bytes));
    }

    void ExpectOverwrite() {
        prompts.Expect(Box("Overwrite?", "Overwrite " + folder.Path("Site.mdb") + "?"), MsgBoxAnswer::Yes);
    }

    /// An empty `text` stands for any.
    void ExpectFailure(const char* title, const std::string& text) {
        Question failure = Box(title, text, 16);
        if (text.empty())
            failure.text.reset();
        prompts.Expect(failure);
        prompts.Expect(Box("Restore Failed",
                           "Restore failed. Please check the MOVA database and make sure nobody has got the "
                           "file open at this time.",
                           16));
    }

    /// Closes the database and tells whether it is the one from the archive.
    bool IsRestored() {
        gConnection->Close();
        const std::string now = Contents(folder.Path("Site.mdb"));
        EXPECT_TRUE(now.starts_with("ok\n"));
        const bool isRestored = now.find("RESTORED") != std::string::npos;
        EXPECT_TRUE(isRestored || now == before);
        return isRestored;
    }

    std::string database;
    std::string before;
};

TEST_F(HostileArchiveTest, WhatCanNotBeUnpackedFailsTheRestore) {
    const std::string path = folder.Path("hostile.zbk");
    const std::string whole = RawZip({{.name = "Site.mdb", .bytes = database}});
    constexpr std::uint64_t kGigabyte = std::uint64_t{1} << 30U;
    const RawEntry half = {.name = "a.mdb",
                           .bytes = database,
                           .size = std::filesystem::space(program).available / 4 * 3,
                           .packedSize = std::filesystem::space(program).available / 4};
    const struct {
        const char* why;
        std::string archive;
        const char* title;
        std::string text;
    } cases[] = {
        {"the end is missing", whole.substr(0, whole.size() / 2), "Error #75", "Not a zip archive: " + path},
        {"the beginning is missing", whole.substr(whole.size() / 2), "Error #75",
         "Zip archive inconsistent: " + path},
        {"a file of no bytes", "", "Error #75", "Not a zip archive: " + path},
        {"some other file", std::string(5000, 'x'), "Error #75", "Not a zip archive: " + path},
        {"a byte has changed", RawZip({{.name = "Site.mdb", .bytes = database, .checksum = 1}}), "Error #75",
         "CRC error: Site.mdb"},
        {"encrypted", RawZip({{.name = "Site.mdb", .bytes = database, .flags = 1}}), "Error #70",
         "The entry is encrypted: Site.mdb"},
        {"packed in a way that nobody knows", RawZip({{.name = "Site.mdb", .bytes = database, .method = 77}}),
         "Error #75", "Compression method not supported: Site.mdb"},
        {"larger than any disk",
         RawZip({{.name = "Site.mdb",
                  .bytes = database,
                  .size = kGigabyte << 20U,
                  .packedSize = kGigabyte << 19U}}),
         "Error #61", "Disk full: " + program},
        {"larger together than the disk", RawZip({half, half}), "Error #61", "Disk full: " + program},
        {"a few bytes that become gigabytes",
         RawZip({{.name = "Site.mdb", .bytes = database, .size = 5 * kGigabyte}}), "Error #7",
         "The entry is too large for what it is packed in: Site.mdb"},
        {"longer than it says", RawZip({{.name = "Site.mdb", .bytes = database, .size = 100}}), "Error #75",
         "The entry is longer than it says: Site.mdb"},
        {"a name that no disk takes", RawZip({{.name = std::string(300, 'n') + ".mdb", .bytes = database}}),
         "Error #75", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        Choose(c.archive);
        ExpectFailure(c.title, c.text);
        command.mnuRestore();
        EXPECT_TRUE(Told().ends_with("Restore in progress ...\nhourglass\narrow\ndisable\n"));
        EXPECT_FALSE(gConnection->IsOpen());
        EXPECT_FALSE(IsRestored());
        EXPECT_TRUE(Files("program").starts_with("DIR")) << "the temporary folder stays";
    }
}

TEST_F(HostileArchiveTest, OnlyPlainDataIsTakenAndOnlyIntoTheFolder) {
    const RawEntry good = {.name = "Site.mdb", .bytes = database};
    const RawEntry junk = {.name = "junk.mdb", .bytes = "junk"};
    const auto named = [this](std::string name) {
        return RawEntry{.name = std::move(name), .bytes = database};
    };
    const auto special = [](unsigned mode) {
        return RawEntry{.name = "a.mdb", .bytes = "../../Site.mdb", .mode = mode};
    };
    const struct {
        const char* why;
        std::vector<RawEntry> entries;
        bool isRestored;
        /// What stays in the temporary folder.
        const char* left;
    } cases[] = {
        {"the extension in any case", {named("SITE.MDB")}, true, ""},
        {"no database", {{.name = "readme.txt", .bytes = "hello"}}, false, "readme.txt "},
        {"nothing at all", {}, false, ""},
        {"of two the first by name, whatever the case", {junk, named("Good.MDB")}, true, "junk.mdb "},
        {"out by the parents", {named("../../../good.mdb")}, true, ""},
        {"out by another system's parents", {named("..\\..\\good.mdb")}, true, ""},
        {"out by the root", {named("/tmp/good.mdb")}, true, ""},
        {"names that are none", {named(".."), named("a/.."), named("."), named("x/"), good}, true, ""},
        {"a NUL is not the end of a name",
         {named(std::string("good.mdb\0.txt", 13))},
         false,
         "good.mdb .txt "},
        {"a hidden name is not looked for", {named(".mdb")}, false, ".mdb "},
        {"a link leads to what is no part of it", {special(0120777), good}, true, ""},
        {"a pipe would never end", {special(0010666), good}, true, ""},
        {"a device has no end", {special(0020666), good}, true, ""},
        {"a folder that is named like a database", {special(0040755), good}, true, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        Choose(RawZip(c.entries));
        const bool hasDatabase = c.isRestored;
        if (hasDatabase)
            ExpectOverwrite();
        command.mnuRestore();
        EXPECT_NE(Told().find("Restore done successfully\nOpening"), std::string::npos);
        EXPECT_EQ(IsRestored(), c.isRestored);
        EXPECT_EQ(Files(), "Site.mdb hostile.zbk program ");
        const std::string left = Files("program");
        EXPECT_EQ(left.empty() ? "" : Files("program/" + left.substr(0, left.size() - 1)), c.left);
    }
}

TEST_F(HostileArchiveTest, AsksBeforeOneEntryOverwritesAnother) {
    const std::string archive =
        RawZip({{.name = "a/Site.mdb", .bytes = database}, {.name = "b/SITE.MDB", .bytes = "no database"}});
    const Question question = Box("VBUnzip - File already exists", "Overwrite SITE.MDB?", 4 + 16 + 256);
    Choose(archive);
    prompts.Expect(question, MsgBoxAnswer::No);
    ExpectOverwrite();
    command.mnuRestore();
    EXPECT_NE(Told().find("hourglass\narrow\nhourglass\narrow\n"), std::string::npos);
    EXPECT_TRUE(IsRestored()) << "the first one stays";

    Choose(archive);
    prompts.Expect(question, MsgBoxAnswer::Yes);
    ExpectOverwrite();
    prompts.Expect(Box("Error #-1", std::string(kNotOpened) + "file is not a database"));
    command.mnuRestore();
    EXPECT_FALSE(IsRestored());
}

TEST_F(HostileArchiveTest, WithoutRoomBesideTheOldDatabaseNobodyIsAskedToOverwriteIt) {
    // Between the unpacking, for which there is room, and the copy stands the question for the second entry.
    Choose(RawZip({{.name = "Site.mdb", .bytes = database}, {.name = "a/Site.mdb", .bytes = "more"}}));
    std::optional<SmallFiles> full;
    prompts.Expect(Box("VBUnzip - File already exists", "Overwrite Site.mdb?"), MsgBoxAnswer::No,
                   [&] { full.emplace(database.size() - 1); });
    ExpectFailure("Error #75", "File too large: " + folder.Path("Site.mdb"));
    command.mnuRestore();
    full.reset();
    EXPECT_TRUE(Told().ends_with("disable\n"));
    EXPECT_FALSE(IsRestored());
    EXPECT_EQ(Files() + Files("program"), "Site.mdb hostile.zbk program ");
}

TEST_F(HostileArchiveTest, ADatabaseThatDoesNotOpenGivesThePlaceBack) {
    const struct {
        const char* why;
        std::string bytes;
        const char* failure;
    } cases[] = {
        {"no database", "no database", "file is not a database"},
        {"a database whose pages are gone", database.substr(0, 4096), "database disk image is malformed"},
        {"an empty one", "", "no such table: Version"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        Choose(RawZip({{.name = "Site.mdb", .bytes = c.bytes}}));
        ExpectOverwrite();
        prompts.Expect(Box("Error #-1", kNotOpened + std::string(c.failure), 16), [this] {
            // Should the console be killed now, an administrator finds the old one here.
            EXPECT_NE(Files().find("Site.mdb.replaced-"), std::string::npos);
        });
        command.mnuRestore();
        EXPECT_TRUE(Told().ends_with("Restore done successfully\nIncompatible database\ndisable\n"));
        EXPECT_FALSE(IsRestored());
        EXPECT_EQ(Files(), "Site.mdb hostile.zbk program ");
        EXPECT_EQ(Files("program"), "");
    }
}

TEST_F(HostileArchiveTest, ADatabaseThatOpensThoughItIsDamagedGivesThePlaceBack) {
    constexpr std::size_t kPage = 4096;
    std::string damaged = database;
    damaged.replace(damaged.size() - kPage, kPage, kPage, 'x');
    Choose(RawZip({{.name = "Site.mdb", .bytes = damaged}}));
    ExpectOverwrite();
    command.mnuRestore();
    EXPECT_TRUE(Told().ends_with("Incompatible database\ndisable\n"));
    EXPECT_FALSE(gConnection && gConnection->IsOpen());
    EXPECT_FALSE(IsRestored());
    EXPECT_EQ(Files(), "Site.mdb hostile.zbk program ");
}

TEST_F(HostileArchiveTest, WithoutADatabaseOpenTheNameComesFromTheArchive) {
    Choose(RawZip({{.name = "readme.txt", .bytes = "hello"}}));
    gConnection->Close();
    prompts.Expect(Folder("Please select Restore Directory"), folder.Path());
    prompts.Expect(Box("Error #-1", std::string(kNotOpened) + "unable to open database file"));
    command.mnuRestore();
    EXPECT_EQ(gDatabasePath, folder.Path("")) << "there is no name in it";
    EXPECT_TRUE(Told().ends_with("Restore done successfully\nIncompatible database\ndisable\n"));
}

} // namespace
