// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/TimeFrame.h"

#include <gtest/gtest.h>

namespace {

constexpr int kSeconds = 0;
constexpr int kMinutes = 1;
constexpr int kHours = 2;

LocalTime Stamp(int day, int hours, int minutes, int seconds) {
    const std::chrono::year_month_day date{std::chrono::year(2001), std::chrono::month(11),
                                           std::chrono::day(static_cast<unsigned>(day))};
    return std::chrono::local_days(date) + std::chrono::hours(hours) + std::chrono::minutes(minutes) +
           std::chrono::seconds(seconds);
}

TEST(CheckDate, AcceptsAFileAsOldAsTheFrameAllows) {
    struct {
        const char* why;
        int unit, count;
        LocalTime file;
        bool passes;
    } cases[] = {
        {"no frame: an unchanged stamp passes", kSeconds, 0, Stamp(2, 8, 0, 0), true},
        {"an older file never", kSeconds, 0, Stamp(2, 7, 59, 59), false},
        {"just inside the frame", kMinutes, 30, Stamp(2, 8, 29, 59), false},
        {"at its end", kMinutes, 30, Stamp(2, 8, 30, 0), true},
        {"hours into the next day", kHours, 23, Stamp(3, 7, 0, 0), true},
        {"sixty minutes are no time of day: never", kMinutes, 60, Stamp(30, 8, 0, 0), false},
        {"nor 24 hours", kHours, 24, Stamp(30, 8, 0, 0), false},
        {"a negative count is none either", kMinutes, -5, Stamp(30, 8, 0, 0), false},
        {"an unknown unit", 4, 0, Stamp(30, 8, 0, 0), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CheckDate("20011102", "08:00:00", c.file, {c.unit, c.count}), c.passes) << c.why;
}

TEST(CheckDate, NothingStoredPassesAndGarbageDoesNot) {
    const LocalTime file = Stamp(2, 8, 0, 0);
    EXPECT_TRUE(CheckDate("", "08:00:00", file, {kMinutes, 60})) << "whatever the frame";
    EXPECT_TRUE(CheckDate("20011102", "", file, {}));
    EXPECT_FALSE(CheckDate("2001110x", "08:00:00", file, {}));
    EXPECT_FALSE(CheckDate("20011102", "8 o'clo", file, {}));
    EXPECT_FALSE(CheckDate("20011102", "25:00:00", file, {}));
}

} // namespace
