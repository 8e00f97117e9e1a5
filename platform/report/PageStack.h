// SPDX-License-Identifier: GPL-3.0-or-later
// Where the pages of a report stand when they are stacked below each other on the screen, all of one size.
// Plain arithmetic in pixels from the top of the first page's margin; places are 64-bit wide, since a million
// pages at 400 % are higher than what a scroll bar counts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace report {

struct PageStack {
    /// Space around and between pages.
    static constexpr std::int64_t kGap = 12;

    std::size_t count = 0;
    std::int64_t pageWidth = 0;
    std::int64_t pageHeight = 0;

    std::int64_t Step() const { return pageHeight + kGap; }
    std::int64_t Height() const { return kGap + static_cast<std::int64_t>(count) * Step(); }
    std::int64_t Width() const { return pageWidth + 2 * kGap; }

    std::int64_t TopOf(std::size_t page) const { return kGap + static_cast<std::int64_t>(page) * Step(); }
    /// The page at height `y`, or the one below the gap there; the nearest beyond either end.
    std::size_t PageAt(std::int64_t y) const {
        if (count == 0)
            return 0;
        const std::int64_t page = std::max<std::int64_t>(y, 0) / Step();
        return std::min(static_cast<std::size_t>(page), count - 1);
    }
};

} // namespace report
