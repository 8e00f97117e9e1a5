// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of a machine and of the database, as they are opened from the tree and read.
#include "browser/Images.h"
#include "browser/ListView.h"
#include "browser/TreeModel.h"
#include "browser/ValueBox.h"
#include "browser/frmProperties.h"
#include "browser/frmSystemProp.h"
#include "core/Globals.h"
#include "platform/errors.h"
#include "tests/browser/MainWindowTest.h"
#include "tests/support/Database.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>

#include <sqlite3.h>

#include <cstdlib>

namespace {

using Strings = std::vector<std::string>;

class PropertiesTest : public MainWindowTest {
protected:
    void Show(const std::string& machine, std::int16_t confID = 1) {
        window = std::make_unique<frmProperties>(form.get(), prompts);
        window->ConfID(confID);
        window->ComputerName(machine);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(Eventually([this] { return QApplication::focusWidget() == Tabs().tabBar(); }));
    }
    /// The keys that bring the tab to the front, from wherever the focus is.
    void TurnTo(int tab) const {
        auto& bar = *Tabs().tabBar();
        bar.setFocus();
        const int from = Tabs().currentIndex();
        for (int i = 0; i < std::abs(tab - from); ++i)
            QTest::keyClick(&bar, tab < from ? Qt::Key_Left : Qt::Key_Right);
        ASSERT_EQ(Tabs().currentIndex(), tab);
    }
    QTabWidget& Tabs() const { return *window->findChild<QTabWidget*>("tabInfo"); }
    QTreeWidget& Devices() const { return *window->findChild<QTreeWidget*>("tvDevices"); }
    std::string Box(const std::string& name) const { return BoxOf(*window, name); }
    static std::string BoxOf(const QWidget& dialog, const std::string& name) {
        return dialog.findChild<QLineEdit*>(QString::fromStdString(name))->text().toStdString();
    }
    Strings RowsOf(const char* name) const {
        const ListModel& items = window->findChild<ListView*>(name)->Items();
        Strings rows;
        for (std::size_t row = 0; row < items.Rows(); ++row) {
            std::string text(ImageKey(items.Icon(row)));
            for (int column = 0; column < items.columnCount(); ++column)
                text += "|" + std::string(items.Text(row, column));
            rows.push_back(text);
        }
        return rows;
    }
    /// "OS id1 Ports": picture, key and text, children indented.
    static void Describe(const QTreeWidgetItem& node, const std::string& indent, Strings& lines) {
        const QIcon icon = node.icon(0);
        std::string image = "?";
        for (const Image each : {Image::OS, Image::Pr_No, Image::Pr_Yes})
            if (icon.cacheKey() == TreeIcon(each).cacheKey())
                image = ImageKey(each);
        lines.push_back(indent + image + " " + frmProperties::Key(node) + " " + node.text(0).toStdString());
        for (int child = 0; child < node.childCount(); ++child)
            Describe(*node.child(child), "  ", lines);
    }
    static void Count(sqlite3* database, Strings& queries) {
        sqlite3_trace_v2(
            database, SQLITE_TRACE_STMT,
            [](unsigned, void* context, void*, void* text) {
                static_cast<Strings*>(context)->emplace_back(static_cast<const char*>(text));
                return 0;
            },
            &queries);
    }
    /// Runs the command with `look` at the dialog that it brings, if any; what title it had.
    std::string Command(const std::function<void(QDialog&)>& look = {}) {
        std::string title;
        QTimer::singleShot(0, form.get(), [&] {
            if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                title = dialog->windowTitle().toStdString();
                if (look)
                    look(*dialog);
                QTest::keyClick(dialog, Qt::Key_Escape);
            }
        });
        form->mnuProperties();
        QTest::qWait(1);
        return title;
    }

    std::unique_ptr<frmProperties> window;
};
using PropertiesDeathTest = PropertiesTest;

