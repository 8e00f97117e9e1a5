// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's tree and what a click on its nodes shows and allows.
#include "browser/ListView.h"
#include "browser/TreeModel.h"
#include "core/Globals.h"
#include "core/LongWork.h"
#include "tests/browser/MainWindowTest.h"
#include "tests/support/Database.h"

#include <QAbstractItemView>
#include <QMenu>
#include <QProgressBar>

namespace {

const std::vector<MachineRow> kMachines = {
    {"PC1", "20240315", "08:00:00"},
    {"PC2", "20240314", std::nullopt},
    {"PC3", "20240308", "10:00:00"},
    {"PC4", "20240307", "11:00:00"},
};

using Strings = std::vector<std::string>;

TEST_F(MainWindowTest, ListsAllMachinesWithTheirPersonalFiles) {
    MakeDatabase({{"PC1", "20240315", "08:00:00"}, {"Pc2", std::nullopt, std::nullopt}, {"PC3", "x", "y"}});
    Store("ImportDir", folder.Path("Inf"));
    folder.WriteFile("INF/PC1.PNF", "");
    folder.WriteFile("INF/pC2.pnf", "[Personal]");
    folder.WriteFile("INF/PC33.PNF", "another machine's");
    LoadAndShow();
    EXPECT_EQ(gLastImportDate, "N/A") << "a machine has no logon date";
    EXPECT_EQ(Tree().Machines().back().age, 4);
    Click("MAIN");
    EXPECT_EQ(Rows(), (Strings{"PC1|20240315|08:00:00|Marked", "Pc2|n/a|n/a|Retrieved", "PC3|x|y|"}));
    const ListModel& items = List().Items();
    EXPECT_EQ(items.Key(1), "Pc2?MAIN");
    EXPECT_EQ(items.Icon(0), Image::PC_1);
    EXPECT_EQ(items.Icon(1), Image::PC_1) << "no date counts as today";
    EXPECT_EQ(items.Icon(2), Image::PC_4) << "text that is no date counts as old";
    EXPECT_EQ(items.Columns().at(0).caption, "User Name") << "though it is the machine's";
    EXPECT_EQ(items.Columns().at(3).width, 2000);
    EXPECT_EQ(Status(), "Database Open.");
    EXPECT_EQ(Find<QProgressBar>("pgbLoaded").value(), 0);
}

TEST_F(MainWindowTest, ASecondClickOnTheSameNodeKeepsItsList) {
    MakeDatabase(kMachines);
    LoadAndShow();
    Click("ALL");
    gConnection->Execute("DELETE * FROM Net WHERE COMPUTERNAME = 'PC4'");
    Click("ALL");
    EXPECT_EQ(Rows().size(), 4U);
    Click("PC1?MAIN");
    EXPECT_EQ(Rows().size(), 11U) << "what the table of machines tells of one";
    Click("ALL");
    EXPECT_EQ(Rows().size(), 3U) << "another node and back reads anew";
    QTest::keyClick(form.get(), Qt::Key_F5);
    EXPECT_TRUE(Rows().empty());
    EXPECT_EQ(List().Items().columnCount(), 4) << "the columns stay until a click";
    EXPECT_EQ(Status(), "Database Open.");
    Click("ALL");
    EXPECT_EQ(Rows().size(), 3U) << "a refresh needs but one click";
}

TEST_F(MainWindowTest, TheKeyboardWalksTheTreeAsTheMouseDoes) {
    MakeDatabase(kMachines);
    LoadAndShow();
    EXPECT_EQ(List().Items().columnCount(), 0) << "a focus alone chooses nothing";
    Click("PC1?MAIN");
    auto& tree = Find<QTreeView>("tvTreeView");
    QTest::keyClick(&tree, Qt::Key_Up);
    QTest::qWait(1);
    EXPECT_EQ(Rows().size(), 4U) << "ALL stands above the first machine";
    tree.clearSelection();
    form->mnuViewRefresh();
    tree.selectionModel()->setCurrentIndex(Tree().Root(), QItemSelectionModel::NoUpdate);
    QTest::keyClick(&tree, Qt::Key_Return);
    QTest::qWait(1);
    EXPECT_EQ(Rows().size(), 4U) << "Enter chooses the node that has the focus";
}

TEST_F(MainWindowTest, ACommandActsOnTheNodeJustSelected) {
    MakeDatabase(kMachines);
    LoadAndShow();
    Click("PC1?MAIN");
    auto& tree = Find<QTreeView>("tvTreeView");
    tree.setExpanded(tree.currentIndex(), true);
    tree.setCurrentIndex(tree.indexBelow(tree.currentIndex()));
    ASSERT_EQ(form->SelectedNodeKey(), "PC1?CPU");
    // Before the loop turns: the node's own click comes first, and forbids it without a question.
    Action("mnuFileRemoveComp").trigger();
    EXPECT_FALSE(IsEnabled("mnuFileRemoveComp"));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      tree.visualRect(tree.currentIndex()).center());
    EXPECT_EQ(form->SelectedNodeKey(), "PC1?CPU") << "Ctrl leaves it selected";
}

