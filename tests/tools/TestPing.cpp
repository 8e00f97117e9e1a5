// SPDX-License-Identifier: GPL-3.0-or-later
// The window that pings all machines, over a database and hosts that a test sets.
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "import/Schema.h"
#include "tests/support/Database.h"
#include "tests/support/FakeEcho.h"
#include "tests/support/FakeForm.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Windows.h"
#include "tools/PingList.h"
#include "tools/frmPing.h"

#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PingTest : public testing::Test {
protected:
    PingTest() {
        CreateDatabase(folder.Path("Demodb.mdb"));
        gConnection = OpenDatabase(folder.Path("Demodb.mdb"));
    }
    ~PingTest() override {
        gRecordset.reset();
        gConnection.reset();
    }

    static std::string Quoted(const std::string& text) { return "'" + text + "'"; }
    static void Run(const std::string& statement) { RunSQL(*gConnection, statement); }
    /// A network card; `address` is a literal of SQL, so that it can be NULL.
    static void AddCard(const std::string& machine, const std::string& address, int configuration = 1) {
        static int number = 0;
        const std::string device = Quoted("device" + std::to_string(++number));
        Run("INSERT OR IGNORE INTO Net (COMPUTERNAME) VALUES (" + Quoted(machine) + ")");
        Run("INSERT INTO DeviceData (COMPUTERNAME, ConfID, \"Device Auto ID\") VALUES (" + Quoted(machine) +
            ", " + std::to_string(configuration) + ", " + device + ")");
        Run("INSERT INTO DeviceNetwork (\"Device Auto ID\", \"Protocol IP\") VALUES (" + device + ", " +
            address + ")");
    }

    static std::vector<std::string> Lines(const QWidget& window) {
        const auto& list = *window.findChild<PingList*>("lstPing");
        std::vector<std::string> lines;
        lines.reserve(static_cast<std::size_t>(list.count()));
        for (int row = 0; row < list.count(); ++row)
            lines.push_back(list.item(row)->text().toStdString());
        return lines;
    }
    static std::string Status(const QWidget& window, int panel = 1) {
        const auto* const label = window.findChild<QLabel*>(QString("sbStatusBar(%1)").arg(panel));
        return label == nullptr ? "<none>" : label->text().toStdString();
    }
    static QPushButton& Button(const QWidget& window, const char* name) {
        return *window.findChild<QPushButton*>(name);
    }
    static bool CanRefresh(const QWidget& window) { return Button(window, "btnRefresh").isEnabled(); }
    /// Shows the window and waits for the sweep that it then begins.
    static void ShowUntil(QWidget& window, const char* status) {
        ShowActive(window);
        ASSERT_TRUE(Eventually([&] { return Status(window) == status; })) << Status(window);
    }

    TemporaryFolder folder;
    QueuedPrompts prompts;
    FakeForm form;
    FakeEchoProbes probes;
    PingContext context{form, prompts, probes};
};

