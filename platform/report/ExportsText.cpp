// SPDX-License-Identifier: GPL-3.0-or-later
// Padded text: the report's own pages, laid out with characters of one width and written line by line. A page
// ends with what it holds, so pages of few lines leave no empty ones.
#include "platform/report/ExportTables.h"
#include "platform/report/ExportWriters.h"
#include "platform/report/Layout.h"
#include "platform/text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <set>

namespace report {

namespace {

/// Of a page, before the gaps between its columns.
constexpr int kPortraitColumns = 110;
constexpr int kLandscapeColumns = 150;
constexpr int kPageLines = 60;
/// Points of a character's cell. It is so wide, and its character a little less, that the distance which a
/// layout keeps from an object's sides costs no column.
constexpr double kCellWidth = 600;
constexpr double kCharacterWidth = 599;
constexpr double kCellHeight = 12;
/// Empty space that reads as a line of its own.
constexpr double kGap = kCellHeight / 3;
/// What is lower than this is a rule, anything else a ground.
constexpr double kRuleHeight = kCellHeight / 3;

/// Every character fills one cell, whatever its size.
class CellMeasure final : public TextMeasure {
public:
    double Width(const TextStyle&, std::string_view text) const override {
        return kCharacterWidth * static_cast<double>(CharacterCount(text));
    }
    double LineHeight(const TextStyle&) const override { return kCellHeight; }
    double Ascent(const TextStyle&) const override { return kCellHeight * 0.8; }
};

std::size_t Column(double points) {
    return static_cast<std::size_t>(std::max(0.0, std::round(points / kCellWidth)));
}

/// Where the places of a page come to stand in a line of text. Each left edge that the document has moves
/// what is right of it by one column, so that two texts side by side never touch, and columns stay straight.
class Columns {
public:
    Columns(const Report& report, double width) {
        AddEdges(report.Definition(), width);
        for (const ExportTable& table : ExportTable::Of(report))
            AddEdges(table.Definition(), width);
    }

    std::size_t Left(double points) const {
        const std::size_t column = Column(points);
        return column + static_cast<std::size_t>(std::distance(mEdges.begin(), mEdges.upper_bound(column)));
    }
    /// Behind the last character of what ends there.
    std::size_t Right(double points) const {
        const std::size_t column = Column(points);
        return column + static_cast<std::size_t>(std::distance(mEdges.begin(), mEdges.lower_bound(column)));
    }

    /// Where a text begins within its object.
    std::size_t Start(const PlacedText& text) const {
        const std::size_t left = Left(text.left);
        const std::size_t right = Right(text.left + text.width);
        const std::size_t taken = CharacterCount(text.text);
        if (text.alignment == Alignment::Left || left + taken >= right)
            return left;
        const std::size_t spare = right - left - taken;
        return text.alignment == Alignment::Right ? left + spare : left + spare / 2;
    }

private:
    void AddEdges(const Document& document, double width) {
        for (const Section& section : document.sections)
            for (const Line& line : section.lines)
                for (const ObjectDefinition& object : line.objects)
                    if (const std::size_t column = Column(object.left / 100 * width); column > 0)
                        mEdges.insert(column);
    }

