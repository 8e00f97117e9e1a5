// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/TextFitter.h"

#include <algorithm>

namespace report {

namespace {

/// Widths are sums; what exceeds by less than a printer's dot fits.
constexpr double kTolerance = 0.01;
constexpr std::string_view kEllipsis = "…";

bool IsBlank(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte <= ' ' || byte == 0x7F;
}

/// Bytes of the character at `at`; a byte that begins no character is one by itself.
std::size_t CharacterLength(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = lead < 0xC2 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 1;
    if (at + length > text.size())
        return 1;
    for (std::size_t i = 1; i < length; ++i)
        if ((static_cast<unsigned char>(text[at + i]) & 0xC0U) != 0x80U)
            return 1;
    return length;
}

std::string Plain(std::string_view text) {
    std::string plain(text);
    std::replace_if(plain.begin(), plain.end(), IsBlank, ' ');
    return plain;
}

std::string_view WithoutBlanksBehind(std::string_view text) {
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Where a line may end before a word, and how far the line had come at that word.
struct BreakPlace {
    std::size_t end = 0;
    std::size_t word = 0;
    double widthAtWord = 0;
};

/// Collects lines, or counts them alone.
class LineCollector {
public:
    LineCollector(std::string_view text, std::vector<TextLine>* lines) : mText(text), mLines(lines) {}

    void Add(std::size_t begin, std::size_t end, Continuation next) {
        ++mCount;
        if (mLines != nullptr)
            mLines->push_back({Plain(WithoutBlanksBehind(mText.substr(begin, end - begin))), mContinuation});
        mContinuation = next;
    }
    std::size_t Count() const { return mCount; }

private:
    std::string_view mText;
    std::vector<TextLine>* mLines;
    std::size_t mCount = 0;
    Continuation mContinuation = Continuation::None;
};

} // namespace

FittedStyle::FittedStyle(const TextMeasure& measure, const TextStyle& style)
    : mMeasure(measure),
      mStyle(style),
      mLineHeight(std::max(measure.LineHeight(style), 0.0)),
      mAscent(std::clamp(measure.Ascent(style), 0.0, mLineHeight)) {
    for (std::size_t c = 0; c < mASCII.size(); ++c) {
        const char character = IsBlank(static_cast<char>(c)) ? ' ' : static_cast<char>(c);
        mASCII[c] = measure.Width(style, std::string_view(&character, 1));
    }
}

double FittedStyle::AdvanceOf(std::string_view character) const {
    const auto lead = static_cast<unsigned char>(character.front());
    return lead < mASCII.size() ? mASCII[lead] : mMeasure.Width(mStyle, character);
}

std::size_t FittedStyle::Wrap(std::string_view text, double width, std::vector<TextLine>* lines) const {
    text = WithoutBlanksBehind(text);
    width += kTolerance;
    LineCollector collector(text, lines);
    std::size_t begin = 0;
    double used = 0;
    BreakPlace place;
    bool isBehindBlank = false;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '\n') {
            collector.Add(begin, at, Continuation::AfterBlank);
            begin = ++at;
            used = 0;
            place = {begin, begin, 0};
            isBehindBlank = false;
            continue;
        }
        const std::size_t length = CharacterLength(text, at);
        const double advance = AdvanceOf(text.substr(at, length));
        if (IsBlank(text[at])) {
            if (!isBehindBlank)
                place.end = at;
            isBehindBlank = true;
        } else {
            if (isBehindBlank)
                place = {place.end, at, used};
            isBehindBlank = false;
            while (used + advance > width && at > begin) {
                // A line of blanks alone would win nothing.
                const bool endsAtBlank = place.word > begin && place.end > begin;
                collector.Add(begin, endsAtBlank ? place.end : at,
                              endsAtBlank ? Continuation::AfterBlank : Continuation::WithinWord);
                used = endsAtBlank ? used - place.widthAtWord : 0;
                begin = endsAtBlank ? place.word : at;
                place = {begin, begin, 0};
            }
        }
        used += advance;
        at += length;
    }
    collector.Add(begin, text.size(), Continuation::None);
    return collector.Count();
}

std::string FittedStyle::Cut(std::string_view text, double width) const {
    text = WithoutBlanksBehind(text);
    width += kTolerance;
    const double ellipsis = mMeasure.Width(mStyle, kEllipsis);
    double used = 0;
    std::size_t keptBesideEllipsis = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = CharacterLength(text, at);
        used += AdvanceOf(text.substr(at, length));
        if (used > width)
            return ellipsis > width
                       ? std::string()
                       : Plain(WithoutBlanksBehind(text.substr(0, keptBesideEllipsis))).append(kEllipsis);
        at += length;
        if (used + ellipsis <= width)
            keptBesideEllipsis = at;
    }
    return Plain(text);
}

const FittedStyle& TextFitter::Of(const TextStyle& style) const {
    for (const auto& known : mStyles)
        if (known->Style().size == style.size && known->Style().isBold == style.isBold &&
            known->Style().isItalic == style.isItalic)
            return *known;
    return *mStyles.emplace_back(std::make_unique<FittedStyle>(mMeasure, style));
}

} // namespace report