TEST_F(PingTest, ListsEveryAddressWithItsResult) {
    AddCard("PC2", "'127.0.0.2'");
    AddCard("PC1", "'127.0.0.11'", 0);
    AddCard("PC1", "'127.0.0.10'", 1);
    AddCard("PC1", "'127.0.0.10'", 0);
    AddCard("PC1", "'0.0.0.0'");
    AddCard("PC1", "NULL");
    AddCard("PC1", "''");
    AddCard("PC3-of-the-second-floor-behind-the-stairs", "'12abc'");
    AddCard("PC4-K\u00fcche-\u65e5\u672c", "'0.1.2.3 on the other net'");
    AddCard("PC5\tand\x1b[2J", "'no\naddress'");
    probes.replies = {{"127.0.0.2", {0, 0}}, {"127.0.0.10", {12, 1}}};
    frmPing window(context);
    EXPECT_EQ(window.windowTitle(), "Ping All on network");
    EXPECT_EQ(Status(window), "Working...");
    probes.onSend = [&window](const std::string& host) {
        EXPECT_FALSE(CanRefresh(window));
        EXPECT_EQ(Status(window) == "Pinged : 127.0.0.2", host == "12abc") << "of the address before";
    };
    ShowUntil(window, "Done");
    const std::vector<std::string> lines = Lines(window);
    ASSERT_EQ(lines.size(), 7U);
    // The machines are in order, the addresses of one are in any.
    EXPECT_THAT(std::vector(lines.begin(), lines.begin() + 3),
                testing::UnorderedElementsAre(
                    "PC1                            : 127.0.0.10           : OK       :12 ms",
                    "PC1                            : 127.0.0.11           : FAILED   :",
                    "PC1                            : 0.0.0.0              : INVALID  :"));
    EXPECT_THAT(
        std::vector(lines.begin() + 3, lines.end()),
        ElementsAre("PC2                            : 127.0.0.2            : OK       :0 ms",
                    "PC3-of-the-second-floor-behind : 12abc                : FAILED   :",
                    "PC4-K\u00fcche-\u65e5\u672c                   : 0.1.2.3 on the other : FAILED   :",
                    "PC5 and [2J                    : no address           : INVALID  :"));
    EXPECT_EQ(probes.sent.back(), "ZUL TEST PING, 100 > 0.1.2.3 on the other net") << "the whole text";
    EXPECT_EQ(probes.sent.size(), 5U);
    EXPECT_EQ(probes.alive, 0);
    EXPECT_TRUE(CanRefresh(window));
    EXPECT_FALSE(gRecordset->IsOpen());
    EXPECT_EQ(Status(window, 2), "<none>");

    Run("DELETE FROM Net WHERE COMPUTERNAME <> 'PC2'");
    QTest::mouseClick(&Button(window, "btnRefresh"), Qt::LeftButton);
    EXPECT_THAT(Lines(window),
                ElementsAre("PC2                            : 127.0.0.2            : OK       :0 ms"));
}

TEST_F(PingTest, ClosingEndsTheSweepAtTheAddressInHand) {
    for (const char* machine : {"PC1", "PC2", "PC3", "PC4"})
        AddCard(machine, "'127.0.0.1'");
    const struct {
        const char* why;
        std::function<void(QDialog&)> close;
    } cases[] = {
        {"its button", [](QDialog& window) { QTest::mouseClick(&Button(window, "cmdOK"), Qt::LeftButton); }},
        {"its frame", [](QDialog& window) { window.close(); }},
        {"Escape", [](QDialog& window) { QTest::keyClick(&window, Qt::Key_Escape); }},
        {"the main window goes", [](QDialog& /*window*/) { FormRegistry::Instance().Unload("frmPing"); }},
    };
    for (const auto& c : cases) {
        probes.sent.clear();
        probes.onSend = [&](const std::string& /*host*/) {
            if (probes.sent.size() == 2)
                QTimer::singleShot(
                    0, [&c] { c.close(*static_cast<QDialog*>(FormRegistry::Instance().Find("frmPing"))); });
        };
        PingCommands(context).mnuPing();
        EXPECT_EQ(probes.sent.size(), 2U) << c.why;
        EXPECT_FALSE(gRecordset->IsOpen()) << c.why;
        EXPECT_FALSE(FormRegistry::Instance().IsLoaded("frmPing")) << c.why;
    }
}

TEST_F(PingTest, MayBeDestroyedInItsOwnSweep) {
    AddCard("PC1", "'127.0.0.1'");
    AddCard("PC2", "'127.0.0.2'");
    probes.replies["127.0.0.1"] = {};
    for (const std::string last : {"127.0.0.1", "127.0.0.2"}) {
        probes.sent.clear();
        auto* const window = new frmPing(context);
        QPointer<frmPing> alive(window);
        probes.onSend = [&](const std::string& host) {
            if (host == last)
                delete window;
        };
        window->show();
        window->activateWindow();
        EXPECT_TRUE(Eventually([&] { return alive.isNull(); }));
        QTest::qWait(1);
        EXPECT_EQ(probes.sent.back(), "ZUL TEST PING, 100 > " + last);
        EXPECT_FALSE(gRecordset->IsOpen());
    }
}

