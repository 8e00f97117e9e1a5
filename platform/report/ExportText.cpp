// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/ExportText.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace report {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

bool IsNonCharacter(char32_t code) {
    return (code & 0xFFFEU) == 0xFFFEU || (code >= 0xFDD0 && code <= 0xFDEF);
}

/// Whether `text` is "_x", four hexadecimal digits and "_" at `position`.
bool IsEscapeAt(std::string_view text, std::size_t position) {
    const std::string_view notation = text.substr(position, 7);
    return notation.size() == 7 && notation.starts_with("_x") && notation.back() == '_' &&
           std::all_of(notation.begin() + 2, notation.begin() + 6, [](char c) {
               return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
           });
}

/// Whether a byte is a character that stands for itself wherever it is written.
bool IsPlain(char c) {
    return c >= 0x20 && c < 0x7F && c != '&' && c != '<' && c != '>' && c != '"' && c != '_';
}

/// How many plain characters stand from `position` on.
std::size_t PlainRun(std::string_view text, std::size_t position) {
    std::size_t end = position;
    while (end < text.size() && IsPlain(text[end]))
        ++end;
    return end - position;
}

bool BeginsFormula(std::string_view text) {
    // The last four are = + - @ in full width.
    constexpr std::array<char32_t, 9> kFirst = {U'=',   U'+',   U'-',   U'@',  U'\'',
                                                0xFF1D, 0xFF0B, 0xFF0D, 0xFF20};
    if (text.empty())
        return false;
    const char32_t first = CharacterAt(text, 0).code;
    return first < 0x20 || std::find(kFirst.begin(), kFirst.end(), first) != kFirst.end();
}

} // namespace

Character CharacterAt(std::string_view utf8, std::size_t position) {
    const auto lead = static_cast<unsigned char>(utf8[position]);
    if (lead < 0x80)
        return {lead, 1};
    std::size_t length = 0;
    char32_t code = 0;
    if ((lead & 0xE0U) == 0xC0U) {
        length = 2;
        code = lead & 0x1FU;
    } else if ((lead & 0xF0U) == 0xE0U) {
        length = 3;
        code = lead & 0x0FU;
    } else if ((lead & 0xF8U) == 0xF0U) {
        length = 4;
        code = lead & 0x07U;
    }
    if (length == 0 || position + length > utf8.size())
        return {0xFFFD, 1};
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(utf8[position + i]))
            return {0xFFFD, 1};
        code = (code << 6U) | (static_cast<unsigned char>(utf8[position + i]) & 0x3FU);
    }
    // The least code of each length: longer forms of it are no UTF-8.
    constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < kLeast.at(length) || code > 0x10FFFF || isSurrogate)
        return {0xFFFD, 1};
    return {code, length};
}

void AppendHTML(std::string& html, std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t plain = PlainRun(text, at);
        html.append(text, at, plain);
        at += plain;
        if (at == text.size())
            break;
        const Character character = CharacterAt(text, at);
        const char32_t code = character.code;
        if (code == U'&')
            html += "&amp;";
        else if (code == U'<')
            html += "&lt;";
        else if (code == U'>')
            html += "&gt;";
        else if (code == U'"')
            html += "&quot;";
        else if (code < 0x20)
            html += code == U'\n' ? '\n' : ' ';
        else if (code == 0xFFFD || (code >= 0x7F && code <= 0x9F) || IsNonCharacter(code))
            html += kReplacement;
        else
            html += text.substr(at, character.length);
        at += character.length;
    }
}

void AppendCSV(std::string& line, std::string_view text) {
    const bool isGuarded = BeginsFormula(text);
    const std::string_view guard = isGuarded ? "'" : "";
    if (text.find_first_of("\",;\t\r\n") == std::string_view::npos) {
        line.append(guard).append(text);
        return;
    }
    line.append("\"").append(guard);
    for (const char c : text) {
        if (c == '"')
            line += '"';
        line += c;
    }
    line += '"';
}

std::string WorkbookText(std::string_view text) {
    constexpr std::size_t kCell = 32767;
    text = FirstUnits(text, kCell);
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t plain = PlainRun(text, at);
        result.append(text, at, plain);
        at += plain;
        if (at == text.size())
            break;
        const Character character = CharacterAt(text, at);
        const char32_t code = character.code;
        if (code < 0x20 && code != U'\n' && code != U'\t') {
            std::array<char, 8> notation{};
            std::snprintf(notation.data(), notation.size(), "_x%04X_", static_cast<unsigned>(code));
            result += notation.data();
        } else if (IsEscapeAt(text, at)) {
            result += "_x005F_";
        } else if (code == 0xFFFD || IsNonCharacter(code)) {
            result += kReplacement;
        } else {
            result += text.substr(at, character.length);
        }
        at += character.length;
    }
    // The notation makes it longer; the limit is that of the file as well.
    return std::string(FirstUnits(result, kCell));
}

std::string_view FirstUnits(std::string_view utf8, std::size_t units) {
    if (utf8.size() <= units)
        return utf8;
    std::size_t at = 0;
    while (at < utf8.size()) {
        const Character character = CharacterAt(utf8, at);
        const std::size_t taken = character.code > 0xFFFF ? 2 : 1;
        if (taken > units)
            break;
        units -= taken;
        at += character.length;
    }
    return utf8.substr(0, at);
}

} // namespace report
