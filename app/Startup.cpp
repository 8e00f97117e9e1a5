// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Startup.h"

#include "app/ImportProgress.h"
#include "browser/frmMain.h"
#include "core/CReadWriteEasyReg.h"
#include "core/ConsoleSettings.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/LongWork.h"
#include "core/MainForm.h"
#include "core/frmSplash.h"
#include "import/cSinImport.h"
#include "platform/files.h"

#include <QApplication>
#include <QThread>
#include <QWidget>

#include <iostream>

namespace {

constexpr const char* kPassword = "brennickworks";
constexpr int kPollMilliseconds = 500;

void ScreenPointer(MousePointer pointer) {
    if (pointer == MousePointer::Hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

/// Brings forward whatever windows there are; a box that waits for its answer comes last, and so on top.
void RaiseWindows() {
    QWidgetList windows = QApplication::topLevelWidgets();
    windows.append(QApplication::activeModalWidget());
    for (QWidget* window : windows)
        if (window != nullptr && window->isVisible() && window->windowType() != Qt::ToolTip) {
            window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
            window->raise();
            window->activateWindow();
        }
}

/// Takes the top-most splash away before a box, which it would cover.
class UncoveredPrompts final : public Prompts {
public:
    explicit UncoveredPrompts(Prompts& prompts) : mPrompts(prompts) {}

    MsgBoxAnswer MsgBox(const std::string& text, int style, const std::string& title) override {
        return Uncovered().MsgBox(text, style, title);
    }
    std::string InputBox(const std::string& prompt, const std::string& title,
                         const std::string& initial) override {
        return Uncovered().InputBox(prompt, title, initial);
    }
    std::string OpenFile(const FileDialog& dialog) override { return Uncovered().OpenFile(dialog); }
    std::string SaveFile(const FileDialog& dialog) override { return Uncovered().SaveFile(dialog); }
    std::string BrowseForFolder(const std::string& title, const std::string& startFolder) override {
        return Uncovered().BrowseForFolder(title, startFolder);
    }
    void Beep() override { mPrompts.Beep(); }

private:
    Prompts& Uncovered() {
        FormRegistry::Instance().Unload("frmSplash");
        return mPrompts;
    }

    Prompts& mPrompts;
};

} // namespace

Startup::Startup(std::string programFolder, std::string commandLine, SettingsStore& settings,
                 Prompts& prompts, Processes& processes, const Clock& clock, Desktop& desktop,
                 report::Printing& printing, EchoProbes& probes, SingleInstance& instance)
    : mProgramFolder(std::move(programFolder)),
      mCommandLine(std::move(commandLine)),
      mSettings(settings),
      mPrompts(prompts),
      mProcesses(processes),
      mClock(clock),
      mDesktop(desktop),
      mPrinting(printing),
      mProbes(probes),
      mInstance(instance) {}

Startup::~Startup() {
    gMainForm = nullptr;
}

bool Startup::Main() {
    gDatabasePassword = kPassword;
    if (mInstance.IsPrior()) {
        // A desktop that finds windows by their titles must find the first copy's, not this one's.
        QApplication::setApplicationDisplayName("Close This one");
        if (!mInstance.ActivateFirst()) {
            mExitStatus = kNotBroughtForward;
            std::cerr << "Velmora: another copy already runs from " << mProgramFolder
                      << " and can not be brought forward. It may be another account's, or another program "
                         "may hold a lock on the folder."
                      << std::endl;
        }
        return false;
    }
    mInstance.Listen(RaiseWindows);
    ApplySwitch();
    ShowSplash();
    RunCollector();
    if (frmSplash* splash = frmSplash::Loaded())
        splash->TimerEnabled(true);

    ScreenPointer(MousePointer::Hourglass);
    if (!RebuildDatabase())
        return true;
    mForm =
        std::make_unique<frmMain>(mSettings, mPrompts, mClock, mDesktop, mPrinting, mProbes, mProgramFolder);
    mForm->OnExit([] { QApplication::exit(0); });
    gMainForm = mForm.get();
    mForm->Load();
    mForm->OpenSinDatabase();
    const bool isImported = Import();
    if (!isImported) {
        // The window stays loaded and hidden, and with it the program.
        UncoveredPrompts(mPrompts).MsgBox("Failed to Import INF Files", MsgBoxStyle::kCritical, "Import");
        ScreenPointer(MousePointer::Default);
        return true;
    }
    ScreenPointer(MousePointer::Default);
    mForm->OpenSinDatabase();
    mForm->show();
    return true;
}

void Startup::ApplySwitch() {
    CReadWriteEasyReg registry(mSettings);
    if (mCommandLine == "\\CLEAR") {
        if (registry.OpenRegistry(HKEY_CURRENT_USER, ConsoleSettings::kApplication)) {
            registry.DeleteDirectory(ConsoleSettings::kSection);
            registry.CloseRegistry();
        }
    } else if (mCommandLine == "\\PASSWORD") {
        if (registry.OpenRegistry(HKEY_CURRENT_USER, std::string(ConsoleSettings::kApplication) + "\\" +
                                                         ConsoleSettings::kSection)) {
            registry.DeleteValue("USER_LI");
            registry.CloseRegistry();
        }
    }
}

void Startup::ShowSplash() {
    auto* const splash = new frmSplash;
    splash->Status("Please Wait");
    splash->show();
    splash->repaint();
    splash->TimerEnabled(false);
}

void Startup::RunCollector() {
    const std::unique_ptr<RunningProcess> collector =
        mProcesses.Shell(FindFile(mProgramFolder, "Movanta.exe").value_or(Beside("Movanta.exe")), {});
    int exitCode = RunningProcess::kStillActive;
    do {
        exitCode = collector->ExitCode();
        QApplication::processEvents();
        QThread::msleep(kPollMilliseconds);
    } while (exitCode == RunningProcess::kStillActive);
}

bool Startup::RebuildDatabase() {
    const std::string database = Beside("Demodb.mdb");
    const std::optional<std::string> emptyDatabase = FindFile(mProgramFolder, "Template.sdb");
    if (!emptyDatabase) {
        UncoveredPrompts(mPrompts).MsgBox(
            "Movanta Demo has not been installed properly!\r\n'Template.sdb' file is missing from "
            "the '" +
                mProgramFolder + "' folder. Please re-install the MOVA admin module.",
            MsgBoxStyle::kQuestion, "Template.sdb Not Found");
        return false;
    }
    LongWork::Aside([&] { DeleteDatabase(database); });
    CopyFile(*emptyDatabase, database);
    gDatabasePath = WithoutNuls(database);
    return true;
}

bool Startup::Import() {
    ImportProgress progress;
    UncoveredPrompts prompts(mPrompts);
    cSinImport import(gConnection, prompts, mClock, {gImportTime, gImportTimeNum}, &progress);
    bool noData = false;
    return import.ImportInfData(FolderOnDisk(Beside("INF")), "", noData);
}

std::string Startup::Beside(const char* name) const {
    return JoinPath(mProgramFolder, name);
}
