// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/GroupIndex.h"

#include <algorithm>

namespace report {

GroupIndex::GroupIndex(std::size_t levels, std::size_t sums) : mLevels(levels), mSums(sums) {}

void GroupIndex::Begin(std::size_t level, std::size_t row) {
    for (; level < mLevels.size(); ++level) {
        Level& begun = mLevels[level];
        mOrder.push_back({static_cast<std::uint32_t>(begun.groups.size()), static_cast<std::uint8_t>(level)});
        begun.groups.push_back({static_cast<std::uint32_t>(row), 0, 0});
        begun.sums.resize(begun.sums.size() + mSums);
    }
}

void GroupIndex::Count(std::span<const Sum> numbers) {
    for (Level& level : mLevels) {
        ++level.groups.back().rowCount;
        for (std::size_t i = 0; i < mSums; ++i)
            level.sums[level.sums.size() - mSums + i].Add(numbers[i]);
    }
}

void GroupIndex::SetPage(std::size_t level, std::size_t page) {
    for (; level < mLevels.size(); ++level)
        mLevels[level].groups.back().page = static_cast<std::uint32_t>(page);
}

std::span<const Sum> GroupIndex::SumsOf(Place place) const {
    return std::span(mLevels[place.level].sums).subspan(place.number * mSums, mSums);
}

GroupIndex::Place GroupIndex::Find(std::size_t level, std::size_t row) const {
    const std::vector<Entry>& groups = mLevels[level].groups;
    const auto behind =
        std::upper_bound(groups.begin(), groups.end(), row,
                         [](std::size_t sought, const Entry& group) { return sought < group.firstRow; });
    return {level, static_cast<std::size_t>(behind - groups.begin()) - 1};
}

} // namespace report
