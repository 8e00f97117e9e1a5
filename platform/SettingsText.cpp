// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/SettingsText.h"

#include "platform/codepage.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <utility>

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kSpace = " \t\r\n";
constexpr std::string_view kLineEnds = "\r\n";

// A letter behind a backslash, and the character that both stand for.
constexpr std::string_view kEscapeLetters = "abfnrtv\"\\?'";
constexpr std::string_view kEscaped = "\a\b\f\n\r\t\v\"\\?'";
// The last two are read, and written as they are.
constexpr std::size_t kWrittenEscapes = 9;

// A value that begins with the mark is no plain text; a text that does has the mark twice.
constexpr char kMark = '@';
constexpr std::string_view kBytes = "@ByteArray(";
constexpr std::string_view kText = "@String(";
constexpr std::string_view kNoValue = "@Invalid()";

std::string_view Trimmed(std::string_view text, std::string_view blanks) {
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

void SkipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
}

char TakeByte(std::string_view& text) {
    const char byte = text.front();
    text.remove_prefix(1);
    return byte;
}

/// Takes the second character of a line end that has two, of which `first` may be the first.
void SkipLineFeed(char first, std::string_view& text) {
    const auto isLineEnd = [](char byte) { return kLineEnds.find(byte) != std::string_view::npos; };
    if (isLineEnd(first) && !text.empty() && text.front() != first && isLineEnd(text.front()))
        text.remove_prefix(1);
}

/// Takes the next line that is neither empty nor a comment; nothing, and an empty text, at the end. Line ends
/// and semicolons between quotation marks or behind a backslash belong to the line.
std::string_view TakeLine(std::string_view& text) {
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
        if (!text.starts_with(';'))
            break;
        text.remove_prefix(std::min(text.find_first_of(kLineEnds), text.size()));
    }
    const std::string_view line = text;
    bool isQuoted = false;
    while (!text.empty()) {
        if (!isQuoted && (text.front() == ';' || kLineEnds.find(text.front()) != std::string_view::npos))
            break;
        const char byte = TakeByte(text);
        if (byte == '"')
            isQuoted = !isQuoted;
        if (byte == '\\' && !text.empty())
            SkipLineFeed(TakeByte(text), text);
    }
    return line.substr(0, line.size() - text.size());
}

/// Where the key ends and the value begins.
std::size_t EqualsSign(std::string_view line) {
    bool isQuoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\\')
            ++i;
        else if (line[i] == '"')
            isQuoted = !isQuoted;
        else if (line[i] == '=' && !isQuoted)
            return i;
    }
    return std::string_view::npos;
}

/// The character whose number `text` begins with, to this base.
std::string NumberedCharacter(std::string_view& text, int base) {
    unsigned int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    std::string character;
    AppendUTF8(error == std::errc() ? static_cast<char16_t>(number) : u'?', character);
    return character;
}

/// What an escape stands for, whose backslash has been taken. One that is not known stands for nothing.
std::string TakeEscape(std::string_view& text) {
    if (text.empty())
        return {};
    if (text.front() >= '0' && text.front() <= '7')
        return NumberedCharacter(text, 8);
    const char letter = TakeByte(text);
    if (letter == 'x' && !text.empty() && std::isxdigit(static_cast<unsigned char>(text.front())) != 0)
        return NumberedCharacter(text, 16);
    SkipLineFeed(letter, text);
    const std::size_t place = kEscapeLetters.find(letter);
    return place == std::string_view::npos ? std::string() : std::string(1, kEscaped[place]);
}

/// The texts that commas part in a value.
std::vector<std::string> Parts(std::string_view value) {
    std::vector<std::string> parts(1);
    bool isQuoted = false;
    bool wasQuoted = false;
    // Blanks in front of this place are not the line's own.
    std::size_t kept = 0;
    const auto cut = [&] {
        std::string& part = parts.back();
        while (!wasQuoted && part.size() > kept && kBlanks.find(part.back()) != std::string_view::npos)
            part.pop_back();
    };
    SkipBlanks(value);
    while (!value.empty()) {
        const char byte = TakeByte(value);
        if (byte == '\\') {
            parts.back() += TakeEscape(value);
            kept = parts.back().size();
        } else if (byte == '"') {
            wasQuoted = true;
            isQuoted = !isQuoted;
            if (!isQuoted)
                SkipBlanks(value);
        } else if (byte == ',' && !isQuoted) {
            cut();
            parts.emplace_back();
            wasQuoted = false;
            kept = 0;
            SkipBlanks(value);
        } else {
            parts.back() += byte;
        }
    }
    cut();
    return parts;
}

std::string Hexadecimal(char byte) {
    std::array<char, 2> digits{};
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<unsigned char>(byte), 16);
    return {digits.data(), end};
}

std::string Escaped(std::string_view text) {
    constexpr char kLastControl = 0x1F;
    std::string value;
    // A digit behind a number would belong to it.
    bool isBehindNumber = false;
    for (const char byte : text) {
        const bool isDigit = isBehindNumber && std::isxdigit(static_cast<unsigned char>(byte)) != 0;
        const std::size_t place = kEscaped.substr(0, kWrittenEscapes).find(byte);
        const bool isControl = byte >= 0 && byte <= kLastControl && place == std::string_view::npos;
        isBehindNumber = isDigit || isControl;
        if (byte == '\0')
            value += "\\0";
        else if (isBehindNumber)
            value += "\\x" + Hexadecimal(byte);
        else if (place != std::string_view::npos)
            value += std::string("\\") + kEscapeLetters[place];
        else
            value += byte;
    }
    const bool hasOuterBlank = !text.empty() && (text.front() == ' ' || text.back() == ' ');
    if (hasOuterBlank || text.find_first_of(";,=") != std::string_view::npos)
        value = '"' + value + '"';
    return value;
}

