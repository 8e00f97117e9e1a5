// SPDX-License-Identifier: GPL-3.0-or-later
// Writes pages to a PDF file, one after the other: no document is held as a whole. Faces are embedded once,
// and the texts can be searched and copied in the order in which they were painted. The file is written
// whole or not at all.
#pragma once

#include "platform/report/Page.h"

#include <functional>
#include <string>

class QPainter;

namespace report {

/// What to paint, as a printer and a file take it.
struct PaintedPages {
    PageFormat format;
    std::string title;
    /// Pages from 0; `count` of them from `first` on.
    int first = 0;
    int count = 0;
    /// Draws page `number` with a painter that is scaled to points from the paper's upper left corner.
    std::function<void(int number, QPainter& painter)> paint;
    /// Asked before each page; false ends the work.
    std::function<bool(int number)> progress;
};

/// Writes `pages`, at least one, to `path`. Returns false where it was stopped, which leaves no file. Raises
/// errors 61, 70, 75, 76 for the file, and what painting raises.
bool WritePDF(const std::string& path, const PaintedPages& pages);

} // namespace report
