// SPDX-License-Identifier: GPL-3.0-or-later
// One value of an inventory file, taken apart: by position, with fields closed by "|", or by tag. Both are
// plain searches whose results at the edges are the format's, wrap-around included.
// One object serves record after record; what it returns are views into the file's contents.
#pragma once

#include "import/TextSearch.h"

#include <functional>
#include <string_view>
#include <vector>

class Record {
public:
    /// `text` must lie in the text that `search` searches.
    Record(const TextSearch& search, std::string_view text);

    /// The `number`-th field, from 1. On "a|b|" the third is empty, and the fourth is "a" again: the search
    /// for the next "|" starts from the front once it has failed. A field without a closing "|" is empty.
    /// The end of the first field is searched from the second character on.
    std::string_view GetField(int number) const;

    /// The text between the first "tag=" and the next terminator behind it; "" where either is missing. A
    /// tag is also found at the end of a longer one.
    std::string_view GetTagged(std::string_view tag, std::string_view terminator) const;

    /// Calls `protocol` for each number from 0 to `highest` whose "PR<number>" tag has a value, in order.
    /// The time is that of the record's length, not of `highest`.
    void ForEachProtocol(double highest, const std::function<void(long long number)>& protocol) const;

private:
    /// The offset of the n-th "|" from 1 in the file, or kNowhere. Noted as far as asked for.
    std::size_t Bar(std::size_t n) const;

    const TextSearch& mSearch;
    std::size_t mStart = 0;
    std::size_t mEnd = 0;
    mutable std::vector<std::size_t> mBars;
    mutable bool mHasAllBars = false;
};
