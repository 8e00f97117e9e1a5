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
    Begin(icon, kStored);
    Append(key);
    Append(text);
}

void ListRows::AddCounted(std::string_view machine, std::string_view keyEnd, std::string_view text,
                          Image icon) {
    const char kind = machine == text ? KeyKind(keyEnd) : kStored;
    const std::size_t number = mRows.size();
    Begin(icon, kind);
    if (kind == kStored)
        Append(std::string(machine) + std::string(keyEnd) + std::to_string(number));
    Append(text);
}

/// kStored where there are too many.
char ListRows::KeyKind(std::string_view keyEnd) {
    const auto known = std::find(mKeyEnds.begin(), mKeyEnds.end(), keyEnd);
    const auto place = static_cast<std::size_t>(known - mKeyEnds.begin());
    if (known == mKeyEnds.end()) {
        if (place == kMostKeyEnds)
            return kStored;
        mKeyEnds.emplace_back(keyEnd);
    }
    return static_cast<char>(place + 1);
}

void ListRows::Begin(Image icon, char keyKind) {
    mRows.push_back(mEnd);
    Reserve(kHead);
    mEnd[kIcon] = static_cast<char>(icon);
    mEnd[kKey] = keyKind;
    mEnd[kCells] = 0;
    mEnd += kHead;
}

void ListRows::SetSubItem(int column, std::string_view text) {
    if (mRows.empty() || column < 1 || column >= kMostColumns)
        Raise(Errors::kInvalidCall);
    const char* const row = mRows.back();
    const int cells = static_cast<unsigned char>(row[kCells]) - (row[kKey] == kStored ? 1 : 0);
    if (column < cells)
        return SetAgain(column, text);
    for (int missing = cells; missing < column; ++missing)
        Append({});
    Append(text);
}

/// The row stands at the store's end, so its cells are written anew.
void ListRows::SetAgain(int column, std::string_view text) {
    char* const row = mRows.back();
    const std::string former(row, mEnd);
    const int changed = column + (row[kKey] == kStored ? 1 : 0);
    mEnd = row + kHead;
    row[kCells] = 0;
    Cells cells(former.data());
    for (int place = 0; !cells.AtEnd(); ++place) {
        const std::string_view cell = cells.Next();
        Append(place == changed ? text : cell);
    }
}

void ListRows::Append(std::string_view cell) {
    Reserve(kLongestLength + cell.size());
    // Kept out of the members meanwhile, which the bytes written might alias.
    char* at = mEnd;
    std::size_t length = cell.size();
    for (; length >= kMoreBit; length >>= kLengthBits)
        *at++ = static_cast<char>((length & (kMoreBit - 1)) | kMoreBit);
    *at++ = static_cast<char>(length);
    if (!cell.empty())
        std::memcpy(at, cell.data(), cell.size());
    mEnd = at + cell.size();
    ++mRows.back()[kCells];
}

void ListRows::MoveToNewBlock(std::size_t bytes) {
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

std::string ListRows::Key(std::size_t row) const {
    const char* const begin = mRows.at(row);
    std::string key(Cells(begin).Next());
    if (begin[kKey] != kStored)
        key += mKeyEnds[static_cast<std::size_t>(begin[kKey]) - 1] + std::to_string(row);
    return key;
}

std::string_view ListRows::Text(std::size_t row, int column) const {
    Cells cells = TextsOf(mRows.at(row));
    for (; column > 0 && !cells.AtEnd(); --column)
        cells.Next();
    return cells.AtEnd() ? std::string_view() : cells.Next();
}

Image ListRows::Icon(std::size_t row) const {
    return static_cast<Image>(mRows.at(row)[kIcon]);
}

std::size_t ListRows::MemoryUsed() const {
    return mBlockBytes + mRows.size() * sizeof(char*) + mKeys.capacity() * sizeof(KeySlot);
}
