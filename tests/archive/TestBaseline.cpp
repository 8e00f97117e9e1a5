// SPDX-License-Identifier: GPL-3.0-or-later
// The current configurations become the original ones.
#include "archive/BaselineRewrite.h"
#include "core/Globals.h"
#include "platform/files.h"
#include "tests/archive/ArchiveTest.h"
#include "tests/support/Database.h"
#include "tests/support/SmallFiles.h"

#include <filesystem>

namespace {

constexpr int kYesNo = 4 + 32;
constexpr int kYesNoDefaultNo = 4 + 16 + 256;
constexpr const char* kRewrites =
    "Removing Entries...\nhourglass\narrow\nFixing...\nhourglass\narrow\n"
    "Importing...\nquick import\n";

class BaselineTest : public ArchiveTest {
protected:
    BaselineTest() {
        folder.WriteFile("INF/PC1.ORG", "original 1");
        folder.WriteFile("INF/PC1.INF", "current 1");
        folder.WriteFile("INF/pc2.org", "original 2");
        folder.WriteFile("INF/pc2.inf", "current 2");
        folder.WriteFile("INF/Pc3.Org", "original 3");
        Open(MakeDatabase("Site.mdb", {"PC1", "PC2", "GONE"}));
    }

    void ExpectBackup(const std::string& archive) {
        prompts.Expect(
            Box("Backup ORG files?",
                "Do you want to make a backup ZIP file of original PC configurations first ?", kYesNo),
            MsgBoxAnswer::Yes);
        prompts.Expect(SaveFile("Please enter backup filename"), archive);
    }

    void ExpectNoBackup(MsgBoxAnswer goOn) {
        prompts.Expect(Box("Backup ORG files?",
                           "Do you want to make a backup ZIP file of original PC configurations first ?"),
                       MsgBoxAnswer::No);
        prompts.Expect(
            Box("Rewrite ORG files without backup?",
                "Are you sure you want to continue with this operation without a backup of the ORG files?",
                kYesNoDefaultNo),
            goOn);
    }

    void ExpectGoOn(MsgBoxAnswer answer) {
        prompts.Expect(Box("Rewrite ORG files?",
                           "Backup successful.\r\n\r\nContinue rewriting ORG files with INF files?", kYesNo),
                       answer);
    }

    /// Rewrites without a backup, and returns what the file of the inventory folder then holds.
    std::string Rewritten(const std::string& name) {
        ExpectNoBackup(MsgBoxAnswer::Yes);
        baseline.mnuCommit();
        return folder.ReadFile("INF/" + name);
    }

    static std::string Machines() { return RowsOf(*gConnection, "SELECT COUNT(*) FROM Net"); }

