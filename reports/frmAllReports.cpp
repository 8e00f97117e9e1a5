// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/frmAllReports.h"

#include "core/FileModule.h"
#include "core/Globals.h"
#include "core/LongWork.h"
#include "platform/errors.h"
#include "platform/prompts.h"
#include "platform/report/Viewer.h"

#include <QPointer>

#include <array>

namespace {

constexpr const char* kCreditLine = "Compiled by the MOVA Professional Administration Module";

/// A document need not have the line; customers' own mostly don't.
void SetCreditLine(report::Report& report) {
    try {
        report.SetText("CopLine", kCreditLine);
    } catch (const RunTimeError&) {
        return;
    }
}

} // namespace

frmAllReports::frmAllReports(const ReportContext& context)
    : ReportWindow(context, "frmAllReports", "CRViewer",
                   std::array<MenuRow, 6>{{{"mnuFile", "&File", nullptr},
                                           {"mnuExport", "Export", Export},
                                           {"mnuPrinter", "Printer Setup", SetUpPrinter},
                                           {"mnuPrintOut", "Print", Print},
                                           {"Split1", "", nullptr},
                                           {"mnuClose", "Close", Close}}}) {
    setWindowTitle("Report");
    // The list of custom reports is modal: the user sees that it waits.
    if (!FileModule::FormIsLoaded("frmCustomReports"))
        ShowWaitWindow();
}

void frmAllReports::FirstActivation() {
    const QPointer<frmAllReports> self(this);
    try {
        Compile();
    } catch (const RunTimeError&) {
        if (!self)
            return;
        Hourglass(false);
        Context().prompts.MsgBox("There was an ERROR while loading the Report", MsgBoxStyle::kOKOnly, "");
        if (!self)
            return;
        UnloadWaitWindow();
        Unload();
    }
}

void frmAllReports::Compile() {
    repaint();
    Hourglass(true);
    gRecordset = std::make_shared<ADODB::Recordset>();
    // Other commands put their own in the shared variable meanwhile; the report keeps this one.
    const std::shared_ptr<ADODB::Recordset> rows = gRecordset;
    rows->Open(QueryString, gConnection, ADODB::Cursor::Keyset, ADODB::Lock::ReadOnly);
    const QPointer<frmAllReports> self(this);
    // To sort the rows is one long step of the engine.
    bool isEmpty = false;
    LongWork::Aside([&] { isEmpty = rows->EndOfFile(); });
    if (!self)
        return;
    if (isEmpty) {
        UnloadWaitWindow();
        Context().prompts.MsgBox(
            "There's no data to display on the report. Please select some other criteria "
            "range for the report.",
            MsgBoxStyle::kQuestion, "No data to display");
        if (self)
            Unload();
        return;
    }
    SetCreditLine(*Report);
    Report->DatabaseTable(1).SetDataSource(rows);
    View();
    ViewerControl().DisplayGroupTree(DisplayGroupTree);
    if (!WaitWhileBusy())
        return;
    Hourglass(false);
    UnloadWaitWindow();
}
