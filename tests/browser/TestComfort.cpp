// SPDX-License-Identifier: GPL-3.0-or-later
// What makes the main window fit its user: the font and the room, the keyboard, the help beside a dialog, and
// long work that tells how far it has come.
#include "browser/FontScale.h"
#include "browser/ListView.h"
#include "browser/frmAbout.h"
#include "core/ElidedLabel.h"
#include "tests/browser/HelpTest.h"

#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMessageBox>
#include <QProgressBar>
#include <QScrollBar>
#include <QTimer>
#include <QToolTip>

#include <functional>
#include <set>

namespace {

class ComfortTest : public MainWindowTest {
protected:
    void Open() {
        MakeDatabase({{"PC1", "20240315", "08:00:00"}, {"PC2", {}, {}}, {"Ada", {}, {}}});
        LoadAndShow();
        form->resize(1200, 500);
        Click("ALL");
    }
    QHeaderView& Header() const { return *List().findChild<QHeaderView*>(); }
    void Enlarge(double times) const {
        QFont font = form->font();
        font.setPointSizeF(font.pointSizeF() * times);
        form->setFont(font);
    }
    /// Rows of the test's own, enough for work on them to be seen.
    void FillLong() {
        List().ClearColumns();
        const ListFill fill(List());
        List().AddColumn("Name", 3000);
        for (int row = 0; row < kManyRows; ++row)
            List().AddRow("", "program " + std::to_string((std::int64_t{row} * 7919) % kManyRows),
                          Image::PC_UNINSTALL);
    }
    static constexpr int kManyRows = 300000;
};

TEST_F(ComfortTest, WidthsFollowTheFont) {
    Open();
    const std::vector<int> first = {Header().sectionSize(0), Header().sectionSize(1)};
    EXPECT_NEAR(first[0], 200 * FontScale(View().fontMetrics()), 1) << "3000 twips of the standard font";
    EXPECT_EQ(List().Items().Columns()[0].width, 3000) << "the width itself is what it was";
    Header().resizeSection(1, 2 * first[1]);
    Enlarge(2);
    EXPECT_NEAR(Header().sectionSize(0), 200 * FontScale(View().fontMetrics()), 1);
    EXPECT_GT(Header().sectionSize(0), first[0] * 3 / 2);
    EXPECT_GT(Header().sectionSize(1), first[1] * 3) << "and keeps what was done by hand";
    Enlarge(0.5);
    EXPECT_NEAR(Header().sectionSize(0), first[0], 1);
    EXPECT_NEAR(Header().sectionSize(1), 2 * first[1], 2);
}

TEST_F(ComfortTest, TheFirstSplitShowsEveryCategoryWhole) {
    Open();
    auto& tree = Find<QTreeView>("tvTreeView");
    Click("PC1?MAIN");
    tree.expandAll();
    QTest::qWait(1);
    for (const double times : {1.0, 2.0}) {
        Enlarge(times);
        EXPECT_EQ(tree.horizontalScrollBar()->maximum(), 0) << "times " << times;
    }
    const int whole = tree.width();
    Press(Qt::Key_Left, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(tree.width(), whole - 20) << "300 twips";
    Enlarge(0.5);
    EXPECT_EQ(tree.width(), whole - 20) << "a split that was moved stays";
    Press(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(tree.width(), whole);
}

TEST_F(ComfortTest, TheKeyboardSetsTheWidthOfTheColumnItStandsIn) {
    Open();
    View().setFocus();
    View().setCurrentIndex(View().model()->index(1, 0));
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    Press(Qt::Key_Left);
    EXPECT_EQ(View().currentIndex().column(), 1);
    EXPECT_TRUE(List().IsSelected(1)) << "the row stays selected";
    const int other = Header().sectionSize(0);
    const int before = Header().sectionSize(1);
    Press(Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier);
    const int wider = Header().sectionSize(1);
    EXPECT_GT(wider, before);
    Press(Qt::Key_Equal, Qt::ControlModifier);
    Press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(Header().sectionSize(1), wider);
    for (int i = 0; i < 100; ++i)
        Press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_GT(Header().sectionSize(1), 0) << "never out of sight";
    Press(Qt::Key_Asterisk, Qt::ControlModifier);
    EXPECT_GE(Header().sectionSize(1), View().fontMetrics().horizontalAdvance("20240315"));
    EXPECT_EQ(Header().sectionSize(0), other);
    Action("ViewList").trigger();
    Press(Qt::Key_Up);
    EXPECT_TRUE(List().IsSelected(0)) << "among icons, which have one column, the keys go on from that row";
}

TEST_F(ComfortTest, TheRowThatAFilterFoundIsCurrentAmongAll) {
    Open();
    FillLong();
    List().SortBy(0);
    View().setFocus();
    Press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), "29999");
    ASSERT_EQ(List().Items().Rows(), 13U);
    Press(Qt::Key_Return);
    Press(Qt::Key_Down);
    const std::string found(List().Items().Text(1, 0));
    Press(Qt::Key_Escape);
    ASSERT_EQ(List().Items().Rows(), static_cast<std::size_t>(kManyRows));
    EXPECT_EQ(List().Items().Text(static_cast<std::size_t>(List().SelectedItem()), 0), found);
    EXPECT_TRUE(List().IsSelected(static_cast<std::size_t>(List().SelectedItem())));
    EXPECT_TRUE(View().viewport()->rect().contains(View().visualRect(View().currentIndex()).center()));
}

TEST_F(ComfortTest, RowsHaveOneHeightWhateverTheyShow) {
    Open();
    const auto height = [this] {
        QTest::qWait(1);
        return View().visualRect(View().model()->index(0, 0)).height();
    };
    const int usual = height();
    EXPECT_GT(usual, View().style()->pixelMetric(QStyle::PM_SmallIconSize)) << "room for the picture";
    for (int column = 0; column < 4; ++column)
        Header().resizeSection(column, List().width());
    View().scrollTo(View().model()->index(0, 3));
    ASSERT_LT(Header().sectionViewportPosition(0), -Header().sectionSize(0)) << "no picture is in sight";
    List().SortBy(1);
    EXPECT_EQ(height(), usual);
    List().Filter("PC");
    EXPECT_EQ(height(), usual);
    Click("PC1?MAIN");
    EXPECT_EQ(height(), usual) << "a list without pictures";
    Enlarge(3);
    EXPECT_GE(height(), View().fontMetrics().height());
    EXPECT_GT(height(), usual);
}

TEST_F(ComfortTest, LongWorkOnAListMovesTheBarAndHoldsInputBack) {
    Open();
    FillLong();
    auto& bar = Find<QProgressBar>("pgbLoaded");
    std::set<int> values;
    bool hasHourglass = true;
    QObject::connect(&bar, &QProgressBar::valueChanged, form.get(), [&](int value) {
        values.insert(value);
        hasHourglass &= value == 0 || QApplication::overrideCursor() != nullptr;
    });
    const struct {
        const char* what;
        std::function<void()> work;
    } cases[] = {
        {"a sort", [&] { form->lvListView_ColumnClick(0); }},
        {"a filter", [&] { form->lvListView_FilterTyped("m 7"); }},
        {"a copy",
         [&] {
             form->lvListView_FilterTyped("");
             form->mnuCopy();
         }},
    };
    const EveryLookIsDue every;
    for (const auto& c : cases) {
        values.clear();
        c.work();
        EXPECT_GT(values.size(), 1U) << c.what;
        EXPECT_TRUE(hasHourglass) << c.what;
        EXPECT_EQ(bar.value(), 0) << c.what;
        EXPECT_EQ(QApplication::overrideCursor(), nullptr) << c.what;
    }
    EXPECT_EQ(QGuiApplication::clipboard()->text().count('\n'), kManyRows + 1);
    QGuiApplication::clipboard()->clear();
}

TEST(ListModel, AFilterThatLeavesAllRowsCostsNoMemory) {
    ListModel list;
    list.AddColumn("Name", 3000);
    for (int row = 0; row < 10000; ++row)
        list.AddRow("", "machine " + std::to_string(row), Image::None);
    list.Publish();
    const std::size_t before = list.MemoryUsed();
    for (const char* typed : {"m", "ma", "mac", "machine "})
        list.Filter(typed);
    EXPECT_EQ(list.MemoryUsed(), before);
    EXPECT_EQ(list.rowCount(), 10000);
    list.Filter("machine 9999");
    EXPECT_EQ(list.rowCount(), 1);
    list.Filter("mach");
    EXPECT_EQ(list.rowCount(), 10000);
}

TEST(ElidedLabel, TellsInItsTipWhatIsCut) {
    ElidedLabel label(nullptr);
    label.show();
    const auto tip = [&label] {
        QHelpEvent event(QEvent::ToolTip, {}, label.mapToGlobal(QPoint()));
        QApplication::sendEvent(&label, &event);
        const QString text = QToolTip::text();
        QToolTip::hideText();
        return text.toStdString();
    };
    label.setText("Import Status : <b>PC1</b>.INF");
    label.resize(1000, 20);
    EXPECT_EQ(tip(), "");
    label.resize(60, 20);
    EXPECT_EQ(tip(), "<span>Import Status : &lt;b&gt;PC1&lt;/b&gt;.INF</span>");
}

class DialogHelpTest : public HelpTest {
protected:
    /// Runs the dialog, and `work` in the middle of it.
    template <typename Work>
    static void Run(QDialog& dialog, const Work& work) {
        QTimer::singleShot(0, &dialog, [&] {
            EXPECT_TRUE(Eventually([&] { return QApplication::activeWindow() == &dialog; }));
            work();
            dialog.reject();
        });
        dialog.exec();
    }
};

TEST_F(DialogHelpTest, F1OpensThePageOfTheDialogBesideIt) {
    LoadWithHelp();
    frmAbout about(form.get());
    Run(about, [&] {
        Press(Qt::Key_F1);
        ASSERT_NE(Help(), nullptr);
        EXPECT_TRUE(QTest::qWaitForWindowActive(Help())) << "the dialog does not block it";
        EXPECT_EQ(Shown(), "menus.html#help");
        EXPECT_EQ(QApplication::focusWidget(), &Page()) << "ready to be read";
        auto& contents = In<QTreeView>("tvContents");
        EXPECT_TRUE(Eventually([&] { return contents.currentIndex().isValid(); }));
        EXPECT_EQ(contents.currentIndex().data().toString(), "Menus and toolbar");
        EXPECT_EQ(Shown(), "menus.html#help") << "which does not lead away from the place";
        Press(Qt::Key_Home, Qt::AltModifier);
        EXPECT_EQ(Shown(), "index.html");
        EXPECT_EQ(QApplication::activeModalWidget(), &about);

        QMessageBox box(&about);
        Run(box, [&] {
            Press(Qt::Key_F1);
            EXPECT_EQ(Shown(), "messages.html");
        });
        QDialog nested(&about);
        Run(nested, [&] {
            Press(Qt::Key_F1);
            EXPECT_EQ(Shown(), "menus.html#help") << "no page of its own: that of its owner";
        });
    });
    EXPECT_TRUE(Help()->isVisible()) << "it outlives the dialog";
}

TEST_F(DialogHelpTest, TheImportDialogHasItsPage) {
    LoadWithHelp();
    const NextDialog import([](QDialog& dialog) {
        ASSERT_TRUE(Eventually([&] { return QApplication::activeWindow() == &dialog; }));
        Press(Qt::Key_F1);
        EXPECT_EQ(Shown(), "import.html#window");
        dialog.close();
    });
    Action("mnuImport").trigger();
}

TEST_F(DialogHelpTest, ASearchThatWasClearedStaysClear) {
    Open("mnuHelpSearch");
    In<QLineEdit>("txtSearch").setText("spreadsheet");
    Press(Qt::Key_Return);
    const auto& count = In<QLabel>("lblHits");
    EXPECT_EQ(count.text(), "Searching...");
    Action("mnuHelpSearch").trigger();
    EXPECT_FALSE(QTest::qWaitFor([&] { return !count.text().isEmpty(); }, 300)) << count.text().toStdString();
    // Of two in a row the second one is answered.
    for (const char* words : {"spreadsheet", "pingsound"}) {
        In<QLineEdit>("txtSearch").setText(words);
        Press(Qt::Key_Return);
    }
    auto& hits = In<QListWidget>("lstHits");
    ASSERT_TRUE(Eventually([&] { return hits.count() > 0; }));
    EXPECT_EQ(hits.item(0)->data(Qt::UserRole).toUrl().fileName(), "collector.html");
}

} // namespace
