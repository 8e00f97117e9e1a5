// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/RowOrder.h"

#include "browser/SortKeys.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>
#include <tuple>

namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);
/// Rows that are sorted in a moment.
constexpr std::size_t kShare = std::size_t{1} << 15U;
constexpr std::size_t kRowsPerStep = 1024;

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
    std::string_view key;
    std::uint32_t row;
};
using Entries = std::vector<Entry>;

/// Entries that are equal in all words before `offset`.
struct Run {
    Entries::iterator begin;
    Entries::iterator end;
    std::size_t offset;
};

/// Sorts word by word: most comparisons are of two numbers that lie side by side, where comparing the keys
/// would fetch both from all over the memory. Lists repeat their texts, a program's name on every machine, so
/// runs of equal words are long and mostly need no more than a look.
class Sorter {
public:
    /// `progress` is told of `all` as well, of which `done` is over before the sort begins.
    Sorter(bool isDescending, const Progress& progress, std::size_t done, std::size_t all)
        : mFlip(isDescending ? ~std::uint64_t{0} : 0), mProgress(progress), mDone(done), mAll(all) {}

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
            entry->word = FoldedWord(entry->key, run.offset) ^ mFlip;
            isAtEnd = isAtEnd && entry->key.size() <= run.offset;
        }
        if (isAtEnd)
            return SortEqual(run);
        if (!std::is_sorted(run.begin, run.end, ByWord))
            SortByWord(run);
        for (auto begin = run.begin; begin != run.end;) {
            const auto end =
                std::find_if(begin, run.end, [begin](const Entry& e) { return e.word != begin->word; });
            if (end - begin > 1)
                mRuns.push_back({begin, end, run.offset + kWord});
            begin = end;
        }
    }

    static bool ByWord(const Entry& a, const Entry& b) { return a.word < b.word; }

    /// A long run is dealt out by a sample of its words first, so that it can be sorted, and told of, share
    /// by share; equal words may still make one of them as long as the run.
    void SortByWord(const Run& run) {
        const auto size = static_cast<std::size_t>(run.end - run.begin);
        if (size <= kShare) {
            std::sort(run.begin, run.end, ByWord);
            return Tell(size);
        }
        const std::vector<std::uint64_t> bounds = Bounds(run, size / kShare);
        const auto shareOf = [&bounds](const Entry& entry) {
            const auto bound = std::upper_bound(bounds.begin(), bounds.end(), entry.word);
            return static_cast<std::size_t>(bound - bounds.begin());
        };
        std::vector<Entries> shares(bounds.size() + 1);
        for (auto entry = run.begin; entry != run.end; ++entry)
            shares[shareOf(*entry)].push_back(*entry);
        auto begin = run.begin;
        for (Entries& share : shares) {
            std::sort(share.begin(), share.end(), ByWord);
            begin = std::copy(share.begin(), share.end(), begin);
            Tell(share.size());
            share = {};
        }
    }

    /// Words that part the run into `shares` of about the same length.
    static std::vector<std::uint64_t> Bounds(const Run& run, std::size_t shares) {
        constexpr std::size_t kSamplesPerShare = 32;
        const auto size = static_cast<std::size_t>(run.end - run.begin);
        std::vector<std::uint64_t> sample(shares * kSamplesPerShare);
        for (std::size_t i = 0; i < sample.size(); ++i)
            sample[i] = (run.begin + static_cast<std::ptrdiff_t>(i * (size / sample.size())))->word;
        std::sort(sample.begin(), sample.end());
        std::vector<std::uint64_t> bounds;
        for (std::size_t i = kSamplesPerShare; i < sample.size(); i += kSamplesPerShare)
            bounds.push_back(sample[i]);
        bounds.erase(std::unique(bounds.begin(), bounds.end()), bounds.end());
        return bounds;
    }

    /// Rows are sorted again where their words are equal, so the sum is only about what there is to do.
    void Tell(std::size_t rows) {
        mDone = std::min(mDone + rows, mAll);
        if (mProgress)
            mProgress(mDone, mAll);
    }

    /// Keys that differ at most in the NULs at their ends.
    void SortEqual(const Run& run) {
        std::sort(run.begin, run.end, [this](const Entry& a, const Entry& b) {
            return std::tuple(a.key.size() ^ mFlip, a.row) < std::tuple(b.key.size() ^ mFlip, b.row);
        });
        Tell(static_cast<std::size_t>(run.end - run.begin));
    }

    std::uint64_t mFlip;
    const Progress& mProgress;
    std::size_t mDone;
    std::size_t mAll;
    std::vector<Run> mRuns;
};

} // namespace

std::vector<std::uint32_t> RowsInOrder(const ListRows& rows, int column, bool isDescending,
                                       const Progress& progress) {
    SortKeys keys;
    Entries entries(rows.Count());
    // Once to read them, and about once or twice to sort them.
    const std::size_t all = 3 * entries.size();
    for (std::size_t row = 0; row < entries.size(); ++row) {
        entries[row] = {0, keys.KeyOf(rows.Text(row, column)), static_cast<std::uint32_t>(row)};
        if (progress && row % kRowsPerStep == 0)
            progress(row, all);
    }
    Sorter(isDescending, progress, entries.size(), all).Sort(entries);
    std::vector<std::uint32_t> order(entries.size());
    std::transform(entries.begin(), entries.end(), order.begin(),
                   [](const Entry& entry) { return entry.row; });
    return order;
}
