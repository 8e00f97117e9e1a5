// SPDX-License-Identifier: GPL-3.0-or-later
// The PC configuration report and its subreports.
#include "platform/application.h"
#include "reports/frmCRPPC.h"
#include "tests/reports/ReportsTest.h"

namespace {

TEST_F(ReportsTest, EveryMachineHasItsPageAndWhatBelongsToIt) {
    commands.mnuRepUserPCConfig();
    Settle();
    const auto& window = *Find<frmCRPPC>("frmCRPPC");
    EXPECT_EQ(Values(*window.Report, "COMPUTERNAME"), "PC1/PC2/PC3") << "PC3 has no current configuration";
    std::string contents;
    for (int section = 1; section <= window.Report->SectionCount(); ++section)
        for (int number = 1; number <= window.Report->ObjectCount(section); ++number) {
            const report::ReportObject object = window.Report->Object(section, number);
            if (object.Kind() == report::Kind::Subreport)
                contents += object.Name() + "=" + Values(object.OpenSubreport(), "COMPUTERNAME") + " ";
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
    EXPECT_THAT(FirstPage(*window->Report), testing::HasSubstr("\nCurrent configuration\n"));
    EXPECT_EQ(gRecordset, rows);
}

TEST_F(ReportsTest, ADatabaseWithoutMachinesGivesAnEmptyPCReport) {
    RunSQL("DELETE FROM Net");
    commands.mnuRepUserPCConfig();
    Settle();
    EXPECT_EQ(Find("frmCRPPC")->Report->RowCount(), 0U);
}

TEST_F(ReportsTest, AFailureOfThePCReportEndsTheProgram) {
    EXPECT_EXIT(
        {
            RunSQL("DROP TABLE Input");
            commands.mnuRepUserPCConfig();
            QTest::qWait(1000);
        },
        testing::ExitedWithCode(1), "Run-time error '-1':\n\nno such table: Input");
}

} // namespace
