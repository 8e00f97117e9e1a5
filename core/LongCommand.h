// SPDX-License-Identifier: GPL-3.0-or-later
// The time that a command of the main window takes, where that may be longer than a person waits: shows the
// hourglass, and lets windows repaint in between, with user input held back. It must be over before a box is
// shown, which needs the usual pointer.
#pragma once

#include "core/MainForm.h"
#include "core/Pace.h"
#include "platform/application.h"

class LongCommand {
public:
    explicit LongCommand(MainForm& form) : mForm(form) { mForm.Pointer(MousePointer::Hourglass); }
    ~LongCommand() { mForm.Pointer(MousePointer::Default); }
    LongCommand(const LongCommand&) = delete;
    LongCommand& operator=(const LongCommand&) = delete;

    /// To be called at every row, file or machine.
    void Step() {
        if (mPace.IsDue())
            Application::LetEventsThrough();
    }

private:
    MainForm& mForm;
    Pace mPace;
};
