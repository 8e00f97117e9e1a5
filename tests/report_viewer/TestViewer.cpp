// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PageView.h"
#include "platform/report/Viewer.h"
#include "tests/report/ReportTest.h"
#include "tests/report_viewer/PagesForTests.h"
#include "tests/support/FakePrinting.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/Windows.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTreeView>
#include <QWheelEvent>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

/// A document of the table Programs with a group for each machine.
const char* const kByMachine = R"(
[[report-header.line]]
objects = [{text = "Programs by machine", size = 14, bold = true}]
[[group]]
field = "{Programs.Machine}"
[[group.header.line]]
shaded = true
objects = [{field = "{Programs.Machine}", bold = true}]
[[detail.line]]
objects = [
  {field = "{Programs.Program}", left = 0, width = 70},
  {field = "{Programs.Size}", left = 70, width = 30, align = "right"},
]
[[page-footer.line]]
objects = [{special = "page-number", prefix = "Page ", align = "center"}]
)";

/// One without groups, whose rows stay in the order in which they come.
const char* const kAsRead = R"(
[[detail.line]]
objects = [{field = "{Programs.Program}"}]
)";

/// A viewer in a window of its own, over the small database of the report tests, with prompts and a printer
/// that answer as they are told.
class ViewerTest : public ReportTest {
protected:
    ViewerTest() { MakeViewer(); }

    void MakeViewer() {
        viewer = std::make_unique<report::Viewer>(prompts, printing);
        viewer->resize(900, 500);
        ShowActive(*viewer);
    }
    /// Gives a report to the viewer, which begins with it.
    void View(std::unique_ptr<report::Report> report) {
        shown = std::move(report);
        viewer->ReportSource(shown);
        viewer->ViewReport();
        viewer->DisplayGroupTree(true);
    }
    /// Begins with `count` programs on each of `count` machines, as read: too much for a few slices.
    void ViewSquared(int count) {
        FillPrograms(count);
        auto squared = std::make_unique<report::Report>(kProgramsHead + std::string(kAsRead), "squared.rpt");
        squared->DatabaseTable(1).SetDataSource(
            Query("SELECT One.Machine, Two.Program, Two.[Size] FROM Programs AS One, Programs AS Two"));
        View(std::move(squared));
    }
    /// Asks IsBusy to the end, as owners do.
    void Finish() {
        while (viewer->IsBusy()) {
        }
    }
    /// Lets the viewer work by itself until it has nothing more to do.
    void WaitUntilIdle() {
        EXPECT_TRUE(Eventually([this] { return Find<QProgressBar>("pgbWork")->isHidden(); }));
    }
    /// A report of `count` programs by machine, complete.
    void Show(int count) {
        FillPrograms(count);
        View(Programs(kByMachine));
        Finish();
    }

    template <class Part>
    Part* Find(const char* name) {
        return viewer->findChild<Part*>(name);
    }
    report::PageView* Pages() { return Find<report::PageView>("Pages"); }
    void Press(const char* action) { Find<QAction>(action)->trigger(); }
    std::string Status() { return Find<QLabel>("lblStatus")->text().toStdString(); }
    int PageNumber() { return Find<QLineEdit>("txtPage")->text().toInt(); }
    int PageCount() { return static_cast<int>(Pages()->PageCount()); }
    /// All text of a page from 1, which is gone to.
    std::string TextOfPage(int page) {
        Pages()->GoTo(static_cast<std::size_t>(page - 1));
        Pages()->SelectPage();
        return Pages()->SelectedText().toStdString();
    }
    /// The line of the match that was found last.
    std::string RevealedText() {
        const auto revealed = Pages()->RevealedMatch();
        if (!revealed)
            return {};
        const std::string text = TextOfPage(static_cast<int>(revealed->first) + 1);
        // Texts are separated by tabs and line ends, one text each.
        std::size_t begin = 0;
        for (std::size_t i = 0; i < revealed->second.first.text; ++i)
            begin = text.find_first_of("\t\n", begin) + 1;
        return text.substr(begin, text.find_first_of("\t\n", begin) - begin);
    }

    QueuedPrompts prompts;
    FakePrinting printing;
    std::shared_ptr<report::Report> shown;
    std::unique_ptr<report::Viewer> viewer;
};

