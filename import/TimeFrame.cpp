// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/TimeFrame.h"

#include <algorithm>

namespace {

bool AreDigits(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// The time of day that "hh:mm:ss" writes.
std::optional<std::chrono::seconds> TimeOfDay(std::string_view text) {
    if (text.size() != 8)
        return std::nullopt;
    const std::string_view hours = text.substr(0, 2);
    const std::string_view minutes = text.substr(3, 2);
    const std::string_view seconds = text.substr(6, 2);
    if (!AreDigits(hours) || !AreDigits(minutes) || !AreDigits(seconds))
        return std::nullopt;
    const int h = static_cast<int>(Val(hours));
    const int m = static_cast<int>(Val(minutes));
    const int s = static_cast<int>(Val(seconds));
    if (h > 23 || m > 59 || s > 59)
        return std::nullopt;
    return std::chrono::hours(h) + std::chrono::minutes(m) + std::chrono::seconds(s);
}

std::optional<std::chrono::seconds> Duration(const TimeFrame& frame) {
    const std::string count = FormatNumber(frame.count, "00");
    switch (frame.unit) {
        case 0:
            return TimeOfDay("00:00:" + count);
        case 1:
            return TimeOfDay("00:" + count + ":00");
        case 2:
            return TimeOfDay(count + ":00:00");
        case 3:
            return std::chrono::days(frame.count);
        default:
            return std::nullopt;
    }
}

} // namespace

bool CheckDate(std::string_view date, std::string_view time, LocalTime file, const TimeFrame& frame) {
    if (date.empty() || time.empty())
        return true;
    const std::optional<std::chrono::local_days> day = ParseStoredDate(date);
    const std::optional<std::chrono::seconds> timeOfDay = TimeOfDay(time);
    const std::optional<std::chrono::seconds> duration = Duration(frame);
    return day && timeOfDay && duration && file >= *day + *timeOfDay + *duration;
}
