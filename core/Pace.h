// SPDX-License-Identifier: GPL-3.0-or-later
// How often the progress of long work is shown. Files and rows pass faster than anybody reads, and
// painting each would take longer than the work on it.
#pragma once

#include <QElapsedTimer>

class Pace {
public:
    /// Whether a twentieth of a second has passed since this was last true; the first time it is.
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
