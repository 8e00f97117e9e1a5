// SPDX-License-Identifier: GPL-3.0-or-later
// Finds texts in an inventory file. Near finds are plain searches; where a search would have to run far, the
// places of what is sought are noted once, so that a file that was made to be slow, with lines of megabytes
// or records that run into each other, costs no more than its size for each text sought.
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
    /// A tag such as "IP12=": its letters, by their place in the table of tags; its number; where it stands.
    struct NumberedTag {
        std::uint32_t letters;
        std::uint32_t place;
        std::uint64_t number;
        bool operator<(const NumberedTag& other) const;
    };

    std::size_t FindFar(std::string_view sought, std::size_t from) const;
    std::size_t FindNumberedTag(NumberedTag tag, std::size_t from) const;
    void NoteNumberedTags() const;

    std::string_view mText;
    /// For each text sought, the first place at or behind the start of each block of the text.
    mutable std::unordered_map<std::string, std::vector<std::uint32_t>> mPlaces;
    mutable bool mHasNumberedTags = false;
    mutable std::vector<NumberedTag> mNumberedTags;
};
