// SPDX-License-Identifier: GPL-3.0-or-later
// The start-up: refuses a second copy, acts on the two switches, shows the splash, runs the local collector
// to its end, rebuilds the database from the template, imports the collector's folder and shows the main
// window. When Main returns, the windows' events drive the program.
#pragma once

#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/echo.h"
#include "platform/process.h"
#include "platform/prompts.h"
#include "platform/settings.h"
#include "platform/singleinstance.h"

#include <memory>
#include <string>

class frmMain;
namespace report {
class Printing;
}

class Startup {
public:
    /// `programFolder` holds the collector, the template and the folder INF, and gets the database.
    /// `commandLine` is the whole of it as one text.
    Startup(std::string programFolder, std::string commandLine, SettingsStore& settings, Prompts& prompts,
            Processes& processes, const Clock& clock, Desktop& desktop, report::Printing& printing,
            EchoProbes& probes, SingleInstance& instance);
    ~Startup();
    Startup(const Startup&) = delete;
    Startup& operator=(const Startup&) = delete;

    /// The entry routine. False where the program is to end at once, since another copy runs. Where the
    /// template is missing it returns without a main window, and where the import fails with a hidden one.
    /// Failures of the collector's start and of the copying of files are not caught.
    bool Main();

    /// The exit status where another copy runs that can't be brought forward, which is told on the error
    /// stream alone.
    static constexpr int kNotBroughtForward = 2;
    /// What the program ends with where it ends at once.
    int ExitStatus() const { return mExitStatus; }

private:
    void ApplySwitch();
    void ShowSplash();
    void RunCollector();
    bool RebuildDatabase();
    bool Import();
    std::string Beside(const char* name) const;

    std::string mProgramFolder;
    std::string mCommandLine;
    SettingsStore& mSettings;
    Prompts& mPrompts;
    Processes& mProcesses;
    const Clock& mClock;
    Desktop& mDesktop;
    report::Printing& mPrinting;
    EchoProbes& mProbes;
    SingleInstance& mInstance;
    std::unique_ptr<frmMain> mForm;
    int mExitStatus = 0;
};
