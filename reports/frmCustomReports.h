// SPDX-License-Identifier: GPL-3.0-or-later
// The list of the customers' own reports beside the program. It is modal; whoever makes it runs it by exec.
// A report that is run stands on top of it, and the list comes back when the report is closed. Files that
// are added meanwhile do not show.
#pragma once

#include "reports/ReportContext.h"

#include <QDialog>

#include <cstdint>
#include <string>

class QListWidget;

class frmCustomReports final : public QDialog {
    Q_OBJECT

public:
    explicit frmCustomReports(const ReportContext& context);
    ~frmCustomReports() override;

    /// Shows the report document `filename` in frmAllReports, modally. A failure is shown in a box, as is a
    /// statement that is no query: a report reads the inventory and never changes it.
    void RunCustomReport(const std::string& filename, const std::string& reportName,
                         const std::string& queryString, std::int16_t displayGroup);

private:
    void BuildControls();
    void Load();
    void RunSelected();

    const ReportContext& mContext;
    QListWidget* lstReports = nullptr;
};