TEST_F(PingTest, SweepsAnewWheneverItBecomesActiveButNotWithinASweep) {
    AddCard("PC1", "'127.0.0.1'");
    AddCard("PC2", "'127.0.0.2'");
    frmPing window(context);
    const auto activate = [&window] {
        QEvent event(QEvent::WindowActivate);
        QApplication::sendEvent(&window, &event);
    };
    probes.onSend = [&](const std::string& /*host*/) { activate(); };
    ShowUntil(window, "Done");
    QTest::qWait(1);
    EXPECT_EQ(probes.sent.size(), 2U);
    probes.onSend = {};
    activate();
    EXPECT_TRUE(Eventually([&] { return probes.sent.size() == 4; }));
    ASSERT_TRUE(Eventually([&] { return Status(window) == "Done"; }));
    EXPECT_EQ(Lines(window).size(), 2U) << "not added to those before";
}

TEST_F(PingTest, AnyOtherFailureEndsTheSweepInSilence) {
    AddCard("PC1", "'127.0.0.1'");
    AddCard("PC2", "'127.0.0.2'");
    AddCard("PC3", "'127.0.0.3'");
    probes.onSend = [this](const std::string& host) {
        if (host == "127.0.0.2")
            probes.failure.emplace(Errors::kPathAccess, "Too many open files");
    };
    frmPing window(context);
    ShowUntil(window, "Pinged : 127.0.0.2");
    EXPECT_TRUE(Eventually([this] { return probes.sent.size() == 3; }));
    EXPECT_TRUE(Eventually([&] { return Lines(window).size() == 2; }));
    EXPECT_FALSE(CanRefresh(window));
    EXPECT_EQ(Status(window), "Pinged : 127.0.0.2") << "the last text stays";
    EXPECT_FALSE(gRecordset->IsOpen());

    gConnection->Close();
    frmPing without(context);
    ShowUntil(without, "Working...");
    EXPECT_TRUE(Eventually([&] { return !CanRefresh(without); }));
    EXPECT_THAT(Lines(without), IsEmpty());
}

TEST_F(PingTest, AForbiddingSystemIsToldOfOnce) {
    AddCard("PC1", "'127.0.0.1'");
    AddCard("PC2", "'127.0.0.2'");
    probes.failure.emplace(Errors::kPermissionDenied, "Permission denied");
    frmPing window(context);
    ShowUntil(window, "Done");
    EXPECT_THAT(Lines(window),
                ElementsAre("PC1                            : 127.0.0.1            : FAILED   :",
                            "PC2                            : 127.0.0.2            : FAILED   :"));
    EXPECT_EQ(Status(window, 2), "This system forbids pings: press F1 for help");
    EXPECT_EQ(window.findChild<QStatusBar*>()->findChildren<QLabel*>().size(), 2);
    EXPECT_TRUE(CanRefresh(window));
}

TEST_F(PingTest, LinesCanBeCopied) {
    for (const char* machine : {"PC1", "PC2", "PC3"})
        AddCard(machine, "'127.0.0.1'");
    frmPing window(context);
    ShowUntil(window, "Done");
    QApplication::clipboard()->setText("before");
    auto& list = *window.findChild<PingList*>("lstPing");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "before") << "nothing is selected";
    list.setCurrentRow(2);
    list.item(0)->setSelected(true);
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    const std::vector<std::string> lines = Lines(window);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), lines[0] + "\r\n" + lines[2]);
}

TEST_F(PingTest, WithoutAddressesItSaysSoAndKeepsItsButtonInSightInLargeLetters) {
    frmPing window(context);
    ShowUntil(window, "Done");
    auto& list = *window.findChild<PingList*>("lstPing");
    EXPECT_THAT(list.accessibleDescription().toStdString(), testing::StartsWith("No addresses"));
    EXPECT_EQ(list.count(), 0);
    QFont large = window.font();
    large.setPointSizeF(large.pointSizeF() * 2);
    window.setFont(large);
    window.resize(400, 300);
    QTest::qWait(1);
    EXPECT_TRUE(
        window.findChild<QWidget*>("picBut")->rect().contains(Button(window, "btnRefresh").geometry()));
    EXPECT_GT(list.height(), 20);
}

} // namespace
