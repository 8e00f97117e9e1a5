// SPDX-License-Identifier: GPL-3.0-or-later
// Work that may take longer than a person waits: shows the hourglass, and lets windows repaint and timers
// fire in between, with user input held back until the work is over. ShownWork lets the main window's bar
// tell how far it has come.
#pragma once

#include <QElapsedTimer>

#include <cstddef>

class MainForm;

class LongWork {
public:
    LongWork();
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    /// To be called at every row; it pumps events about every 50 milliseconds, and tells when it did.
    bool Step();
    /// As Step, for what comes less often than rows do.
    bool Look();
    /// Whether any is under way, so that a timer's handler does not start another one within it.
    static bool IsRunning();

private:
    QElapsedTimer mSincePump;
    unsigned mSteps = 0;
};

class ShownWork {
public:
    /// `form` must outlive the work.
    explicit ShownWork(MainForm& form) : mForm(form) {}
    /// Empties the bar, after a failure too.
    ~ShownWork();
    ShownWork(const ShownWork&) = delete;
    ShownWork& operator=(const ShownWork&) = delete;

    /// To be called at every row. The bar moves when it can be seen to, since each move repaints it.
    void Step(std::size_t done, std::size_t all);
    /// As Step, for what comes less often than rows do.
    void Look(std::size_t done, std::size_t all);

private:
    void Show(std::size_t done, std::size_t all);

    LongWork mWork;
    MainForm& mForm;
};
