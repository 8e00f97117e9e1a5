// SPDX-License-Identifier: GPL-3.0-or-later
// What stands for a text where a list is sorted: its letters beyond ASCII are folded as in a filter, and
// stand beside the letter that they are made of, "Äpfel" beside "apfel". Keys compare by their bytes with
// ASCII letters in lower case, so a text of ASCII alone is its own key. A million keys must be made in less
// time than it takes to sort them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class SortKeys {
public:
    /// The key of a UTF-8 text; valid as long as the text and this object.
    std::string_view KeyOf(std::string_view text);

private:
    struct Letter {
        /// The letters that it is made of, without their marks.
        std::string base;
        /// Itself without regard to case.
        std::string folded;
    };

    const Letter& LetterOf(char32_t character);
    std::string_view Store(std::string_view bases, std::string_view folded);

    /// Those of Latin, Greek and Cyrillic, each filled when it is first met, and all others.
    std::vector<Letter> mCommonLetters = std::vector<Letter>(0x500);
    std::unordered_map<char32_t, Letter> mOtherLetters;
    std::string mBases;
    std::string mFolded;
    std::vector<std::unique_ptr<char[]>> mBlocks;
    /// The free rest of the last block.
    char* mEnd = nullptr;
    std::size_t mRoom = 0;
};
