// SPDX-License-Identifier: GPL-3.0-or-later
// A clock that a test sets.
#pragma once

#include "platform/clock.h"

class FixedClock final : public Clock {
public:
    explicit FixedClock(LocalTime now) : mNow(now) {}
    /// Midnight of a date, such as 2001y / 11 / 2.
    explicit FixedClock(std::chrono::year_month_day date) : mNow(std::chrono::local_days(date)) {}

    LocalTime Now() const override { return mNow; }
    void Set(LocalTime now) { mNow = now; }

private:
    LocalTime mNow;
};
