// SPDX-License-Identifier: GPL-3.0-or-later
// A database goes into an archive and comes back from it.
#include "archive/VBZip.h"
#include "bench/ArchiveKills.h"
#include "core/Globals.h"
#include "tests/archive/ArchiveTest.h"
#include "tests/support/Database.h"
#include "tests/support/NoHardLinks.h"
#include "tests/support/SmallFiles.h"

#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <random>

namespace {

constexpr int kYesNoDefaultNo = 4 + 16 + 256;
constexpr const char* kBackupBegins =
    "Enter a backup filename name ...\n\nBackup in progress ...\nclear\nhourglass\narrow\n";
constexpr const char* kOpens = "Opening Database ... Please wait\ntree\nenable\n";
constexpr const char* kRestoreBegins = "Enter a backup filename name ...\n\nclear\nRestore in progress ...\n";
constexpr const char* kBackupFailed =
    "Backup failed. Please check the MOVA database and make sure nobody has got the file open at this time.";

/// Another program that has a database open while this lives.
class OtherProgram {
public:
    explicit OtherProgram(const std::string& path) {
        EXPECT_EQ(pipe(mReady), 0);
        mProcess = fork();
        if (mProcess == 0) {
            sqlite3* database = nullptr;
            sqlite3_open(path.c_str(), &database);
            sqlite3_exec(database, "SELECT * FROM Net", nullptr, nullptr, nullptr);
            static_cast<void>(write(mReady[1], "x", 1));
            pause();
        }
        char byte = 0;
        EXPECT_EQ(read(mReady[0], &byte, 1), 1);
    }
    ~OtherProgram() {
        kill(mProcess, SIGKILL);
        waitpid(mProcess, nullptr, 0);
        close(mReady[0]);
        close(mReady[1]);
    }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

private:
    int mReady[2] = {};
    pid_t mProcess = 0;
};

class BackupTest : public ArchiveTest {
protected:
    void Backup(const std::string& archive) {
        prompts.Expect(SaveFile("Please enter backup filename"), archive);
        command.mnuBackup();
    }

    void ExpectArchive(const std::string& archive) {
        prompts.Expect(OpenFile("Please select a backup file"), archive);
    }

    void ExpectOverwrite(MsgBoxAnswer answer, std::function<void()> meanwhile = {}) {
        prompts.Expect(Box("Overwrite?", "Overwrite " + gDatabasePath + "?", 4 + 48 + 256), answer,
                       std::move(meanwhile));
    }

    void ExpectRefusal(const char* title, const std::string& text) {
        prompts.Expect(Box(title, text, 16));
        prompts.Expect(Box("Restore Failed",
                           "Restore failed. Please check the MOVA database and make sure nobody has got the "
                           "file open at this time.",
                           16));
    }