/// Bytes as characters of the same numbers.
std::string Widened(std::string_view bytes) {
    std::string utf8;
    for (const char byte : bytes)
        AppendUTF8(static_cast<unsigned char>(byte), utf8);
    return utf8;
}

std::string Narrowed(std::string_view utf8) {
    std::string bytes;
    while (!utf8.empty())
        bytes += static_cast<char>(TakeCharacter(utf8));
    return bytes;
}

/// Paths can hold bytes that are no UTF-8; those are kept as bytes, all else as text that can be read.
std::string Marked(const std::string& text) {
    if (!IsUTF8(text))
        return std::string(kBytes) + Widened(text) + ")";
    if (text.find('\0') != std::string::npos)
        return std::string(kText) + text + ")";
    return text.starts_with(kMark) ? kMark + text : text;
}

/// What stands in the brackets behind a mark; nothing where the value has another one, or none.
std::optional<std::string_view> Within(std::string_view mark, std::string_view value) {
    if (!value.starts_with(mark) || !value.ends_with(')'))
        return std::nullopt;
    return value.substr(mark.size(), value.size() - mark.size() - 1);
}

std::optional<std::string> Unmarked(const std::string& value) {
    if (value == kNoValue)
        return std::nullopt;
    if (const auto bytes = Within(kBytes, value))
        return Narrowed(*bytes);
    if (const auto text = Within(kText, value))
        return std::string(*text);
    const bool isMarkedTwice = value.size() > 1 && value[0] == kMark && value[1] == kMark;
    return isMarkedTwice ? value.substr(1) : value;
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (std::size_t i = 0; i < texts.size(); ++i)
        joined += (i > 0 ? ", " : "") + texts[i];
    return joined;
}

} // namespace

SettingsText::SettingsText(std::string_view bytes) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kByteOrderMark))
        bytes.remove_prefix(kByteOrderMark.size());
    // Keys in front of all sections have a section of this name.
    std::string section = "General";
    for (std::string_view line = TakeLine(bytes); !line.empty(); line = TakeLine(bytes)) {
        if (line.front() == '[') {
            section = Trimmed(line.substr(1, line.find(']') - 1), kSpace);
            continue;
        }
        const std::size_t equals = EqualsSign(line);
        if (equals != std::string_view::npos)
            Assign(section, std::string(Trimmed(line.substr(0, equals), kSpace)),
                   Parts(line.substr(equals + 1)));
    }
}

std::string SettingsText::Bytes() const {
    std::vector<std::string_view> sections;
    for (const Entry& entry : mEntries)
        if (std::find(sections.begin(), sections.end(), entry.section) == sections.end())
            sections.emplace_back(entry.section);
    std::string bytes;
    for (const std::string_view section : sections) {
        bytes += (bytes.empty() ? "[" : "\n[") + std::string(section) + "]\n";
        for (const Entry& entry : mEntries) {
            if (entry.section != section)
                continue;
            std::vector<std::string> values;
            std::transform(entry.parts.begin(), entry.parts.end(), std::back_inserter(values), Escaped);
            bytes += entry.key + "=" + Joined(values) + "\n";
        }
    }
    return bytes;
}

std::optional<std::string> SettingsText::Get(std::string_view section, std::string_view key) const {
    const Entry* const entry = Find(section, key);
    if (entry == nullptr)
        return std::nullopt;
    // A file edited by hand may hold a bare comma in a text.
    return Unmarked(Joined(entry->parts));
}

void SettingsText::Set(const std::string& section, const std::string& key, const std::string& text) {
    Assign(section, key, {Marked(text)});
}

bool SettingsText::HasKeys(std::string_view section, std::string_view begin) const {
    return std::any_of(mEntries.begin(), mEntries.end(), [&](const Entry& entry) {
        return entry.section == section && entry.key.starts_with(begin);
    });
}

void SettingsText::Remove(std::string_view section, std::string_view key) {
    std::erase_if(mEntries, [&](const Entry& entry) { return entry.section == section && entry.key == key; });
}

void SettingsText::RemoveKeys(std::string_view section, std::string_view begin) {
    std::erase_if(mEntries, [&](const Entry& entry) {
        return entry.section == section && entry.key.starts_with(begin);
    });
}

const SettingsText::Entry* SettingsText::Find(std::string_view section, std::string_view key) const {
    const auto found = std::find_if(mEntries.begin(), mEntries.end(), [&](const Entry& entry) {
        return entry.section == section && entry.key == key;
    });
    return found == mEntries.end() ? nullptr : &*found;
}

void SettingsText::Assign(std::string section, std::string key, std::vector<std::string> parts) {
    if (const Entry* const entry = Find(section, key))
        mEntries[static_cast<std::size_t>(entry - mEntries.data())].parts = std::move(parts);
    else
        mEntries.push_back({std::move(section), std::move(key), std::move(parts)});
}
