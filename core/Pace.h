// SPDX-License-Identifier: GPL-3.0-or-later
// How often the progress of long work is shown. Files and rows pass faster than anybody reads, and
// painting each would take longer than the work on it.
#pragma once

#include <QElapsedTimer>

class Pace {
public:
    enum class Start {
        /// The first time is due.
        Due,
        /// The first time is a twentieth of a second from now: what is over before needs no progress.
        Waiting,
    };
    explicit Pace(Start start = Start::Due) {
        if (start == Start::Waiting)
            mSinceLast.start();
    }

    /// Whether a twentieth of a second has passed since this was last true.
    bool IsDue() {
        constexpr qint64 kInterval = 50; // milliseconds
        if (mSinceLast.isValid() && mSinceLast.elapsed() < kInterval)
            return false;
        mSinceLast.start();
        return true;
    }

private:
    QElapsedTimer mSinceLast;
};
