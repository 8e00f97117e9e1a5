// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Startup.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "platform/Aside.h"
#include "platform/application.h"
#include "platform/files.h"
#include "platform/qtprompts.h"
#include "platform/report/SystemPrinting.h"

#include <QIcon>

int main(int argc, char** argv) {
    const std::string commandLine = CommandLine(argc, argv);
    Application application(argc, argv);
    QtPrompts prompts;
    Application::ShowFailuresBy(&prompts);
    Application::BeforeShowing([] { FormRegistry::Instance().Unload("frmSplash"); });
    Application::AfterShowing([] {
        // Not while a call on it is aside: the engine's log keeps what was committed.
        if (gConnection && !RunsAside())
            gConnection->Close();
    });
    return Application::Guard([&] {
        Application::setWindowIcon(QIcon(":/icons/velmora.svg"));
        SettingsStore settings;
        SystemProcesses processes;
        const SystemClock clock;
        SystemDesktop desktop;
        SystemEchoProbes probes;
        report::SystemPrinting printing(prompts);
        const std::string folder = ProgramFolder();
        SingleInstance instance(folder);
        Startup startup(folder, commandLine, settings, prompts, processes, clock, desktop, printing, probes,
                        instance);
        if (!startup.Main() || FormRegistry::Instance().Windows().empty())
            return startup.ExitStatus();
        prompts.Owner(FormRegistry::Instance().Find("frmMain"));
        FormRegistry::Instance().OnLastUnloaded([] { Application::exit(0); });
        return Application::exec();
    });
}