TEST_F(PropertiesTest, ATabIsReadWhenItIsFirstTurnedToAndNeverAgain) {
    OpenSample();
    Strings queries;
    Count(gConnection->Handle(), queries);
    Show("PC1");
    EXPECT_EQ(queries.size(), 2U) << "the machine and its user";
    TurnTo(3);
    EXPECT_EQ(queries.size(), 5U) << "passing by a tab turns to it: processor, devices, drives";
    EXPECT_FALSE(gRecordset->IsOpen());
    RunSQL(*gConnection,
           "DELETE FROM DrivesData; DELETE FROM Personal; UPDATE Net SET [Logon User Name] = 'bob'");
    queries.clear();
    TurnTo(0);
    TurnTo(3);
    window->showMinimized();
    window->showNormal();
    EXPECT_EQ(queries, Strings());
    EXPECT_EQ(RowsOf("lvDrives").size(), 2U);
    EXPECT_EQ(window->findChild<ListView*>("lvDrives")->Items().Columns().size(), 9U);
    EXPECT_EQ(Box("txtPers(1)"), "anna");
    Show("PC1");
    EXPECT_EQ(Box("txtPers(1)"), "bob") << "a new window sees the database as it is now";
    EXPECT_THROW(window->tabInfo_Click(10), RunTimeError);
    sqlite3_trace_v2(gConnection->Handle(), 0, nullptr, nullptr);
}

TEST_F(PropertiesTest, ValuesReadByTheRulesOfTheirTab) {
    OpenSample();
    RunSQL(*gConnection, "UPDATE PC SET RAM = NULL WHERE COMPUTERNAME = 'PC2'");
    struct {
        const char* machine;
        std::int16_t confID;
        int tab;
        const char* box;
        const char* text;
        const char* why;
    } cases[] = {
        {"PC1", 1, 0, "txtPers(0)", "PC1", "the name"},
        {"PC1", 1, 0, "txtPers(2)", "20011102", "dates stand as they are stored"},
        {"PC1", 0, 0, "txtPers(11)", "n/a", "no personal record"},
        {"PC2", 1, 0, "txtPers(11)", "p1", "the personal record begins at its second column"},
        {"PC2", 1, 0, "txtPers(21)", "n/a", "its Null"},
        {"PC1", 0, 1, "txtCpu(0)", "old", "the original configuration"},
        {"PC1", 1, 1, "txtCpu(0)", "pc2", "the current one"},
        {"PC1", 1, 1, "txtCpu(6)", "0", "a speed of 0 is shown here"},
        {"PC1", 1, 1, "txtCpu(10)", "Yes", "a flag that is set"},
        {"PC1", 1, 1, "txtCpu(13)", "2Mb", "halves to even"},
        {"PC1", 1, 1, "txtCpu(23)", "25", "the last"},
        {"PC2", 1, 1, "txtCpu(9)", "No", "before a size that is Null"},
        {"PC2", 1, 1, "txtCpu(11)", "n/a", "the size that is Null ends the tab without a word"},
        {"PC1", 1, 4, "txtIO(6)", "Yes", "a flag"},
        {"PC2", 1, 4, "txtIO(7)", "n/a", "a number that is Null"},
        {"PC1", 1, 5, "txtOffice(0)", "ab", "bars are taken out"},
        {"PC1", 1, 5, "txtOffice(1)", "-- Not Installed --", "empty"},
        {"PC1", 1, 5, "txtOffice(5)", "Microsoft Office 97|x", "of either configuration, bars and all"},
        {"PC1", 1, 7, "txtOS(3)", "No", "the flags read truly here"},
        {"PC1", 0, 7, "txtOS(3)", "Yes", "set"},
        {"PC1", 1, 7, "txtOS(4)", "", "Null"},
        {"PC2", 1, 7, "txtOS(15)", "n/a", "a text that is Null"},
        {"PC3", 1, 7, "txtOS(3)", "n/a", "an unknown machine"},
    };
    for (const auto& c : cases) {
        Show(c.machine, c.confID);
        Tabs().setCurrentIndex(c.tab);
        EXPECT_EQ(Box(c.box), c.text) << c.machine << " " << c.box << ": " << c.why;
    }
}

TEST_F(PropertiesTest, ListsHaveARowForEachRecord) {
    OpenSample();
    Show("PC1");
    for (const int tab : {3, 6, 8, 9})
        Tabs().setCurrentIndex(tab);
    EXPECT_EQ(RowsOf("lvDrives"), (Strings{"DRIVE|C:|Fixed|FAT|1536Mb|0Mb|lab|ser|map|user",
                                           "DRIVE|A:|n/a|n/a|||n/a|n/a|n/a|n/a"}));
    EXPECT_EQ(RowsOf("lvODBC"), (Strings{"ODBC|od2|od3|od4", "ODBC|od5|od6|od7"}));
    EXPECT_EQ(RowsOf("lvPrinter"), (Strings{"PRINTER|Local|near|drv|lpt", "PRINTER|Remote|far|drv|lpt"}));
    EXPECT_EQ(RowsOf("lvUn"), (Strings{"UNINSTALL|Paint|paint.exe", "UNINSTALL|New MS Office|"}));
    Show("PC1", 0);
    Tabs().setCurrentIndex(6);
    EXPECT_EQ(RowsOf("lvODBC"), (Strings{"ODBC|old|old|old"}));
}

