// SPDX-License-Identifier: GPL-3.0-or-later
// The PC configuration report: a page for every machine, with five subreports that are fed by queries of
// their own. Everything is read once, when the window is shown for the first time. A failure there is not
// caught, and ends the program.
#pragma once

#include "reports/ReportWindow.h"

#include <array>

class frmCRPPC final : public ReportWindow {
    Q_OBJECT

public:
    explicit frmCRPPC(const ReportContext& context);

    /// The configuration to show: 0 original, 1 current.
    int ConfID = 0;

protected:
    void FirstActivation() override;

private:
    void BindSubreports();

    /// In the order of the subreports in the source; the report reads them while it is on show.
    std::array<std::shared_ptr<ADODB::Recordset>, 5> mSubreportRows;
};
