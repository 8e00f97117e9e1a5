// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's frame: its settings, its bars and views, and what is available when.
#include "browser/ListView.h"
#include "browser/PaneLayout.h"
#include "browser/TreeModel.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "platform/errors.h"
#include "tests/browser/MainWindowTest.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>

#include <filesystem>

namespace {

const std::vector<MachineRow> kTwoMachines = {{"PC1", "20240315", "08:00:00"},
                                              {"PC2", "20240101", "09:00:00"}};

TEST_F(MainWindowTest, TheFirstStartShowsEverything) {
    MakeDatabase(kTwoMachines);
    LoadAndShow();
    EXPECT_EQ(form->size(), QSize(433, 433)) << "6500 twips";
    EXPECT_EQ(gDatabasePath, folder.Path("Demodb.mdb")) << "whatever the case of its name";
    EXPECT_EQ(Status(), "Database Open");
    for (const char* bar : {"tbToolBar", "sbStatusBar", "pgbLoaded"})
        EXPECT_TRUE(Find<QWidget>(bar).isVisible()) << bar;
    EXPECT_EQ(List().View(), ListStyle::Details);
    EXPECT_TRUE(Action("ViewDetails").isChecked());
    EXPECT_EQ(form->ShowConf(), 1);
    EXPECT_TRUE(Action("ConfID1").isChecked());
    EXPECT_EQ(Stored("APPPATH"), folder.Path());

    form->close();
    EXPECT_EQ(Stored("MainWidth"), "6495") << "whole pixels";
    EXPECT_EQ(Stored("ViewMode"), "3");
    EXPECT_EQ(Stored("ShowConf"), "1");
}

TEST_F(MainWindowTest, ComesBackAsItWasLeft) {
    MakeDatabase(kTwoMachines);
    LoadAndShow();
    form->setGeometry(30, 40, 500, 420);
    Action("mnuViewStatusBar").trigger();
    Action("ViewSmall").trigger();
    Action("mnuConfig(0)").trigger();
    gImportDir = "/srv/inventory";
    const QPoint position = form->pos();
    form->close();
    EXPECT_EQ(Stored("ViewStatus"), "0");

    LoadAndShow();
    EXPECT_EQ(form->pos(), position);
    EXPECT_EQ(form->size(), QSize(500, 420));
    EXPECT_FALSE(Find<QStatusBar>("sbStatusBar").isVisible());
    EXPECT_FALSE(Action("mnuViewStatusBar").isChecked());
    EXPECT_TRUE(Find<QToolBar>("tbToolBar").isVisible());
    EXPECT_EQ(Stored("ViewStatus"), "0");
    EXPECT_EQ(List().View(), ListStyle::SmallIcons);
    EXPECT_TRUE(Action("mnuListViewMode(1)").isChecked());
    EXPECT_EQ(gImportDir, "/srv/inventory");
    EXPECT_EQ(form->ShowConf(), 1) << "but the console always opens on the current configuration";
    EXPECT_TRUE(Action("mnuConfig(1)").isChecked());
}

TEST_F(MainWindowTest, CanBeReachedWhereverItWasLeft) {
    MakeDatabase({});
    struct {
        const char *left, *top, *width, *height, *why;
    } cases[] = {
        {"150000", "1000", "6500", "6500", "right of all screens"},
        {"1000", "-9000", "6500", "6500", "its title above the screen"},
        {"1000", "1000", "9000000", "9000000", "larger than any screen"},
        {"1000", "1000", "-5", "0", "no size at all"},
        {"1e30", "-1e30", "1e30", "1e30", "beyond all coordinates"},
    };
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (const auto& c : cases) {
        Store("MainLeft", c.left);
        Store("MainTop", c.top);
        Store("MainWidth", c.width);
        Store("MainHeight", c.height);
        Load();
        const QRect title(form->pos(), QSize(form->width(), 20));
        EXPECT_TRUE(screen.intersects(title)) << c.why;
        EXPECT_LE(form->width(), screen.width()) << c.why;
        EXPECT_GE(form->width(), 200) << c.why;
        EXPECT_GT(form->height(), 0) << c.why;
        form.reset();
    }
}

TEST_F(MainWindowTest, ASettingThatIsNoNumberIsReported) {
    Store("MainLeft", "left");
    prompts.Expect(Box("Error#13", "Type mismatch", MsgBoxStyle::kCritical));
    Load();
    form->close();
    EXPECT_NE(Stored("MainLeft"), "left") << "the next start is whole again";
}

TEST_F(MainWindowTest, OpensWithoutAStoreThatCanBeWrittenAndSaysSoOnce) {
    MakeDatabase({{"PC1", "20240315", "08:00:00"}});
    std::filesystem::create_directory(folder.Path("settings.ini"));
    prompts.Expect(Question{Question::Kind::Box, "Error#75", {}, MsgBoxStyle::kCritical});
    Load();
    EXPECT_EQ(Tree().Machines().size(), 1U);
    EXPECT_TRUE(IsEnabled("mnuCloseDatabase"));
}

TEST_F(MainWindowTest, ClosedWhileMinimisedItKeepsTheStoredPlace) {
    MakeDatabase({});
    Store("MainWidth", "7500");
    LoadAndShow();
    Action("mnuListViewMode(0)").trigger();
    form->showMinimized();
    form->close();
    EXPECT_EQ(Stored("MainWidth"), "7500");
    EXPECT_EQ(Stored("MainLeft"), "<none>");
    EXPECT_EQ(Stored("ViewMode"), "0");
}

TEST_F(MainWindowTest, ExitUnloadsTheOtherWindowsAndTheDatabaseAndThenEndsTheProcess) {
    MakeDatabase(kTwoMachines);
    LoadAndShow();
    QWidget other;
    FormRegistry& registry = FormRegistry::Instance();
    registry.Load("frmOther", &other, [&] { registry.Unloaded(&other); });
    const auto connection = gConnection;
    bool hasEnded = false;
    form->OnExit([&] {
        hasEnded = true;
        EXPECT_TRUE(registry.Windows().empty());
        EXPECT_FALSE(connection->IsOpen());
        EXPECT_FALSE(form->isVisible());
    });
    QTest::keyClick(form.get(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_TRUE(hasEnded);
}

TEST_F(MainWindowTest, AModeIsShownByMenuButtonAndListAlike) {
    MakeDatabase(kTwoMachines);
    LoadAndShow();
    struct {
        Qt::Key key;
        const char *item, *button;
        ListStyle style;
    } cases[] = {
        {Qt::Key_F6, "mnuListViewMode(0)", "ViewLarge", ListStyle::LargeIcons},
        {Qt::Key_F7, "mnuListViewMode(1)", "ViewSmall", ListStyle::SmallIcons},
        {Qt::Key_F8, "mnuListViewMode(2)", "ViewList", ListStyle::List},
        {Qt::Key_F9, "mnuListViewMode(3)", "ViewDetails", ListStyle::Details},
    };
    for (const auto& c : cases) {
        QTest::keyClick(form.get(), c.key);
        EXPECT_EQ(List().View(), c.style) << c.item;
        EXPECT_TRUE(Action(c.button).isChecked()) << c.button;
        EXPECT_TRUE(Action(c.item).isChecked()) << c.item;
        EXPECT_EQ(Stored("ViewMode"), std::to_string(static_cast<int>(c.style)));
    }
    EXPECT_FALSE(Action("mnuListViewMode(0)").isChecked());
    Action("mnuListViewMode(3)").trigger();
    EXPECT_TRUE(Action("mnuListViewMode(3)").isChecked()) << "chosen again, it stays";
}

TEST_F(MainWindowTest, AChangeOfConfigurationEmptiesTheListAndNoMore) {
    MakeDatabase(kTwoMachines);
    LoadAndShow();
    Click("ALL");
    EXPECT_EQ(Rows().size(), 2U);
    Action("ConfID1").trigger();
    EXPECT_EQ(Rows().size(), 2U) << "the configuration on display already";
    Action("mnuPopConfig(0)").trigger();
    EXPECT_EQ(form->ShowConf(), 0);
    EXPECT_TRUE(Rows().empty());
    for (const char* name : {"mnuConfig(0)", "mnuPopConfig(0)", "mnuPopRConfig(0)", "ConfID0"})
        EXPECT_TRUE(Action(name).isChecked()) << name;
    for (const char* name : {"mnuConfig(1)", "mnuPopConfig(1)", "mnuPopRConfig(1)", "ConfID1"})
        EXPECT_FALSE(Action(name).isChecked()) << name;
    Click("ALL");
    EXPECT_EQ(Rows().size(), 2U) << "one click loads it anew";
}

TEST_F(MainWindowTest, AHiddenToolbarMovesTheTreeUpButMakesItNoTaller) {
    MakeDatabase({});
    LoadAndShow();
    auto& tree = Find<QTreeView>("tvTreeView");
    const int toolBar = Find<QToolBar>("tbToolBar").height();
    const QRect before = tree.geometry();
    Action("mnuViewToolbar").trigger();
    EXPECT_EQ(tree.geometry(), before.translated(0, -toolBar));
    EXPECT_EQ(List().geometry().top(), tree.geometry().top());
    EXPECT_EQ(Stored("ViewTool"), "0");
    Action("mnuViewToolbar").trigger();
    EXPECT_EQ(tree.geometry(), before);
    const int statusBar = Find<QStatusBar>("sbStatusBar").height();
    Action("mnuViewStatusBar").trigger();
    EXPECT_EQ(tree.height(), before.height() + statusBar);
}

TEST_F(MainWindowTest, TheSplitterSnapsBackFromTheEdge) {
    MakeDatabase({});
    LoadAndShow();
    auto& tree = Find<QTreeView>("tvTreeView");
    auto& handle = Find<QWidget>("imgSplitter");
    auto& mark = Find<QWidget>("picSplitter");
    EXPECT_FALSE(mark.isVisible());
    const QPoint grip(2, 50);
    QTest::mousePress(&handle, Qt::LeftButton, {}, grip);
    QTest::mouseMove(&handle, QPoint(-500, 50));
    EXPECT_TRUE(mark.isVisible());
    EXPECT_EQ(mark.x(), 33) << "500 twips";
    QTest::mouseRelease(&handle, Qt::LeftButton, {}, QPoint(-500, 50));
    EXPECT_FALSE(mark.isVisible());
    EXPECT_EQ(tree.width(), 100) << "1500 twips";
    EXPECT_EQ(List().x(), 103);
    EXPECT_EQ(List().geometry().right() + 1, form->width() - 7) << "100 twips at the right";
    form->resize(100, 30);
    EXPECT_EQ(form->size(), QSize(200, 30)) << "the width has a floor, the height has none";
}

TEST(ArrangePanes, KeepsTheSplitWithin1500OfEitherSide) {
    struct {
        const char* why;
        float width, asked, split, listWidth;
    } cases[] = {
        {"a split in the middle stays", 9000, 4000, 4000, 4860},
        {"dragged to the left edge, it snaps back", 9000, 100, 1500, 7360},
        {"dragged to the right edge, it snaps back", 9000, 8500, 7500, 1360},
        {"on the limit itself", 9000, 7500, 7500, 1360},
        {"the narrowest window splits in the middle", 3000, 2700, 1500, 1360},
        {"narrower still, the right limit is tested last", 2000, 1500, 500, 1360},
    };
    for (const auto& c : cases) {
        float x = c.asked;
        const PaneSizes panes = ArrangePanes({c.width, 6000, 500, 100, 300, true, true}, x);
        EXPECT_EQ(x, c.split) << c.why;
        EXPECT_EQ(panes.treeWidth, c.split) << c.why;
        EXPECT_EQ(panes.listWidth, c.listWidth) << c.why;
    }
}

} // namespace
