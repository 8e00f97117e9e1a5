// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors.h"
#include "platform/report/ChartPainter.h"
#include "platform/report/PDFFile.h"
#include "platform/report/PagePainter.h"
#include "tests/report_viewer/PagesForTests.h"
#include "tests/support/SmallFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace {

using report::FontMeasure;
using report::Page;
using report::PaintedPages;
using testing::HasSubstr;
using testing::Not;

class PDFTest : public testing::Test {
protected:
    /// `count` pages, each with a row of three columns in another order than from left to right.
    PaintedPages Pages(int count) {
        PaintedPages pages;
        pages.title = "Größe & Gewicht";
        pages.count = count;
        pages.paint = [this](int number, QPainter& painter) {
            Page page;
            Put(page, measure, 300, 40, "Größe " + std::to_string(number));
            Put(page, measure, 42, 40, "first final office");
            Put(page, measure, 150, 60, "€ 100", {9, true, true, 255});
            report::PaintPage(page, painter, measure);
        };
        pages.progress = [](int /*number*/) { return true; };
        return pages;
    }

    FontMeasure measure;
    TemporaryFolder folder;
    std::string path = folder.Path("out.pdf");
};

TEST_F(PDFTest, HoldsPagesWhoseTextsCanBeCopiedInReadingOrder) {
    PaintedPages pages = Pages(3);
    pages.first = 4;
    pages.format = {792, 612, 36, 36, 36, 36};
    ASSERT_TRUE(report::WritePDF(path, pages));
    EXPECT_THAT(PDFText(path), HasSubstr("Größe 4\nfirst final office\n€ 100\n"));
    EXPECT_THAT(PDFText(path), HasSubstr("Größe 6"));
    const std::string facts = Seen("pdfinfo", {QString::fromStdString(path)});
    EXPECT_THAT(facts, HasSubstr("Größe & Gewicht"));
    EXPECT_THAT(facts, testing::ContainsRegex("Creator: +Velmora"));
    EXPECT_THAT(facts, testing::ContainsRegex("Pages: +3"));
    EXPECT_THAT(facts, testing::ContainsRegex("Page size: +792 x 612 pts")) << "landscape Letter";
    const std::string fonts = Seen("pdffonts", {QString::fromStdString(path)});
    EXPECT_EQ(std::count(fonts.begin(), fonts.end(), '\n'), 4) << "two lines of heading, two faces:\n"
                                                               << fonts;
}

TEST_F(PDFTest, StoppedOrFailedLeavesWhatWasThere) {
    folder.WriteFile("out.pdf", "older");
    PaintedPages stopped = Pages(10);
    stopped.progress = [](int number) { return number < 5; };
    EXPECT_FALSE(report::WritePDF(path, stopped));
    EXPECT_EQ(folder.ReadFile("out.pdf"), "older");

    PaintedPages failing = Pages(10);
    failing.paint = [](int number, QPainter& /*painter*/) {
        if (number == 3)
            Raise(Errors::kNoCurrentRow);
    };
    EXPECT_THROW(report::WritePDF(path, failing), RunTimeError);
    EXPECT_EQ(folder.ReadFile("out.pdf"), "older");
    {
        const SmallFiles full(20'000);
        EXPECT_THROW(report::WritePDF(path, Pages(200)), RunTimeError);
    }
    EXPECT_EQ(folder.ReadFile("out.pdf"), "older");
    EXPECT_THROW(report::WritePDF(folder.Path("missing/out.pdf"), Pages(1)), RunTimeError);
}

TEST_F(PDFTest, ChartsKeepNamesAsTheyAre) {
    PaintedPages pages = Pages(1);
    pages.paint = [this](int /*number*/, QPainter& painter) {
        Page page;
        report::PlacedChart chart;
        chart.left = chart.top = 42;
        chart.width = 511;
        chart.height = 300;
        chart.slices = {{"Debian 12", 41}, {"<b>A</b>&amp;", 30}, {"", 29}};
        page.charts.push_back(chart);
        report::PaintPage(page, painter, measure);
    };
    ASSERT_TRUE(report::WritePDF(path, pages));
    const std::string text = PDFText(path);
    EXPECT_THAT(text, HasSubstr("Debian 12 — 41 (41 %)"));
    EXPECT_THAT(text, HasSubstr("<b>A</b>&amp; — 30 (30 %)")) << "a client PC's name is no markup";
    EXPECT_THAT(text, HasSubstr("(none) — 29 (29 %)"));
    EXPECT_EQ(Seen("pdfimages", {"-list", QString::fromStdString(path)}).find("image"), std::string::npos)
        << "drawn, not a picture";
}

TEST_F(PDFTest, SmallSlicesAreJoined) {
    report::Slices many{{"A", 500}, {"B", 300}};
    for (char name = 'a'; name <= 'z'; ++name)
        many.emplace_back(std::string(1, name), 5);
    const struct {
        const char* why;
        report::Slices slices;
        report::Slices shown;
    } cases[] = {
        {"below one in fifty", many, {{"A", 500}, {"B", 300}, {"Other (26 values)", 130}}},
        {"a single small one keeps its name", {{"A", 99}, {"B", 1}}, {{"A", 99}, {"B", 1}}},
        {"no more than can be told apart",
         report::Slices(14, {"x", 1}),
         {{"x", 1},
          {"x", 1},
          {"x", 1},
          {"x", 1},
          {"x", 1},
          {"x", 1},
          {"x", 1},
          {"x", 1},
          {"x", 1},
          {"Other (5 values)", 5}}},
        {"no rows", {}, {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(report::JoinSmallSlices(c.slices), c.shown) << c.why;
    const std::string label = report::SliceLabel(std::string(300, 'W'), 1, 1000, 120, measure);
    EXPECT_THAT(label, HasSubstr("… — 1 (under 1 %)")) << "long names are cut, numbers are not";
    EXPECT_LT(measure.Width({}, label), 125);
    EXPECT_EQ(report::SliceLabel("A", 200, 201, 200, measure), "A — 200 (over 99 %)") << "not all of them";
    EXPECT_EQ(report::SliceLabel("A", 201, 201, 200, measure), "A — 201 (100 %)");
}

} // namespace
