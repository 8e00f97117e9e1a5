// SPDX-License-Identifier: GPL-3.0-or-later
// The window that shows a report of the catalogue or one of the customer's own. There is one at a time: who
// shows another report unloads it first. Its maker sets the public members and the title, then shows it.
#pragma once

#include "reports/ReportWindow.h"

class frmAllReports final : public ReportWindow {
    Q_OBJECT

public:
    /// Loads the window, hidden, behind the wait window; without one where frmCustomReports is loaded.
    explicit frmAllReports(const ReportContext& context);

    /// The complete statement that feeds `Report`.
    std::string QueryString;
    bool DisplayGroupTree = false;

protected:
    void FirstActivation() override;

private:
    void Compile();
};
