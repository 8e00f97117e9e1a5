// SPDX-License-Identifier: GPL-3.0-or-later
// The life of the report window: what it shows when, and what happens around it meanwhile.
#include "reports/frmAllReports.h"
#include "tests/reports/ReportsTest.h"
#include "tests/support/Windows.h"

namespace {

/// More rows than are read at once.
constexpr const char* kManyRows =
    "SELECT A.COMPUTERNAME FROM DeviceData AS A, DeviceData AS B, DeviceData AS C, "
    "DeviceData AS D, DeviceData AS E, DeviceData AS F";

class ReportWindowTest : public ReportsTest {
protected:
    QPointer<frmAllReports> Open(const char* statement) {
        auto* const window = new frmAllReports(context);
        window->Report = std::make_shared<report::Report>(kNames, "Names.rpt");
        window->QueryString = statement;
        window->Show();
        return window;
    }
    static bool IsLoaded(const char* name) { return FormRegistry::Instance().IsLoaded(name); }
};

TEST_F(ReportWindowTest, AReportIsReadOnceBehindTheWaitWindow) {
    const QPointer<frmAllReports> window = Open("SELECT * FROM Net");
    EXPECT_TRUE(Find<QWidget>("frmCompiling")->isVisible());
    Settle();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    const auto rows = gRecordset;
    EXPECT_TRUE(rows->IsOpen()) << "other commands may walk it";
    QWidget other;
    ShowActive(other);
    ShowActive(*window);
    EXPECT_EQ(gRecordset, rows) << "coming back reruns nothing";
}

TEST_F(ReportWindowTest, WithoutRowsNothingIsLeftButTheMessage) {
    const QPointer<frmAllReports> window = Open("SELECT * FROM Net WHERE COMPUTERNAME = 'PC9'");
    prompts.Expect(Box("No data to display",
                       "There's no data to display on the report. Please select some other criteria "
                       "range for the report.",
                       MsgBoxStyle::kQuestion),
                   [] { EXPECT_FALSE(IsLoaded("frmCompiling")); });
    QTest::qWait(1);
    EXPECT_TRUE(window.isNull());
    EXPECT_FALSE(IsLoaded("frmAllReports"));
}

TEST_F(ReportWindowTest, AFailureIsToldWithoutItsWords) {
    Open("SELECT * FROM Nowhere");
    prompts.Expect(Box("", "There was an ERROR while loading the Report", MsgBoxStyle::kOKOnly), [] {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        EXPECT_TRUE(IsLoaded("frmCompiling"));
    });
    QTest::qWait(1);
    EXPECT_FALSE(IsLoaded("frmCompiling"));
    EXPECT_FALSE(IsLoaded("frmAllReports"));
}

TEST_F(ReportWindowTest, AnotherReportTakesThePlaceOfOneOnShow) {
    const QPointer<frmAllReports> first = Open("SELECT * FROM Net");
    Settle();
    commands.ShowReport("mnuRepODBC", "ODBC Drivers");
    EXPECT_FALSE(first->isVisible());
    EXPECT_EQ(first->Report, nullptr);
    Settle();
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(Find("frmAllReports")->windowTitle(), "ODBC Drivers");
}

TEST_F(ReportWindowTest, AnotherReportMayBeChosenInTheMiddleOfOne) {
    const QPointer<frmAllReports> first = Open(kManyRows);
    bool wasAtWork = false;
    QTimer::singleShot(20, qApp, [&] {
        wasAtWork = first && first->Report && !first->Report->IsComplete();
        const std::weak_ptr<report::Report> before = first->Report;
        commands.ShowReport("mnuRepODBC", "ODBC Drivers");
        EXPECT_TRUE(before.expired()) << "or it would be read on beside the other";
    });
    QTest::qWait(60);
    Settle();
    EXPECT_TRUE(wasAtWork);
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(Values(*Find("frmAllReports")->Report, "Driver Name"), "Access/Text");
}

TEST_F(ReportWindowTest, MayBeClosedInTheMiddle) {
    const QPointer<frmAllReports> window = Open(kManyRows);
    QTimer::singleShot(20, window, [window] { window->close(); });
    QTest::qWait(60);
    EXPECT_TRUE(window.isNull());
    EXPECT_FALSE(IsLoaded("frmCompiling")) << "nothing would take it away later";
}

} // namespace
