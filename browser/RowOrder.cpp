// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/RowOrder.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>
#include <tuple>

namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);

/// The eight bytes of `text` at `offset` with ASCII letters in lower case, as a number that orders as they
/// do. Bytes behind the text's end count as 0.
std::uint64_t FoldedWord(std::string_view text, std::size_t offset) {
    if (offset >= text.size())
        return 0;
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + offset, std::min(kWord, text.size() - offset));
    // Of each byte the high bit tells whether it is from 'A' to 'Z'; shifted, it is the bit of the case.
    constexpr std::uint64_t kEach = 0x0101010101010101U;
    constexpr std::uint64_t kHigh = kEach * 0x80U;
    const std::uint64_t low = word & ~kHigh;
    const std::uint64_t fromA = low + kEach * (0x80U - 'A');
    const std::uint64_t behindZ = low + kEach * (0x7FU - 'Z');
    word |= ((fromA ^ behindZ) & ~word & kHigh) >> 2U;
    if constexpr (std::endian::native == std::endian::little)
        word = __builtin_bswap64(word);
    return word;
}

struct Entry {
    std::uint64_t word;
    std::string_view text;
    std::uint32_t row;
};
using Entries = std::vector<Entry>;

/// Entries that are equal in all words before `offset`.
struct Run {
    Entries::iterator begin;
    Entries::iterator end;
    std::size_t offset;
};

/// Sorts word by word: most comparisons are of two numbers that lie side by side, where comparing the texts
/// would fetch both from all over the memory. Lists repeat their texts, a program's name on every machine, so
/// runs of equal words are long and mostly need no more than a look.
class Sorter {
public:
    explicit Sorter(bool isDescending) : mFlip(isDescending ? ~std::uint64_t{0} : 0) {}

    void Sort(Entries& entries) {
        mRuns.push_back({entries.begin(), entries.end(), 0});
        while (!mRuns.empty()) {
            const Run run = mRuns.back();
            mRuns.pop_back();
            SortRun(run);
        }
    }

private:
    void SortRun(const Run& run) {
        bool isAtEnd = true;
        for (auto entry = run.begin; entry != run.end; ++entry) {
            entry->word = FoldedWord(entry->text, run.offset) ^ mFlip;
            isAtEnd = isAtEnd && entry->text.size() <= run.offset;
        }
        if (isAtEnd)
            return SortEqual(run);
        const auto byWord = [](const Entry& a, const Entry& b) { return a.word < b.word; };
        if (!std::is_sorted(run.begin, run.end, byWord))
            std::sort(run.begin, run.end, byWord);
        for (auto begin = run.begin; begin != run.end;) {
            const auto end =
                std::find_if(begin, run.end, [begin](const Entry& e) { return e.word != begin->word; });
            if (end - begin > 1)
                mRuns.push_back({begin, end, run.offset + kWord});
            begin = end;
        }
    }

    /// Texts that differ at most in the NULs at their ends.
    void SortEqual(const Run& run) const {
        std::sort(run.begin, run.end, [this](const Entry& a, const Entry& b) {
            return std::tuple(a.text.size() ^ mFlip, a.row) < std::tuple(b.text.size() ^ mFlip, b.row);
        });
    }

    std::uint64_t mFlip;
    std::vector<Run> mRuns;
};

} // namespace

std::vector<std::uint32_t> RowsInOrder(const ListRows& rows, int column, bool isDescending) {
    Entries entries(rows.Count());
    for (std::size_t row = 0; row < entries.size(); ++row)
        entries[row] = {0, rows.Text(row, column), static_cast<std::uint32_t>(row)};
    Sorter(isDescending).Sort(entries);
    std::vector<std::uint32_t> order(entries.size());
    std::transform(entries.begin(), entries.end(), order.begin(),
                   [](const Entry& entry) { return entry.row; });
    return order;
}
