// SPDX-License-Identifier: GPL-3.0-or-later
// Measures texts in the face that reports are printed in, independent of any screen: a page breaks at the
// same places on every display, on paper and in a PDF file. Faces are held at kDesignScale times their size,
// so that widths are not rounded to pixels; painters scale them down again. There is no kerning, hence the
// width of a text is the sum of its characters'. Needs the program object.
#pragma once

#include "platform/report/Page.h"

#include <QFont>
#include <QString>

#include <memory>
#include <string_view>
#include <vector>

namespace report {

/// How many times larger than on paper the faces are.
constexpr double kDesignScale = 16;

class FontMeasure final : public TextMeasure {
public:
    FontMeasure();
    ~FontMeasure() override;
    FontMeasure(const FontMeasure&) = delete;
    FontMeasure& operator=(const FontMeasure&) = delete;

    /// The width as painted: of control characters as blanks, of writing marks that show nothing as none.
    double Width(const TextStyle& style, std::string_view text) const override;
    double LineHeight(const TextStyle& style) const override;
    double Ascent(const TextStyle& style) const override;

    /// The font to paint `shown`, a ShownText, with; `kDesignScale` times as large as on paper.
    const QFont& FontFor(const TextStyle& style, const QString& shown) const;
    /// The width of a ShownText in points.
    double ShownWidth(const TextStyle& style, const QString& shown) const;

private:
    struct Face;
    const Face& FaceOf(const TextStyle& style) const;

    mutable std::vector<std::unique_ptr<Face>> mFaces;
    mutable const Face* mLatest = nullptr;
};

/// What is painted of `text`: control characters are blanks, and marks that would turn the reading direction
/// of what follows are left out, since a client PC may have written them.
QString ShownText(std::string_view text);

} // namespace report
