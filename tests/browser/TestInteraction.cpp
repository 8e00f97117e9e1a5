// SPDX-License-Identifier: GPL-3.0-or-later
// What a person does to the list and its pop-up menus, by mouse and by keyboard.
#include "browser/ListView.h"
#include "browser/TreeModel.h"
#include "core/Globals.h"
#include "tests/browser/MainWindowTest.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolTip>

namespace {

using Strings = std::vector<std::string>;

class InteractionTest : public MainWindowTest {
protected:
    void Open(const std::string& key = "ALL") {
        MakeDatabase({{"PC1", "20240315", "08:00:00"},
                      {"PC2", "20240101", "09:00:00"},
                      {"Ada", "20240314", "10:00:00"}});
        LoadAndShow();
        form->resize(900, 500);
        Click(key);
    }

    /// Fills the list of the selected node with rows of the test's own.
    void Fill(const Strings& keys) {
        List().ClearItems();
        List().ClearColumns();
        const ListFill fill(List());
        List().AddColumn("Name", 3000);
        List().AddColumn("Value", 1500);
        for (const std::string& key : keys) {
            List().AddRow(key, "row " + key, Image::PC_DEVICE);
            List().SetSubItem(1, "of " + key);
        }
    }

    void DoubleClick(int row) const {
        ClickRow(row);
        QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, PlaceOf(row));
    }
    void ClickHeader(int column) const {
        auto& header = *List().findChild<QHeaderView*>();
        const QPoint place(header.sectionViewportPosition(column) + 10, header.height() / 2);
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place);
    }
    std::string SelectedNode() const {
        const QModelIndexList selected = Find<QTreeView>("tvTreeView").selectionModel()->selectedIndexes();
        return selected.isEmpty() ? "" : Tree().Key(selected.first());
    }
    Strings FirstColumn() const {
        Strings texts;
        for (std::size_t row = 0; row < List().Items().Rows(); ++row)
            texts.emplace_back(List().Items().Text(row, 0));
        return texts;
    }
    /// The tip at a place of the widget; hidden again afterwards.
    static std::string TipAt(QWidget& viewport, QPoint place) {
        QHelpEvent event(QEvent::ToolTip, place, viewport.mapToGlobal(place));
        QApplication::sendEvent(&viewport, &event);
        std::string tip = QToolTip::text().toStdString();
        QToolTip::hideText();
        return tip;
    }
};

TEST_F(InteractionTest, ADoubleClickOrEnterGoesToTheRowsNode) {
    Open();
    DoubleClick(1);
    EXPECT_EQ(SelectedNode(), "PC2?MAIN");
    EXPECT_TRUE(Find<QTreeView>("tvTreeView").isExpanded(Tree().Find("PC2?MAIN")));
    EXPECT_FALSE(IsEnabled("mnuPopRDelete")) << "the node's own rules hold";
    for (const bool isLarge : {false, true}) {
        Click("ALL?UNI");
        Fill({"PC1?MULTI?UNI?1", "PC2?MULTI?UNI?2"});
        Action(isLarge ? "ViewLarge" : "ViewDetails").trigger();
        View().setFocus();
        View().setCurrentIndex(View().model()->index(1, 0));
        Press(isLarge ? Qt::Key_Enter : Qt::Key_Return);
        EXPECT_EQ(SelectedNode(), "PC2?UNI") << isLarge;
    }
}

TEST_F(InteractionTest, ARowThatLeadsNowhereStaysWhereItIs) {
    Open("PC1?DEV");
    Fill({"DEV_5_PC1", "PC9?CPU", "PC1?MULTI?DEVDRV?1", "", "PC1?XYZ"});
    for (int row = 0; row < 4; ++row)
        DoubleClick(row);
    prompts.Expect(Box("", "PC1?XYZ", MsgBoxStyle::kOKOnly));
    DoubleClick(4);
    EXPECT_EQ(SelectedNode(), "PC1?DEV");
    EXPECT_EQ(List().Items().Rows(), 5U);
}

TEST_F(InteractionTest, AClickOnACaptionSortsAndASecondOneTurnsTheOrderRound) {
    Open();
    EXPECT_FALSE(List().Sorted());
    EXPECT_EQ(FirstColumn(), (Strings{"PC1", "PC2", "Ada"})) << "as they were added";
    const struct {
        int column;
        Strings machines;
        const char* why;
    } cases[] = {
        {1, {"PC2", "Ada", "PC1"}, "by date"},
        {1, {"PC1", "Ada", "PC2"}, "again: the other way round"},
        {2, {"PC1", "PC2", "Ada"}, "another column begins ascending"},
        {0, {"Ada", "PC1", "PC2"}, "and so does the first"},
        {0, {"PC2", "PC1", "Ada"}, "until it is clicked again"},
    };
    for (const auto& c : cases) {
        ClickHeader(c.column);
        EXPECT_EQ(FirstColumn(), c.machines) << c.why;
        EXPECT_EQ(List().SortKey(), c.column);
        EXPECT_TRUE(List().Sorted());
    }
    Click("PC1?MAIN");
    Click("ALL");
    EXPECT_EQ(FirstColumn(), (Strings{"PC1", "PC2", "Ada"})) << "a new list stands in its own order";
    ClickHeader(0);
    EXPECT_EQ(List().SortOrder(), Qt::DescendingOrder) << "at first the first column counts as clicked once";

    View().setFocus();
    Press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(FirstColumn(), (Strings{"PC2", "Ada", "PC1"})) << "the second column by its digit";
    Press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(List().SortKey(), 2) << "its neighbour by the arrow";
    for (int i = 0; i < 5; ++i)
        Press(Qt::Key_Left, Qt::ControlModifier);
    Press(Qt::Key_9, Qt::ControlModifier);
    EXPECT_EQ(List().SortKey(), 0) << "and there it ends; there is no ninth column";
}

