// SPDX-License-Identifier: GPL-3.0-or-later
// The start-up as a whole, with a collector that writes what a test wants it to write.
#include "app/Startup.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/frmSplash.h"
#include "import/Schema.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "tests/support/FakeProcesses.h"
#include "tests/support/FixedClock.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <QApplication>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr const char* kApplication = "Velmora";
constexpr const char* kSection = "Settings";

std::string MachineFile(const std::string& name) {
    return "[NET]\r\nINFO0=" + name + "|ann|20011120|08:00:00|0|\r\n[OS]\r\nINFO0=1|\r\n";
}

class StartupTest : public testing::Test {
protected:
    StartupTest() : settings(folder.Path("settings.ini")) {
        CreateDatabase(folder.Path("Template.sdb"));
        processes.onStart = [this](const FakeProcesses::Start&) {
            folder.WriteFile("INF/PC1.ORG", MachineFile("PC1"));
        };
    }
    ~StartupTest() override {
        startup.reset();
        FormRegistry::Instance().Unload("frmSplash");
        while (QApplication::overrideCursor() != nullptr)
            QApplication::restoreOverrideCursor();
        if (gConnection)
            gConnection->Close();
        gDatabasePath.clear();
    }

    bool Start(const std::string& commandLine = {}) {
        instance = std::make_unique<SingleInstance>(folder.Path());
        startup = std::make_unique<Startup>(folder.Path(), commandLine, settings, prompts, processes, clock,
                                            *instance);
        return startup->Main();
    }

    static QWidget* MainWindow() { return FormRegistry::Instance().Find("frmMain"); }

    static std::string Machines() {
        ADODB::Recordset rows;
        std::string names;
        for (rows.Open("SELECT * FROM Net", gConnection); !rows.EndOfFile(); rows.MoveNext())
            names += std::string(rows.Fields().Item(0).Text()) + " ";
        return names;
    }

    TemporaryFolder folder;
    SettingsStore settings;
    QueuedPrompts prompts;
    FakeProcesses processes;
    FixedClock clock{
        std::chrono::year_month_day{std::chrono::year(2001), std::chrono::month(11), std::chrono::day(20)}};
    std::unique_ptr<SingleInstance> instance;
    std::unique_ptr<Startup> startup;
};

TEST_F(StartupTest, EndsInTheMainWindowWithTheImportedMachines) {
    // What stands there from a run that was killed must not leak into the new database.
    folder.WriteFile("Demodb.mdb", "an old database");
    folder.WriteFile("Demodb.mdb-wal", "and its log");
    ASSERT_TRUE(Start());
    ASSERT_EQ(processes.starts.size(), 1U);
    EXPECT_EQ(processes.starts[0].path, folder.Path("Movanta.exe"));
    EXPECT_TRUE(processes.starts[0].arguments.empty());
    ASSERT_NE(MainWindow(), nullptr);
    EXPECT_TRUE(MainWindow()->isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(Machines(), "PC1 ");
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
    QTimer::singleShot(100, [] {
        ASSERT_NE(frmSplash::Loaded(), nullptr);
        QTest::mouseClick(frmSplash::Loaded(), Qt::LeftButton);
    });
    ASSERT_TRUE(Start());
    EXPECT_FALSE(FormRegistry::Instance().IsLoaded("frmSplash"));
    EXPECT_EQ(Machines(), "PC1 ");
}

TEST_F(StartupTest, AnEmptyFolderOpensWithNoMachines) {
    processes.onStart = {};
    prompts.Expect(
        Box("No data to import",
            "There are no files to import! Please make sure you have selected the proper directory."));
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
            MsgBoxStyle::kQuestion));
    ASSERT_TRUE(Start());
    EXPECT_EQ(MainWindow(), nullptr);
    EXPECT_EQ(folder.ReadFile("Demodb.mdb"), "an old database");
    EXPECT_NE(QApplication::overrideCursor(), nullptr) << "the hourglass stays until the process goes";
}

TEST_F(StartupTest, AFailedImportLeavesTheWindowLoadedAndHidden) {
    processes.onStart = [this](const FakeProcesses::Start&) {
        folder.WriteFile("INF/PC1.ORG", MachineFile("PC1"));
        folder.WriteFile("INF/PC2.ORG", MachineFile("O'NEIL"));
    };
    prompts.Expect(Question{Question::Kind::Box, "Error# -1", {}, MsgBoxStyle::kCritical});
    prompts.Expect(Box("Import", "Failed to Import INF Files", MsgBoxStyle::kCritical));
    ASSERT_TRUE(Start());
    ASSERT_NE(MainWindow(), nullptr);
    EXPECT_FALSE(MainWindow()->isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(Machines(), "PC1 ") << "rows already written stay";
}

TEST_F(StartupTest, ACollectorThatCanNotBeStartedIsAnUnguardedFailure) {
    processes.failure = RunTimeError(Errors::kFileNotFound, "File not found");
    EXPECT_THROW(Start(), RunTimeError);
    EXPECT_EQ(MainWindow(), nullptr);
}

TEST_F(StartupTest, ASecondCopyAsksTheFirstForwardAndEnds) {
    const SingleInstance first(folder.Path());
    EXPECT_FALSE(Start());
    EXPECT_TRUE(processes.starts.empty());
    EXPECT_TRUE(FormRegistry::Instance().Windows().empty());
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
