// SPDX-License-Identifier: GPL-3.0-or-later
// A clock that a test sets.
#pragma once

#include "platform/clock.h"

class FixedClock final : public Clock {
public:
    explicit FixedClock(LocalTime now) : mNow(now) {}
    /// Midnight of a date.
    FixedClock(int year, unsigned month, unsigned day)
        : mNow(std::chrono::local_days(std::chrono::year(year) / std::chrono::month(month) /
                                       std::chrono::day(day))) {}

    LocalTime Now() const override { return mNow; }
    void Set(LocalTime now) { mNow = now; }

private:
    LocalTime mNow;
};