TEST_F(InteractionTest, CopiesTheSelectedRowsOrAll) {
    Open();
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.setText("before");
    const std::string heading = "User Name\tLogon Date\tLogon Time\tRetrieve Personal Info\t\r\n";
    const std::string first = "PC1\t20240315\t08:00:00\t\r\n";
    const std::string second = "PC2\t20240101\t09:00:00\t\r\n";
    const std::string third = "Ada\t20240314\t10:00:00\t\r\n";
    Action("mnuPopCopy").trigger();
    EXPECT_EQ(Clipboard(), heading + first + second + third) << "an empty last cell keeps its tab";
    View().setFocus();
    ClickRow(2);
    QTest::mouseClick(View().viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(0));
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), heading + first + third) << "in the list's order, not in that of the clicks";
    ClickHeader(1);
    Action("mnuPopRCopy").trigger();
    EXPECT_EQ(Clipboard(), heading + third + first) << "which is what it was sorted to";

    Fill({});
    Action("mnuCopy").trigger();
    EXPECT_EQ(Clipboard(), "Name\tValue\t\r\n") << "no rows: the heading alone";
    Fill({"a"});
    Action("mnuCopy").trigger();
    EXPECT_EQ(Clipboard(), "Name\tValue\t\r\nrow a\tof a\r\n") << "a row ends without a tab";
    List().ClearColumns();
    clipboard.setText("before");
    Action("mnuCopy").trigger();
    EXPECT_EQ(Clipboard(), "before") << "no columns: nothing to copy";
}

TEST_F(InteractionTest, TheTipIsTheFirstColumnOfTheRowUnderTheMouse) {
    Open();
    QWidget& viewport = *View().viewport();
    EXPECT_EQ(TipAt(viewport, PlaceOf(1)), "PC2");
    EXPECT_EQ(TipAt(viewport, PlaceOf(2, 2)), "Ada") << "wherever on the row";
    EXPECT_EQ(TipAt(viewport, QPoint(viewport.width() - 2, PlaceOf(0).y())), "PC1")
        << "behind the last column";
    EXPECT_EQ(TipAt(viewport, QPoint(20, viewport.height() - 5)), "n/a") << "below the last row";
    EXPECT_EQ(TipAt(*List().findChild<QHeaderView*>()->viewport(), QPoint(20, 5)), "n/a")
        << "over the captions";
    Action("ViewLarge").trigger();
    EXPECT_EQ(TipAt(*View().viewport(), PlaceOf(1)), "PC2");
    Fill({"<b>"});
    Action("ViewDetails").trigger();
    EXPECT_EQ(TipAt(viewport, PlaceOf(0)), "<span>row &lt;b&gt;</span>")
        << "a name is never taken for markup";
}

TEST_F(InteractionTest, ThePopUpMenusOpenByKeyboard) {
    Open();
    auto& tree = Find<QTreeView>("tvTreeView");
    const struct {
        QWidget& pane;
        const char* menu;
    } cases[] = {{tree, "mnuPopup"}, {View(), "mnuPopupR"}};
    for (const auto& c : cases) {
        auto& menu = Find<QMenu>(c.menu);
        c.pane.setFocus();
        Press(Qt::Key_F10, Qt::ShiftModifier);
        EXPECT_TRUE(menu.isVisible()) << c.menu;
        EXPECT_TRUE(form->frameGeometry().contains(menu.pos())) << c.menu;
        menu.hide();
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(&c.pane, &menuKey);
        EXPECT_TRUE(menu.isVisible()) << c.menu;
        menu.hide();
    }
}

TEST_F(InteractionTest, PingIsOfferedForTheSelectedNetworkCard) {
    Open("ALL?DEVNET");
    Fill({"PC1?MULTI?DEVNET?1", "PC2?MULTI?DEVNET?2"});
    auto& menu = Find<QMenu>("mnuPopupR");
    const auto expectPing = [&](bool isThere, bool isEnabled, const char* why) {
        EXPECT_TRUE(menu.isVisible()) << why;
        for (const char* name : {"mnuPingPrivate", "mnuPingMarker"}) {
            EXPECT_EQ(Action(name).isVisible(), isThere) << name << ": " << why;
            EXPECT_EQ(isThere && IsEnabled(name), isEnabled) << name << ": " << why;
        }
        menu.hide();
    };
    ClickRow(0, Qt::RightButton);
    expectPing(true, true, "the card under the pointer is selected");
    View().clearSelection();
    View().setFocus();
    Press(Qt::Key_F10, Qt::ShiftModifier);
    expectPing(true, false, "the row has the focus but is not selected");
    for (const char* node : {"MAIN", "ALL", "ALL?CPU", "PC1?MAIN", "PC1?DEV"}) {
        Click(node);
        Fill({"PC1"});
        ClickRow(0, Qt::RightButton);
        expectPing(false, false, node);
    }
}