    /// An archive of a database with the machines RESTORED1 and RESTORED2.
    std::string MakeArchive(const std::string& name) {
        std::string archive = folder.Path(name);
        Open(MakeDatabase("Other.mdb", {"RESTORED1", "RESTORED2"}));
        Backup(archive);
        gConnection->Close();
        gDatabasePath.clear();
        std::filesystem::remove(folder.Path("Other.mdb"));
        Told();
        return archive;
    }
};

TEST_F(BackupTest, ASiteComesBackRowForRowInAFreshFolder) {
    std::filesystem::create_directory(folder.Path("INF"));
    SiteSize size;
    size.machines = 3;
    size.personalPercent = 100;
    WriteSite(folder.Path("INF"), size);
    Open(MakeDatabase("Site.mdb", {}));
    Import();
    const std::string archive = folder.Path("Site.zbk");
    Backup(archive);
    EXPECT_EQ(Told(), std::string(kBackupBegins) + "Backup done successfully\n" + kOpens);
    EXPECT_TRUE(gConnection->IsOpen());
    EXPECT_EQ(prompts.FileDialogs().at(0).filter, "Backup File (*.zbk)|*.zbk");
    EXPECT_EQ(prompts.FileDialogs().at(0).defaultExtension, "zbk");
    session.CloseSinDatabase(true);
    Told();

    EXPECT_EQ(folder.Rights("Site.zbk"), 0600U) << "it holds personal details";
    EXPECT_LT(std::filesystem::file_size(archive), std::filesystem::file_size(folder.Path("Site.mdb")) / 3);
    EXPECT_NE(Shell("unzip -t " + archive).find("No errors detected"), std::string::npos);
    EXPECT_EQ(Shell("python3 -c \"import zipfile; z = zipfile.ZipFile('" + archive +
                    "'); print(z.namelist(), z.testzip(), oct(z.infolist()[0].external_attr >> 16))\""),
              "['Site.mdb'] None 0o100600");

    std::filesystem::create_directory(folder.Path("fresh"));
    // A dialog may hand over its whole buffer.
    ExpectArchive(archive + std::string(3, '\0'));
    prompts.Expect(Folder("Please select Restore Directory", program), folder.Path("fresh"));
    command.mnuRestore();
    EXPECT_EQ(Told(),
              "Enter a backup filename name ...\n\nRestore in progress ...\nhourglass\narrow\n"
              "hourglass\narrow\nRestore done successfully\n" +
                  std::string(kOpens));
    EXPECT_EQ(prompts.FileDialogs().back().folder, gBackupDir);
    EXPECT_EQ(gDatabasePath, folder.Path("fresh/Site.mdb"));
    EXPECT_EQ(folder.Rights("fresh/Site.mdb"), 0600U);
    gConnection->Close();
    EXPECT_EQ(Contents(gDatabasePath), Contents(folder.Path("Site.mdb")));
    EXPECT_TRUE(Contents(gDatabasePath).starts_with("ok\n"));
    EXPECT_EQ(Files("program") + Files("fresh"), "Site.mdb ") << "nothing temporary is left";
}

TEST_F(BackupTest, ALargeFileIsPackedInBlocksThatEveryReaderTakes) {
    const auto bytes = [](std::size_t length) {
        // Text of a database, and now and then what can not be packed: a block may grow.
        std::mt19937 random(7);
        std::string all;
        while (all.size() < length)
            if (random() % 30000 == 0)
                std::generate_n(std::back_inserter(all), 300000, [&] { return static_cast<char>(random()); });
            else
                all += "Machine " + std::to_string(random()) + ", Intel Pentium;";
        all.resize(length);
        return all;
    };
    constexpr std::size_t kBlock = std::size_t{256} << 10U;
    const struct {
        const char* why;
        std::size_t length;
    } cases[] = {
        {"the largest that the library packs by itself", 4 * kBlock - 1},
        {"ends with a block", 4 * kBlock},
        {"ends within a block", 9 * kBlock + 17},
    };
    std::filesystem::create_directory(folder.Path("out"));
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        const std::string source = folder.WriteFile("Large.mdb", bytes(c.length));
        const std::string archive = folder.Path("large.zbk");
        ASSERT_TRUE(VBZip::ZipFile({form, prompts}, source, archive));
        EXPECT_EQ(Shell("unzip -tq " + archive), "No errors detected in compressed data of " + archive + ".");
        EXPECT_EQ(Shell("python3 -c \"import zipfile; z = zipfile.ZipFile('" + archive +
                        "'); i = z.infolist()[0]; print(i.filename, i.compress_type, z.read(i) == open('" +
                        source + "', 'rb').read(), i.file_size > i.compress_size * 1.5)\""),
                  "Large.mdb 8 True True");
        ASSERT_TRUE(VBZip::UnzipFile({form, prompts}, archive, folder.Path("out")));
        EXPECT_TRUE(folder.ReadFile("out/Large.mdb") == folder.ReadFile("Large.mdb"));
        std::filesystem::remove(folder.Path("out/Large.mdb"));
    }
    const SmallFiles full(300000);
    const std::string archive = folder.Path("failed.zbk");
    prompts.Expect(Box("Error #75", "File too large: " + archive, 16));
    EXPECT_FALSE(VBZip::ZipFile({form, prompts}, folder.Path("Large.mdb"), archive)) << "in the middle";
    EXPECT_EQ(Files(), "Large.mdb large.zbk out program ");
}

