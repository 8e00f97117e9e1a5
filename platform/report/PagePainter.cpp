// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PagePainter.h"

#include "platform/report/ChartPainter.h"

#include <QColor>
#include <QPainter>

namespace report {

namespace {

QColor ColorOf(std::uint32_t color) {
    constexpr std::uint32_t kByte = 0xFF;
    return {static_cast<int>(color & kByte), static_cast<int>((color >> 8U) & kByte),
            static_cast<int>((color >> 16U) & kByte)};
}

void PaintTexts(const Page& page, QPainter& painter, const FontMeasure& measure, const QRectF& exposed) {
    // Faces are larger than life, see FontMeasure.
    painter.scale(1 / kDesignScale, 1 / kDesignScale);
    painter.setLayoutDirection(Qt::LeftToRight);
    const QFont* font = nullptr;
    std::uint32_t color = kTextColor;
    painter.setPen(ColorOf(color));
    for (const PlacedText& text : page.texts) {
        if (text.text.empty() ||
            (!exposed.isNull() && (text.top > exposed.bottom() || text.top + text.height < exposed.top())))
            continue;
        const QString shown = ShownText(text.text);
        const QFont& wanted = measure.FontFor(text.style, shown);
        if (&wanted != font) {
            font = &wanted;
            painter.setFont(wanted);
        }
        if (text.style.color != color) {
            color = text.style.color;
            painter.setPen(ColorOf(color));
        }
        const double width = text.alignment == Alignment::Left ? 0 : measure.ShownWidth(text.style, shown);
        painter.drawText(QPointF(LeftOf(text, width), text.baseline) * kDesignScale, shown);
    }
}

} // namespace

double LeftOf(const PlacedText& text, double width) {
    switch (text.alignment) {
        case Alignment::Right:
            return text.left + text.width - width;
        case Alignment::Center:
            return text.left + (text.width - width) / 2;
        default:
            return text.left;
    }
}

void PaintPage(const Page& page, QPainter& painter, const FontMeasure& measure, const QRectF& exposed) {
    const auto isHidden = [&exposed](const auto& placed) {
        return !exposed.isNull() &&
               !exposed.intersects({placed.left, placed.top, placed.width, std::max(placed.height, 0.1)});
    };
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (const PlacedFill& fill : page.fills)
        if (!isHidden(fill))
            painter.fillRect(QRectF(fill.left, fill.top, fill.width, fill.height), ColorOf(fill.color));
    for (const PlacedChart& chart : page.charts)
        if (!isHidden(chart))
            PaintChart(chart, painter, measure);
    PaintTexts(page, painter, measure, exposed);
    painter.restore();
}

} // namespace report
