// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PagePainter.h"
#include "platform/report/PageText.h"
#include "tests/report_viewer/PagesForTests.h"

#include <QImage>
#include <QPainter>

#include <cmath>

namespace {

using report::Alignment;
using report::Continuation;
using report::FontMeasure;
using report::Page;
using report::PageText;
using report::TextStyle;

/// The columns with ink on white paper, in points.
std::pair<double, double> InkOf(const Page& page, const FontMeasure& measure, double zoom) {
    QImage image(static_cast<int>(300 * zoom), static_cast<int>(40 * zoom), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(zoom, zoom);
    report::PaintPage(page, painter, measure);
    painter.end();
    int first = image.width();
    int last = -1;
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y)
            if (qGray(image.pixel(x, y)) < 250) {
                first = std::min(first, x);
                last = std::max(last, x);
            }
    return {first / zoom, (last + 1) / zoom};
}

TEST(FontMeasure, WhatIsMeasuredIsWhatIsPaintedAtAnyZoom) {
    const FontMeasure measure;
    const struct {
        const char* why;
        const char* text;
        TextStyle style;
    } cases[] = {
        {"pairs that would be kerned, letters that would be joined", "|AVATAR office fly|", {}},
        {"bold is wider", "|Installed Software|", {12, true, false, 0}},
        {"letters of two and three bytes", "|Größe ß é € „ž“ Ω Я|", {9.5, false, false, 0}},
        {"bytes that are no text", "|\xff\xfe\xc3|", {}},
        {"writing that is shaped", "|שלום مرحبا|", {}},
        {"beyond the first plane", "|𝔸𝔹|", {}},
        {"tabs and line ends are blanks", "|a\tb\nc|", {}},
        {"marks that turn the direction of reading show nothing", "|abc\u202Edef\u00AD|", {}},
    };
    for (const auto& c : cases) {
        for (const double zoom : {1.0, 1.3333, 4.0}) {
            Page bar;
            Put(bar, measure, 10, 10, "|", c.style);
            Page page;
            Put(page, measure, 10, 10, c.text, c.style);
            // The bars at both ends stand as far apart as the text is wide without the last.
            const double between = InkOf(page, measure, zoom).second - InkOf(bar, measure, zoom).second;
            EXPECT_NEAR(between, measure.Width(c.style, c.text) - measure.Width(c.style, "|"), 1.1 / zoom)
                << c.why << " at " << zoom;
        }
    }
}

TEST(FontMeasure, WidthsAddUp) {
    const FontMeasure measure;
    const TextStyle style{11, true, true, 0};
    for (const char* const text : {"AVAWAToffi", "Größe – 12 €", "plain"}) {
        double sum = 0;
        for (const QChar unit : QString::fromUtf8(text))
            sum += measure.Width(style, QString(unit).toStdString());
        EXPECT_NEAR(measure.Width(style, text), sum, 1e-9) << text;
    }
}

TEST(PagePainter, AlignsWithinTheBox) {
    const FontMeasure measure;
    const double width = measure.Width({}, "HH");
    for (const auto& [alignment, left] : {std::pair(Alignment::Left, 10.0),
                                          {Alignment::Center, 10 + (150 - width) / 2},
                                          {Alignment::Right, 160 - width}}) {
        Page page;
        Put(page, measure, 10, 10, "HH").alignment = alignment;
        constexpr double kBearing = 0.9;
        EXPECT_NEAR(InkOf(page, measure, 4).first, left + kBearing, 0.4);
    }
}

/// Two rows of two columns; the second column of the first row is wrapped over three lines.
class PageTextTest : public testing::Test {
protected:
    PageTextTest() : text(Make(measure), measure) {}

    static Page Make(const FontMeasure& measure) {
        Page page;
        Put(page, measure, 10, 10, "PC-1");
        Put(page, measure, 200, 10, "Microsoft Office");
        Put(page, measure, 200, 22, "Professional C:\\Verylong").continuation = Continuation::AfterBlank;
        Put(page, measure, 200, 34, "Path\\Setup").continuation = Continuation::WithinWord;
        Put(page, measure, 10, 46, "PC-2");
        Put(page, measure, 200, 46, "Zip");
        return page;
    }

    FontMeasure measure;
    PageText text;
};

TEST_F(PageTextTest, CopiesRowsWithTabsAndWrappedTextsAsOne) {
    EXPECT_EQ(text.Copy(text.All()).toStdString(),
              "PC-1\tMicrosoft Office Professional C:\\VerylongPath\\Setup\nPC-2\tZip");
    EXPECT_EQ(text.Copy({{1, 10}, {2, 12}}).toStdString(), "Office Professional");
    EXPECT_EQ(text.Copy(text.ObjectAt({2, 3})).toStdString(),
              "Microsoft Office Professional C:\\VerylongPath\\Setup");
    EXPECT_EQ(text.Copy({}).toStdString(), "");
}

TEST_F(PageTextTest, FindsWithoutRegardToCaseAndAcrossLines) {
    const struct {
        const char* why;
        const char* sought;
        std::vector<report::TextRange> found;
    } cases[] = {
        {"each place, in reading order", "pc-", {{{0, 0}, {0, 3}}, {{4, 0}, {4, 3}}}},
        {"over the blank at which a text was wrapped", "OFFICE prof", {{{1, 10}, {2, 4}}}},
        {"over the break of a long word", "longpath", {{{2, 20}, {3, 4}}}},
        {"a match ends at its line's end, not on the next line", "office", {{{1, 10}, {1, 16}}}},
        {"not from one column into the next", "PC-1 Micro", {}},
        {"nothing is nowhere", "", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(text.Find(c.sought), c.found) << c.why;
}

TEST_F(PageTextTest, APressMeansTheNearestPlace) {
    const double half = measure.Width({}, "P") / 2;
    const struct {
        const char* why;
        QPointF point;
        report::TextPlace place;
    } cases[] = {
        {"the first half of a letter", {10 + half - 1, 15}, {0, 0}},
        {"its second half", {10 + half + 1, 15}, {0, 1}},
        {"between the columns: the nearer one", {190, 15}, {1, 0}},
        {"right of all", {500, 27}, {2, 24}},
        {"below all", {10, 500}, {4, 0}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(text.PlaceAt(c.point), c.place) << c.why;
    EXPECT_TRUE(text.HasTextAt({12, 15}));
    EXPECT_FALSE(text.HasTextAt({100, 15}));
    EXPECT_EQ(PageText(Page(), measure).PlaceAt({1, 1}), report::TextPlace()) << "an empty page";
}

} // namespace
