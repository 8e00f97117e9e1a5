// SPDX-License-Identifier: GPL-3.0-or-later
// The start-up as a whole, with a collector that writes what a test wants it to write.
#include "tests/app/StartupTest.h"

#include <QLabel>

#include <gmock/gmock.h>

namespace {

void ExpectNoSplash() {
    EXPECT_FALSE(FormRegistry::Instance().IsLoaded("frmSplash")) << "it would cover the box";
}

TEST_F(StartupTest, EndsInTheMainWindowWithTheImportedMachines) {
    // What stands there from a run that was killed must not leak into the new database.
    folder.WriteFile("Demodb.mdb", "an old database");
    folder.WriteFile("Demodb.mdb-wal", "and its log");
    ASSERT_TRUE(Start());
    EXPECT_EQ(processes.starts, folder.Path("Movanta.exe") + "(0)");
    ASSERT_NE(MainWindow(), nullptr);
    EXPECT_TRUE(MainWindow()->isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(Machines(), "PC1");
    EXPECT_EQ(gMachineCount, 1);
    const auto* tree = MainWindow()->findChild<QTreeView*>("tvTreeView");
    ASSERT_NE(tree, nullptr);
    const QModelIndex root = tree->model()->index(0, 0);
    EXPECT_EQ(root.data().toString(), "20 Nov 2001");
    ASSERT_EQ(tree->model()->rowCount(root), 2);
    EXPECT_EQ(tree->model()->index(1, 0, root).data().toString(), "PC1");
    EXPECT_TRUE(FormRegistry::Instance().IsLoaded("frmSplash"))
        << "it goes five seconds after the collector's end";
}

TEST_F(StartupTest, WaitsForTheCollectorAndSurvivesAClickOnTheSplash) {
    processes.exitCodes = {RunningProcess::kStillActive, RunningProcess::kStillActive, 0};
    processes.onStart = [write = processes.onStart] {
        write();
        QTimer::singleShot(0, [] {
            ASSERT_NE(frmSplash::Loaded(), nullptr);
            QTest::mouseClick(frmSplash::Loaded()->findChild<QLabel*>("lblStatus"), Qt::LeftButton);
        });
    };
    ASSERT_TRUE(Start());
    EXPECT_FALSE(FormRegistry::Instance().IsLoaded("frmSplash"));
    EXPECT_EQ(Machines(), "PC1");
}

TEST_F(StartupTest, AnEmptyFolderOpensWithNoMachines) {
    processes.onStart = [] {};
    prompts.Expect(
        Box("No data to import",
            "There are no files to import! Please make sure you have selected the proper directory."),
        ExpectNoSplash);
    ASSERT_TRUE(Start());
    EXPECT_TRUE(MainWindow()->isVisible());
    const auto* tree = MainWindow()->findChild<QTreeView*>("tvTreeView");
    EXPECT_EQ(tree->model()->rowCount(tree->model()->index(0, 0)), 0) << "the root alone";
}

TEST_F(StartupTest, WithoutTheTemplateTheOldDatabaseStays) {
    DeleteFile(folder.Path("Template.sdb"));
    folder.WriteFile("Demodb.mdb", "an old database");
    prompts.Expect(
        Box("Template.sdb Not Found",
            "Movanta Demo has not been installed properly!\r\n'Template.sdb' file is missing from the '" +
                folder.Path() + "' folder. Please re-install the MOVA admin module.",
            MsgBoxStyle::kQuestion),
        ExpectNoSplash);
    ASSERT_TRUE(Start());
    EXPECT_EQ(MainWindow(), nullptr);
    EXPECT_EQ(folder.ReadFile("Demodb.mdb"), "an old database");
    EXPECT_NE(QApplication::overrideCursor(), nullptr) << "the hourglass stays until the process goes";
    EXPECT_TRUE(FormRegistry::Instance().Windows().empty()) << "and nothing is left to wait for";
}

TEST_F(StartupTest, AFailedImportLeavesTheWindowLoadedAndHidden) {
    processes.onStart = [this] {
        folder.WriteFile("INF/PC1.ORG", MachineFile("PC1"));
        folder.WriteFile("INF/PC2.ORG", MachineFile("O'NEIL"));
    };
    prompts.Expect(Question{Question::Kind::Box, "Error# -1", {}, MsgBoxStyle::kCritical}, ExpectNoSplash);
    prompts.Expect(Box("Import", "Failed to Import INF Files", MsgBoxStyle::kCritical), ExpectNoSplash);
    ASSERT_TRUE(Start());
    ASSERT_NE(MainWindow(), nullptr);
    EXPECT_FALSE(MainWindow()->isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(Machines(), "PC1") << "rows already written stay";
}

TEST_F(StartupTest, ACollectorThatCanNotBeStartedIsAnUnguardedFailure) {
    processes.failure = RunTimeError(Errors::kFileNotFound, "File not found");
    EXPECT_THROW(Start(), RunTimeError);
    EXPECT_EQ(MainWindow(), nullptr);
}

TEST_F(StartupTest, ASecondCopyAsksTheFirstForwardAndEnds) {
    SingleInstance first(folder.Path());
    first.Listen([] {});
    EXPECT_FALSE(Start());
    EXPECT_EQ(startup->ExitStatus(), 0);
    EXPECT_EQ(processes.starts, "");
    EXPECT_TRUE(FormRegistry::Instance().Windows().empty());
}

TEST_F(StartupTest, ASecondCopyThatCanNotReachTheFirstSaysSoWithoutABox) {
    const SingleInstance first(folder.Path()); // as another account's, it answers nobody
    testing::internal::CaptureStderr();
    EXPECT_FALSE(Start());
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::HasSubstr("already runs from " + folder.Path()));
    EXPECT_EQ(startup->ExitStatus(), 2);
}

TEST_F(StartupTest, AFolderOfTheInventoryMayBeSpeltInAnotherCase) {
    processes.onStart = [this] { folder.WriteFile("inf/PC1.ORG", MachineFile("PC1")); };
    ASSERT_TRUE(Start());
    EXPECT_EQ(Machines(), "PC1");
}

TEST_F(StartupTest, SwitchesAreTakenExactly) {
    struct {
        const char* commandLine;
        const char* user;
        const char* width;
    } cases[] = {
        {"\\clear", "list", "9000"},      {"\\CLEAR ", "list", "9000"}, {" \\CLEAR", "list", "9000"},
        {"\\PASSWORD x", "list", "9000"}, {"\\PASSWORD", "", "9000"},   {"\\CLEAR", "", "6500"},
    };
    for (const auto& c : cases) {
        settings.SaveSetting(kApplication, kSection, "USER_LI", "list");
        settings.SaveSetting(kApplication, kSection, "MainWidth", "9000");
        ASSERT_TRUE(Start(c.commandLine));
        EXPECT_EQ(settings.GetSetting(kApplication, kSection, "USER_LI", ""), c.user) << c.commandLine;
        EXPECT_EQ(settings.GetSetting(kApplication, kSection, "MainWidth", "6500"), c.width) << c.commandLine;
        startup.reset();
        instance.reset();
        FormRegistry::Instance().Unload("frmSplash");
        gConnection->Close();
    }
}

} // namespace
