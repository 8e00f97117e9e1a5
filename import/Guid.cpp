// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/Guid.h"

#include "platform/identifiers.h"

#include <array>

namespace {

constexpr std::size_t kLength = 36;

/// Appends the rightmost `width` hexadecimal digits of `value`.
void Pad(std::string& text, std::uint64_t value, int width) {
    constexpr std::array kDigits = {'0', '1', '2', '3', '4', '5', '6', '7',
                                    '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};
    for (int shift = (width - 1) * 4; shift >= 0; shift -= 4)
        text += kDigits[value >> static_cast<unsigned>(shift) & 0xFU];
}

std::string Formatted(const Identifier& identifier) {
    std::string text;
    text.reserve(kLength);
    Pad(text, identifier.data1, 8);
    text += '-';
    Pad(text, identifier.data2, 4);
    text += '-';
    Pad(text, identifier.data3, 4);
    for (std::size_t i = 0; i < identifier.data4.size(); ++i) {
        if (i == 0 || i == 2)
            text += '-';
        Pad(text, identifier.data4[i], 2);
    }
    return text;
}

} // namespace

std::string Guid::Create(int count) {
    std::string identifiers;
    for (int i = 0; i < count; ++i) {
        Identifier identifier;
        if (CoCreateGuid(identifier) != 0)
            continue;
        if (!identifiers.empty())
            identifiers += ';';
        identifiers += Formatted(identifier);
    }
    return identifiers;
}
