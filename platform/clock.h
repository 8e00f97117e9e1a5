// SPDX-License-Identifier: GPL-3.0-or-later
// Today's date and the time of day, behind a seam so that tests can choose them.
#pragma once

#include "platform/text.h"

class Clock {
public:
    virtual ~Clock() = default;
    /// Local time in whole seconds.
    virtual LocalTime Now() const = 0;
};

class SystemClock final : public Clock {
public:
    LocalTime Now() const override;
};

/// The local time of a count of seconds since 1970 in universal time.
LocalTime ToLocalTime(std::int64_t secondsSinceEpoch);
