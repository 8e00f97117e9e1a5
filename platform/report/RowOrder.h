// SPDX-License-Identifier: GPL-3.0-or-later
// The order of a report's rows where groups sort them, and the finding of rows by their join value. Both are
// fed row by row as a report reads, and keep a number per row beside each distinct value once.
#pragma once

#include "platform/report/Document.h"
#include "platform/report/RowStore.h"

#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace report {

/// Whether two values belong to one group: they read alike under its format, letters' case aside.
bool IsSameGroup(const Group& group, const ADODB::Value& a, const ADODB::Value& b);

/// Numbers values in the order in which they come; values that read alike, letters' case aside, have one
/// number.
class ValueIndex {
public:
    explicit ValueIndex(Format format = {}, bool isFlag = false)
        : mFormat(std::move(format)), mIsFlag(isFlag) {}

    std::uint32_t Number(const ADODB::Value& value);
    /// The place of each number among all in ascending order: what shows nothing, numbers, texts without
    /// regard to case.
    std::vector<std::uint32_t> Ranks() const;

private:
    Format mFormat;
    bool mIsFlag;
    std::unordered_map<std::string, std::uint32_t> mNumbers;
    std::string mKey;
};

class RowOrder {
public:
    explicit RowOrder(std::span<const Group> groups);

    /// Whether any group sorts. If not, rows stay as they come and need not be added.
    bool IsSorting() const { return !mLevels.empty(); }
    void Add(const Row& row);
    /// The rows in order, from 0. Rows of one value keep the order in which they came, and a group that takes
    /// rows as they come keeps it within the group around it. Forgets what was added.
    std::vector<std::uint32_t> Take();

private:
    struct Level {
        Group group;
        ValueIndex values;
        std::vector<std::uint32_t> keys;
    };
    /// Down to the innermost level that sorts.
    std::vector<Level> mLevels;
};

class JoinIndex {
public:
    void Add(const ADODB::Value& value);
    /// Makes the rows findable, in the order of the rows `order`, or as they were added where it is empty.
    void Close(std::span<const std::uint32_t> order);
    /// Places in the order, from 0, of the rows that were added with `value`, without regard to case, a
    /// number as the text that it reads. None for Null.
    std::span<const std::uint32_t> Find(const ADODB::Value& value) const;

private:
    std::unordered_map<std::string, std::uint32_t> mNumbers;
    std::vector<std::uint32_t> mNumberOfRow;
    std::vector<std::uint32_t> mStarts;
    std::vector<std::uint32_t> mRows;
};

} // namespace report
