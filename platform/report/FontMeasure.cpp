// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/FontMeasure.h"

#include <QFontMetricsF>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <unordered_map>

namespace report {

namespace {

constexpr std::size_t kTableSize = 256;
/// Characters beyond the table that a face remembers, before it begins anew.
constexpr std::size_t kMostRemembered = 1U << 16U;
constexpr double kLargestSize = 400;
/// Space between two lines beyond what the face asks for, as a share of its size.
constexpr double kExtraLeading = 0.08;

struct Range {
    char32_t first;
    char32_t last;
};

/// Letters that stand side by side, each as wide alone as within a word: Latin, Greek, Cyrillic, Armenian,
/// signs, Chinese, Japanese, Korean. All else is shaped by the toolkit, word by word.
constexpr std::array<Range, 11> kPlain = {{{0x0020, 0x007E},
                                           {0x00A0, 0x00AC},
                                           {0x00AE, 0x02FF},
                                           {0x0370, 0x0482},
                                           {0x048A, 0x058F},
                                           {0x1E00, 0x1FFF},
                                           {0x2010, 0x2027},
                                           {0x2030, 0x205E},
                                           {0x20A0, 0x20CF},
                                           {0x2100, 0x2BFF},
                                           {0x2E80, 0x3029}}};
constexpr std::array<Range, 5> kPlainEast = {
    {{0x3030, 0x3098}, {0x309B, 0xA4CF}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF}, {0xFF01, 0xFFEE}}};

bool IsPlain(char32_t character) {
    const auto holds = [character](const Range& range) {
        return character >= range.first && character <= range.last;
    };
    return std::any_of(kPlain.begin(), kPlain.end(), holds) ||
           std::any_of(kPlainEast.begin(), kPlainEast.end(), holds);
}

bool IsPlain(const QString& text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar unit) { return IsPlain(static_cast<char32_t>(unit.unicode())); });
}

/// Soft hyphens, marks and overrides of direction, and marks of a text's beginning.
bool ShowsNothing(char16_t unit) {
    return unit == 0x00AD || unit == 0x061C || (unit >= 0x200B && unit <= 0x200F) ||
           (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2060 && unit <= 0x206F) || unit == 0xFEFF;
}

bool IsControl(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F) || unit == 0x2028 || unit == 0x2029;
}

/// Takes a character of two or three bytes off the front of `text`; nothing for other or malformed ones.
std::optional<char32_t> TakeCharacter(std::string_view& text) {
    const auto at = [&text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const auto isTail = [&](std::size_t index) {
        return index < text.size() && (at(index) & 0xC0U) == 0x80U;
    };
    const char32_t lead = at(0);
    if (lead >= 0xC2 && lead <= 0xDF && isTail(1)) {
        const char32_t character = ((lead & 0x1FU) << 6U) | (at(1) & 0x3FU);
        text.remove_prefix(2);
        return character;
    }
    if (lead >= 0xE0 && lead <= 0xEF && isTail(1) && isTail(2)) {
        const char32_t character = ((lead & 0x0FU) << 12U) | ((at(1) & 0x3FU) << 6U) | (at(2) & 0x3FU);
        text.remove_prefix(3);
        if (character >= 0x800)
            return character;
    }
    return std::nullopt;
}

QFont FontOf(const TextStyle& style, bool isPlain) {
    QFont font;
    // The first family is installed with the program; the others stand in for it elsewhere.
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Sans"),
                      QStringLiteral("Arial"), QStringLiteral("sans-serif")});
    const double size = std::clamp(style.size, 1.0, kLargestSize);
    font.setPixelSize(static_cast<int>(std::lround(size * kDesignScale)));
    font.setBold(style.isBold);
    font.setItalic(style.isItalic);
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferNoHinting);
    const auto shaping = isPlain ? QFont::PreferNoShaping : QFont::PreferDefault;
    font.setStyleStrategy(static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | shaping));
    return font;
}

} // namespace

