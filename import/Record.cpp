// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/Record.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace {

constexpr std::string_view kProtocolTag = "PR";

/// Up to here the protocols are tried one by one; above, only those that the record holds.
constexpr double kFewProtocols = 32;

} // namespace

Record::Record(const TextSearch& search, std::string_view text) : mSearch(search) {
    // An empty value may be a view of anything.
    if (!text.empty()) {
        mStart = static_cast<std::size_t>(text.data() - search.Text().data());
        mEnd = mStart + text.size();
    }
}

std::size_t Record::Bar(std::size_t n) const {
    while (mBars.size() < n && !mHasAllBars) {
        const std::size_t from = mBars.empty() ? mStart : mBars.back() + 1;
        const std::size_t bar = mSearch.Find("|", from, mEnd);
        if (bar == TextSearch::kNowhere)
            mHasAllBars = true;
        else
            mBars.push_back(bar);
    }
    return n <= mBars.size() ? mBars[n - 1] : TextSearch::kNowhere;
}

std::string_view Record::GetField(int number) const {
    const std::string_view text = mSearch.Text();
    if (number <= 1) {
        const bool beginsWithBar = Bar(1) == mStart;
        const std::size_t end = Bar(beginsWithBar ? 2 : 1);
        return end == TextSearch::kNowhere ? std::string_view() : text.substr(mStart, end - mStart);
    }
    // The search that has failed starts from the front, so the bars form a ring with the front in it.
    auto step = static_cast<std::size_t>(number) - 1;
    if (Bar(step) == TextSearch::kNowhere)
        step %= mBars.size() + 1;
    const std::size_t start = step == 0 ? mStart : Bar(step) + 1;
    const std::size_t end = Bar(step + 1);
    return end == TextSearch::kNowhere ? std::string_view() : text.substr(start, end - start);
}

std::string_view Record::GetTagged(std::string_view tag, std::string_view terminator) const {
    const std::string sought = std::string(tag) + "=";
    const std::size_t place = mSearch.Find(sought, mStart, mEnd);
    if (place == TextSearch::kNowhere)
        return {};
    const std::size_t start = place + sought.size();
    const std::size_t end = mSearch.Find(terminator, start, mEnd);
    return end == TextSearch::kNowhere ? std::string_view() : mSearch.Text().substr(start, end - start);
}

void Record::ForEachProtocol(double highest, const std::function<void(long long)>& protocol) const {
    std::vector<long long> numbers;
    if (highest <= kFewProtocols) {
        for (int number = 0; number <= highest; ++number)
            numbers.push_back(number);
    } else {
        const std::string_view text = mSearch.Text();
        for (std::size_t place = mSearch.Find(kProtocolTag, mStart, mEnd); place != TextSearch::kNowhere;
             place = mSearch.Find(kProtocolTag, place + 1, mEnd)) {
            long long number = -1;
            const char* digits = text.data() + place + kProtocolTag.size();
            std::from_chars(digits, text.data() + mEnd, number);
            if (number >= 0 && static_cast<double>(number) <= highest)
                numbers.push_back(number);
        }
        std::sort(numbers.begin(), numbers.end());
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    }
    for (const long long number : numbers)
        if (!GetTagged(std::string(kProtocolTag) + std::to_string(number), ";").empty())
            protocol(number);
}
