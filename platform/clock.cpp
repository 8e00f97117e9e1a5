// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/clock.h"

#include <ctime>

LocalTime ToLocalTime(std::int64_t secondsSinceEpoch) {
    const std::time_t moment = secondsSinceEpoch;
    std::tm parts{};
    localtime_r(&moment, &parts);
    return LocalTime(std::chrono::seconds(secondsSinceEpoch + parts.tm_gmtoff));
}

LocalTime SystemClock::Now() const {
    return ToLocalTime(std::time(nullptr));
}
