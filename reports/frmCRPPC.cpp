// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/frmCRPPC.h"

#include "core/Globals.h"
#include "platform/report/Viewer.h"
#include "reports/Catalogue.h"
#include "reports/Documents.h"

namespace {

struct Subreport {
    std::string_view name;
    /// The statement, in front of the number of the configuration and behind it.
    std::string_view before;
    std::string_view after;
};

constexpr std::array<Subreport, 5> kSubreports = {
    {{"SubPC", "SELECT * FROM PC WHERE ConfID=", ""},
     {"SubIO", "SELECT * FROM Input WHERE ConfID=", ""},
     {"SubOS", "SELECT * FROM OS WHERE ConfID=", ""},
     {"SubDrives", "SELECT * FROM DrivesData WHERE ConfID=", " ORDER BY COMPUTERNAME, [Drive Root]"},
     {"SubPrinters", "SELECT * FROM PrinterData WHERE ConfID=", " ORDER BY COMPUTERNAME, LocalOrRemote"}}};

std::shared_ptr<ADODB::Recordset> OpenRows(const std::string& statement) {
    auto rows = std::make_shared<ADODB::Recordset>();
    rows->Open(statement, gConnection, ADODB::Cursor::Keyset, ADODB::Lock::ReadOnly);
    return rows;
}

} // namespace

frmCRPPC::frmCRPPC(const ReportContext& context)
    : ReportWindow(context, "frmCRPPC", "CRViewer1",
                   std::array<MenuRow, 6>{{{"mnuFile", "&File", nullptr},
                                           {"mnuExport", "&Export", Export},
                                           {"mnuPrn", "Printer Setup", SetUpPrinter},
                                           {"mnuPrint", "Print", Print},
                                           {"mnuSplit", "", nullptr},
                                           {"mnuClose", "&Close", Close}}}) {
    setWindowTitle("PC Configuration Report");
}

void frmCRPPC::FirstActivation() {
    repaint();
    Hourglass(true);
    ShowWaitWindow();
    Report = MakeReport("CRPPC");
    Report->SetText("ConfigurationLine", ConfigurationName(ConfID));
    gRecordset = OpenRows("SELECT * FROM NET ORDER BY COMPUTERNAME");
    for (std::size_t i = 0; i < kSubreports.size(); ++i)
        mSubreportRows.at(i) = OpenRows(std::string(kSubreports.at(i).before)
                                            .append(std::to_string(ConfID))
                                            .append(kSubreports.at(i).after));
    Report->DatabaseTable(1).SetDataSource(gRecordset, report::kDataRecordset);
    BindSubreports();
    View();
    if (!WaitWhileBusy())
        return;
    Hourglass(false);
    UnloadWaitWindow();
}

void frmCRPPC::BindSubreports() {
    for (int section = 1; section <= Report->SectionCount(); ++section) {
        for (int number = 1; number <= Report->ObjectCount(section); ++number) {
            const report::ReportObject object = Report->Object(section, number);
            if (object.Kind() != report::Kind::Subreport)
                continue;
            report::Report& subreport = object.OpenSubreport();
            for (std::size_t i = 0; i < kSubreports.size(); ++i)
                if (object.Name() == kSubreports.at(i).name)
                    subreport.DatabaseTable(1).SetDataSource(mSubreportRows.at(i), report::kDataRecordset);
        }
    }
}
