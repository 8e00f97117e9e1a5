// SPDX-License-Identifier: GPL-3.0-or-later
// The groups of a report: where they begin, how many rows they have, and what is summed over them. Kept
// small, since a report may have a million; titles are read from the rows when they are asked for. Internal
// to the layout.
#pragma once

#include "platform/report/Sum.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace report {

class GroupIndex {
public:
    struct Entry {
        std::uint32_t firstRow = 0;
        std::uint32_t rowCount = 0;
        std::uint32_t page = 0;
    };
    /// A group by its level and its number within the level.
    struct Place {
        std::size_t level = 0;
        std::size_t number = 0;
    };

    GroupIndex(std::size_t levels, std::size_t sums);

    /// Groups of the levels from `level` inwards begin with `row`.
    void Begin(std::size_t level, std::size_t row);
    /// Counts a row for the groups that are open.
    void Count(std::span<const Sum> numbers);
    /// The page of the groups that have begun last, from `level` inwards.
    void SetPage(std::size_t level, std::size_t page);

    /// Groups begun so far, outer ones before what is in them.
    std::size_t Size() const { return mOrder.size(); }
    Place At(std::size_t index) const { return {mOrder[index].level, mOrder[index].number}; }

    const Entry& Of(Place place) const { return mLevels[place.level].groups[place.number]; }
    std::span<const Sum> SumsOf(Place place) const;
    /// The group of `level` that `row` belongs to.
    Place Find(std::size_t level, std::size_t row) const;

private:
    struct Level {
        std::vector<Entry> groups;
        std::vector<Sum> sums;
    };
    struct Ordered {
        std::uint32_t number = 0;
        std::uint8_t level = 0;
    };
    std::vector<Level> mLevels;
    std::vector<Ordered> mOrder;
    std::size_t mSums;
};

} // namespace report