TEST_F(MainWindowTest, StaysOpenWhileItWorks) {
    MakeDatabase(kMachines);
    LoadAndShow();
    {
        const LongWork work(*form);
        form->OnExit([] { ADD_FAILURE() << "the program ends under its work"; });
        EXPECT_FALSE(form->close());
        form->mnuFileClose();
        EXPECT_TRUE(gConnection->IsOpen());
    }
    EXPECT_TRUE(form->close());
}

TEST_F(MainWindowTest, AFailedBuildSaysSoAndLeavesTheWindow) {
    MakeDatabase(kMachines);
    LoadAndShow();
    gConnection->Execute("DROP TABLE Net");
    std::string status;
    prompts.Expect(Box("Error# -1", "no such table: Net", MsgBoxStyle::kCritical),
                   [&] { status = Status(); });
    Action("mnuViewRefresh").trigger();
    EXPECT_EQ(status, "Error opening database...");
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "no hourglass is left";
}

TEST_F(MainWindowTest, ATableThatCanNotBeReadLeavesTheTreeAsItIs) {
    MakeDatabase(kMachines);
    LoadAndShow();
    Click("ALL");
    const std::vector<std::string> before = Rows();
    RunSQL(*gConnection, "ALTER TABLE Net ADD COLUMN Broken AS (abs(-9223372036854775808)) VIRTUAL");
    prompts.Expect(Box("Error# -1", "integer overflow", MsgBoxStyle::kCritical));
    Action("mnuViewRefresh").trigger();
    EXPECT_TRUE(Tree().Find("PC1?MAIN").isValid());
    EXPECT_EQ(Rows(), before);
    EXPECT_EQ(Status(), "Error opening database...");
}

TEST_F(MainWindowTest, TheRightButtonOpensTheMenuOfItsPane) {
    MakeDatabase(kMachines);
    LoadAndShow();
    auto& treeMenu = Find<QMenu>("mnuPopup");
    Click("ALL", Qt::RightButton);
    EXPECT_TRUE(treeMenu.isVisible());
    EXPECT_EQ(Rows().size(), 4U) << "the node under the pointer is chosen";
    treeMenu.hide();

    auto& listMenu = Find<QMenu>("mnuPopupR");
    QWidget* const viewport = View().viewport();
    QTest::mouseClick(viewport, Qt::RightButton, {}, QPoint(10, 5));
    EXPECT_TRUE(listMenu.isVisible());
    listMenu.hide();
    Click("ALL?DEVNET");
    QTest::mouseClick(viewport, Qt::RightButton, {}, QPoint(10, 5));
    EXPECT_FALSE(listMenu.isVisible()) << "no network card is chosen there";
}

TEST_F(MainWindowTest, APressAnywhereOnARowSelectsIt) {
    MakeDatabase(kMachines);
    LoadAndShow();
    form->resize(900, 500);
    Click("ALL");
    const QPoint behindLastColumn(View().viewport()->width() - 3, PlaceOf(2).y());
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, behindLastColumn);
    EXPECT_TRUE(List().IsSelected(2));
    EXPECT_FALSE(List().IsSelected(1));
    Action("ViewList").trigger();
    EXPECT_TRUE(List().IsSelected(2)) << "the views share the selection";
}

} // namespace
