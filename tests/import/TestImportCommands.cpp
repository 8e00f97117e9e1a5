// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that start an import, over a main window without widgets.
#include "platform/errors.h"
#include "tests/import/ImportCommandsTest.h"

namespace {

TEST_F(ImportCommandsTest, QuickImportReadsTheStoredFolderAndOpensTheDatabaseAnew) {
    Write("PC1.ORG", SmallFile("PC1"));
    StoreFolder(folder.Path("inf")); // the folder's name may differ in case
    commands.mnuQuickImport();
    EXPECT_EQ(Told(), "hourglass\nImport Status : PC1.ORG\narrow\nImport Successful.\nactivate\n");
    EXPECT_EQ(form.progressMaximum, 100);
    EXPECT_EQ(form.progress.at(1), 100) << "one file is the whole way";
    EXPECT_EQ(form.progress.back(), 0);
    EXPECT_TRUE(gFirstActivation);
    EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), "PC1");
}

TEST_F(ImportCommandsTest, QuickImportLeavesYoungChangesForLater) {
    const struct {
        const char* why;
        std::int16_t unit, count;
        const char* changed;
        bool isImported;
    } cases[] = {
        {"no frame: thirty minutes", 0, 0, "2001-11-20 08:29:59", false},
        {"no frame, and older", 0, 0, "2001-11-20 08:30:00", true},
        {"ninety seconds are too few", 0, 90, "2001-11-20 08:29:59", false},
        {"which is no time of day, while thirty minutes is", 0, 90, "2001-11-20 08:30:00", true},
        {"29 minutes are too few", 1, 29, "2001-11-20 08:29:59", false},
        {"31 minutes stay in force", 1, 31, "2001-11-20 08:30:59", false},
        {"and end", 1, 31, "2001-11-20 08:31:00", true},
        {"an hour stays", 2, 1, "2001-11-20 08:59:59", false},
        {"a day stays", 3, 1, "2001-11-21 07:59:59", false},
        {"more seconds than 32 bits count: ninety years stay", 3, 32767, "2031-11-20 08:00:00", false},
        {"a frame of the past is none", 1, -5, "2001-11-20 08:29:59", false},
        {"a unit that is none", 9, 9999, "2001-11-20 08:30:00", true},
    };
    StoreFolder(inventory);
    for (const auto& c : cases) {
        RunSQL(*connection, "DELETE FROM Net");
        Write("PC1.ORG", SmallFile("PC1", "before"), "2001-11-20 08:00:00");
        ASSERT_TRUE(Import());
        Write("PC1.ORG", SmallFile("PC1", "after"), c.changed);
        gImportTime = c.unit;
        gImportTimeNum = c.count;
        commands.mnuQuickImport();
        EXPECT_EQ(Rows("SELECT [Logon User Name] FROM Net"), c.isImported ? "after" : "before") << c.why;
        EXPECT_EQ(gImportTime, c.unit) << "the setting itself is as it was";
        EXPECT_EQ(gImportTimeNum, c.count);
    }
}

TEST_F(ImportCommandsTest, WithoutAFolderOrFilesTheDialogAsksForThem) {
    const auto runDialog = [this](void (ImportCommands::*command)()) {
        const NextDialog answer = InDialog([](QDialog& dialog) { dialog.reject(); });
        (commands.*command)();
        EXPECT_EQ(Told(), "activate\n");
    };
    runDialog(&ImportCommands::mnuQuickImport);
    runDialog(&ImportCommands::mnuPopRImport);
    StoreFolder(inventory);
    Write("notes.txt", "");
    prompts.Expect(Box("No INF Files",
                       "There's no files to import in the import directory. Please select the Mova\\Inf "
                       "directory on the server to continue.",
                       MsgBoxStyle::kInformation));
    runDialog(&ImportCommands::mnuQuickImport);

    Write("PC1.INF", SmallFile("PC1"));
    prompts.Expect(Question{Question::Kind::Box, "No data to import", {}, MsgBoxStyle::kQuestion});
    commands.mnuQuickImport();
    EXPECT_EQ(Told(), "hourglass\narrow\nImport Successful.\nactivate\n")
        << "current files alone are no data, and a success";
}

