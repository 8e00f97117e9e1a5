// SPDX-License-Identifier: GPL-3.0-or-later
// The start-up with everything around it in the test's hand: a folder for the program, and a collector that
// writes what a test wants it to write.
#pragma once

#include "app/Startup.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/frmSplash.h"
#include "import/Schema.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/process.h"
#include "tests/support/Database.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeEcho.h"
#include "tests/support/FakePrinting.h"
#include "tests/support/FixedClock.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <QApplication>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

inline constexpr const char* kApplication = "Velmora";
inline constexpr const char* kSection = "Settings";

inline std::string MachineFile(const std::string& name) {
    return "[NET]\r\nINFO0=" + name + "|ann|20011120|08:00:00|0|\r\n[OS]\r\nINFO0=1|\r\n";
}

/// Programs that are only noted, and that end when the test says so.
class FakeProcesses final : public Processes {
public:
    std::unique_ptr<RunningProcess> Shell(const std::string& path,
                                          const std::vector<std::string>& arguments) override {
        if (failure)
            throw RunTimeError(*failure);
        starts += path + "(" + std::to_string(arguments.size()) + ")";
        onStart();
        return std::make_unique<Process>(exitCodes);
    }

    /// What was started, each with the number of its arguments.
    std::string starts;
    /// What a program answers to ExitCode, call by call; the last one stays.
    std::deque<int> exitCodes{0};
    /// Writes what the real program would write.
    std::function<void()> onStart;
    /// Raised instead of starting anything.
    std::optional<RunTimeError> failure;

private:
    class Process final : public RunningProcess {
    public:
        explicit Process(std::deque<int> exitCodes) : mExitCodes(std::move(exitCodes)) {}
        int ExitCode() override {
            const int code = mExitCodes.front();
            if (mExitCodes.size() > 1)
                mExitCodes.pop_front();
            return code;
        }

    private:
        std::deque<int> mExitCodes;
    };
};

class StartupTest : public testing::Test {
protected:
    StartupTest() : settings(folder.Path("settings.ini")) {
        CreateDatabase(folder.Path("Template.sdb"));
        processes.onStart = [this] { folder.WriteFile("INF/PC1.ORG", MachineFile("PC1")); };
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
                                            desktop, printing, probes, *instance);
        return startup->Main();
    }

    static QWidget* MainWindow() { return FormRegistry::Instance().Find("frmMain"); }

    static std::string Machines() { return RowsOf(*gConnection, "SELECT COMPUTERNAME FROM Net"); }

    TemporaryFolder folder;
    SettingsStore settings;
    QueuedPrompts prompts;
    FakeProcesses processes;
    FakeDesktop desktop;
    FakePrinting printing;
    FakeEchoProbes probes;
    FixedClock clock{2001, 11, 20};
    std::unique_ptr<SingleInstance> instance;
    std::unique_ptr<Startup> startup;
};