TEST_F(BackupTest, AnswersBeforeABackup) {
    Open(MakeDatabase("Site.mdb", {"PC1"}));
    prompts.Expect(SaveFile("Please enter backup filename"));
    command.mnuBackup();
    EXPECT_EQ(Told(), "Enter a backup filename name ...\n\n") << "cancelled";

    const std::string archive = folder.WriteFile("old.zbk", "old");
    const Question replace = Box("Replace?", "Replace this backup file?", kYesNoDefaultNo);
    prompts.Expect(SaveFile("Please enter backup filename"), archive);
    prompts.Expect(replace, MsgBoxAnswer::No);
    command.mnuBackup();
    EXPECT_EQ(folder.ReadFile("old.zbk"), "old");
    EXPECT_TRUE(gConnection->IsOpen());
    EXPECT_EQ(Told(), "Enter a backup filename name ...\n\n");

    prompts.Expect(SaveFile("Please enter backup filename"), archive);
    prompts.Expect(replace, MsgBoxAnswer::Yes);
    command.mnuBackup();
    EXPECT_EQ(Shell("unzip -Z1 " + archive), "Site.mdb");

    prompts.Expect(SaveFile("Please enter backup filename"), gDatabasePath);
    prompts.Expect(Box("Error#70", "Permission denied: " + gDatabasePath, 16));
    command.mnuBackup();
    EXPECT_TRUE(gConnection->IsOpen()) << "the database is no place for its own backup";
}

TEST_F(BackupTest, AFailureKeepsTheOldArchiveAndOpensTheDatabaseAgain) {
    Open(MakeDatabase("Site.mdb", {"PC1"}));
    const std::string archive = folder.WriteFile("old.zbk", "old");
    const auto fail = [&](const char* title, const std::string& text) {
        prompts.Expect(SaveFile("Please enter backup filename"), archive);
        prompts.Expect(Box("Replace?", "Replace this backup file?"), MsgBoxAnswer::Yes);
        prompts.Expect(Box(title, text, 16));
        prompts.Expect(Box("Backup Failed", kBackupFailed, 16));
        command.mnuBackup();
        EXPECT_TRUE(Told().ends_with(kOpens));
        EXPECT_TRUE(folder.ReadFile("old.zbk") == "old");
        EXPECT_TRUE(gConnection->IsOpen());
        EXPECT_EQ(Files(), "Site.mdb Site.mdb-shm Site.mdb-wal old.zbk program ");
    };
    {
        // More than the archive may take, and nothing that could be packed.
        RunSQL(*gConnection, "CREATE TABLE Noise AS SELECT randomblob(200000)");
        gConnection->Close();
        const SmallFiles full(100000);
        fail("Error #75", "File too large: " + archive);
    }

    // Another program has the database open; it may change it at any time.
    gConnection->Close();
    const OtherProgram other(gDatabasePath);
    Open(gDatabasePath);
    fail("Error #70", "Permission denied: " + gDatabasePath);
}

TEST_F(BackupTest, ADatabaseThatIsGoneIsNotOpenedAgain) {
    Open(MakeDatabase("Site.mdb", {"PC1"}));
    const std::string path = gDatabasePath;
    std::filesystem::rename(path, folder.Path("moved"));
    prompts.Expect(SaveFile("Please enter backup filename"), folder.Path("new.zbk"));
    prompts.Expect(Box("Error #53", "File not found: " + path, 16));
    prompts.Expect(Box("Backup Failed", kBackupFailed));
    prompts.Expect(Box("Error #-1",
                       "This is either not a MOVA database or it's an incompatible database.\r\n\r\nIf you "
                       "are sure it's a MOVA database try repairing it.\r\n\r\nError Description: unable to "
                       "open database file"));
    command.mnuBackup();
    EXPECT_TRUE(Told().ends_with("Not a MOVA Database ...\n"));
    EXPECT_EQ(gDatabasePath, "");
    EXPECT_FALSE(folder.Exists("new.zbk"));
}

