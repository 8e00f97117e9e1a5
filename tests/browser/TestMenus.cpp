// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that open windows of their own: reports and pings, from their menu items on.
#include "browser/ListView.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "reports/Catalogue.h"
#include "tests/browser/MainWindowTest.h"
#include "tests/support/Database.h"

#include <QAbstractItemView>

namespace {

class ReportMenuTest : public MainWindowTest {
protected:
    ReportMenuTest() {
        OpenSample();
        RunSQL(*gConnection,
               "UPDATE DrivesData SET \"Drive Description\" = CASE \"Drive Root\" WHEN 'C:' THEN 'Fixed "
               "drive' ELSE 'Network drive' END");
    }
    ~ReportMenuTest() override {
        FormRegistry::Instance().UnloadOthers(form.get());
        QTest::qWait(1);
    }
    /// The title of a loaded window; empty where there is none.
    static std::string TitleOf(const char* name) {
        const QWidget* const window = FormRegistry::Instance().Find(name);
        return window == nullptr ? "" : window->windowTitle().toStdString();
    }
};

TEST_F(ReportMenuTest, EachItemOpensItsReportUnderItsOwnCaption) {
    for (const CatalogueRow& row : Catalogue()) {
        QAction& item = Action(std::string(row.menuItem).c_str());
        item.trigger();
        EXPECT_EQ(TitleOf("frmAllReports"), item.text().toStdString());
        QTest::qWait(1);
        EXPECT_TRUE(Eventually([] { return !FormRegistry::Instance().IsLoaded("frmCompiling"); }));
        EXPECT_TRUE(FormRegistry::Instance().IsLoaded("frmAllReports")) << row.menuItem;
        EXPECT_TRUE(form->isEnabled() && QApplication::activeModalWidget() == nullptr);
    }
}

TEST_F(ReportMenuTest, TheOtherItemsHaveWindowsOfTheirOwn) {
    Action("mnuRepUserPCConfig").trigger();
    EXPECT_EQ(TitleOf("frmCRPPC"), "PC Configuration Report");
    Action("mnuCompareMis").trigger();
    EXPECT_EQ(TitleOf("frmCRPCompare"), "Component Comparison Report");
    std::string list;
    QTimer::singleShot(0, form.get(), [&] {
        list = TitleOf("frmCustomReports");
        FormRegistry::Instance().Unload("frmCustomReports");
    });
    Action("mnuCustomReport").trigger();
    EXPECT_EQ(list, "Custom Reports Available");
    EXPECT_TRUE(Eventually([] { return !FormRegistry::Instance().IsLoaded("frmCompiling"); }));
    form->close();
    EXPECT_TRUE(FormRegistry::Instance().Windows().empty()) << "reports go with the main window";
}

class PingMenuTest : public MainWindowTest {
protected:
    PingMenuTest() {
        MakeDatabase({{"PC1", {}, {}}});
        LoadAndShow();
        RunSQL(*gConnection, R"(
INSERT INTO DeviceData (COMPUTERNAME, ConfID, "Device Auto ID", "Device Name") VALUES
    ('PC1', 1, 'id1', 'Card'), ('PC1', 1, 'id2', 'Card');
INSERT INTO DeviceNetwork ("Device Auto ID", "Protocol Name", "Protocol IP", "Protocol Mask") VALUES
    ('id1', 'TCP/IP', '127.0.0.6', '255.0.0.0'), ('id2', 'TCP/IP', '127.0.0.7', '255.0.0.0');)");
    }
};

TEST_F(PingMenuTest, TheAddressThatARowShowsIsPinged) {
    for (const char* node : {"ALL?DEVNET", "PC1?DEVNET"}) {
        Click(node);
        ClickRow(1);
        prompts.Expect(Box("Ping Failed", "Ping failed on IP 127.0.0.7!"));
        Action("mnuPingPrivate").trigger();
        View().clearSelection();
        Action("mnuPingPrivate").trigger();
        EXPECT_EQ(probes.sent.size(), 1U) << "of a row that is not selected, nothing: " << node;
        probes.sent.clear();
    }
}

TEST_F(PingMenuTest, PingAllGoesWithTheMainWindow) {
    probes.onSend = [this](const std::string& /*host*/) {
        QTimer::singleShot(0, form.get(), [this] {
            EXPECT_EQ(QApplication::activeModalWidget(), FormRegistry::Instance().Find("frmPing"));
            form->close();
        });
    };
    Action("mnuPing").trigger();
    EXPECT_EQ(probes.sent.size(), 1U);
    EXPECT_TRUE(FormRegistry::Instance().Windows().empty());
}

} // namespace
