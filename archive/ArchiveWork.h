// SPDX-License-Identifier: GPL-3.0-or-later
// The time that packing, unpacking and copying take: the hourglass, the progress bar, and windows that
// repaint meanwhile with user input held back. It must be over, or paused, before a box is shown.
#pragma once

#include "core/MainForm.h"
#include "core/Pace.h"
#include "platform/application.h"

#include <functional>

class ArchiveWork {
public:
    explicit ArchiveWork(MainForm& form) : mForm(form) {
        mForm.Pointer(MousePointer::Hourglass);
        mForm.ProgressMaximum(kSteps);
        mForm.ProgressValue(0);
    }
    ~ArchiveWork() {
        mForm.ProgressValue(0);
        mForm.Pointer(MousePointer::Default);
    }
    ArchiveWork(const ArchiveWork&) = delete;
    ArchiveWork& operator=(const ArchiveWork&) = delete;

    /// To be called often, with the part that is done, from 0 to 1.
    void Step(double done) {
        if (!mPace.IsDue())
            return;
        mForm.ProgressValue(static_cast<int>(done * kSteps));
        Application::LetEventsThrough();
    }

    /// Asks something of the user in between.
    void Pause(const std::function<void()>& ask) {
        mForm.Pointer(MousePointer::Default);
        ask();
        mForm.Pointer(MousePointer::Hourglass);
    }

private:
    static constexpr int kSteps = 1000;

    MainForm& mForm;
    Pace mPace;
};