TEST_F(ViewerTest, ReadsBetweenEventsAndShowsTheFirstPageEarly) {
    ViewSquared(700);
    EXPECT_TRUE(viewer->IsBusy()) << "more than a slice's work";
    EXPECT_THAT(Status(), testing::MatchesRegex("(Reading|Laying out).*(rows|pages)"));
    EXPECT_TRUE(Find<QProgressBar>("pgbWork")->isVisibleTo(viewer.get()));
    EXPECT_EQ(Find<QLineEdit>("txtPage")->text(), "1");
    EXPECT_TRUE(Find<QLabel>("lblPageCount")->text().endsWith(QChar(0x2026))) << "more pages are to come";
    Finish();
    EXPECT_THAT(Status(), testing::MatchesRegex("[0-9,]+ pages"));
    EXPECT_FALSE(Find<QProgressBar>("pgbWork")->isVisibleTo(viewer.get()));
    EXPECT_FALSE(viewer->IsBusy());
}

TEST_F(ViewerTest, WorksOnByItselfWhenTheOwnerLeavesOffAsking) {
    FillPrograms(3000);
    View(Programs(kByMachine));
    WaitUntilIdle();
    EXPECT_FALSE(viewer->IsBusy());
}

TEST_F(ViewerTest, KeysTurnPages) {
    Show(3000);
    const int last = PageCount();
    ASSERT_GT(last, 20);
    const struct {
        const char* why;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        int page;
    } steps[] = {
        {"the report's end", Qt::Key_End, Qt::ControlModifier, last},
        {"no page behind it", Qt::Key_PageDown, Qt::ControlModifier, last},
        {"back by one", Qt::Key_PageUp, Qt::ControlModifier, last - 1},
        {"the page's end is still the page", Qt::Key_End, Qt::NoModifier, last - 1},
        {"and its beginning", Qt::Key_Home, Qt::NoModifier, last - 1},
        {"the report's beginning", Qt::Key_Home, Qt::ControlModifier, 1},
        {"a page does not fit, so this scrolls within it", Qt::Key_PageDown, Qt::NoModifier, 1},
    };
    for (const auto& step : steps) {
        QTest::keyClick(Pages(), step.key, step.modifiers);
        EXPECT_EQ(PageNumber(), step.page) << step.why;
    }
    Press("actFirst");
    Find<QComboBox>("cmbZoom")->setEditText("fit p");
    QTest::keyClick(Find<QComboBox>("cmbZoom")->lineEdit(), Qt::Key_Return);
    QTest::keyClick(Pages(), Qt::Key_PageDown);
    QTest::keyClick(Pages(), Qt::Key_PageDown);
    EXPECT_EQ(PageNumber(), 3) << "whole pages are turned one by one";

    auto* const field = Find<QLineEdit>("txtPage");
    field->setText("17");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(PageNumber(), 17);
    field->setText("99999");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(PageNumber(), last) << "the nearest there is";
    field->setText("x");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(PageNumber(), last);
    EXPECT_FALSE(Find<QAction>("actNext")->isEnabled());
    Pages()->verticalScrollBar()->setValue(0);
    EXPECT_EQ(PageNumber(), 1) << "the number follows the scroll bar";
}