TEST_F(BackupTest, ARestoreTakesThePlaceOfTheOpenDatabase) {
    const std::string archive = MakeArchive("other.zbk");
    Open(MakeDatabase("Site.mdb", {"PC1"}));
    gConnection->Execute("UPDATE Version SET LastImportDate = '20011102'");
    const std::string before = Contents(gDatabasePath);

    prompts.Expect(OpenFile("Please select a backup file"));
    command.mnuRestore();
    EXPECT_EQ(Told(), "Enter a backup filename name ...\n\n") << "cancelled";
    EXPECT_TRUE(gConnection->IsOpen());

    ExpectArchive(archive);
    ExpectOverwrite(MsgBoxAnswer::No, [this] {
        EXPECT_EQ(form.told, std::string(kRestoreBegins) + "hourglass\narrow\nhourglass\narrow\n")
            << "it is unpacked, and beside the database";
    });
    command.mnuRestore();
    EXPECT_TRUE(Told().ends_with("Restore done successfully\n" + std::string(kOpens) +
                                 "Your data is 18 day(s) old.\n"));
    EXPECT_EQ(prompts.Beeps(), 1);
    EXPECT_EQ(Contents(gDatabasePath), before) << "the one that was there is opened again";

    ExpectArchive(archive);
    ExpectOverwrite(MsgBoxAnswer::Yes);
    command.mnuRestore();
    EXPECT_TRUE(Told().ends_with(std::string("Restore done successfully\n") + kOpens));
    gConnection->Close();
    EXPECT_NE(Contents(gDatabasePath).find("RESTORED1"), std::string::npos);
    EXPECT_EQ(Files(), "Site.mdb other.zbk program ");
    EXPECT_EQ(Files("program"), "");
}

TEST_F(BackupTest, ARestoreLeavesTheDatabaseThatAnotherProgramWritesTo) {
    const std::string archive = MakeArchive("other.zbk");
    const std::string path = MakeDatabase("Site.mdb", {"PC1"});
    const std::string before = Contents(path);
    const auto restore = [&] {
        const OtherProgram other(path);
        Open(path);
        ExpectArchive(archive);
        ExpectRefusal("Error #70", "Permission denied: " + path);
        command.mnuRestore();
        EXPECT_TRUE(Told().ends_with("disable\n"));
        EXPECT_FALSE(gConnection->IsOpen());
        EXPECT_EQ(Contents(path), before) << "its work would be lost with the file";
        EXPECT_EQ(Files() + Files("program"), "Site.mdb Site.mdb-shm Site.mdb-wal other.zbk program ");
    };
    restore();
    WithoutHardLinks(restore);
}

TEST_F(BackupTest, OnADiskWithoutLinksTheOldDatabaseKeepsItsNameUntilTheNewOneHasIt) {
    const std::string archive = MakeArchive("other.zbk");
    Open(MakeDatabase("Site.mdb", {"PC1"}));
    const std::string before = Contents(gDatabasePath);
    WithoutHardLinks([&] {
        ExpectArchive(archive);
        ExpectOverwrite(MsgBoxAnswer::No, [&] {
            EXPECT_NE(Files().find("Site.mdb.replaced-"), std::string::npos);
            EXPECT_TRUE(folder.Exists("Site.mdb")) << "should the console be killed now";
        });
        command.mnuRestore();
        EXPECT_EQ(Contents(gDatabasePath), before);

        ExpectArchive(archive);
        ExpectOverwrite(MsgBoxAnswer::Yes);
        command.mnuRestore();
        EXPECT_TRUE(Told().ends_with(std::string("Restore done successfully\n") + kOpens));
    });
    gConnection->Close();
    EXPECT_NE(Contents(gDatabasePath).find("RESTORED1"), std::string::npos);
    EXPECT_EQ(Files() + Files("program"), "Site.mdb other.zbk program ");
}

