// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListRows.h"

#include "platform/errors.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <utility>

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 20U;
/// Of a cell's length, in groups of seven bits.
constexpr std::size_t kLongestLength = 10;

std::uint32_t Hash(std::string_view key) {
    const std::size_t hash = std::hash<std::string_view>()(key);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
}

} // namespace

void ListRows::Add(std::string_view key, std::string_view text, Image icon) {
    if (!key.empty())
        EnterKey(key);
    AddCounted(key, text, icon);
}

void ListRows::AddCounted(std::string_view key, std::string_view text, Image icon) {
    mRows.push_back(mEnd);
    Reserve(kHead);
    mEnd[0] = static_cast<char>(icon);
    mEnd[1] = 0;
    mEnd += kHead;
    Append(key);
    Append(text);
}

void ListRows::SetSubItem(int column, std::string_view text) {
    if (mRows.empty() || column < 1 || column >= kMostColumns)
        Raise(Errors::kInvalidCall);
    // The key stands before the cells.
    const int cells = static_cast<unsigned char>(mRows.back()[1]) - 1;
    if (column < cells)
        return SetAgain(column, text);
    for (int missing = cells; missing < column; ++missing)
        Append({});
    Append(text);
}

/// The row stands at the store's end, so its rest is written anew.
void ListRows::SetAgain(int column, std::string_view text) {
    std::vector<std::string> row;
    for (Cells cells(mRows.back()); !cells.AtEnd();)
        row.emplace_back(cells.Next());
    row.at(static_cast<std::size_t>(column) + 1) = text;
    mEnd = mRows.back() + kHead;
    mRows.back()[1] = 0;
    for (const std::string& cell : row)
        Append(cell);
}

void ListRows::Append(std::string_view cell) {
    Reserve(kLongestLength + cell.size());
    std::size_t length = cell.size();
    for (; length >= kMoreBit; length >>= kLengthBits)
        *mEnd++ = static_cast<char>((length & (kMoreBit - 1)) | kMoreBit);
    *mEnd++ = static_cast<char>(length);
    mEnd = std::copy(cell.begin(), cell.end(), mEnd);
    ++mRows.back()[1];
}

/// Moves the last row to a new block where the present one has no room left for it.
void ListRows::Reserve(std::size_t bytes) {
    if (static_cast<std::size_t>(mLimit - mEnd) >= bytes)
        return;
    const auto begun = static_cast<std::size_t>(mEnd - mRows.back());
    const std::size_t size = std::max(kBlock, begun + bytes);
    char* const block = mBlocks.emplace_back(std::make_unique_for_overwrite<char[]>(size)).get();
    mBlockBytes += size;
    if (begun > 0)
        std::memcpy(block, mRows.back(), begun);
    mRows.back() = block;
    mEnd = block + begun;
    mLimit = block + size;
}

void ListRows::EnterKey(std::string_view key) {
    if (mKeyCount * 4 >= mKeys.size() * 3)
        GrowKeys();
    const std::uint32_t hash = Hash(key);
    const std::size_t mask = mKeys.size() - 1;
    std::size_t slot = hash & mask;
    for (; mKeys[slot].row != 0; slot = (slot + 1) & mask)
        if (mKeys[slot].hash == hash && Key(mKeys[slot].row - 1) == key)
            Raise(Errors::kKeyNotUnique, std::string(key));
    mKeys[slot] = {hash, static_cast<std::uint32_t>(mRows.size() + 1)};
    ++mKeyCount;
}

void ListRows::GrowKeys() {
    std::vector<KeySlot> grown(std::max<std::size_t>(mKeys.size() * 2, 64));
    const std::size_t mask = grown.size() - 1;
    for (const KeySlot& entry : mKeys) {
        if (entry.row == 0)
            continue;
        std::size_t slot = entry.hash & mask;
        while (grown[slot].row != 0)
            slot = (slot + 1) & mask;
        grown[slot] = entry;
    }
    mKeys = std::move(grown);
}

void ListRows::Clear() {
    *this = ListRows();
}

std::string_view ListRows::Key(std::size_t row) const {
    return Cells(mRows.at(row)).Next();
}

std::string_view ListRows::Text(std::size_t row, int column) const {
    Cells cells(mRows.at(row));
    cells.Next();
    for (; column > 0 && !cells.AtEnd(); --column)
        cells.Next();
    return cells.AtEnd() ? std::string_view() : cells.Next();
}

Image ListRows::Icon(std::size_t row) const {
    return static_cast<Image>(mRows.at(row)[0]);
}

std::size_t ListRows::MemoryUsed() const {
    return mBlockBytes + mRows.capacity() * sizeof(char*) + mKeys.capacity() * sizeof(KeySlot);
}
