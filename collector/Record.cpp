// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Record.h"

#include "platform/codepage.h"

namespace collector {

namespace {

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
    const CodePage& page = CodePage::System();
    std::string value;
    bool isBlankDue = false;
    while (!text.empty() && value.size() < width) {
        const char32_t character = TakeCharacter(text);
        if (IsBlank(character)) {
            isBlankDue = !value.empty();
            continue;
        }
        if (isBlankDue && value.size() + 1 == width)
            break;
        if (isBlankDue)
            value += ' ';
        isBlankDue = false;
        value += page.Byte(WithoutSeparators(character));
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