TEST_F(ViewerTest, ZoomsByKeysWheelAndFit) {
    Show(200);
    QTest::keyClick(Pages(), Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Pages()->Zoom(), 100);
    QTest::keyClick(Pages(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(Pages()->Zoom(), 125);
    QTest::keyClick(Pages(), Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(Pages()->Zoom(), 100);
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(Pages(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(Pages()->Zoom(), 400);
    EXPECT_FALSE(Find<QAction>("actZoomIn")->isEnabled());

    // What is under the pointer stays there.
    Pages()->Zoom(100);
    Pages()->verticalScrollBar()->setValue(500);
    const QPointF at(200, 150);
    QWheelEvent wheel(at, Pages()->viewport()->mapToGlobal(at), {}, {0, 120}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(Pages()->viewport(), &wheel);
    EXPECT_GT(Pages()->Zoom(), 110);
    const double gaps = 12;
    EXPECT_NEAR(Pages()->verticalScrollBar()->value() + 150 - gaps, (650 - gaps) * Pages()->Zoom() / 100, 2);

    Pages()->ZoomToFit(report::PageView::Fit::Width);
    EXPECT_EQ(Pages()->horizontalScrollBar()->maximum(), 0);
    const double narrow = Pages()->Zoom();
    viewer->resize(viewer->width() + 200, viewer->height());
    EXPECT_TRUE(Eventually([&] { return Pages()->Zoom() > narrow; })) << "what fits goes on to fit";
}

TEST_F(ViewerTest, FindsOnAndBackAndAroundTheEnd) {
    Show(3000);
    QTest::keyClick(Pages(), Qt::Key_F, Qt::ControlModifier);
    auto* const text = Find<QLineEdit>("txtFind");
    const char* const kAround = "Went on from the report's other end";
    const struct {
        const char* why;
        const char* sought;
        Qt::KeyboardModifiers modifiers;
        const char* found;
        const char* note;
    } steps[] = {
        {"the first behind the page's beginning", "PROGRAM 0029", Qt::NoModifier, "Program 002901", ""},
        {"the next", "", Qt::NoModifier, "Program 002911", ""},
        {"back", "", Qt::ShiftModifier, "Program 002901", ""},
        {"back around the beginning", "", Qt::ShiftModifier, "Program 002990", kAround},
        {"and on around the end", "", Qt::NoModifier, "Program 002901", kAround},
        {"nowhere", "no such program", Qt::NoModifier, nullptr, "Not found"},
        {"a single place", "program 000007", Qt::NoModifier, "Program 000007", ""},
        {"is found again", "", Qt::NoModifier, "Program 000007", kAround},
    };
    for (const auto& step : steps) {
        if (*step.sought != '\0')
            text->setText(step.sought);
        QTest::keyClick(text, Qt::Key_Return, step.modifiers);
        ASSERT_TRUE(Eventually([this] { return !Find<QAction>("actStop")->isEnabled(); }));
        EXPECT_EQ(Find<QLabel>("lblFindNote")->text().toStdString(), step.note) << step.why;
        if (step.found != nullptr) {
            EXPECT_THAT(RevealedText(), HasSubstr(QString(step.found).remove("program ").toStdString()))
                << step.why;
        }
    }
    QTest::keyClick(text, Qt::Key_Escape);
    EXPECT_FALSE(text->isVisible());
    EXPECT_TRUE(Pages()->hasFocus());
}

TEST_F(ViewerTest, CopiesWhatIsSelected) {
    Show(100);
    EXPECT_FALSE(Find<QAction>("actCopy")->isEnabled());
    QTest::keyClick(Pages(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(Pages(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(),
                HasSubstr("\nProgram 000001\t0\nProgram 000011\t10\n"));
    // A pull over a place with text and beyond the page's foot takes all to the page's end.
    QWidget* const port = Pages()->viewport();
    QTest::mousePress(port, Qt::LeftButton, {}, {1, 1});
    QTest::mouseMove(port, {port->width() / 2, port->height() / 2});
    QTest::mouseRelease(port, Qt::LeftButton, {}, {port->width() / 2, port->height() / 2});
    EXPECT_THAT(Pages()->SelectedText().toStdString(), testing::StartsWith("Programs by machine"));
    QTest::mouseClick(port, Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(Pages()->SelectedText(), "") << "a click alone selects nothing";
}

TEST_F(ViewerTest, GroupsJumpToTheirPages) {
    Show(3000);
    auto* const tree = Find<QTreeView>("GroupTree");
    ASSERT_TRUE(tree->isVisible());
    ASSERT_EQ(tree->model()->rowCount(), 10);
    const QModelIndex last = tree->model()->index(9, 0);
    EXPECT_EQ(last.data().toString(), "PC9");
    tree->scrollTo(last);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(last).center());
    EXPECT_GT(PageNumber(), PageCount() * 8 / 10);
    QWidget* const port = Pages()->viewport();
    QTest::mousePress(port, Qt::LeftButton, {}, {1, 1});
    QTest::mouseMove(port, {port->width() - 1, port->height() - 1});
    QTest::mouseRelease(port, Qt::LeftButton, {}, {port->width() - 1, port->height() - 1});
    EXPECT_THAT(Pages()->SelectedText().toStdString(), HasSubstr("PC9\n"))
        << "in sight, wherever on its page";
    EXPECT_EQ(tree->currentIndex(), last);
    // The tree follows the page on show.
    Press("actFirst");
    EXPECT_EQ(tree->currentIndex().data().toString(), "PC0");
    Pages()->GoTo(static_cast<std::size_t>(PageCount() / 2));
    Press("actPrevious");
    EXPECT_THAT(TextOfPage(PageNumber()),
                testing::StartsWith(tree->currentIndex().data().toString().toStdString() + "\n"))
        << "the header that the page repeats";
    viewer->DisplayGroupTree(false);
    EXPECT_FALSE(tree->isVisible());
    Press("actGroupTree");
    EXPECT_TRUE(tree->isVisible());
}

TEST_F(ViewerTest, StopsAndShowsWhatIsRead) {
    ViewSquared(1000);
    viewer->IsBusy();
    QTest::keyClick(Pages(), Qt::Key_Escape);
    Finish();
    EXPECT_THAT(Status(), testing::StartsWith("Stopped: "));
    EXPECT_LT(shown->RowCount(), 1'000'000U);
    EXPECT_GT(shown->RowCount(), 0U);
    EXPECT_THAT(TextOfPage(1), HasSubstr("Program 000001"));
    const std::size_t before = shown->RowCount();
    QTest::keyClick(Pages(), Qt::Key_F5);
    while (shown->RowCount() <= before && viewer->IsBusy()) {
    }
    EXPECT_GT(shown->RowCount(), before) << "read again, and beyond where it was stopped";
}

TEST_F(ViewerTest, AFailureToReadIsTheOwnersUntilItHasLeftOff) {
    FillPrograms(10);
    connection->Execute("UPDATE Programs SET Program = 'x' WHERE [Size] = 5");
    const auto broken = [this] {
        auto made = std::make_unique<report::Report>(kProgramsHead + std::string(kByMachine), "x.rpt");
        made->DatabaseTable(1).SetDataSource(
            Query("SELECT Machine, CInt(Program) AS Program, [Size] FROM Programs"));
        return made;
    };
    View(broken());
    EXPECT_THROW(while (viewer->IsBusy()){}, RunTimeError);
    EXPECT_FALSE(viewer->IsBusy());
    EXPECT_THAT(Status(), HasSubstr("could not be read"));

    prompts.Expect(Question{Question::Kind::Box, "Error# -1", {}, MsgBoxStyle::kCritical});
    View(broken());
    EXPECT_TRUE(Eventually([this] { return Status().find("could not be read") != std::string::npos; }));

    // A database that is closed meanwhile takes nothing from what is on show.
    Show(10);
    connection->Close();
    EXPECT_THAT(TextOfPage(1), HasSubstr("Program 000001"));
    prompts.Expect(
        Box("Error# 3704",
            "The database that this report was made from is closed. Open it, and choose the report "
            "again.",
            MsgBoxStyle::kCritical));
    QTest::keyClick(Pages(), Qt::Key_F5);
    EXPECT_THAT(TextOfPage(1), HasSubstr("Program 000001"));
}

TEST_F(ViewerTest, PrintsTheRangeOnTheReportsPrinter) {
    Show(3000);
    shown->SelectPrinter("driver", "Laser", "port");
    printing.answer.firstPage = 3;
    printing.answer.lastPage = 5;
    QTest::keyClick(Pages(), Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(printing.askedPrinter, "Laser");
    EXPECT_EQ(printing.askedPages, PageCount());
    EXPECT_EQ(printing.painted, (std::vector{2, 3, 4}));
    EXPECT_EQ(printing.title, "Programs");

    printing.painted.clear();
    printing.isAccepted = false;
    viewer->PrintReport();
    EXPECT_TRUE(printing.painted.empty());

    printing.isAccepted = true;
    printing.failure.emplace(482, "The printer is on fire");
    prompts.Expect(Box("Error# 482", "The printer is on fire", MsgBoxStyle::kCritical));
    viewer->PrintReport();
}

TEST_F(ViewerTest, PrintingFinishesTheReportFirst) {
    FillPrograms(20'000);
    View(Programs(kByMachine));
    viewer->IsBusy();
    viewer->PrintReport();
    EXPECT_EQ(shown->RowCount(), 20'000U);
    EXPECT_EQ(static_cast<int>(printing.painted.size()), PageCount());
}

TEST_F(ViewerTest, ExportsByTheExtension) {
    Show(300);
    const std::string path = folder.Path("report.pdf");
    prompts.Expect(SaveFile("Export"), path);
    QTest::keyClick(Pages(), Qt::Key_E, Qt::ControlModifier);
    const std::string text = PDFText(path);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\f'), PageCount());
    EXPECT_THAT(text, HasSubstr("Program 000300"));

    prompts.Expect(SaveFile("Export"), path);
    prompts.Expect(Box("Replace?", "Replace the file report.pdf?", 4 + 16 + 256), MsgBoxAnswer::No);
    viewer->ExportReport();

    prompts.Expect(SaveFile("Export"), folder.Path("report.CSV"));
    viewer->ExportReport();
    EXPECT_THAT(folder.ReadFile("report.CSV"), HasSubstr("Program 000300"));
    EXPECT_THAT(Status(), testing::EndsWith("exported to " + folder.Path("report.CSV")));

    prompts.Expect(SaveFile("Export"), folder.Path("report.docx"));
    prompts.Expect(Question{Question::Kind::Box, "Export", {}, MsgBoxStyle::kExclamation});
    viewer->ExportReport();
    EXPECT_FALSE(folder.Exists("report.docx"));

    prompts.Expect(SaveFile("Export"), folder.Path("missing/report.pdf"));
    prompts.Expect(Question{Question::Kind::Box, "Error# 76", {}, MsgBoxStyle::kCritical});
    viewer->ExportReport();
}

TEST_F(ViewerTest, PageSetUpLaysTheSameRowsOutAnew) {
    Show(3000);
    const int portrait = PageCount();
    const NextDialog answer([](QDialog& dialog) {
        dialog.findChild<QDoubleSpinBox*>("spnLeft")->setValue(250);
        EXPECT_FALSE(dialog.findChild<QPushButton*>("cmdOK")->isEnabled()) << "no room is left";
        dialog.findChild<QDoubleSpinBox*>("spnLeft")->setValue(20);
        dialog.findChild<QRadioButton*>("optLandscape")->click();
        dialog.findChild<QPushButton*>("cmdOK")->click();
    });
    Press("actPageSetup");
    WaitUntilIdle();
    EXPECT_GT(PageCount(), portrait) << "shorter pages";
    EXPECT_THAT(TextOfPage(1), HasSubstr("Program 000001"));
}

TEST_F(ViewerTest, KeepsTheReadersPlaceWhenTheReportIsLaidOutAnew) {
    Show(3000);
    // The tree takes its room.
    QApplication::processEvents();
    const auto place = [this] { return std::pair(PageNumber(), Pages()->verticalScrollBar()->value()); };
    Pages()->GoTo(12);
    Pages()->verticalScrollBar()->setValue(Pages()->verticalScrollBar()->value() + 40);
    const auto before = place();
    QTest::keyClick(Pages(), Qt::Key_F5);
    WaitUntilIdle();
    EXPECT_EQ(place(), before);
    {
        const NextDialog answer([](QDialog& dialog) { dialog.findChild<QPushButton*>("cmdOK")->click(); });
        Press("actPageSetup");
        EXPECT_EQ(Status(), std::to_string(PageCount()) + " pages")
            << "nothing was changed, nothing is laid out";
        EXPECT_EQ(place(), before);
    }
    const std::string text = TextOfPage(PageNumber());
    const std::string row = text.substr(text.find("Program "), std::size(std::string("Program 000001")));
    const NextDialog answer([](QDialog& dialog) {
        dialog.findChild<QRadioButton*>("optLandscape")->click();
        dialog.findChild<QPushButton*>("cmdOK")->click();
    });
    Press("actPageSetup");
    WaitUntilIdle();
    EXPECT_GT(PageNumber(), before.first);
    EXPECT_THAT(TextOfPage(PageNumber()), HasSubstr(row)) << "the first of the page, on another page now";
    QTest::keyClick(Pages(), Qt::Key_F5);
    Press("actLast");
    WaitUntilIdle();
    EXPECT_EQ(PageNumber(), PageCount()) << "where the reader has gone meanwhile";
}

TEST_F(ViewerTest, MayGoWhileItIsBusyOrAsking) {
    FillPrograms(20'000);
    View(Programs(kByMachine));
    viewer->IsBusy();
    viewer.reset();
    QTest::qWait(1);

    MakeViewer();
    Show(10);
    prompts.Expect(SaveFile("Export"), folder.Path("x.pdf"), [this] { viewer.reset(); });
    viewer->ExportReport();
    EXPECT_FALSE(folder.Exists("x.pdf"));

    MakeViewer();
    Show(10);
    printing.meanwhile = [this] { viewer.reset(); };
    viewer->PrintReport();

    MakeViewer();
    Show(10);
    QTimer::singleShot(0, [this] { viewer.reset(); });
    Press("actPageSetup");
    EXPECT_EQ(viewer, nullptr);
}

TEST_F(ViewerTest, PrintsNothingOfAReportThatIsTakenAwayMeanwhile) {
    Show(10);
    printing.meanwhile = [this] { viewer->ReportSource(nullptr); };
    viewer->PrintReport();

    ViewSquared(300);
    QTimer::singleShot(0, viewer.get(), printing.meanwhile);
    viewer->PrintReport();
    EXPECT_THAT(printing.painted, testing::IsEmpty());
    EXPECT_EQ(PageCount(), 0);
}

} // namespace
