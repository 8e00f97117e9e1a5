// SPDX-License-Identifier: GPL-3.0-or-later
// Every canned report, run by its command over the sample inventory: which rows it shows, in which order.
#include "reports/Catalogue.h"
#include "reports/frmAllReports.h"
#include "tests/reports/ReportsTest.h"

namespace {

TEST_F(ReportsTest, EachMenuItemShowsItsRows) {
    const struct {
        const char *menuItem, *field, *values, *why;
    } cases[] = {
        {"mnuRepBasicUser", "COMPUTERNAME", "PC1/PC2/PC3", "machines have no configuration"},
        {"mnuRepUserDetailed", "COMPUTERNAME", "PC2/PC1", "by surname, then name: Amy before Zoe"},
        {"mnuRepUserLogon", "COMPUTERNAME", "PC3/PC1/PC2", "the latest logon first"},
        {"mnuRepRAM", "COMPUTERNAME", "PC2/PC1", "the most memory first"},
        {"mnuRepFixedDrive", "Drive Type", "FAT/NTFS/EXT",
         "the field shows the file system; by drive letter"},
        {"mnuRepCPU", "COMPUTERNAME", "PC1/PC2", "one processor: by name"},
        {"mnuRepOffice", "MS Version", "-/MS Office 97", "a program of the other configuration names it too"},
        {"mnuRepOS", "COMPUTERNAME", "PC2/PC1", "98 before NT"},
        {"mnuRepUninstall", "Program Name", "Atlas/Paint", "the current configuration's alone"},
        {"mnuRepODBC", "Driver Name", "Access/Text", "by driver"},
        {"mnuRepDeviceConf", "CountOfDevice Name", "1/2",
         "eleven characters are a conflict; two cards are one row"},
        {"mnuRepUserAgainsOS", "OS Name Reg", "98/NT", "the field shows the short name"},
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
        EXPECT_EQ(window->windowTitle(), "the menu's caption");
    }
}

TEST_F(ReportsTest, TheConfigurationOnDisplayIsReported) {
    form.configuration = 0;
    commands.ShowReport("mnuRepOS", "Operating System");
    Settle();
    EXPECT_EQ(Values(*Find("frmAllReports")->Report, "COMPUTERNAME"), "PC3");
    EXPECT_THAT(FirstPage(*Find("frmAllReports")->Report), testing::HasSubstr("\nOriginal configuration\n"));
}

TEST_F(ReportsTest, AReportOfOneConfigurationSaysSoOnPaper) {
    for (const CatalogueRow& row : Catalogue()) {
        commands.ShowReport(row.menuItem, "");
        Settle();
        const std::string page = FirstPage(*Find("frmAllReports")->Report);
        EXPECT_EQ(page.find("\nCurrent configuration\n") != std::string::npos, row.usesConfID)
            << row.menuItem;
    }
}

} // namespace
