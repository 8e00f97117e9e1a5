// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codepage.h"

#include "platform/errors.h"
#include "platform/text.h"

#include <iconv.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

struct LanguagePage {
    std::string_view language;
    int page;
};

// The ANSI code page of each language whose page is not 1252.
constexpr std::array kLanguagePages = {
    LanguagePage{"cs", 1250}, LanguagePage{"hr", 1250}, LanguagePage{"hu", 1250}, LanguagePage{"pl", 1250},
    LanguagePage{"ro", 1250}, LanguagePage{"sk", 1250}, LanguagePage{"sl", 1250}, LanguagePage{"sq", 1250},
    LanguagePage{"bs", 1250}, LanguagePage{"be", 1251}, LanguagePage{"bg", 1251}, LanguagePage{"mk", 1251},
    LanguagePage{"ru", 1251}, LanguagePage{"sr", 1251}, LanguagePage{"uk", 1251}, LanguagePage{"el", 1253},
    LanguagePage{"tr", 1254}, LanguagePage{"az", 1254}, LanguagePage{"he", 1255}, LanguagePage{"ar", 1256},
    LanguagePage{"fa", 1256}, LanguagePage{"ur", 1256}, LanguagePage{"et", 1257}, LanguagePage{"lt", 1257},
    LanguagePage{"lv", 1257}, LanguagePage{"vi", 1258}, LanguagePage{"th", 874},
};

class Converter {
public:
    explicit Converter(int page) : mHandle(iconv_open("UTF-16LE", ("CP" + std::to_string(page)).c_str())) {
        if (mHandle == reinterpret_cast<iconv_t>(-1)) // NOLINT(performance-no-int-to-ptr): iconv's own mark
            Raise(Errors::kInvalidCall, "code page " + std::to_string(page));
    }
    ~Converter() { iconv_close(mHandle); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// The UTF-16 unit of one byte, or the byte itself where the page leaves it undefined.
    char16_t Character(unsigned char byte) {
        char in = static_cast<char>(byte);
        std::array<unsigned char, 8> out{};
        char* inPlace = &in;
        char* outPlace = reinterpret_cast<char*>(out.data());
        std::size_t inLeft = 1;
        std::size_t outLeft = out.size();
        iconv(mHandle, nullptr, nullptr, nullptr, nullptr);
        const std::size_t result = iconv(mHandle, &inPlace, &inLeft, &outPlace, &outLeft);
        iconv(mHandle, nullptr, nullptr, &outPlace, &outLeft);
        if (result == static_cast<std::size_t>(-1) || out.size() - outLeft != 2)
            return byte;
        return static_cast<char16_t>(out[0] | out[1] << 8U);
    }

private:
    iconv_t mHandle;
};

} // namespace

void AppendUTF8(char32_t character, std::string& text) {
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0U | character >> 6U);
        text += static_cast<char>(0x80U | (character & 0x3FU));
    } else {
        text += static_cast<char>(0xE0U | character >> 12U);
        text += static_cast<char>(0x80U | (character >> 6U & 0x3FU));
        text += static_cast<char>(0x80U | (character & 0x3FU));
    }
}

char32_t TakeCharacter(std::string_view& text) {
    // A character in more bytes than it needs could pass for another one.
    constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = first < 0x80        ? 1
                               : first >> 5U == 6  ? 2
                               : first >> 4U == 14 ? 3
                               : first >> 3U == 30 ? 4
                                                   : 0;
    char32_t character = length == 1 ? first : first & (0xFFU >> (length + 1));
    bool isWhole = length != 0 && text.size() >= length;
    for (std::size_t i = 1; isWhole && i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        isWhole = next >> 6U == 2;
        character = character << 6U | (next & 0x3FU);
    }
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    if (!isWhole || character < kSmallest.at(length) || isSurrogate || character > 0x10FFFF) {
        text.remove_prefix(1);
        return kNoCharacter;
    }
    text.remove_prefix(length);
    return character;
}

CodePage::CodePage() {
    for (unsigned int byte = 0; byte < mCharacters.size(); ++byte) {
        mCharacters[byte] = static_cast<char16_t>(byte);
        mBytes.emplace(byte, static_cast<unsigned char>(byte));
    }
}

CodePage::CodePage(int number) {
    Converter converter(number);
    for (unsigned int byte = 0; byte < mCharacters.size(); ++byte) {
        const char16_t character =
            byte < 0x80 ? static_cast<char16_t>(byte) : converter.Character(static_cast<unsigned char>(byte));
        mCharacters[byte] = character;
        mBytes.emplace(character, static_cast<unsigned char>(byte));
    }
}

int CodePage::NumberFor(std::string_view localeName) {
    const std::string language = LowerCase(localeName.substr(0, localeName.find_first_of("_.@")));
    const auto* const found =
        std::find_if(kLanguagePages.begin(), kLanguagePages.end(),
                     [&language](const LanguagePage& entry) { return entry.language == language; });
    return found == kLanguagePages.end() ? 1252 : found->page;
}

const CodePage& CodePage::System() {
    static const CodePage page = [] {
        std::string_view locale;
        for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"})
            if (const char* value = std::getenv(variable); value != nullptr && locale.empty())
                locale = value;
        try {
            return CodePage(NumberFor(locale));
        } catch (const RunTimeError&) {
            return CodePage();
        }
    }();
    return page;
}

void CodePage::DecodeTo(std::string_view bytes, std::string& utf8) const {
    for (const char byte : bytes)
        AppendUTF8(mCharacters[static_cast<unsigned char>(byte)], utf8);
}

std::string CodePage::Decode(std::string_view bytes) const {
    std::string utf8;
    utf8.reserve(bytes.size());
    DecodeTo(bytes, utf8);
    return utf8;
}

std::string CodePage::Encode(std::string_view utf8) const {
    std::string bytes;
    bytes.reserve(utf8.size());
    while (!utf8.empty())
        bytes += Byte(TakeCharacter(utf8));
    return bytes;
}

bool CodePage::Holds(std::string_view utf8) const {
    while (!utf8.empty())
        if (!mBytes.contains(TakeCharacter(utf8)))
            return false;
    return true;
}

char CodePage::Byte(char32_t character) const {
    const auto found = mBytes.find(character);
    return found == mBytes.end() ? '?' : static_cast<char>(found->second);
}

bool IsASCII(std::string_view text) {
    // Eight bytes at a time: this is asked of every value of every inventory file.
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::size_t i = 0;
    for (; i + sizeof(std::uint64_t) <= text.size(); i += sizeof(std::uint64_t)) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text.data() + i, sizeof bytes);
        if ((bytes & kHighBits) != 0)
            return false;
    }
    for (; i < text.size(); ++i)
        if ((static_cast<unsigned char>(text[i]) & 0x80U) != 0)
            return false;
    return true;
}

bool IsUTF8(std::string_view text) {
    while (!text.empty())
        if (TakeCharacter(text) == kNoCharacter)
            return false;
    return true;
}
