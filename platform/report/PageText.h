// SPDX-License-Identifier: GPL-3.0-or-later
// A page with its texts as a reader's pointer and a finder meet them: places between characters, stretches
// of text, what is copied of them. Reading order is the page's own. Belongs to who shows the page.
#pragma once

#include "platform/report/FontMeasure.h"
#include "platform/report/Page.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstddef>
#include <vector>

namespace report {

/// A place between two characters of a page: before character `character` of text `text`.
struct TextPlace {
    std::size_t text = 0;
    qsizetype character = 0;

    friend bool operator==(const TextPlace&, const TextPlace&) = default;
    friend bool operator<(const TextPlace& one, const TextPlace& other) {
        return one.text < other.text || (one.text == other.text && one.character < other.character);
    }
};

struct TextRange {
    TextPlace first;
    /// Behind the last character.
    TextPlace last;

    bool IsEmpty() const { return !(first < last); }
    friend bool operator==(const TextRange&, const TextRange&) = default;
};

class PageText {
public:
    /// `measure` must outlive it.
    PageText(Page page, const FontMeasure& measure);

    const Page& Content() const { return mPage; }

    /// The place that a press at `point`, in points, means: that of the nearest line, nearest on it.
    TextPlace PlaceAt(const QPointF& point) const;
    /// Whether some text stands at `point`.
    bool HasTextAt(const QPointF& point) const;
    TextRange All() const;
    /// The whole object of a text at `place`, all its lines.
    TextRange ObjectAt(const TextPlace& place) const;

    /// The text of a stretch: a tab between two texts on one line, a new line otherwise; the lines of one
    /// wrapped text are one.
    QString Copy(const TextRange& range) const;
    /// What a stretch covers, in points.
    std::vector<QRectF> Rectangles(const TextRange& range) const;
    /// Where `sought` stands, without regard to case, in reading order; also across the lines of one text.
    std::vector<TextRange> Find(const QString& sought) const;

private:
    double CaretAt(std::size_t text, qsizetype character) const;

    Page mPage;
    const FontMeasure& mMeasure;
    std::vector<QString> mShown;
};

} // namespace report
