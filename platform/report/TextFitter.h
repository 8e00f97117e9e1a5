// SPDX-License-Identifier: GPL-3.0-or-later
// Breaks texts into lines that fit a width, or cuts them to it. Widths of single characters are kept per
// style, so a text costs an addition per character.
//
// A line break in the text begins a line; any other control character counts as a blank. Blanks at the end of
// a line take no room.
#pragma once

#include "platform/report/Page.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace report {

/// One line of a broken text.
struct TextLine {
    std::string text;
    Continuation continuation = Continuation::None;
};

/// A style's measures.
class FittedStyle {
public:
    FittedStyle(const TextMeasure& measure, const TextStyle& style);

    const TextStyle& Style() const { return mStyle; }
    double LineHeight() const { return mLineHeight; }
    double Ascent() const { return mAscent; }

    /// Lines that `text` takes within `width`, one at least; into `lines` too where it is not null. A line
    /// holds one character at least, however narrow it is.
    std::size_t Wrap(std::string_view text, double width, std::vector<TextLine>* lines = nullptr) const;
    /// As much of `text` as fits on one line of `width`, with "…" where it is not all.
    std::string Cut(std::string_view text, double width) const;

private:
    double AdvanceOf(std::string_view character) const;

    const TextMeasure& mMeasure;
    TextStyle mStyle;
    double mLineHeight;
    double mAscent;
    std::array<double, 128> mASCII;
};

/// The styles of a layout, each made once.
class TextFitter {
public:
    explicit TextFitter(const TextMeasure& measure) : mMeasure(measure) {}

    const FittedStyle& Of(const TextStyle& style) const;

private:
    const TextMeasure& mMeasure;
    mutable std::vector<std::unique_ptr<FittedStyle>> mStyles;
};

} // namespace report