struct FontMeasure::Face {
    explicit Face(const TextStyle& textStyle)
        : style(textStyle),
          plainFont(FontOf(textStyle, true)),
          shapedFont(FontOf(textStyle, false)),
          plain(plainFont),
          shaped(shapedFont) {
        const double blank = plain.horizontalAdvance(QLatin1Char(' ')) / kDesignScale;
        for (std::size_t i = 0; i < kTableSize; ++i) {
            const auto unit = static_cast<char16_t>(i);
            if (ShowsNothing(unit))
                table.at(i) = 0;
            else if (IsControl(unit))
                table.at(i) = blank;
            else
                table.at(i) = plain.horizontalAdvance(QChar(unit)) / kDesignScale;
        }
        const double leading = kExtraLeading * style.size;
        lineHeight = plain.lineSpacing() / kDesignScale + leading;
        ascent = plain.ascent() / kDesignScale + leading / 2;
    }

    bool IsOf(const TextStyle& other) const {
        return style.size == other.size && style.isBold == other.isBold && style.isItalic == other.isItalic;
    }

    double Remembered(char32_t character) const {
        if (const auto known = rest.find(character); known != rest.end())
            return known->second;
        if (rest.size() >= kMostRemembered)
            rest.clear();
        const double width = plain.horizontalAdvance(QChar(static_cast<char16_t>(character))) / kDesignScale;
        rest.emplace(character, width);
        return width;
    }

    TextStyle style;
    QFont plainFont;
    QFont shapedFont;
    QFontMetricsF plain;
    QFontMetricsF shaped;
    std::array<double, kTableSize> table{};
    mutable std::unordered_map<char32_t, double> rest;
    double lineHeight = 0;
    double ascent = 0;
};

FontMeasure::FontMeasure() = default;
FontMeasure::~FontMeasure() = default;

const FontMeasure::Face& FontMeasure::FaceOf(const TextStyle& style) const {
    if (mLatest != nullptr && mLatest->IsOf(style))
        return *mLatest;
    for (const std::unique_ptr<Face>& face : mFaces)
        if (face->IsOf(style)) {
            mLatest = face.get();
            return *mLatest;
        }
    mFaces.push_back(std::make_unique<Face>(style));
    mLatest = mFaces.back().get();
    return *mLatest;
}

double FontMeasure::Width(const TextStyle& style, std::string_view text) const {
    const Face& face = FaceOf(style);
    double width = 0;
    for (std::string_view rest = text; !rest.empty();) {
        const auto byte = static_cast<unsigned char>(rest.front());
        if (byte < 0x80) {
            width += face.table[byte];
            rest.remove_prefix(1);
            continue;
        }
        const std::optional<char32_t> character = TakeCharacter(rest);
        if (character && *character < kTableSize)
            width += face.table[*character];
        else if (character && IsPlain(*character))
            width += face.Remembered(*character);
        else if (!character || !ShowsNothing(static_cast<char16_t>(*character)))
            return ShownWidth(style, ShownText(text));
    }
    return width;
}

double FontMeasure::LineHeight(const TextStyle& style) const {
    return FaceOf(style).lineHeight;
}

double FontMeasure::Ascent(const TextStyle& style) const {
    return FaceOf(style).ascent;
}

const QFont& FontMeasure::FontFor(const TextStyle& style, const QString& shown) const {
    const Face& face = FaceOf(style);
    return IsPlain(shown) ? face.plainFont : face.shapedFont;
}

double FontMeasure::ShownWidth(const TextStyle& style, const QString& shown) const {
    const Face& face = FaceOf(style);
    if (!IsPlain(shown))
        return face.shaped.horizontalAdvance(shown) / kDesignScale;
    double width = 0;
    for (const QChar unit : shown)
        width += unit.unicode() < kTableSize ? face.table[unit.unicode()]
                                             : face.Remembered(static_cast<char32_t>(unit.unicode()));
    return width;
}

QString ShownText(std::string_view text) {
    QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    const auto isOdd = [](QChar unit) { return ShowsNothing(unit.unicode()) || IsControl(unit.unicode()); };
    if (std::none_of(shown.begin(), shown.end(), isOdd))
        return shown;
    shown.removeIf([](QChar unit) { return ShowsNothing(unit.unicode()); });
    for (QChar& unit : shown)
        if (IsControl(unit.unicode()))
            unit = QLatin1Char(' ');
    return shown;
}

} // namespace report