TEST_F(InteractionTest, TypingFindsARow) {
    Open();
    for (const char* mode : {"ViewDetails", "ViewList"}) {
        Action(mode).trigger();
        View().setFocus();
        {
            const TypingPause newText(TypingPause::None);
            QTest::keyClick(&View(), 'a');
        }
        const TypingPause sameText(TypingPause::Endless);
        QTest::keyClick(&View(), 'd');
        EXPECT_EQ(List().SelectedItem(), 2) << mode;
        EXPECT_TRUE(List().IsSelected(2)) << mode;
    }
}

TEST_F(InteractionTest, OtherButtonsDoNotDoubleClick) {
    Open();
    auto& tree = Find<QTreeView>("tvTreeView");
    const QModelIndex branch = Tree().Find("ALL");
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        for (const char* mode : {"ViewDetails", "ViewList"}) {
            Action(mode).trigger();
            QTest::mouseDClick(View().viewport(), button, {}, PlaceOf(0));
            EXPECT_EQ(SelectedNode(), "ALL") << mode;
            EXPECT_TRUE(List().IsSelected(0)) << "it is a press";
        }
        QTest::mouseDClick(tree.viewport(), button, {}, tree.visualRect(branch).center());
        EXPECT_FALSE(tree.isExpanded(branch));
        while (QWidget* const menu = QApplication::activePopupWidget())
            menu->close();
    }
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(branch).center());
    EXPECT_TRUE(tree.isExpanded(branch));
}

TEST_F(InteractionTest, AFilterKeepsTheSelection) {
    Open();
    const auto filter = [this](const char* text) {
        View().setFocus();
        Press(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), text);
    };
    const auto selected = [this] {
        Strings names;
        for (const std::size_t row : List().SelectedRows())
            names.emplace_back(List().Items().Text(row, 0));
        return names;
    };
    ClickRow(2);
    QTest::mouseClick(View().viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(0));
    filter("PC");
    EXPECT_EQ(selected(), (Strings{"PC1"}));
    EXPECT_EQ(List().SelectedItem(), 0) << "the focus stays at its row";
    form->mnuCopy();
    EXPECT_EQ(Clipboard().find("Ada"), std::string::npos) << "nothing acts on what is out of sight";
    QTest::keyClicks(QApplication::focusWidget(), "2");
    EXPECT_EQ(selected(), Strings());
    Press(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), &View());
    List().SortBy(0);
    Press(Qt::Key_Escape);
    EXPECT_EQ(selected(), (Strings{"PC1", "Ada"})) << "back in the new order, from Z to A";

    filter("PC");
    ClickRow(0);
    EXPECT_EQ(selected(), (Strings{"PC2"}));
    Press(Qt::Key_Escape);
    EXPECT_EQ(selected(), (Strings{"PC2"})) << "a new selection ends the one before";
    filter("Ada");
    Click("PC1?MAIN");
    Click("ALL");
    EXPECT_EQ(selected(), Strings()) << "and so does another list";
}

TEST_F(InteractionTest, TheFilterLeavesTheRowsThatHoldItsText) {
    Open();
    View().setFocus();
    const auto& line = Find<QWidget>("filterLine");
    EXPECT_FALSE(line.isVisible());
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(line.isVisible());
    EXPECT_EQ(QApplication::focusWidget(), &Find<QLineEdit>("txtFilter"));
    EXPECT_EQ(Find<QLabel>("lblFilterCount").text(), "3 of 3 rows");
    QTest::keyClicks(QApplication::focusWidget(), "PC");
    EXPECT_EQ(FirstColumn(), (Strings{"PC1", "PC2"}));
    EXPECT_EQ(Find<QLabel>("lblFilterCount").text(), "2 of 3 rows");
    Action("mnuPopCopy").trigger();
    EXPECT_EQ(Clipboard().find("Ada"), std::string::npos) << "what is filtered out is not in the list";
    QTest::keyClicks(QApplication::focusWidget(), "1");
    EXPECT_EQ(FirstColumn(), (Strings{"PC1"}));
    Press(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), &View()) << "Enter goes on to the rows";
    EXPECT_TRUE(List().IsSelected(0));
    Press(Qt::Key_Escape);
    EXPECT_FALSE(line.isVisible());
    EXPECT_EQ(FirstColumn(), (Strings{"PC1", "PC2", "Ada"}));

    Press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), "Ada");
    Click("PC1?MAIN");
    Click("ALL");
    EXPECT_FALSE(line.isVisible()) << "another list begins whole";
    EXPECT_EQ(FirstColumn().size(), 3U);
}

} // namespace
