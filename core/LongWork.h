// SPDX-License-Identifier: GPL-3.0-or-later
// Work that may take longer than a person waits: shows the main window's hourglass, and lets windows repaint
// and timers fire in between, with user input held back until the work is over. ShownWork lets the window's
// bar tell how far it has come. Work must be over, or paused, before a box is shown.
// What keeps the disk or the database engine for long in one call, the removal of a large file too, goes
// aside instead (see Aside).
#pragma once

#include "core/Pace.h"

#include <functional>

class MainForm;

class LongWork {
public:
    /// `form` must outlive the work. Work within work leaves the outer one's hourglass.
    explicit LongWork(MainForm& form);
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    /// To be called at every row; it pumps events about every 50 milliseconds, and tells when it did.
    bool Step();
    /// As Step, for what comes less often than rows do.
    bool Look();
    /// Asks something of the user in between.
    void Pause(const std::function<void()>& ask);
    /// Runs `call` to its end on a thread of its own, and pumps events meanwhile; see RunAside.
    static void Aside(const std::function<void()>& call);
    /// Pumps events once: for those who take a `wait`.
    static void LetPaint();
    /// Whether any is under way, so that a timer's handler does not start another one within it.
    static bool IsRunning();

private:
    MainForm& mForm;
    Pace mPace{Pace::Start::Waiting};
    unsigned mSteps = 0;
};

class ShownWork {
public:
    /// `form` must outlive the work.
    explicit ShownWork(MainForm& form) : mWork(form), mForm(form) {}
    /// Empties the bar, after a failure too.
    ~ShownWork();
    ShownWork(const ShownWork&) = delete;
    ShownWork& operator=(const ShownWork&) = delete;

    /// To be called at every row, with how many of `all` are done; of bytes there may be any number. The bar
    /// moves when it can be seen to, since each move repaints it.
    void Step(double done, double all);
    /// As Step, for what comes less often than rows do.
    void Look(double done, double all);
    void Pause(const std::function<void()>& ask) { mWork.Pause(ask); }

private:
    void Show(double done, double all);

    LongWork mWork;
    MainForm& mForm;
};
