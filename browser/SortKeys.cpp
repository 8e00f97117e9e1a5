// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/SortKeys.h"

#include "platform/codepage.h"
#include "platform/text.h"

#include <QString>

#include <algorithm>
#include <array>

namespace {

/// Lower-case letters whose base letters Unicode's decomposition does not give, and the Cyrillic short i,
/// which it decomposes although it is a letter of its own.
struct MadeOf {
    char32_t letter;
    const char* base;
};
constexpr std::array kMadeOf = {
    MadeOf{U'ß', "ss"}, MadeOf{U'æ', "ae"}, MadeOf{U'œ', "oe"}, MadeOf{U'ø', "o"}, MadeOf{U'đ', "d"},
    MadeOf{U'ð', "d"},  MadeOf{U'ł', "l"},  MadeOf{U'ı', "i"},  MadeOf{U'й', "й"},
};

bool IsBeyondASCII(char byte) {
    return static_cast<unsigned char>(byte) >= 0x80;
}

bool IsMark(QChar character) {
    constexpr char16_t kFirst = 0x0300;
    constexpr char16_t kLast = 0x036F;
    return character >= kFirst && character <= kLast;
}

std::string BaseOf(char32_t folded) {
    const auto* const known = std::find_if(kMadeOf.begin(), kMadeOf.end(),
                                           [folded](const MadeOf& made) { return made.letter == folded; });
    if (known != kMadeOf.end())
        return known->base;
    QString parts = QString::fromUcs4(&folded, 1).normalized(QString::NormalizationForm_D);
    parts.removeIf(IsMark);
    return LowerCase(parts.toStdString());
}

} // namespace

/// The bases decide. Among texts of the same bases those of ASCII come first, then the marks decide, behind a
/// NUL, which stands before all other bytes.
std::string_view SortKeys::KeyOf(std::string_view text) {
    if (IsASCII(text))
        return text;
    mBases.clear();
    mFolded.clear();
    while (!text.empty()) {
        const auto* const beyond = std::find_if(text.begin(), text.end(), IsBeyondASCII);
        const std::string_view plain = text.substr(0, static_cast<std::size_t>(beyond - text.begin()));
        mBases += plain;
        mFolded += plain;
        text.remove_prefix(plain.size());
        if (text.empty())
            break;
        const Letter& letter = LetterOf(TakeCharacter(text));
        mBases += letter.base;
        mFolded += letter.folded;
    }
    return Store(mBases, mBases == mFolded ? std::string_view() : mFolded);
}

const SortKeys::Letter& SortKeys::LetterOf(char32_t character) {
    Letter& letter = character < mCommonLetters.size() ? mCommonLetters[character] : mOtherLetters[character];
    if (letter.folded.empty()) {
        const char32_t folded = character == kNoCharacter ? char32_t{QChar::ReplacementCharacter}
                                                          : QChar::toCaseFolded(character);
        letter = {BaseOf(folded), QString::fromUcs4(&folded, 1).toStdString()};
    }
    return letter;
}

std::string_view SortKeys::Store(std::string_view bases, std::string_view folded) {
    constexpr std::size_t kBlock = std::size_t{1} << 20U;
    const std::size_t size = bases.size() + (folded.empty() ? 0 : 1 + folded.size());
    if (size > mRoom) {
        mRoom = std::max(kBlock, size);
        mEnd = mBlocks.emplace_back(std::make_unique_for_overwrite<char[]>(mRoom)).get();
    }
    char* const key = mEnd;
    mEnd = std::copy(bases.begin(), bases.end(), mEnd);
    if (!folded.empty()) {
        *mEnd++ = '\0';
        mEnd = std::copy(folded.begin(), folded.end(), mEnd);
    }
    mRoom -= size;
    return {key, size};
}