TEST_F(ImportCommandsTest, AFailureSaysSoAndChangesNothingOnTheWindow) {
    Write("PC1.ORG", SmallFile("O'NEIL"));
    StoreFolder(inventory);
    for (void (ImportCommands::*const command)() :
         {&ImportCommands::mnuQuickImport, &ImportCommands::mnuPopRImport}) {
        prompts.Expect(Question{Question::Kind::Box, "Error# -1", {}, MsgBoxStyle::kCritical});
        prompts.Expect(Box("Import", "Failed to Import INF Files", MsgBoxStyle::kCritical));
        (commands.*command)();
        EXPECT_EQ(Told(), "hourglass\nImport Status : PC1.ORG\narrow\n") << "no success, no new opening";
        EXPECT_FALSE(gFirstActivation);
    }
}

TEST_F(ImportCommandsTest, AFailureOfTheCommandItselfHasABoxOfItsOwn) {
    Write("PC1.ORG", SmallFile("PC1"));
    StoreFolder(inventory);
    form.failure = RunTimeError(Errors::kTypeMismatch, "Type mismatch");
    prompts.Expect(Box("Error#13", "Type mismatch", MsgBoxStyle::kCritical));
    gImportTimeNum = 5;
    commands.mnuQuickImport();
    EXPECT_EQ(Told(), "hourglass\nImport Status : PC1.ORG\narrow\nImport Successful.\narrow\n");
    EXPECT_EQ(gImportTimeNum, 5) << "the frame comes back whatever happens";
}

TEST_F(ImportCommandsTest, TheListImportsItsSelectedMachines) {
    for (const char* machine : {"PC1", "PC2", "PC3"})
        Write(std::string(machine) + ".ORG", SmallFile(machine));
    StoreFolder(inventory);
    form.rows = {"PC1", "PC2", "PC3", "n/a", ""};
    form.selected = {0, 2, 4};
    commands.mnuPopRImport();
    EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), "PC1\nPC3") << "a row without a text is no machine";
    EXPECT_EQ(Told(), "hourglass\nImport Status : PC1.org\narrow\nImport Successful.\nactivate\n");
    EXPECT_EQ(form.progress.back(), 0);
    form.selected.clear();
    commands.mnuPopRImport();
    EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), "PC1\nPC3\nPC2")
        << "without a selection the whole folder";
}

TEST_F(ImportCommandsTest, RowsOfOneMachineInARowImportItOnceAndAFailureStopsNoOther) {
    Write("PC1.ORG", SmallFile("O'NEIL"));
    Write("PC2.ORG", SmallFile("PC2"));
    StoreFolder(inventory);
    form.rows = {"PC1", "PC1", "PC2", "PC2", "PC1"};
    form.selected = {0, 1, 2, 3, 4};
    // Each try at PC1 fails with the box of the import, and with no other.
    for (int run = 0; run < 2; ++run)
        prompts.Expect(Question{Question::Kind::Box, "Error# -1", {}, MsgBoxStyle::kCritical});
    commands.mnuPopRImport();
    EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), "PC2");
    EXPECT_NE(form.told.find("Import Successful."), std::string::npos) << "it says so all the same";
}

TEST_F(ImportCommandsTest, ASelectedTextLeadsToNoFileOutsideTheFolder) {
    folder.WriteFile("secret.org", SmallFile("SECRET"));
    Write("PC1.ORG", SmallFile("PC1"));
    StoreFolder(inventory);
    form.rows = {"../secret", folder.Path("secret"), "*"};
    form.selected = {0, 1, 2};
    for (int row = 0; row < 3; ++row)
        prompts.Expect(Question{Question::Kind::Box, "No data to import", {}, {}});
    commands.mnuPopRImport();
    EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), "");
}

} // namespace
