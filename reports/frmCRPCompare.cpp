// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/frmCRPCompare.h"

#include "core/Globals.h"
#include "core/HelpKey.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/prompts.h"
#include "platform/report/Viewer.h"
#include "reports/Comparison.h"
#include "reports/Documents.h"

#include <QAction>
#include <QPointer>

#include <array>

frmCRPCompare::frmCRPCompare(const ReportContext& context)
    : ReportWindow(context, "frmCRPCompare", "CRViewer1",
                   std::array<MenuRow, 7>{
                       {{"mnuFile", "File", nullptr},
                        {"mnuExport", "&Export", Export},
                        {"mnuFixEm", "&Fix Changes",
                         [](ReportWindow& window) { static_cast<frmCRPCompare&>(window).mnuFixEm(); }},
                        {"mnuPrn", "Printer Setup", SetUpPrinter},
                        {"mnuPrint", "Print", Print},
                        {"mnuSplit", "", nullptr},
                        {"mnuClose", "&Close", Close}}}) {
    setWindowTitle("Component Comparison Report");
    HelpTopic(*this, "comparison.html");
}

void frmCRPCompare::FirstActivation() {
    const QPointer<frmCRPCompare> self(this);
    try {
        Compile();
    } catch (const RunTimeError& error) {
        // The window stays, without a report, and so does the wait window.
        if (self)
            TellFailure(error);
    }
}

void frmCRPCompare::Compile() {
    ShowWaitWindow();
    if (gImportDir.empty())
        findChild<QAction*>("mnuFixEm")->setEnabled(false);
    gRecordset = std::make_shared<ADODB::Recordset>();
    gRecordset->Open(ComparisonStatement(), gConnection, ADODB::Cursor::Keyset, ADODB::Lock::ReadOnly);
    Report = MakeReport("CRPCompare");
    Report->SetText("SelectionLine", ConfID == 0 ? "All components" : "Mismatches only");
    Report->OnFormat("Section3", CRPCompare::Section3_Format);
    Report->DatabaseTable(1).SetDataSource(gRecordset);
    // To the byte, as Fix Changes compares: every row that it acts on is shown.
    if (ConfID != 0)
        Report->RecordSelectionFormula("{Comparison.Org} <> {Comparison.Cur}", report::TextComparison::Exact);
    View();
    if (WaitWhileBusy())
        UnloadWaitWindow();
}

void frmCRPCompare::mnuFixEm() {
    const QPointer<frmCRPCompare> self(this);
    try {
        if (!gRecordset)
            Raise(Errors::kNoObject);
        FixChanges(*gRecordset, FolderOnDisk(gImportDir));
        Context().prompts.MsgBox(
            "Original files was reset successfully! You have to re-import from the file menu.",
            MsgBoxStyle::kQuestion, "Fixed successfully");
        if (self)
            Unload();
    } catch (const RunTimeError& error) {
        TellFailure(error);
    }
}

void frmCRPCompare::TellFailure(const RunTimeError& error) {
    Context().prompts.MsgBox(error.description, MsgBoxStyle::kCritical,
                             "Error #" + std::to_string(error.number));
}
