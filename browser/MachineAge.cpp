// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/MachineAge.h"

#include "platform/errors.h"

#include <chrono>

namespace {

double DateNumber(LocalTime moment) {
    return Val(FormatDate(moment, "yyyymmdd"));
}

/// A text such as "9E999" is no date either; it counts as the oldest.
double Reading(std::string_view logonDate) {
    try {
        return Val(logonDate);
    } catch (const RunTimeError&) {
        return 0;
    }
}

} // namespace

AgeScale::AgeScale(LocalTime now)
    : mToday(DateNumber(now)),
      mYesterday(DateNumber(now - std::chrono::days(1))),
      mWeekAgo(DateNumber(now - std::chrono::days(7))) {}

int AgeScale::Age(std::string_view logonDate) const {
    const double logon = Reading(logonDate);
    if (logon >= mToday)
        return 1;
    if (logon >= mYesterday)
        return 2;
    return logon >= mWeekAgo ? 3 : 4;
}
