// SPDX-License-Identifier: GPL-3.0-or-later
// The comparison of the machines' components with their original ones, and Fix Changes. The statement is run
// once, when the window is shown for the first time.
#pragma once

#include "reports/ReportWindow.h"

struct RunTimeError;

class frmCRPCompare final : public ReportWindow {
    Q_OBJECT

public:
    explicit frmCRPCompare(const ReportContext& context);

    /// No configuration here: 0 shows all rows, any other number the mismatches alone.
    int ConfID = 0;

    /// Makes each machine with a difference its own new original: in the inventory folder, not in the
    /// database, which follows at the next import. It walks the shared recordset, whichever that is by now.
    void mnuFixEm();

protected:
    void FirstActivation() override;

private:
    void Compile();
    void TellFailure(const RunTimeError& error);
};
