// SPDX-License-Identifier: GPL-3.0-or-later
// The life of the report window: what it shows when, and what happens around it meanwhile.
#include "reports/frmAllReports.h"
#include "tests/reports/ReportsTest.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FixedClock.h"
#include "tests/support/Windows.h"

#include <filesystem>
#include <functional>

namespace {

/// A thousand million rows: whenever somebody looks, the report is in the middle of them.
constexpr const char* kEndlessRows =
    "SELECT A.COMPUTERNAME FROM DeviceData AS A, DeviceData AS B, DeviceData AS C, DeviceData AS D, "
    "DeviceData AS E, DeviceData AS F, DeviceData AS G, DeviceData AS H, DeviceData AS I, DeviceData AS J";

class ReportWindowTest : public ReportsTest {
protected:
    QPointer<frmAllReports> Open(const char* statement) {
        auto* const window = new frmAllReports(context);
        window->Report = std::make_shared<report::Report>(kNames, "Names.rpt");
        window->QueryString = statement;
        window->Show();
        return window;
    }
    /// Opens a report that never ends, and acts between two slices of the reading.
    void OpenAndActInTheMiddle(const std::function<void(frmAllReports&)>& act) {
        const QPointer<frmAllReports> window = Open(kEndlessRows);
        QTimer timer;
        bool wasInTheMiddle = false;
        timer.callOnTimeout([&] {
            if (!window->Report || window->Report->RowCount() == 0)
                return;
            timer.stop();
            wasInTheMiddle = !window->Report->IsComplete();
            act(*window);
        });
        timer.start(0);
        EXPECT_TRUE(Eventually([&] { return window.isNull(); }));
        EXPECT_TRUE(wasInTheMiddle);
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

TEST_F(ReportWindowTest, AReportOnShowKeepsNoDatabaseOpen) {
    const std::string database = std::filesystem::canonical(folder.Path("Demodb.mdb"));
    const auto timesOpen = [&] {
        int count = 0;
        std::error_code ignored;
        for (const auto& file : std::filesystem::directory_iterator("/proc/self/fd"))
            count += std::filesystem::read_symlink(file.path(), ignored) == database ? 1 : 0;
        return count;
    };
    const FixedClock clock(2024, 3, 15);
    DatabaseSession session(form, prompts, clock, folder.Path(), [] {});
    const QPointer<frmAllReports> window = Open("SELECT * FROM Net ORDER BY COMPUTERNAME");
    Settle();
    const std::shared_ptr<ADODB::Connection> before = gConnection;
    Run("INSERT INTO Net (COMPUTERNAME) VALUES ('PC4')");
    ASSERT_TRUE(session.ConnectSinDatabase(database)) << "as each import does";
    EXPECT_FALSE(before->IsOpen());
    EXPECT_EQ(timesOpen(), 1);
    EXPECT_EQ(Values(*window->Report, "COMPUTERNAME"), "PC1/PC2/PC3");
    Trigger(*window, "actRefresh");
    Settle();
    ASSERT_TRUE(Eventually([&] { return window->Report->IsComplete(); }));
    EXPECT_EQ(Values(*window->Report, "COMPUTERNAME"), "PC1/PC2/PC3/PC4") << "read on the new connection";
    session.CloseSinDatabase(true);
    EXPECT_EQ(timesOpen(), 0);
    EXPECT_EQ(Values(*window->Report, "COMPUTERNAME"), "PC1/PC2/PC3/PC4");
    EXPECT_EQ(ErrorOf([&] { window->Report->Refresh(); }), Errors::kRecordsetClosed);
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
    OpenAndActInTheMiddle([this](frmAllReports& first) {
        const std::weak_ptr<report::Report> before = first.Report;
        commands.ShowReport("mnuRepODBC", "ODBC Drivers");
        EXPECT_TRUE(before.expired()) << "or it would be read on beside the other";
    });
    Settle();
    EXPECT_EQ(Values(*Find("frmAllReports")->Report, "Driver Name"), "Access/Text");
}

TEST_F(ReportWindowTest, MayBeClosedInTheMiddle) {
    OpenAndActInTheMiddle([](frmAllReports& window) { window.close(); });
    EXPECT_FALSE(IsLoaded("frmCompiling")) << "nothing would take it away later";
}

} // namespace
