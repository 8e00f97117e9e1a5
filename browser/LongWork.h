// SPDX-License-Identifier: GPL-3.0-or-later
// Work that may take longer than a person waits: shows the hourglass, and lets windows repaint and timers
// fire in between, with user input held back until the work is over.
#pragma once

#include <QElapsedTimer>

class LongWork {
public:
    LongWork();
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    /// To be called at every row; it pumps events about every 50 milliseconds, and tells when it did.
    bool Step();
    /// Whether any is under way, so that a timer's handler does not start another one within it.
    static bool IsRunning();

private:
    QElapsedTimer mSincePump;
    unsigned mSteps = 0;
};