TEST_F(BackupTest, WhatPreventsARestoreAfterTheQuestionStandsOnThePanel) {
    const std::string archive = MakeArchive("other.zbk");
    Open(MakeDatabase("Site.mdb", {"PC1"}));
    const std::string before = Contents(gDatabasePath);
    ExpectArchive(archive);
    ExpectOverwrite(MsgBoxAnswer::Yes, [this] {
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
            if (entry.path().filename().string().starts_with(".velmora-"))
                std::filesystem::remove(entry.path());
    });
    command.mnuRestore();
    EXPECT_TRUE(Told().ends_with(kOpens + ("Restore failed: File not found: " + gDatabasePath + "\n")));
    EXPECT_TRUE(gConnection->IsOpen());
    EXPECT_EQ(Contents(gDatabasePath), before);
}

TEST_F(BackupTest, NoOldLogGetsIntoTheRestoredDatabase) {
    const std::string archive = MakeArchive("other.zbk");
    // A killed console has left its log; the database's name was typed in another way.
    const std::string path = MakeDatabase("place/OTHER.MDB", {"PC1"});
    const pid_t child = fork();
    if (child == 0) {
        sqlite3* database = nullptr;
        sqlite3_open(path.c_str(), &database);
        sqlite3_exec(database, "INSERT INTO Net (COMPUTERNAME) VALUES ('KILLED')", nullptr, nullptr, nullptr);
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    ASSERT_EQ(Files("place"), "OTHER.MDB OTHER.MDB-shm OTHER.MDB-wal ");
    const auto restore = [&](MsgBoxAnswer answer) {
        ExpectArchive(archive);
        prompts.Expect(Folder("Please select Restore Directory"), folder.Path("place"));
        prompts.Expect(Box("Overwrite?", "Overwrite " + folder.Path("place/Other.mdb") + "?"), answer);
        command.mnuRestore();
        gConnection->Close();
    };
    restore(MsgBoxAnswer::No);
    EXPECT_EQ(gDatabasePath, path) << "what is there is opened by its own name";
    EXPECT_NE(Contents(path).find("KILLED"), std::string::npos);
    restore(MsgBoxAnswer::Yes);
    EXPECT_EQ(Files("place"), "Other.mdb ");
    EXPECT_NE(Contents(gDatabasePath).find("RESTORED1"), std::string::npos);
    EXPECT_EQ(Contents(gDatabasePath).find("KILLED"), std::string::npos);
}

TEST_F(BackupTest, ARestoreIntoAFullDiskOrNoFolderLeavesWhatIsThere) {
    const std::string archive = MakeArchive("other.zbk");
    prompts.Expect(OpenFile("Please select a backup file"), archive);
    prompts.Expect(Folder("Please select Restore Directory"));
    command.mnuRestore();
    EXPECT_EQ(Told(), "Enter a backup filename name ...\n\n") << "no folder chosen";

    ExpectArchive(archive);
    prompts.Expect(Folder("Please select Restore Directory"), folder.Path("gone"));
    ExpectRefusal("Error #76", "Path not found: " + folder.Path("gone"));
    command.mnuRestore();
    EXPECT_TRUE(Told().ends_with("disable\n"));
    EXPECT_EQ(gDatabasePath, "");
    EXPECT_EQ(Files("program"), "");

    Open(MakeDatabase("Site.mdb", {"PC1"}));
    const std::string before = Contents(gDatabasePath);
    ExpectArchive(archive);
    prompts.Expect(Box("Error#53", "File not found: " + program, 16));
    std::filesystem::remove(program);
    command.mnuRestore();
    EXPECT_EQ(Told(), std::string(kRestoreBegins) + "disable\n");
    EXPECT_FALSE(gConnection->IsOpen());
    EXPECT_EQ(Contents(gDatabasePath), before);
}

TEST(ArchiveKills, AKilledCommandCostsNothingThatWasThere) {
    const auto kill = [](int rounds) {
        const TemporaryFolder folder;
        SiteSize size;
        size.machines = 6;
        const KillReport report = KillAtRandom(folder.Path("site"), size, rounds, 7);
        for (const std::string& fault : report.faults)
            ADD_FAILURE() << fault;
        EXPECT_GT(report.killed, 0) << "no kill fell into a command";
    };
    kill(30);
    WithoutHardLinks([&] { kill(15); });
}

} // namespace
