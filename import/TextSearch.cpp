// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/TextSearch.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::string_view kDigits = "0123456789";

/// Numbered tags, such as "IP12=" and "Client120=", are two or six letters long before their number.
constexpr std::array<std::size_t, 2> kLettersOfTags = {2, 6};

/// No number that is ever sought is longer.
constexpr std::size_t kMostDigits = 20;

bool IsNumberedTag(std::string_view sought) {
    if (sought.size() < 4 || sought.back() != '=')
        return false;
    const std::size_t letters = sought.find_first_of(kDigits);
    return std::find(kLettersOfTags.begin(), kLettersOfTags.end(), letters) != kLettersOfTags.end() &&
           sought.find_first_not_of(kDigits, letters) == sought.size() - 1;
}

/// How far a plain search may run; records of real machines are far shorter.
constexpr std::size_t kNear = 4096;

} // namespace

void TextSearch::Text(std::string_view text) {
    mText = text;
    mPlaces.clear();
    mHasNumberedTags = false;
}

std::size_t TextSearch::Find(std::string_view sought, std::size_t from, std::size_t end) const {
    end = std::min(end, mText.size());
    if (from > end || sought.size() > end - from)
        return kNowhere;
    const std::size_t nearEnd = std::min(end, from + kNear);
    const std::size_t near = mText.substr(from, nearEnd - from).find(sought);
    if (near != kNowhere)
        return from + near;
    if (nearEnd == end)
        return kNowhere;
    const std::vector<std::uint32_t>& places = Places(sought);
    const auto found = std::lower_bound(places.begin(), places.end(), from);
    if (found == places.end() || *found + sought.size() > end)
        return kNowhere;
    return *found;
}

const std::vector<std::uint32_t>& TextSearch::Places(std::string_view sought) const {
    if (IsNumberedTag(sought)) {
        // A record can bear thousands of them, each sought once: all of them are noted in one pass.
        NoteNumberedTags();
        return mPlaces[std::string(sought)];
    }
    const auto [entry, isNew] = mPlaces.try_emplace(std::string(sought));
    if (isNew)
        for (std::size_t place = mText.find(sought); place != kNowhere; place = mText.find(sought, place + 1))
            entry->second.push_back(static_cast<std::uint32_t>(place));
    return entry->second;
}

void TextSearch::NoteNumberedTags() const {
    if (mHasNumberedTags)
        return;
    mHasNumberedTags = true;
    for (std::size_t equals = mText.find('='); equals != kNowhere; equals = mText.find('=', equals + 1)) {
        std::size_t digits = equals;
        while (digits > 0 && equals - digits < kMostDigits && kDigits.find(mText[digits - 1]) != kNowhere)
            --digits;
        if (digits == equals)
            continue;
        for (const std::size_t letters : kLettersOfTags)
            if (digits >= letters) {
                const std::size_t place = digits - letters;
                mPlaces[std::string(mText.substr(place, equals + 1 - place))].push_back(
                    static_cast<std::uint32_t>(place));
            }
    }
}
