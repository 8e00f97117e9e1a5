// SPDX-License-Identifier: GPL-3.0-or-later
// Paints a page of a report: on the screen, on a printer, into a PDF file. Black on white paper whatever the
// desktop's colours are; the paper itself is painted by who has some.
#pragma once

#include "platform/report/FontMeasure.h"
#include "platform/report/Page.h"

#include <QRectF>

class QPainter;

namespace report {

/// Paints `page` with a painter that is scaled to points. What lies outside of `exposed`, in points, may be
/// left out; a null rectangle is the whole page. Texts go out in reading order.
void PaintPage(const Page& page, QPainter& painter, const FontMeasure& measure, const QRectF& exposed = {});

/// Where a text of a box begins, in points from the paper's left edge, when it is `width` wide.
double LeftOf(const PlacedText& text, double width);

} // namespace report
