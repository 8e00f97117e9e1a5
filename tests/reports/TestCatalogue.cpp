// SPDX-License-Identifier: GPL-3.0-or-later
// Every canned report and that of the PCs, run by its command over the sample inventory: which rows it shows,
// in which order.
#include "reports/Catalogue.h"
#include "reports/frmAllReports.h"
#include "reports/frmCRPPC.h"
#include "tests/reports/ReportsTest.h"

namespace {

using testing::HasSubstr;

TEST_F(ReportsTest, EachMenuItemShowsItsRows) {
    const struct {
        const char *menuItem, *field, *values, *why;
        /// Fields that the query has under another name, to be found by their place, or works out.
        const char* unlike = "";
    } cases[] = {
        {"mnuRepBasicUser", "COMPUTERNAME", "PC1/PC2/PC3", "machines have no configuration"},
        {"mnuRepUserDetailed", "COMPUTERNAME", "PC2/PC1", "by surname, then name: Amy before Zoe"},
        {"mnuRepUserLogon", "COMPUTERNAME", "PC3/PC1/PC2", "the latest logon first"},
        {"mnuRepRAM", "COMPUTERNAME", "PC2/PC1", "the most memory first"},
        {"mnuRepFixedDrive", "Drive Type", "FAT/NTFS/EXT", "the field shows the file system; by drive letter",
         "Drive Type=Drive FileSystem "},
        {"mnuRepCPU", "COMPUTERNAME", "PC1/PC2", "one processor: by name"},
        {"mnuRepOffice", "MS Version", "-/MS Office 97", "a program of the other configuration names it too",
         "MS Version=OfficeVersion "},
        {"mnuRepOS", "COMPUTERNAME", "PC2/PC1", "98 before NT"},
        {"mnuRepUninstall", "Program Name", "Atlas/Paint", "the current configuration's alone"},
        {"mnuRepODBC", "Driver Name", "Access/Text", "by driver"},
        {"mnuRepDeviceConf", "CountOfDevice Name", "1/2",
         "eleven characters are a conflict; two cards are one row", "CountOfDevice Name! "},
        {"mnuRepUserAgainsOS", "OS Name Reg", "98/NT", "the field shows the short name",
         "OS Name Reg=OS Name API "},
        {"mnuRepNetPrinters", "Printer Name", "far", "remote is the single letter R"},
        {"mnuRepNetDrives", "Drive Root", "N:", "network drives alone"},
        {"mnuRepNetProtocol", "Device Name", "fine/card", "IPX before TCP/IP"},
    };
    ASSERT_EQ(std::size(cases), Catalogue().size());
    for (const auto& c : cases) {
        commands.ShowReport(c.menuItem, "the menu's caption");
        Settle();
        const auto* const window = Find<frmAllReports>("frmAllReports");
        ASSERT_NE(window, nullptr) << c.menuItem;
        EXPECT_EQ(Values(*window->Report, c.field), c.values) << c.menuItem << ": " << c.why;
        EXPECT_EQ(Unlike(*window->Report, *gRecordset), c.unlike) << c.menuItem;
        EXPECT_EQ(window->windowTitle(), "the menu's caption");
        const std::string page = FirstPage(*window->Report);
        EXPECT_THAT(page, HasSubstr("\nCompiled by the MOVA Professional Administration Module\n"))
            << c.menuItem;
        EXPECT_EQ(page.find("\nCurrent configuration\n") != std::string::npos,
                  CatalogueReport(c.menuItem).usesConfID)
            << c.menuItem;
    }
}

TEST_F(ReportsTest, TheConfigurationOnDisplayIsReported) {
    form.configuration = 0;
    commands.ShowReport("mnuRepOS", "Operating System");
    Settle();
    EXPECT_EQ(Values(*Find("frmAllReports")->Report, "COMPUTERNAME"), "PC3");
    EXPECT_THAT(FirstPage(*Find("frmAllReports")->Report), HasSubstr("\nOriginal configuration\n"));
}

TEST_F(ReportsTest, EveryMachineHasItsPageAndWhatBelongsToIt) {
    commands.mnuRepUserPCConfig();
    Settle();
    const auto& window = *Find<frmCRPPC>("frmCRPPC");
    EXPECT_EQ(Values(*window.Report, "COMPUTERNAME"), "PC1/PC2/PC3") << "PC3 has no current configuration";
    EXPECT_EQ(Unlike(*window.Report, *gRecordset), "");
    std::string contents;
    for (int section = 1; section <= window.Report->SectionCount(); ++section)
        for (int number = 1; number <= window.Report->ObjectCount(section); ++number) {
            const report::ReportObject object = window.Report->Object(section, number);
            if (object.Kind() != report::Kind::Subreport)
                continue;
            report::Report& subreport = object.OpenSubreport();
            contents += object.Name() + "=" + Values(subreport, "COMPUTERNAME") + " ";
            ADODB::Recordset table;
            table.Open("SELECT * FROM " + subreport.Definition().tableName, gConnection);
            EXPECT_EQ(Unlike(subreport, table), "") << object.Name();
        }
    EXPECT_EQ(contents,
              "SubPC=PC1/PC2 SubIO=PC1 SubOS=PC1/PC2 SubDrives=PC1/PC1/PC1/PC2 SubPrinters=PC1/PC1/PC1 ");
}

TEST_F(ReportsTest, AnOpenPCReportKeepsItsConfiguration) {
    commands.mnuRepUserPCConfig();
    Settle();
    const auto* const window = Find<frmCRPPC>("frmCRPPC");
    const auto rows = gRecordset;
    form.configuration = 0;
    commands.mnuRepUserPCConfig();
    QTest::qWait(1);
    EXPECT_EQ(Find<frmCRPPC>("frmCRPPC"), window);
    EXPECT_THAT(FirstPage(*window->Report), HasSubstr("\nCurrent configuration\n"));
    EXPECT_EQ(gRecordset, rows);
}

TEST_F(ReportsTest, ADatabaseWithoutMachinesGivesAnEmptyPCReport) {
    Run("DELETE FROM Net");
    commands.mnuRepUserPCConfig();
    Settle();
    EXPECT_EQ(Find("frmCRPPC")->Report->RowCount(), 0U);
}

TEST_F(ReportsTest, AFailureOfThePCReportEndsTheProgram) {
    EXPECT_EXIT(
        {
            Run("DROP TABLE Input");
            commands.mnuRepUserPCConfig();
            QTest::qWait(1000);
        },
        testing::ExitedWithCode(1), "Run-time error '-1':\n\nno such table: Input");
}

} // namespace