TEST_F(PropertiesTest, DevicesStandUnderTheirCategoriesWhateverAMachineCallsThem) {
    OpenSample();
    RunSQL(*gConnection, R"(DELETE FROM DeviceData; INSERT INTO DeviceData VALUES
        ('a','PC1',1,'Ports','28 00 00 00 ','Serial','20000314','io','irq',NULL,'mem',''),
        ('b','PC1',1,'','','<b>?CHILD</b>','','','','','',''),
        ('c','PC1',1,NULL,NULL,NULL,'','','','','',''),
        ('d','PC1',1,'xxxxx','00 00 00 00 ','Odd','','','','','',''),
        ('e','PC1',1,'Ports','00 00 00 00','Parallel','','','','','',''),
        ('f','PC1',0,'Old','','Old','','','','','',''))");
    Show("PC1");
    TurnTo(2);
    Strings lines;
    for (int i = 0; i < Devices().topLevelItemCount(); ++i) {
        Describe(*Devices().topLevelItem(i), "", lines);
        EXPECT_FALSE(Devices().topLevelItem(i)->isExpanded());
    }
    EXPECT_EQ(lines, (Strings{"OS c n/a", "  Pr_No c?CHILD n/a", "  Pr_No b?CHILD <b>?CHILD</b>",
                              "OS e Ports", "  Pr_Yes e?CHILD Parallel", "  Pr_Yes a?CHILD Serial",
                              "OS d xxxxx", "  Pr_No d?CHILD Odd"}))
        << "a category's key is that of its first device; a code without its last blank is another one";

    Devices().setFocus();
    const auto press = [this](std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(&Devices(), key);
    };
    press({Qt::Key_Home, Qt::Key_Down});
    EXPECT_EQ(Box("txtDevice(0)"), "n/a") << "a category tells of no device";
    press({Qt::Key_Right, Qt::Key_Down, Qt::Key_Down});
    const auto values = [this] {
        std::string text;
        for (int i = 0; i < 7; ++i)
            text += Box("txtDevice(" + std::to_string(i) + ")") + "/";
        return text;
    };
    EXPECT_EQ(values(), "Yes (28 00 00 00)/20000314/io/irq/n/a/mem//");
    press({Qt::Key_Home});
    EXPECT_EQ(values(), "Yes (28 00 00 00)/20000314/io/irq/n/a/mem//") << "the last device stays";
    press({Qt::Key_End, Qt::Key_Right, Qt::Key_Down});
    EXPECT_EQ(Box("txtDevice(0)"), "No");
}

TEST_F(PropertiesDeathTest, AFailureBehindTheFirstThreeTabsEndsTheProgram) {
    OpenSample();
    RunSQL(*gConnection, "INSERT INTO Net (COMPUTERNAME) VALUES ('O''Neil')");
    Show("O'Neil");
    TurnTo(2);
    EXPECT_EQ(Box("txtPers(0)"), "n/a") << "the first three stay empty without a word";
    EXPECT_EXIT(TurnTo(3), testing::ExitedWithCode(1), "Run-time error '-1'");
    Show("PC2");
    EXPECT_EXIT(TurnTo(5), testing::ExitedWithCode(1), "Run-time error '94'") << "an office program is Null";
    RunSQL(*gConnection, "UPDATE DrivesData SET [Drive Size] = NULL");
    EXPECT_EXIT(TurnTo(3), testing::ExitedWithCode(1), "Run-time error '94'") << "a drive's size is Null";
    gLastImportDate = "N/A";
    Click("MAIN");
    EXPECT_EXIT(form->mnuProperties(), testing::ExitedWithCode(1), "Run-time error '13'");
    gImportDir = "Inf";
    EXPECT_EXIT(Action("mnuViewOptions").trigger(), testing::ExitedWithCode(1), "Run-time error '5'")
        << "the inventory folder has no folder above it";
    gImportDir.clear();
}

