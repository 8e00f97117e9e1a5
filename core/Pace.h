// SPDX-License-Identifier: GPL-3.0-or-later
// How often the progress of long work is shown. Files and rows pass faster than anybody reads, and
// painting each would take longer than the work on it.
#pragma once

#include <QElapsedTimer>

class Pace {
public:
    /// Milliseconds from one time that is due to the next. With 0 each one is, so that a test need not wait.
    static inline qint64 gInterval = 50;

    enum class Start {
        /// The first time is due.
        Due,
        /// The first time is an interval from now: what is over before needs no progress.
        Waiting,
    };
    explicit Pace(Start start = Start::Due) {
        if (start == Start::Waiting)
            mSinceLast.start();
    }

    /// Whether an interval has passed since this was last true.
    bool IsDue() {
        if (mSinceLast.isValid() && mSinceLast.elapsed() < gInterval)
            return false;
        mSinceLast.start();
        return true;
    }

private:
    QElapsedTimer mSinceLast;
};