    BaselineRewrite baseline{form, prompts};
};

TEST_F(BaselineTest, EveryCurrentFileTakesThePlaceOfItsOriginal) {
    const std::string archive = folder.Path("before.zip");
    ExpectBackup(archive + std::string(2, '\0'));
    ExpectGoOn(MsgBoxAnswer::Yes);
    prompts.Expect(Box("Restore tip.",
                       "PLEASE NOTE : \r\n\r\nTo do a roll-back you can unzip the file " + archive +
                           " and rewrite the ORG files in the " + folder.Path("INF") +
                           " directory with those in the backup ZIP file, and then run the import again!",
                       64));
    std::string machines;
    form.quickImport = [&] { machines = Machines(); };
    baseline.mnuCommit();
    EXPECT_EQ(Told(),
              "Backup ORG Files?\nWorking .... Please wait\nhourglass\narrow\nBackup successful?\n\n" +
                  std::string(kRewrites) + "\n");
    EXPECT_EQ(machines, "0") << "nothing holds the import back";
    EXPECT_EQ(prompts.FileDialogs().at(0).filter, "Backup File (*.zip)|*.zip");
    EXPECT_EQ(prompts.FileDialogs().at(0).defaultExtension, "zip");
    EXPECT_EQ(Files("INF"), "PC1.INF PC1.ORG PC2.ORG Pc3.Org pc2.inf ");
    EXPECT_EQ(folder.ReadFile("INF/PC1.ORG"), "current 1");
    EXPECT_EQ(folder.ReadFile("INF/PC2.ORG"), "current 2");
    EXPECT_EQ(folder.ReadFile("INF/Pc3.Org"), "original 3");
    EXPECT_EQ(Shell("unzip -p " + archive + " PC1.ORG pc2.org Pc3.Org"), "original 1original 2original 3");
    EXPECT_EQ(Shell("unzip -Z1 " + archive + " | wc -l"), "3");
}

TEST_F(BaselineTest, EveryAnswerButYesChangesNothing) {
    const std::string taken = folder.WriteFile("taken.zip", "old");
    const std::string before = Contents(gDatabasePath);
    const auto expectFailure = [this] {
        prompts.Expect(
            Box("Backup Failed",
                "Backup failed. A ORG file could have been created in the time you tried to backup, "
                "please retry. ",
                16));
        prompts.Expect(Box("FAILED", "Backup failed.", 16));
    };
    const struct {
        const char* why;
        std::function<void()> expect;
        const char* told;
    } cases[] = {
        {"no archive named", [&] { ExpectBackup(""); }, "Backup ORG Files?\nWorking .... Please wait\n\n"},
        {"an archive that is to stay",
         [&] {
             ExpectBackup(taken);
             prompts.Expect(Box("Replace?", "Replace this backup file?", kYesNoDefaultNo), MsgBoxAnswer::No);
             prompts.Expect(Box("FAILED", "Backup failed.", 16));
         },
         "Backup ORG Files?\nWorking .... Please wait\nBackup FAILED?\n\n"},
        {"an archive that can not be made",
         [&] {
             ExpectBackup(folder.Path("missing/new.zip"));
             prompts.Expect(Box("Error #76", "Path not found: " + folder.Path("missing"), 16));
             expectFailure();
         },
         "Backup ORG Files?\nWorking .... Please wait\nhourglass\narrow\nBackup FAILED?\n\n"},
        {"second thoughts after the backup",
         [&] {
             ExpectBackup(folder.Path("new.zip"));
             ExpectGoOn(MsgBoxAnswer::No);
         },
         "Backup ORG Files?\nWorking .... Please wait\nhourglass\narrow\nBackup successful?\n"},
        {"not without a backup", [&] { ExpectNoBackup(MsgBoxAnswer::No); }, "Backup ORG Files?\nContinue?\n"},
        {"an archive of nothing is no backup",
         [&] {
             gImportDir = folder.Path("program");
             ExpectBackup(folder.Path("none.zip"));
             prompts.Expect(Box("Error #53", "File not found: " + folder.Path("program/*.ORG"), 16));
             expectFailure();
         },
         "Backup ORG Files?\nWorking .... Please wait\nBackup FAILED?\n\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        c.expect();
        baseline.mnuCommit();
        EXPECT_EQ(Told(), c.told);
        EXPECT_EQ(folder.ReadFile("INF/PC1.ORG"), "original 1");
        EXPECT_EQ(folder.ReadFile("taken.zip"), "old");
        EXPECT_EQ(Contents(gDatabasePath), before);
    }
    EXPECT_FALSE(folder.Exists("none.zip"));
}

TEST_F(BaselineTest, WithoutCurrentFilesTheOriginalOnesStay) {
    std::filesystem::remove(folder.Path("INF/PC1.INF"));
    EXPECT_EQ(Rewritten("PC1.ORG"), "original 1");
    EXPECT_EQ(Machines(), "0");
    EXPECT_EQ(Told(), "Backup ORG Files?\nContinue?\n" + std::string(kRewrites) + "\n") << "and no tip";
}

TEST_F(BaselineTest, AnOriginalFileThatCanNotBeReplacedStaysWhole) {
    folder.WriteFile("secret", "of the administrator");
    const struct {
        const char* why;
        std::function<void()> make;
    } cases[] = {
        {"a current file that leads out of the folder",
         [this] { std::filesystem::create_symlink(folder.Path("secret"), folder.Path("INF/PC1.INF")); }},
        {"one that no import would read",
         [this] { std::filesystem::resize_file(folder.WriteFile("INF/PC1.INF", "x"), kLargestFile + 1); }},
        {"one that the disk has no room for",
         [this] { folder.WriteFile("INF/PC1.INF", std::string(2000000, 'x')); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        std::filesystem::remove(folder.Path("INF/PC1.INF"));
        c.make();
        const SmallFiles full(1000000);
        EXPECT_EQ(Rewritten("PC1.ORG"), "original 1");
        EXPECT_EQ(folder.ReadFile("INF/PC2.ORG"), "current 2") << "the others are rewritten";
        EXPECT_EQ(Files("INF"), "PC1.INF PC1.ORG PC2.ORG Pc3.Org pc2.inf ") << "nothing temporary is left";
    }
}

TEST_F(BaselineTest, NothingIsWrittenThroughALink) {
    folder.WriteFile("secret", "of the administrator");
    std::filesystem::remove(folder.Path("INF/PC1.ORG"));
    std::filesystem::create_symlink(folder.Path("secret"), folder.Path("INF/PC1.ORG"));
    EXPECT_EQ(Rewritten("PC1.ORG"), "current 1");
    EXPECT_FALSE(std::filesystem::is_symlink(folder.Path("INF/PC1.ORG")));
    EXPECT_EQ(folder.ReadFile("secret"), "of the administrator");
}

TEST_F(BaselineTest, TheOpenDatabaseIsNoPlaceForTheBackup) {
    ExpectBackup(gDatabasePath);
    prompts.Expect(Box("mnuCommit : Error#70", "Permission denied: " + gDatabasePath, 16));
    baseline.mnuCommit();
    EXPECT_EQ(Machines(), "3");
    EXPECT_EQ(folder.ReadFile("INF/PC1.ORG"), "original 1");
}

TEST_F(BaselineTest, TheBackupHoldsNothingThatALinkLeadsTo) {
    folder.WriteFile("secret", "of the administrator");
    std::filesystem::create_symlink(folder.Path("secret"), folder.Path("INF/PC9.ORG"));
    const std::string archive = folder.Path("links.zip");
    ExpectBackup(archive);
    ExpectGoOn(MsgBoxAnswer::No);
    baseline.mnuCommit();
    EXPECT_NE(folder.ReadFile("links.zip").find("PC1.ORG"), std::string::npos);
    EXPECT_EQ(folder.ReadFile("links.zip").find("PC9.ORG"), std::string::npos);
}

TEST_F(BaselineTest, AFailureOfTheDatabaseEndsIt) {
    gConnection->Close();
    ExpectNoBackup(MsgBoxAnswer::Yes);
    prompts.Expect(Box("mnuCommit : Error#3709", "The connection is closed", 16));
    baseline.mnuCommit();
    EXPECT_EQ(folder.ReadFile("INF/PC1.ORG"), "original 1");
    EXPECT_TRUE(Told().ends_with("arrow\n"));
}

} // namespace
