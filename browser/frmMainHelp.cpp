// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's help, mail and web commands.
#include "browser/Addresses.h"
#include "browser/frmHelp.h"
#include "browser/frmMain.h"
#include "core/FormRegistry.h"
#include "platform/desktop.h"
#include "platform/files.h"

void frmMain::HelpFile(std::string name) {
    mHelpFile = std::move(name);
}

frmHelp* frmMain::OpenHelp() {
    if (mHelpFile.empty()) {
        mPrompts.MsgBox("Unable to display Help Contents. There is no Help associated with this project.",
                        MsgBoxStyle::kInformation, windowTitle().toStdString());
        return nullptr;
    }
    if (QWidget* const loaded = FormRegistry::Instance().Find("frmHelp"))
        return static_cast<frmHelp*>(loaded);
    const std::string path =
        FindFile(mProgramFolder, mHelpFile).value_or(JoinPath(mProgramFolder, mHelpFile));
    // It destroys itself when it is closed.
    return new frmHelp(std::make_unique<HelpBook>(path), mDesktop);
}

void frmMain::mnuHelpContents() {
    if (frmHelp* const help = OpenHelp())
        help->ShowContents();
}

/// Of a dialog; the contents where it has no page of its own.
void frmMain::ShowHelpTopic(const std::string& page) {
    Guarded("Error#", [&] {
        frmHelp* const help = OpenHelp();
        if (help != nullptr && page.empty())
            help->ShowContents();
        else if (help != nullptr)
            help->ShowTopic(page);
    });
}

void frmMain::mnuHelpSearch() {
    if (frmHelp* const help = OpenHelp())
        help->ShowSearch();
}

// A desktop without a program for them is no failure of this one.
void frmMain::mnuZulWeb(int /*index*/) {
    mDesktop.Open(Addresses::kHomePage);
}

void frmMain::mnuZulEmail(int index) {
    mDesktop.Open(Addresses::kMail.at(static_cast<std::size_t>(index)));
}