    std::set<std::size_t> mEdges;
};

/// A line under way: texts at their columns, from left to right.
class TextLine {
public:
    void Put(std::size_t column, std::string_view text) {
        if (mCount > 0 && column <= mCount)
            column = mCount + 1;
        mText.append(column - mCount, ' ');
        for (const char c : text)
            mText += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
        mCount = column + CharacterCount(text);
    }
    const std::string& Text() const { return mText; }

private:
    std::string mText;
    std::size_t mCount = 0;
};

/// A line of text, rule or foot of a shaded ground, by where it ends.
struct Row {
    double top = 0;
    double bottom = 0;
    std::string text;
    bool isRule = false;
};

void AddTexts(const Page& page, const Columns& columns, std::vector<Row>& rows) {
    std::vector<const PlacedText*> texts;
    for (const PlacedText& text : page.texts)
        if (text.text.find_first_not_of(' ') != std::string::npos)
            texts.push_back(&text);
    std::stable_sort(texts.begin(), texts.end(), [](const PlacedText* a, const PlacedText* b) {
        return a->top != b->top ? a->top < b->top : a->left < b->left;
    });
    for (auto first = texts.begin(); first != texts.end();) {
        // Tops come from sums, so that those of one line differ in the last digits.
        const auto end = std::find_if(
            first, texts.end(), [&](const PlacedText* text) { return text->top > (*first)->top + kGap / 2; });
        std::stable_sort(first, end,
                         [](const PlacedText* a, const PlacedText* b) { return a->left < b->left; });
        TextLine line;
        for (auto text = first; text != end; ++text)
            line.Put(columns.Start(**text), (*text)->text);
        rows.push_back({(*first)->top, (*first)->top + kCellHeight, line.Text(), false});
        first = end;
    }
}

void AddFills(const Page& page, const Columns& columns, std::vector<Row>& rows) {
    for (const PlacedFill& fill : page.fills) {
        const bool isRule = fill.height < kRuleHeight;
        // Of grounds below each other the last one alone has a foot.
        const auto goesOn = [&fill](const PlacedFill& other) {
            return other.height >= kRuleHeight && std::abs(other.top - fill.top - fill.height) < kGap / 2 &&
                   std::abs(other.left - fill.left) < kCellWidth;
        };
        if (!isRule && std::any_of(page.fills.begin(), page.fills.end(), goesOn))
            continue;
        const std::size_t left = columns.Left(fill.left);
        const std::size_t right = std::max(columns.Right(fill.left + fill.width), left + 1);
        TextLine line;
        line.Put(left, std::string(right - left, '-'));
        const double bottom = fill.top + fill.height;
        // A ground ends where the next line begins; its foot comes before that.
        rows.push_back({isRule ? fill.top : bottom - kGap / 2, bottom, line.Text(), true});
    }
}

void AddCharts(const Page& page, const Columns& columns, std::vector<Row>& rows) {
    for (const PlacedChart& chart : page.charts) {
        std::size_t widest = 0;
        for (const auto& [label, count] : chart.slices)
            widest = std::max(widest, CharacterCount(label));
        // As many as the chart's own height has room for; the others in one line.
        const auto room = static_cast<std::size_t>(std::max(1.0, chart.height / kCellHeight - 1));
        std::size_t others = 0;
        double top = chart.top;
        const auto add = [&](const std::string& label, std::size_t count) {
            TextLine line;
            line.Put(columns.Left(chart.left), label);
            const std::string number = FormatNumber(static_cast<double>(count), "#,##0");
            line.Put(columns.Left(chart.left) + widest + 10 - std::min<std::size_t>(number.size(), 8),
                     number);
            rows.push_back({top, top + kCellHeight, line.Text(), false});
            top += kCellHeight;
        };
        for (std::size_t i = 0; i < chart.slices.size(); ++i)
            if (i < room)
                add(chart.slices[i].first, chart.slices[i].second);
            else
                others += chart.slices[i].second;
        if (others > 0)
            add("Other", others);
    }
}

std::string TextOf(const Page& page, const Columns& columns) {
    std::vector<Row> rows;
    AddTexts(page, columns, rows);
    AddCharts(page, columns, rows);
    AddFills(page, columns, rows);
    std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.top < b.top; });
    std::string text;
    double bottom = rows.empty() ? 0 : rows.front().top;
    const Row* before = nullptr;
    for (const Row& row : rows) {
        // A rule below a ground would draw the same line twice.
        if (before != nullptr && row.isRule && before->isRule && row.text == before->text)
            continue;
        if (row.top > bottom + kGap)
            text += '\n';
        text.append(row.text).append("\n");
        bottom = row.bottom;
        before = &row;
    }
    return text;
}

} // namespace

bool WriteText(const Report& report, ReplacedFile& file, const ExportProgress& progress) {
    using namespace std::chrono_literals;
    const double width =
        kCellWidth * (report.Definition().isLandscape ? kLandscapeColumns : kPortraitColumns);
    const PageFormat format{width, kPageLines * kCellHeight, 0, 0, 0, 0};
    const Columns columns(report, width);
    const CellMeasure measure;
    Layout layout(report, format, measure);
    constexpr double kLayoutShare = 0.4;
    do {
        if (!GoesOn(progress, 0))
            return false;
    } while (layout.Work(50ms));
    constexpr std::size_t kPagesBetweenReports = 4;
    ExportSteps steps(progress, kLayoutShare, 1, layout.PageCount(), kPagesBetweenReports);
    for (std::size_t page = 0; page < layout.PageCount(); ++page) {
        if (!steps.Next())
            return false;
        if (page > 0)
            file.Write("\n");
        file.Write(TextOf(layout.BuildPage(page), columns));
    }
    return true;
}

} // namespace report
