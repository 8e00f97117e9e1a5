// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a list as bytes: a list of every program of every machine has a million of them. Rows are
// appended only, in blocks that never move, and all go at once. A row is its icon, the kind of its key, the
// number of its cells, then the cells, each as its length and its bytes; a key that is not computed is the
// first of them.
#pragma once

#include "browser/ImageKeys.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class ListRows {
public:
    static constexpr int kMostColumns = 254;

    /// See ListSink.
    void Add(std::string_view key, std::string_view text, Image icon);
    void AddCounted(std::string_view machine, std::string_view keyEnd, std::string_view text, Image icon);
    /// Raises error 5 before the first row and for a column that no row can have.
    void SetSubItem(int column, std::string_view text);
    /// Forgets the rows and gives their memory back.
    void Clear();

    std::size_t Count() const { return mRows.size(); }
    std::string Key(std::size_t row) const;
    /// Empty for a sub-item that was never set.
    std::string_view Text(std::size_t row, int column) const;
    Image Icon(std::size_t row) const;
    /// Whether `test` holds for any cell of the row.
    template <class Test>
    bool AnyCell(std::size_t row, const Test& test) const {
        for (Cells cells = TextsOf(mRows[row]); !cells.AtEnd();)
            if (test(cells.Next()))
                return true;
        return false;
    }
    /// Bytes that the rows take, with what is reserved.
    std::size_t MemoryUsed() const;

private:
    /// Reads the cells of a row one after the other.
    class Cells {
    public:
        explicit Cells(const char* row) : mLeft(static_cast<unsigned char>(row[kCells])), mAt(row + kHead) {}
        bool AtEnd() const { return mLeft == 0; }
        std::string_view Next() {
            std::size_t length = 0;
            unsigned byte = kMoreBit;
            for (unsigned shift = 0; (byte & kMoreBit) != 0; shift += kLengthBits) {
                byte = static_cast<unsigned char>(*mAt++);
                length |= static_cast<std::size_t>(byte & (kMoreBit - 1)) << shift;
            }
            const std::string_view cell(mAt, length);
            mAt += length;
            --mLeft;
            return cell;
        }

    private:
        unsigned mLeft;
        const char* mAt;
    };
    struct KeySlot {
        std::uint32_t hash;
        /// Row number plus one; 0 marks a free slot.
        std::uint32_t row;
    };
    /// Places in a row's head, and its size.
    static constexpr std::size_t kIcon = 0;
    static constexpr std::size_t kKey = 1;
    static constexpr std::size_t kCells = 2;
    static constexpr std::size_t kHead = 3;
    /// The kinds of keys: stored as a cell, or computed with the end mKeyEnds[kind - 1].
    static constexpr char kStored = 0;
    static constexpr std::size_t kMostKeyEnds = 100;

    static constexpr unsigned kLengthBits = 7;
    static constexpr unsigned kMoreBit = 1U << kLengthBits;

    static Cells TextsOf(const char* row) {
        Cells cells(row);
        if (row[kKey] == kStored)
            cells.Next();
        return cells;
    }
    void Begin(Image icon, char keyKind);
    char KeyKind(std::string_view keyEnd);
    void Append(std::string_view cell);
    /// Moves the last row to a new block where the present one has no room left for it.
    void Reserve(std::size_t bytes) {
        if (static_cast<std::size_t>(mLimit - mEnd) < bytes)
            MoveToNewBlock(bytes);
    }
    void MoveToNewBlock(std::size_t bytes);
    void SetAgain(int column, std::string_view text);
    void EnterKey(std::string_view key);
    void GrowKeys();

    std::vector<std::unique_ptr<char[]>> mBlocks;
    std::size_t mBlockBytes = 0;
    /// The free rest of the last block.
    char* mEnd = nullptr;
    char* mLimit = nullptr;
    std::deque<char*> mRows;
    /// Of computed keys; mostly one.
    std::vector<std::string> mKeyEnds;
    /// Hash set of the rows whose keys are compared, by open addressing; its size is a power of two.
    std::vector<KeySlot> mKeys;
    std::size_t mKeyCount = 0;
};
