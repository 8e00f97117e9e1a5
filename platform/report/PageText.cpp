// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PageText.h"

#include "platform/report/PagePainter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace report {

namespace {

/// How far the texts of one line may stand apart vertically, in points.
constexpr double kSameLine = 1;

double Distance(double value, double low, double high) {
    return value < low ? low - value : std::max(0.0, value - high);
}

} // namespace

PageText::PageText(Page page, const FontMeasure& measure) : mPage(std::move(page)), mMeasure(measure) {
    mShown.reserve(mPage.texts.size());
    for (const PlacedText& text : mPage.texts)
        mShown.push_back(ShownText(text.text));
}

double PageText::CaretAt(std::size_t text, qsizetype character) const {
    const PlacedText& placed = mPage.texts[text];
    const QString& shown = mShown[text];
    const double left = LeftOf(placed, mMeasure.ShownWidth(placed.style, shown));
    return left + mMeasure.ShownWidth(placed.style, shown.left(character));
}

TextPlace PageText::PlaceAt(const QPointF& point) const {
    TextPlace place;
    double least = std::numeric_limits<double>::max();
    for (std::size_t i = 0; i < mShown.size(); ++i) {
        const PlacedText& text = mPage.texts[i];
        // The right line first, then the nearest text on it.
        constexpr double kLinesFirst = 1000;
        const double distance = kLinesFirst * Distance(point.y(), text.top, text.top + text.height) +
                                Distance(point.x(), CaretAt(i, 0), CaretAt(i, mShown[i].size()));
        if (distance < least) {
            least = distance;
            place.text = i;
        }
    }
    if (mShown.empty())
        return place;
    const QString& shown = mShown[place.text];
    double nearest = std::numeric_limits<double>::max();
    for (qsizetype i = 0; i <= shown.size(); ++i) {
        if (i < shown.size() && shown[i].isLowSurrogate())
            continue;
        const double distance = std::abs(point.x() - CaretAt(place.text, i));
        if (distance < nearest) {
            nearest = distance;
            place.character = i;
        }
    }
    return place;
}

bool PageText::HasTextAt(const QPointF& point) const {
    for (std::size_t i = 0; i < mShown.size(); ++i) {
        const PlacedText& text = mPage.texts[i];
        if (point.y() >= text.top && point.y() < text.top + text.height && point.x() >= CaretAt(i, 0) &&
            point.x() <= CaretAt(i, mShown[i].size()))
            return true;
    }
    return false;
}

TextRange PageText::All() const {
    if (mShown.empty())
        return {};
    return {{}, {mShown.size() - 1, mShown.back().size()}};
}

TextRange PageText::ObjectAt(const TextPlace& place) const {
    if (place.text >= mShown.size())
        return {};
    std::size_t first = place.text;
    while (first > 0 && mPage.texts[first].continuation != Continuation::None)
        --first;
    std::size_t last = place.text;
    while (last + 1 < mShown.size() && mPage.texts[last + 1].continuation != Continuation::None)
        ++last;
    return {{first, 0}, {last, mShown[last].size()}};
}

QString PageText::Copy(const TextRange& range) const {
    QString copied;
    for (std::size_t i = range.first.text; !range.IsEmpty() && i <= range.last.text; ++i) {
        const PlacedText& text = mPage.texts[i];
        if (i > range.first.text) {
            if (text.continuation == Continuation::AfterBlank)
                copied += QLatin1Char(' ');
            else if (text.continuation == Continuation::None)
                copied += std::abs(text.baseline - mPage.texts[i - 1].baseline) < kSameLine
                              ? QLatin1Char('\t')
                              : QLatin1Char('\n');
        }
        const qsizetype from = i == range.first.text ? range.first.character : 0;
        const qsizetype to = i == range.last.text ? range.last.character : mShown[i].size();
        copied += mShown[i].mid(from, to - from);
    }
    return copied;
}

std::vector<QRectF> PageText::Rectangles(const TextRange& range) const {
    std::vector<QRectF> rectangles;
    for (std::size_t i = range.first.text; !range.IsEmpty() && i <= range.last.text; ++i) {
        const double left = CaretAt(i, i == range.first.text ? range.first.character : 0);
        const double right = CaretAt(i, i == range.last.text ? range.last.character : mShown[i].size());
        if (right > left)
            rectangles.emplace_back(left, mPage.texts[i].top, right - left, mPage.texts[i].height);
    }
    return rectangles;
}

std::vector<TextRange> PageText::Find(const QString& sought) const {
    std::vector<TextRange> found;
    if (sought.isEmpty())
        return found;
    for (std::size_t first = 0; first < mShown.size();) {
        // The lines of one object as one text; where each begins in it.
        QString joined = mShown[first];
        std::vector<qsizetype> begins{0};
        std::size_t next = first + 1;
        for (; next < mShown.size() && mPage.texts[next].continuation != Continuation::None; ++next) {
            if (mPage.texts[next].continuation == Continuation::AfterBlank)
                joined += QLatin1Char(' ');
            begins.push_back(joined.size());
            joined += mShown[next];
        }
        // A stretch's end belongs to the line of its last character.
        const auto placeOf = [&](qsizetype at, bool isEnd) {
            const qsizetype character = isEnd ? at - 1 : at;
            const auto line = std::upper_bound(begins.begin(), begins.end(), character) - begins.begin() - 1;
            const std::size_t text = first + static_cast<std::size_t>(line);
            const qsizetype inLine = at - begins[static_cast<std::size_t>(line)];
            return TextPlace{text, std::min(inLine, mShown[text].size())};
        };
        for (qsizetype at = joined.indexOf(sought, 0, Qt::CaseInsensitive); at >= 0;
             at = joined.indexOf(sought, at + sought.size(), Qt::CaseInsensitive))
            found.push_back({placeOf(at, false), placeOf(at + sought.size(), true)});
        first = next;
    }
    return found;
}

} // namespace report
