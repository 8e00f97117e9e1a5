// SPDX-License-Identifier: GPL-3.0-or-later
// How long ago a machine's user logged on, in the four steps that the machine's image shows. The dates come
// from client PCs: one that is no date must not stop the tree, so it counts as the number it begins with.
#pragma once

#include "platform/text.h"

#include <string_view>

class AgeScale {
public:
    /// The steps are measured from the day of `now`.
    explicit AgeScale(LocalTime now);

    /// 1 for `logonDate` (yyyymmdd) of today or later, 2 for yesterday, 3 for up to 7 days back, else 4.
    int Age(std::string_view logonDate) const;

private:
    double mToday;
    double mYesterday;
    double mWeekAgo;
};
