// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Record.h"

#include <algorithm>
#include <cstdint>

namespace collector {

namespace {

constexpr char32_t kBroken = 0xFFFD;

// Code page 1252 from 0x80 to 0x9F; 0 where it has no character.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

std::size_t SequenceLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

// Takes one character off the front. A byte that begins no valid sequence goes alone, as kBroken.
char32_t NextCharacter(std::string_view& text) {
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    constexpr std::array<unsigned, 5> leadBits = {0, 0x7F, 0x1F, 0x0F, 0x07};
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = SequenceLength(lead);
    char32_t character = length == 0 ? kBroken : lead & leadBits.at(length);
    std::size_t taken = 1;
    for (; taken < length && taken < text.size(); ++taken) {
        const auto next = static_cast<unsigned char>(text[taken]);
        if ((next & 0xC0U) != 0x80)
            break;
        character = (character << 6U) | (next & 0x3FU);
    }
    const bool isWhole = length != 0 && taken == length;
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    if (!isWhole || character < smallest.at(length) || isSurrogate || character > 0x10FFFF) {
        text.remove_prefix(1);
        return kBroken;
    }
    text.remove_prefix(length);
    return character;
}

char CodePageByte(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character < 0x100))
        return static_cast<char>(static_cast<unsigned char>(character));
    const auto* const found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
    if (found == kUpperControls.end())
        return '?';
    return static_cast<char>(static_cast<unsigned char>(0x80 + (found - kUpperControls.begin())));
}

bool IsBlank(char32_t character) {
    return character <= 0x20 || (character >= 0x7F && character < 0xA0);
}

char32_t WithoutSeparators(char32_t character) {
    switch (character) {
        case '|':
            return '/';
        case ';':
            return ',';
        case '=':
            return '-';
        default:
            return character;
    }
}

} // namespace

std::string Value(std::string_view text, std::size_t width) {
    std::string value;
    bool isBlankDue = false;
    while (!text.empty() && value.size() < width) {
        const char32_t character = NextCharacter(text);
        if (IsBlank(character)) {
            isBlankDue = !value.empty();
            continue;
        }
        if (isBlankDue && value.size() + 1 == width)
            break;
        if (isBlankDue)
            value += ' ';
        isBlankDue = false;
        value += CodePageByte(WithoutSeparators(character));
    }
    return value;
}

TaggedRecord& TaggedRecord::Add(std::string_view tag, std::string_view text, std::size_t width,
                                char terminator) {
    return AddExact(tag, Value(text, width), terminator);
}

TaggedRecord& TaggedRecord::AddExact(std::string_view tag, std::string_view value, char terminator) {
    mText += tag;
    mText += '=';
    mText += value;
    mText += terminator;
    return *this;
}

} // namespace collector