TEST_F(PropertiesTest, TheNodeDecidesWhosePropertiesAreShown) {
    OpenSample();
    for (const char* root : {"MAIN", "ALL"}) {
        Click(root);
        gLastImportDate = "n/a";
        EXPECT_EQ(Command(), "System Properties") << root;
    }
    for (const char* category : {"PC1?CPU", "ALL?CPU"}) {
        form->NodeClick(Tree().Find(category));
        Find<QTreeView>("tvTreeView").setCurrentIndex(Tree().Find(category));
        EXPECT_EQ(Command(), "") << category;
    }
    Find<QTreeView>("tvTreeView").clearSelection();
    EXPECT_EQ(Command(), "");
    Click("PC1?MAIN");
    EXPECT_EQ(Command(), "Properties for PC1 (Current Config)");
    Action("mnuConfig(0)").trigger();
    Click("PC1?MAIN");
    EXPECT_EQ(Command(), "Properties for PC1 (Original Config)");
}

TEST_F(PropertiesTest, TheSystemTellsWhereItsDataComesFromAndHowOldItIs) {
    OpenSample();
    gImportDir = "/shared/INF";
    gBackupDir = "/shared/<b>";
    Click("MAIN");
    struct {
        const char* date;
        const char* age;
        const char* why;
    } cases[] = {
        {"n/a", "? days old", "never imported"},
        {"2024-03-15", " 0 days old", "today, with the blank of a sign"},
        {"2024-03-03", " 12 days old", "days ago"},
        {"2023-12-31", " 75 days old", "over a leap day and the turn of the year"},
        {"2024-02-30", " 14 days old", "a day that no calendar has counts on"},
        {"2024-03-18", "-3 days old", "a clock that was ahead"},
    };
    for (const auto& c : cases) {
        gLastImportDate = c.date;
        Command([&](QDialog& dialog) {
            EXPECT_EQ(BoxOf(dialog, "lblInfo(0)"), c.date);
            EXPECT_EQ(BoxOf(dialog, "lblInfo(1)"), c.age) << c.why;
            EXPECT_EQ(BoxOf(dialog, "lblInfo(3)"), "2");
            EXPECT_EQ(BoxOf(dialog, "lblInfo(4)"), folder.Path("Demodb.mdb"));
            EXPECT_EQ(BoxOf(dialog, "lblInfo(6)"), "/shared/<b>");
        });
    }
}

TEST(ValueBox, ShowsThatItIsCut) {
    const auto picture = [](const QString& text, int width, double fontTimes, bool& tells) {
        ValueBox box(text, nullptr);
        QFont font = box.font();
        font.setPointSizeF(font.pointSizeF() * fontTimes);
        box.setFont(font);
        box.resize(width, box.sizeHint().height());
        QHelpEvent tip(QEvent::ToolTip, {}, {});
        QApplication::sendEvent(&box, &tip);
        tells = !box.toolTip().isEmpty();
        QToolTip::hideText();
        return box.grab().toImage();
    };
    const QString date = "20011102";
    for (const double times : {1.0, 2.0}) {
        ValueBox narrow(date, nullptr);
        QFont font = narrow.font();
        font.setPointSizeF(font.pointSizeF() * times);
        narrow.setFont(font);
        const int width = narrow.minimumSizeHint().width();
        const int room = narrow.fontMetrics().horizontalAdvance("00000000");
        bool isCut = true;
        picture(date, width, times, isCut);
        EXPECT_FALSE(isCut) << "the narrowest box holds a date";
        const QString text = "C:/Program Files/" + date;
        const QImage cut = picture(text, width, times, isCut);
        EXPECT_TRUE(isCut);
        const QString elided = narrow.fontMetrics().elidedText(text, Qt::ElideRight, room);
        EXPECT_EQ(cut, picture(elided, width, times, isCut)) << "dots stand for the rest";
        EXPECT_FALSE(isCut);
    }
}

TEST_F(PropertiesTest, KeysReachEveryValueAndCopyIt) {
    OpenSample();
    Show("PC1");
    for (int box = 0; box < 22; ++box) {
        Press(Qt::Key_Tab);
        ASSERT_EQ(QApplication::focusWidget()->objectName(), QString("txtPers(%1)").arg(box));
    }
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    for (int box = 20; box > 1; --box)
        Press(Qt::Key_Backtab, Qt::ShiftModifier);
    Press(Qt::Key_X);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), "anna") << "it is selected by coming to it, and typing does not change it";
    TurnTo(9);
    Press(Qt::Key_Tab);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), "Program Name\tUninstall String\t\r\nPaint\tpaint.exe\r\nNew MS Office\t\r\n");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

} // namespace
