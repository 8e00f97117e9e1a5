// SPDX-License-Identifier: GPL-3.0-or-later
// Paints the pie of a report: how its machines divide over the values of a field. Sharp at any size, on paper
// and in a PDF file as much as on the screen.
#pragma once

#include "platform/report/FontMeasure.h"
#include "platform/report/Page.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

class QPainter;

namespace report {

using Slices = std::vector<std::pair<std::string, std::size_t>>;

/// The slices that a pie can show so that each label has its place: the small ones of `slices`, which come in
/// the order of their sizes, are joined to one last slice, "Other (12 values)". A single small one stays.
Slices JoinSmallSlices(const Slices& slices);

/// "Debian 12 — 41 (27 %)"; an empty name is "(none)". A name too long for `width` points is cut, the numbers
/// never are.
std::string SliceLabel(const std::string& name, std::size_t count, std::size_t total, double width,
                       const FontMeasure& measure);

/// Paints `chart` with a painter that is scaled to points.
void PaintChart(const PlacedChart& chart, QPainter& painter, const FontMeasure& measure);

} // namespace report
