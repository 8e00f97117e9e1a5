// SPDX-License-Identifier: GPL-3.0-or-later
// The rule that decides whether an inventory file counts as changed since it was last imported.
#pragma once

#include "platform/text.h"

#include <optional>
#include <string_view>

/// The setting: how much younger than the stored stamp a file must be. Units: 0 seconds, 1 minutes,
/// 2 hours, 3 days.
struct TimeFrame {
    int unit = 0;
    int count = 0;
};

/// Whether a file with the stamp `file` is imported, where the row holds `date` (yyyymmdd) and `time`
/// (hh:mm:ss). Nothing stored passes always. The frame of units 0 to 2 is a time of day, so a count of 60
/// seconds or minutes, or of 24 hours, and more is none, and then nothing passes; the options window keeps
/// the count sensible.
bool CheckDate(std::string_view date, std::string_view time, LocalTime file, const TimeFrame& frame);
