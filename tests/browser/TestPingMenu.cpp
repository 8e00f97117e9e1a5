// SPDX-License-Identifier: GPL-3.0-or-later
// The ping commands, from the main window's lists and menus.
#include "browser/ListView.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "tests/browser/InventorySample.h"
#include "tests/browser/MainWindowTest.h"

#include <QAbstractItemView>
#include <QTimer>

namespace {

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
        QAbstractItemView& view = List().CurrentView();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                          view.visualRect(view.model()->index(1, 0)).center());
        prompts.Expect(Box("Ping Failed", "Ping failed on IP 127.0.0.7!"));
        Action("mnuPingPrivate").trigger();
        view.clearSelection();
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
