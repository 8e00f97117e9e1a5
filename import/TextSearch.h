// SPDX-License-Identifier: GPL-3.0-or-later
// Finds texts in an inventory file. Near finds are plain searches; where a search would have to run far,
// all places of what is sought are noted once, so that a file that was made to be slow, with lines of
// megabytes or records that run into each other, costs no more than its size for each text sought.
// The searched text belongs to somebody else and must outlive the object's use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class TextSearch {
public:
    static constexpr std::size_t kNowhere = std::string_view::npos;

    TextSearch() = default;
    explicit TextSearch(std::string_view text) : mText(text) {}

    /// Starts anew on another text.
    void Text(std::string_view text);
    std::string_view Text() const { return mText; }

    /// The first place of `sought` that lies whole between `from` and `end` (offsets from 0), or kNowhere.
    std::size_t Find(std::string_view sought, std::size_t from, std::size_t end) const;

private:
    const std::vector<std::uint32_t>& Places(std::string_view sought) const;
    void NoteNumberedTags() const;

    std::string_view mText;
    mutable bool mHasNumberedTags = false;
    mutable std::unordered_map<std::string, std::vector<std::uint32_t>> mPlaces;
};
