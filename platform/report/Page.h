// SPDX-License-Identifier: GPL-3.0-or-later
// What layout yields and painters, finders and exporters take: texts at their places, in reading order.
// Lengths are points (1/72 inch) from the paper's upper left corner.
#pragma once

#include "platform/report/Document.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace report {

/// The paper, as it is held: `width` is the longer side of a landscape page.
struct PageFormat {
    double width = 595.28;
    double height = 841.89;
    double leftMargin = 42;
    double topMargin = 42;
    double rightMargin = 42;
    double bottomMargin = 42;

    friend bool operator==(const PageFormat&, const PageFormat&) = default;
};

/// How wide and high texts are. The width of a text is the sum of its characters' widths: a layout asks for
/// each character's once, and adds them up.
class TextMeasure {
public:
    virtual ~TextMeasure() = default;
    /// Width of UTF-8 text in points.
    virtual double Width(const TextStyle& style, std::string_view text) const = 0;
    /// Distance of two lines in points, and of a line's top from its baseline.
    virtual double LineHeight(const TextStyle& style) const = 0;
    virtual double Ascent(const TextStyle& style) const = 0;
};

/// A measure in which every character is as wide as any other: `size` * 0.6 wide, `size` * 1.2 high. For
/// padded text and for tests.
class FixedMeasure final : public TextMeasure {
public:
    double Width(const TextStyle& style, std::string_view text) const override;
    double LineHeight(const TextStyle& style) const override;
    double Ascent(const TextStyle& style) const override;
};

/// What stands between two lines of one object's text: a blank, or nothing where a long word was broken.
enum class Continuation { None, AfterBlank, WithinWord };

/// One line of text. It is drawn within its object's box by `alignment`, on `baseline`.
struct PlacedText {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    double baseline = 0;
    Alignment alignment = Alignment::Left;
    TextStyle style;
    std::string text;
    /// Not None where it goes on from the text before it: finding and copying put the two together again.
    Continuation continuation = Continuation::None;
};

/// A filled rectangle: a rule, or the ground of a shaded line.
struct PlacedFill {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    std::uint32_t color = 0;
};

/// A pie of labelled counts, in the order of their sizes, the largest first.
struct PlacedChart {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    std::vector<std::pair<std::string, std::size_t>> slices;
};

struct Page {
    std::vector<PlacedFill> fills;
    std::vector<PlacedChart> charts;
    std::vector<PlacedText> texts;
};

} // namespace report
