// SPDX-License-Identifier: GPL-3.0-or-later
// The window part that shows a report: pages with zoom, a group tree, find, copying, page set-up, printing,
// export. It fills the window that it is put into. A report is read and laid out in slices between events;
// the first page shows as soon as it is known.
//
// Its keys, which the window around it must not bind: Ctrl+P print, Ctrl+E export, F5 refresh, Esc stop,
// Ctrl+F find, F3 and Shift+F3 next and previous place, Ctrl+A and Ctrl+C select a page and copy, Ctrl+Plus,
// Ctrl+Minus and Ctrl+0 zoom, Ctrl+Page Up and Ctrl+Page Down turn a page. PageView has its own.
#pragma once

#include "platform/report/Report.h"

#include <QWidget>

#include <memory>

class Prompts;

namespace report {

class Printing;

class Viewer final : public QWidget {
    Q_OBJECT

public:
    /// Questions go through `prompts`, paper through `printing`; both must outlive it.
    Viewer(Prompts& prompts, Printing& printing, QWidget* parent = nullptr);
    ~Viewer() override;

    /// What to show; takes part in owning it.
    void ReportSource(std::shared_ptr<Report> report);
    /// Begins to read and show it; raises error 91 without a report. A failure to read raises from IsBusy, or
    /// is told in a box once nobody asks it any more.
    void ViewReport();
    /// Whether the group tree stands beside the pages.
    void DisplayGroupTree(bool isShown);
    /// Whether rows are still read or laid out. Does a slice of the work itself, so a loop that yields
    /// between two calls makes progress. Raises what reading the data raises.
    bool IsBusy();

    /// Prints with the print dialog, on the printer selected for the report.
    void PrintReport();
    /// Asks for file and format, then exports.
    void ExportReport();

    /// Its insides, for its own sources alone.
    struct Implementation;

private:
    std::unique_ptr<Implementation> mThis;
};

} // namespace report
