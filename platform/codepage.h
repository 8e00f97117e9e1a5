// SPDX-License-Identifier: GPL-3.0-or-later
// The system's 8-bit code page. Inventory files, exports and the collectors' settings are written in it;
// everything behind the door of the database is UTF-8. One byte is one character, in both directions:
// a byte that the page leaves undefined becomes the control character U+0080 to U+009F of the same number
// (or the character U+00A0 to U+00FF) and comes back as it was.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

class CodePage {
public:
    /// The page by its number, such as 1252. Raises error 5 for one that the system does not know or that
    /// has more than one byte a character.
    explicit CodePage(int number);

    /// The page that the user's locale implies: 1250 for Polish, 1251 for Russian and so on; 1252 for Western
    /// languages, for C, and for those that have no 8-bit page. Where the system lacks the page's table, each
    /// byte is the character of its number.
    static const CodePage& System();

    /// The page's number for a locale's name such as "pl_PL.UTF-8".
    static int NumberFor(std::string_view localeName);

    /// Appends `bytes` to `utf8`.
    void DecodeTo(std::string_view bytes, std::string& utf8) const;
    std::string Decode(std::string_view bytes) const;

    /// `utf8` in this page, with "?" for each character that it lacks and each byte that is no UTF-8.
    std::string Encode(std::string_view utf8) const;

    /// Whether the page has all characters of `utf8`, so that they come back as they are.
    bool Holds(std::string_view utf8) const;

    /// The byte of one character, "?" where the page lacks it.
    char Byte(char32_t character) const;

private:
    /// Each byte the character of its number.
    CodePage();

    std::array<char16_t, 256> mCharacters{};
    std::unordered_map<char32_t, unsigned char> mBytes;
};

/// Whether all bytes are below 128, so that text is the same in every page and in UTF-8.
bool IsASCII(std::string_view text);

inline constexpr char32_t kNoCharacter = 0xFFFFFFFF;

/// Takes one character off the front of UTF-8 text, which holds something; one byte, and kNoCharacter, where
/// none begins. Surrogates and characters in more bytes than they need are none.
char32_t TakeCharacter(std::string_view& text);

/// Appends a character below U+10000 to UTF-8 text.
void AppendUTF8(char32_t character, std::string& text);

/// Whether all of `text` is UTF-8.
bool IsUTF8(std::string_view text);
