// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/TextSearch.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>
#include <tuple>

namespace {

/// How far a plain search may run, and the size of the blocks by which places are noted. Records of real
/// machines are far shorter.
constexpr std::size_t kBlock = 4096;

constexpr std::uint32_t kNoPlace = 0xFFFFFFFF;

/// The letters of the tags that have a number.
constexpr std::array<std::string_view, 6> kNumbered = {"PR", "IP", "Mk", "Gw", "WS", "Client"};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The number that canonical digits write: no leading zero, and none too long to be ever sought.
std::optional<std::uint64_t> TagNumber(std::string_view digits) {
    constexpr std::size_t kMostDigits = 18;
    if (digits.empty() || digits.size() > kMostDigits || (digits.front() == '0' && digits.size() > 1))
        return std::nullopt;
    std::uint64_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

/// As std::string_view::find, but without its weakness for a text that repeats the first character.
std::size_t FindIn(std::string_view text, std::string_view sought, std::size_t from) {
    const void* found = memmem(text.data() + from, text.size() - from, sought.data(), sought.size());
    return found == nullptr ? TextSearch::kNowhere
                            : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

} // namespace

bool TextSearch::NumberedTag::operator<(const NumberedTag& other) const {
    return std::tie(letters, number, place) < std::tie(other.letters, other.number, other.place);
}

void TextSearch::Text(std::string_view text) {
    mText = text;
    mPlaces.clear();
    mHasNumberedTags = false;
    mNumberedTags.clear();
}

std::size_t TextSearch::Find(std::string_view sought, std::size_t from, std::size_t end) const {
    end = std::min(end, mText.size());
    if (from > end || sought.size() > end - from)
        return kNowhere;
    // Whatever begins within a block's length is found here.
    const std::size_t nearEnd = std::min(end, from + kBlock + sought.size() - 1);
    const std::size_t near = mText.substr(0, nearEnd).find(sought, from);
    if (near != kNowhere || nearEnd == end)
        return near;
    const std::size_t far = FindFar(sought, from);
    return far == kNowhere || far + sought.size() > end ? kNowhere : far;
}

std::size_t TextSearch::FindFar(std::string_view sought, std::size_t from) const {
    if (sought.size() > 1 && sought.back() == '=') {
        // A record can bear thousands of numbered tags, each sought once: all are noted in one pass.
        for (std::uint32_t letters = 0; letters < kNumbered.size(); ++letters)
            if (sought.starts_with(kNumbered[letters])) {
                const std::size_t start = kNumbered[letters].size();
                if (const auto number = TagNumber(sought.substr(start, sought.size() - 1 - start));
                    number && IsDigit(sought[start]) && IsDigit(sought[sought.size() - 2]))
                    return FindNumberedTag({letters, 0, *number}, from);
            }
    }
    const auto [entry, isNew] = mPlaces.try_emplace(std::string(sought));
    std::vector<std::uint32_t>& places = entry->second;
    if (isNew) {
        places.resize(mText.size() / kBlock + 1, kNoPlace);
        std::size_t place = 0;
        for (std::size_t block = 0; block < places.size() && place != kNowhere; ++block) {
            if (block == 0 || place < block * kBlock)
                place = FindIn(mText, sought, block * kBlock);
            if (place != kNowhere)
                places[block] = static_cast<std::uint32_t>(place);
        }
    }
    const std::uint32_t place = places[std::min(from / kBlock + 1, places.size() - 1)];
    return place == kNoPlace || place < from ? kNowhere : place;
}

std::size_t TextSearch::FindNumberedTag(NumberedTag tag, std::size_t from) const {
    NoteNumberedTags();
    tag.place = static_cast<std::uint32_t>(from);
    const auto found = std::lower_bound(mNumberedTags.begin(), mNumberedTags.end(), tag);
    const bool isFound =
        found != mNumberedTags.end() && found->letters == tag.letters && found->number == tag.number;
    return isFound ? found->place : kNowhere;
}

void TextSearch::NoteNumberedTags() const {
    if (mHasNumberedTags)
        return;
    mHasNumberedTags = true;
    for (std::size_t equals = mText.find('='); equals != kNowhere; equals = mText.find('=', equals + 1)) {
        std::size_t digits = equals;
        while (digits > 0 && equals - digits < 20 && IsDigit(mText[digits - 1]))
            --digits;
        const std::optional<std::uint64_t> number = TagNumber(mText.substr(digits, equals - digits));
        if (!number)
            continue;
        for (std::uint32_t letters = 0; letters < kNumbered.size(); ++letters)
            if (mText.substr(0, digits).ends_with(kNumbered[letters]))
                mNumberedTags.push_back(
                    {letters, static_cast<std::uint32_t>(digits - kNumbered[letters].size()), *number});
    }
    std::sort(mNumberedTags.begin(), mNumberedTags.end());
}
