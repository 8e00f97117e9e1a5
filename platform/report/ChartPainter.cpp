// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/ChartPainter.h"

#include "platform/text.h"

#include <QChart>
#include <QGraphicsLayout>
#include <QGraphicsScene>
#include <QLegend>
#include <QPainter>
#include <QPieSeries>
#include <QPieSlice>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace report {

namespace {

/// Slices that can be told apart, and the least share of one whose label does not lie on its neighbour's.
constexpr std::size_t kMostSlices = 10;
constexpr double kLeastShare = 0.02;
constexpr TextStyle kLabelStyle{9, false, false, kTextColor};
constexpr qsizetype kLongestName = 200;
/// The pie's diameter as a share of the chart's shorter side, and its labels' distance of its radius.
constexpr double kPieSize = 0.6;
constexpr double kLabelArm = 0.14;
constexpr double kCircle = 360;
/// Nine o'clock, in degrees from twelve.
constexpr double kLeftSide = 270;

/// Neighbours differ in lightness as well as in hue, so a pie printed in greys can be read too.
constexpr std::array<QRgb, kMostSlices> kColors = {0xFF1F5A96, 0xFF7FB2DE, 0xFF3C7D4F, 0xFFF0C04C,
                                                   0xFF8A4B8F, 0xFFE48A5A, 0xFF4A9DA5, 0xFFC9D46A,
                                                   0xFFB04A55, 0xFFB9BEC6};

std::size_t Total(const Slices& slices) {
    return std::accumulate(slices.begin(), slices.end(), std::size_t{0},
                           [](std::size_t sum, const auto& slice) { return sum + slice.second; });
}

/// Turns the pie so that the small slices, which come last, stand at its left side: labels there are below
/// each other, while those above and below the pie would lie over each other.
double StartAngle(const Slices& slices, std::size_t total) {
    constexpr double kSmall = 0.1;
    double small = 0;
    for (const auto& slice : slices)
        if (const double share = static_cast<double>(slice.second) / static_cast<double>(total);
            share < kSmall)
            small += share * kCircle;
    return small == 0 ? 0 : kLeftSide - kCircle + small / 2;
}

} // namespace

Slices JoinSmallSlices(const Slices& slices) {
    const auto total = static_cast<double>(Total(slices));
    Slices shown;
    std::size_t joinedCount = 0;
    std::size_t joined = 0;
    for (const auto& slice : slices) {
        if (slice.second == 0)
            continue;
        const bool hasRoom = shown.size() + 1 < kMostSlices;
        if (joined == 0 && hasRoom && static_cast<double>(slice.second) / total >= kLeastShare) {
            shown.push_back(slice);
            continue;
        }
        joinedCount += slice.second;
        ++joined;
    }
    if (joined == 1)
        shown.push_back(slices[shown.size()]);
    else if (joined > 1)
        shown.emplace_back("Other (" + std::to_string(joined) + " values)", joinedCount);
    return shown;
}

std::string SliceLabel(const std::string& name, std::size_t count, std::size_t total, double width,
                       const FontMeasure& measure) {
    QString shown = ShownText(name).trimmed();
    if (shown.isEmpty())
        shown = QString::fromLatin1(kNoName);
    const double share =
        100.0 * static_cast<double>(count) / static_cast<double>(std::max<std::size_t>(total, 1));
    // Little is still something, and nearly all is not all.
    QString percent = QString::number(std::lround(share));
    if (share < 0.5)
        percent = QStringLiteral("under 1");
    else if (share >= 99.5 && count < total)
        percent = QStringLiteral("over 99");
    const std::string shownCount = FormatNumber(static_cast<double>(count), "#,##0");
    const QString numbers =
        QStringLiteral(" \u2014 %1 (%2 %)").arg(QString::fromStdString(shownCount), percent);
    const double room = width - measure.ShownWidth(kLabelStyle, numbers);
    if (measure.ShownWidth(kLabelStyle, shown) > room) {
        const QChar ellipsis(0x2026);
        shown.truncate(kLongestName);
        while (shown.size() > 1 && measure.ShownWidth(kLabelStyle, shown + ellipsis) > room)
            shown.chop(shown.back().isLowSurrogate() ? 2 : 1);
        shown = shown.trimmed() + ellipsis;
    }
    return (shown + numbers).toStdString();
}

void PaintChart(const PlacedChart& chart, QPainter& painter, const FontMeasure& measure) {
    const Slices slices = JoinSmallSlices(chart.slices);
    const std::size_t total = Total(slices);
    if (total == 0 || chart.width <= 0 || chart.height <= 0)
        return;

    auto* const series = new QPieSeries;
    series->setPieSize(kPieSize);
    const double start = StartAngle(slices, total);
    series->setPieStartAngle(start);
    series->setPieEndAngle(start + kCircle);
    const double reach = kPieSize / 2 * std::min(chart.width, chart.height) * (1 + kLabelArm);
    double angle = start;
    for (std::size_t i = 0; i < slices.size(); ++i) {
        const double part = kCircle * static_cast<double>(slices[i].second) / static_cast<double>(total);
        // A label stands from its arm's end to the chart's edge.
        constexpr double kMargin = 12;
        const double aside = reach * std::abs(std::sin((angle + part / 2) * std::numbers::pi * 2 / kCircle));
        angle += part;
        const QString label = QString::fromStdString(
            SliceLabel(slices[i].first, slices[i].second, total, chart.width / 2 - aside - kMargin, measure));
        // Names come from client PCs, and labels are taken for HTML.
        auto* const slice = new QPieSlice(label.toHtmlEscaped(), static_cast<double>(slices[i].second));
        slice->setBrush(QColor::fromRgb(kColors.at(i % kColors.size())));
        // A pie of one slice has nothing to part.
        slice->setPen(slices.size() > 1 ? QPen(Qt::white, kDesignScale) : QPen(Qt::NoPen));
        slice->setLabelFont(measure.FontFor(kLabelStyle, label));
        slice->setLabelPosition(QPieSlice::LabelOutside);
        slice->setLabelArmLengthFactor(kLabelArm);
        slice->setLabelVisible();
        series->append(slice);
    }

    // The scene is larger than life by as much as its letters are, see FontMeasure.
    QGraphicsScene scene;
    auto* const pie = new QChart;
    pie->setAnimationOptions(QChart::NoAnimation);
    pie->setBackgroundVisible(false);
    pie->setMargins({});
    pie->layout()->setContentsMargins(0, 0, 0, 0);
    pie->legend()->hide();
    pie->addSeries(series);
    // The theme colours what is added.
    for (QPieSlice* const slice : series->slices())
        slice->setLabelColor(Qt::black);
    pie->resize(chart.width * kDesignScale, chart.height * kDesignScale);
    scene.addItem(pie);
    pie->layout()->activate();
    const QRectF place(0, 0, pie->size().width(), pie->size().height());
    scene.setSceneRect(place);
    scene.render(&painter, QRectF(chart.left, chart.top, chart.width, chart.height), place);
}

} // namespace report
