// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/RowOrder.h"

#include "platform/text.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace report {

namespace {

// The first byte of a key is the kind of its value, in the order in which kinds sort.
constexpr char kNull = 0;
constexpr char kNumber = 1;
constexpr char kText = 2;

void AppendLowerCase(std::string& key, std::string_view text) {
    for (const char c : text)
        key += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

double NumberOf(const std::string& key) {
    double number = 0;
    std::memcpy(&number, key.data() + 1, sizeof number);
    return number;
}

bool IsKeyLess(const std::string& a, const std::string& b) {
    if (a[0] == kNumber && b[0] == kNumber)
        return NumberOf(a) < NumberOf(b);
    return a < b;
}

/// Null's is unlike that of any text.
std::string JoinKey(const ADODB::Value& value) {
    std::string key;
    if (const auto* text = std::get_if<std::string>(&value)) {
        key = "=";
        AppendLowerCase(key, *text);
    } else if (const auto* number = std::get_if<double>(&value)) {
        key = "=" + NumberText(*number);
    }
    return key;
}

} // namespace

bool IsSameGroup(const Group& group, const ADODB::Value& a, const ADODB::Value& b) {
    if (a == b)
        return true;
    const ADODB::Value shown = ShownValue(group.format, a, group.isFlag);
    const ADODB::Value other = ShownValue(group.format, b, group.isFlag);
    const auto* const text = std::get_if<std::string>(&shown);
    const auto* const otherText = std::get_if<std::string>(&other);
    if (text != nullptr && otherText != nullptr)
        return EqualNoCase(*text, *otherText);
    return shown == other;
}

std::uint32_t ValueIndex::Number(const ADODB::Value& value) {
    mKey.clear();
    const ADODB::Value shown = ShownValue(mFormat, value, mIsFlag);
    if (const auto* text = std::get_if<std::string>(&shown)) {
        mKey += kText;
        AppendLowerCase(mKey, *text);
    } else if (const auto* number = std::get_if<double>(&shown)) {
        mKey += kNumber;
        mKey.append(reinterpret_cast<const char*>(number), sizeof *number);
    } else {
        mKey += kNull;
    }
    return mNumbers.try_emplace(mKey, static_cast<std::uint32_t>(mNumbers.size())).first->second;
}

std::vector<std::uint32_t> ValueIndex::Ranks() const {
    std::vector<const std::pair<const std::string, std::uint32_t>*> entries;
    entries.reserve(mNumbers.size());
    for (const auto& entry : mNumbers)
        entries.push_back(&entry);
    std::sort(entries.begin(), entries.end(),
              [](const auto* a, const auto* b) { return IsKeyLess(a->first, b->first); });
    std::vector<std::uint32_t> ranks(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i)
        ranks[entries[i]->second] = static_cast<std::uint32_t>(i);
    return ranks;
}

RowOrder::RowOrder(std::span<const Group> groups) {
    std::size_t sorted = groups.size();
    while (sorted > 0 && groups[sorted - 1].order == SortOrder::AsRead)
        --sorted;
    for (const Group& group : groups.first(sorted))
        mLevels.push_back({group, ValueIndex(group.format, group.isFlag), {}});
}

void RowOrder::Add(const Row& row) {
    for (Level& level : mLevels)
        level.keys.push_back(level.values.Number(row[level.group.field]));
}

std::vector<std::uint32_t> RowOrder::Take() {
    if (mLevels.empty())
        return {};
    std::vector<std::uint32_t> rows(mLevels[0].keys.size());
    std::iota(rows.begin(), rows.end(), 0U);
    // Stretches of rows that agree in all levels so far, each by its end.
    std::vector<std::uint32_t> ends = {static_cast<std::uint32_t>(rows.size())};
    for (Level& level : mLevels) {
        if (level.group.order != SortOrder::AsRead) {
            const std::vector<std::uint32_t> ranks = level.values.Ranks();
            const auto last = static_cast<std::uint32_t>(ranks.size());
            for (std::uint32_t& key : level.keys)
                key = level.group.order == SortOrder::Ascending ? ranks[key] : last - ranks[key];
        }
        std::vector<std::uint32_t> finerEnds;
        std::uint32_t begin = 0;
        for (const std::uint32_t end : ends) {
            if (level.group.order != SortOrder::AsRead)
                std::stable_sort(
                    rows.begin() + begin, rows.begin() + end,
                    [&keys = level.keys](std::uint32_t a, std::uint32_t b) { return keys[a] < keys[b]; });
            for (std::uint32_t i = begin + 1; i < end; ++i)
                if (level.keys[rows[i]] != level.keys[rows[i - 1]])
                    finerEnds.push_back(i);
            finerEnds.push_back(end);
            begin = end;
        }
        ends = std::move(finerEnds);
        level.values = ValueIndex();
        level.keys = {};
    }
    return rows;
}

void JoinIndex::Add(const ADODB::Value& value) {
    mNumberOfRow.push_back(
        mNumbers.try_emplace(JoinKey(value), static_cast<std::uint32_t>(mNumbers.size())).first->second);
}

void JoinIndex::Close(std::span<const std::uint32_t> order) {
    const std::size_t count = mNumberOfRow.size();
    const auto numberAt = [&](std::size_t place) {
        return mNumberOfRow[order.empty() ? place : order[place]];
    };
    mStarts.assign(mNumbers.size() + 1, 0);
    for (const std::uint32_t number : mNumberOfRow)
        ++mStarts[number + 1];
    std::partial_sum(mStarts.begin(), mStarts.end(), mStarts.begin());
    mRows.resize(count);
    std::vector<std::uint32_t> next(mStarts.begin(), mStarts.end() - 1);
    for (std::size_t place = 0; place < count; ++place)
        mRows[next[numberAt(place)]++] = static_cast<std::uint32_t>(place);
    mNumberOfRow = {};
}

std::span<const std::uint32_t> JoinIndex::Find(const ADODB::Value& value) const {
    if (ADODB::IsNull(value) || mStarts.empty())
        return {};
    const auto found = mNumbers.find(JoinKey(value));
    if (found == mNumbers.end())
        return {};
    return std::span(mRows).subspan(mStarts[found->second],
                                    mStarts[found->second + 1] - mStarts[found->second]);
}

} // namespace report
