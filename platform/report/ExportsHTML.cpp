// SPDX-License-Identifier: GPL-3.0-or-later
// One page of HTML. The innermost group is a table with its header as the caption, the groups around it are
// headings; a document whose rows are labels and values gives a table for each row.
#include "platform/report/ExportCaptions.h"
#include "platform/report/ExportTables.h"
#include "platform/report/ExportText.h"
#include "platform/report/ExportWriters.h"
#include "platform/report/GroupTotals.h"
#include "platform/report/ValueCounts.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace report {

namespace {

constexpr std::string_view kStyle =
    ":root{color-scheme:light dark}\n"
    "body{font-family:sans-serif;margin:2em}\n"
    "table{border-collapse:collapse;margin:0 0 1.5em}\n"
    "caption{font-weight:bold;text-align:left;padding:.4em 0}\n"
    "th,td{border:1px solid #8888;padding:.2em "
    ".5em;text-align:left;vertical-align:top;white-space:pre-line}\n"
    "th{background:#8883}\n"
    "tfoot td{font-weight:bold}\n"
    ".r{text-align:right}\n"
    ".c{text-align:center}\n";

/// The attribute for what an object looks like apart from plain text; empty for that.
std::string StyleAttribute(const TextStyle& style) {
    std::string text;
    if (style.color != kTextColor) {
        std::array<char, 8> color{};
        // The stored colour has red in the low byte.
        std::snprintf(color.data(), color.size(), "#%02x%02x%02x", style.color & 0xFFU,
                      (style.color >> 8U) & 0xFFU, (style.color >> 16U) & 0xFFU);
        text.append("color:").append(color.data());
    }
    if (style.isBold)
        text.append(text.empty() ? "" : ";").append("font-weight:bold");
    if (style.isItalic)
        text.append(text.empty() ? "" : ";").append("font-style:italic");
    return text.empty() ? text : " style=\"" + text + '"';
}

std::string_view ClassAttribute(Alignment alignment) {
    switch (alignment) {
        case Alignment::Right:
            return " class=\"r\"";
        case Alignment::Center:
            return " class=\"c\"";
        case Alignment::Left:
            break;
    }
    return "";
}

/// Writes the rows of one report, as a page's body or, for a subreport, as a part of one.
class Body {
public:
    Body(const Report& report, ReplacedFile& file, ExportSteps& steps, int headingLevel)
        : mReport(report),
          mDocument(report.Definition()),
          mFile(file),
          mSteps(steps),
          mHeadingLevel(headingLevel),
          mShown(report),
          mTotals(mDocument) {}

    /// `first` is the row whose values the report's header shows; null where there is none.
    void Begin(std::size_t rows, const Row* first) {
        mTotals.Begin(rows);
        WriteParagraphs(SectionOf(mDocument, SectionKind::ReportHeader), first);
    }

    void Add(const Row& row) {
        const std::size_t level = mTotals.FirstNewGroup(row);
        if (level < mDocument.groups.size()) {
            CloseGroups(level);
            OpenGroups(level, row);
        }
        mTotals.Add(row);
        mLastRow = row;
        if (mShown.Rows().kind == SectionKind::Detail && !mShown.Columns().empty())
            WriteRow(GroupTotals::kReport);
        WriteSubreports(row);
    }

    void End() {
        CloseGroups(0);
        WriteFooter(SectionOf(mDocument, SectionKind::ReportFooter), GroupTotals::kReport);
        CloseTable();
    }

    /// A chart reads as the table of what it draws.
    void WriteCharts() {
        for (const Section& section : mDocument.sections)
            for (const Line& line : section.lines)
                for (const ObjectDefinition& object : line.objects)
                    if (object.kind == Kind::Chart)
                        WriteChart(object);
    }

    /// Texts that stand at the foot of each page stand once, at the end.
    void WritePageFooter() {
        std::string text;
        for (const Line& line : SectionOf(mDocument, SectionKind::PageFooter).lines)
            for (const ObjectDefinition& object : line.objects)
                if (object.kind == Kind::Text && !mReport.Text(object).empty() &&
                    mReport.Text(object) != mDocument.title)
                    text.append(text.empty() ? "" : " ").append(mReport.Text(object));
        WriteElement("p", text);
    }

private:
    void WriteElement(const std::string& tag, std::string_view text) {
        if (text.find_first_not_of(" \t\r\n") == std::string_view::npos)
            return;
        std::string html = "<" + tag + ">";
        AppendHTML(html, text);
        mFile.Write(html.append("</").append(tag).append(">\n"));
    }

    /// What an object of a header or footer shows; `row` is the one that the section belongs to.
    std::string TextOf(const ObjectDefinition& object, const Row* row, std::size_t group) const {
        if (object.kind == Kind::Text)
            return mReport.Text(object);
        if (object.kind != Kind::Field)
            return {};
        switch (object.source.kind) {
            case Source::Kind::Count:
            case Source::Kind::Sum:
            case Source::Kind::Share:
                return mTotals.Text(object, group);
            case Source::Kind::PageNumber:
            case Source::Kind::PageCount:
            case Source::Kind::PrintDate:
                break;
            case Source::Kind::Field:
            case Source::Kind::Formula:
                return row == nullptr ? std::string() : mReport.ObjectText(object, *row);
        }
        return {};
    }

    std::string LineText(const Line& line, const Row* row, std::size_t group) const {
        std::string text;
        for (const ObjectDefinition& object : line.objects)
            if (const std::string part = TextOf(object, row, group); !part.empty())
                text.append(text.empty() ? "" : " ").append(part);
        return text;
    }

    void WriteParagraphs(const Section& section, const Row* row, std::size_t group = GroupTotals::kReport) {
        for (const Line& line : section.lines)
            if (const std::string text = LineText(line, row, group);
                !mShown.IsCaptionLine(line) && text != mDocument.title)
                WriteElement("p", text);
    }

    /// A group's heading: its header without the captions of columns, or else its value.
    std::string GroupText(std::size_t level, const Row& row) const {
        std::string text;
        for (const Line& line : SectionOf(mDocument, SectionKind::GroupHeader, level).lines)
            if (!mShown.IsCaptionLine(line))
                if (const std::string part = LineText(line, &row, level); !part.empty())
                    text.append(text.empty() ? "" : "\n").append(part);
        if (!text.empty())
            return text;
        const Group& group = mDocument.groups[level];
        return FormatValue(group.format, row[group.field], group.isFlag);
    }

    void OpenGroups(std::size_t level, const Row& row) {
        for (; level < mDocument.groups.size(); ++level) {
            const std::string text = GroupText(level, row);
            const int heading = std::min(mHeadingLevel + static_cast<int>(level), 6);
            const bool isInnermost = level + 1 == mDocument.groups.size();
            if (!IsShown(level) || (isInnermost && mShown.Rows().kind == SectionKind::GroupFooter))
                continue;
            // The innermost group's heading is the caption of its table, where it has one table.
            if (isInnermost && !HasTablePerRow())
                mCaption = text;
            else
                WriteElement("h" + std::to_string(heading), text);
        }
    }

    void CloseGroups(std::size_t level) {
        if (!mTotals.HasRows())
            return;
        bool isShown = false;
        for (std::size_t group = mDocument.groups.size(); group-- > level;) {
            const Section& footer = SectionOf(mDocument, SectionKind::GroupFooter, group);
            isShown = isShown || IsShown(group);
            if (&footer != &mShown.Rows()) {
                WriteFooter(footer, group);
            } else if (!mShown.Columns().empty()) {
                WriteRow(group);
                isShown = false;
            }
        }
        if (isShown)
            CloseTable();
    }

    /// A group without header and footer is there for the group tree alone, and divides no table.
    bool IsShown(std::size_t group) const {
        return !SectionOf(mDocument, SectionKind::GroupHeader, group).lines.empty() ||
               !SectionOf(mDocument, SectionKind::GroupFooter, group).lines.empty();
    }

    bool HasTablePerRow() const { return mShown.IsLabelled() || mShown.Columns().empty() || HasSubreports(); }

    bool HasSubreports() const {
        for (const Line& line : SectionOf(mDocument, SectionKind::Detail).lines)
            for (const ObjectDefinition& object : line.objects)
                if (object.kind == Kind::Subreport)
                    return true;
        return false;
    }

    /// The last row as `section` shows it.
    const Row& RowOf(const Section& section) {
        return section.kind == SectionKind::GroupFooter ? mTotals.Closing(mLastRow) : mLastRow;
    }

    /// A footer stands in the table that it closes, each object below its column; without one, as text.
    void WriteFooter(const Section& section, std::size_t group) {
        for (const Line& line : section.lines) {
            const Row& row = RowOf(section);
            const std::string text = LineText(line, &row, group);
            if (text.empty())
                continue;
            if (!mIsTableOpen || HasTablePerRow()) {
                CloseTable();
                WriteElement("p", text);
                continue;
            }
            std::vector<std::string> cells(mShown.Columns().size());
            for (const ObjectDefinition& object : line.objects)
                if (const std::string part = TextOf(object, &row, group); !part.empty()) {
                    std::string& cell = cells[mShown.ColumnAt(object)];
                    cell.append(cell.empty() ? "" : " ").append(part);
                }
            std::string html = mIsFootOpen ? "<tr>" : "</tbody>\n<tfoot>\n<tr>";
            mIsFootOpen = true;
            for (std::size_t i = 0; i < cells.size(); ++i) {
                html.append("<td").append(ClassAttribute(mShown.Columns()[i].object->alignment)).append(">");
                AppendHTML(html, cells[i]);
                html += "</td>";
            }
            mFile.Write(html.append("</tr>\n"));
        }
    }

    void OpenTable() {
        std::string html = "<table>\n";
        if (mCaption.find_first_not_of(" \t\r\n") != std::string::npos) {
            html += "<caption>";
            AppendHTML(html, mCaption);
            html += "</caption>\n";
        }
        if (!mShown.IsLabelled()) {
            html += "<thead>\n<tr>";
            for (const ShownColumn& column : mShown.Columns()) {
                html.append("<th scope=\"col\"").append(ClassAttribute(column.object->alignment)).append(">");
                AppendHTML(html, column.caption);
                html += "</th>";
            }
            html += "</tr>\n</thead>\n";
        }
        mFile.Write(html.append("<tbody>\n"));
        mIsTableOpen = true;
    }

    void CloseTable() {
        if (!mIsTableOpen)
            return;
        mFile.Write(mIsFootOpen ? "</tfoot>\n</table>\n" : "</tbody>\n</table>\n");
        mIsTableOpen = false;
        mIsFootOpen = false;
    }

    /// Texts and styles of the field and text objects that make a row, as their section's format event leaves
    /// them.
    void FormatRow(std::size_t group) {
        mTexts.clear();
        mStyles.clear();
        const Row& row = RowOf(mShown.Rows());
        std::vector<const ObjectDefinition*> objects;
        for (const Line& line : mShown.Rows().lines)
            for (const ObjectDefinition& object : line.objects)
                if (object.kind == Kind::Field || object.kind == Kind::Text) {
                    objects.push_back(&object);
                    mTexts.push_back(TextOf(object, &row, group));
                    mStyles.push_back(object.style);
                }
        const FormatEvent* const event = mReport.EventOf(mShown.Rows());
        if (event == nullptr)
            return;
        std::vector<ObjectFormat> formats;
        formats.reserve(objects.size());
        for (std::size_t i = 0; i < objects.size(); ++i)
            formats.emplace_back(objects[i]->name, mTexts[i], mStyles[i]);
        (*event)(formats);
    }

    void WriteRow(std::size_t group) {
        FormatRow(group);
        if (HasTablePerRow())
            CloseTable();
        if (!mIsTableOpen)
            OpenTable();
        std::string html = mShown.IsLabelled() ? "" : "<tr>";
        for (const ShownColumn& column : mShown.Columns()) {
            if (mShown.IsLabelled()) {
                html += "<tr><th scope=\"row\">";
                AppendHTML(html, column.caption);
                html += "</th>";
            }
            html.append("<td").append(ClassAttribute(column.object->alignment));
            if (!mTexts[column.place].empty())
                html += StyleAttribute(mStyles[column.place]);
            html += ">";
            AppendHTML(html, mTexts[column.place]);
            html += mShown.IsLabelled() ? "</td></tr>\n" : "</td>";
        }
        mFile.Write(html.append(mShown.IsLabelled() ? "" : "</tr>\n"));
    }

    void WriteSubreports(const Row& row) {
        for (const Line& line : SectionOf(mDocument, SectionKind::Detail).lines)
            for (const ObjectDefinition& object : line.objects)
                if (object.kind == Kind::Subreport)
                    WriteSubreport(object, row);
    }

    void WriteSubreport(const ObjectDefinition& object, const Row& row) {
        CloseTable();
        const std::vector<std::size_t> rows = mReport.RowsJoinedTo(object, row[object.parentField]);
        const Report& report = mReport.Subreport(object);
        const int level = mHeadingLevel + static_cast<int>(mDocument.groups.size());
        WriteElement("h" + std::to_string(std::min(level, 6)), report.Definition().title);
        Body body(report, mFile, mSteps, level + 1);
        Row inner;
        if (!rows.empty())
            report.ReadRow(rows.front(), inner);
        body.Begin(rows.size(), rows.empty() ? nullptr : &inner);
        for (const std::size_t number : rows) {
            if (!mSteps.Next())
                break;
            report.ReadRow(number, inner);
            body.Add(inner);
        }
        body.End();
    }

    void WriteChart(const ObjectDefinition& object) {
        ValueCounts counts(mDocument, object.chartField);
        Row row;
        for (std::size_t i = 0; i < mReport.RowCount() && mSteps.Next(); ++i) {
            mReport.ReadRow(i, row);
            counts.Add(row);
        }
        std::vector<std::pair<std::string, std::size_t>> slices = counts.Slices();
        std::stable_sort(slices.begin(), slices.end(),
                         [](const auto& a, const auto& b) { return a.second > b.second; });
        std::string html = "<table>\n<thead>\n<tr><th scope=\"col\">";
        AppendHTML(html, object.text);
        html += "</th><th scope=\"col\" class=\"r\">Count</th></tr>\n</thead>\n<tbody>\n";
        for (const auto& [value, count] : slices) {
            html += "<tr><td>";
            AppendHTML(html, value);
            html.append("</td><td class=\"r\">")
                .append(FormatNumber(static_cast<double>(count), "#,##0"))
                .append("</td></tr>\n");
        }
        mFile.Write(html.append("</tbody>\n</table>\n"));
    }

    const Report& mReport;
    const Document& mDocument;
    ReplacedFile& mFile;
    ExportSteps& mSteps;
    int mHeadingLevel;
    ShownColumns mShown;
    GroupTotals mTotals;
    std::string mCaption;
    Row mLastRow;
    std::vector<std::string> mTexts;
    std::vector<TextStyle> mStyles;
    bool mIsTableOpen = false;
    bool mIsFootOpen = false;
};

/// Each row is a step, as often as a chart counts it and where it is written.
std::size_t StepCount(const Report& report) {
    std::size_t count = report.RowCount();
    for (const Section& section : report.Definition().sections)
        for (const Line& line : section.lines)
            for (const ObjectDefinition& object : line.objects) {
                if (object.kind == Kind::Chart)
                    count += report.RowCount();
                if (object.kind == Kind::Subreport)
                    count += report.Subreport(object).RowCount();
            }
    return count;
}

} // namespace

bool WriteHTML(const Report& report, ReplacedFile& file, const ExportProgress& progress) {
    std::string title;
    AppendHTML(title, report.Definition().title);
    if (title.find_first_not_of(" \n") == std::string::npos)
        title = "Report";
    file.Write("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + title +
               "</title>\n<style>\n");
    file.Write(kStyle);
    file.Write("</style>\n</head>\n<body>\n<h1>" + title + "</h1>\n");
    ExportSteps steps(progress, 0, 1, StepCount(report));
    constexpr int kHeadingLevel = 2;
    Body body(report, file, steps, kHeadingLevel);
    body.WriteCharts();
    Row row;
    if (report.RowCount() > 0)
        report.ReadRow(0, row);
    body.Begin(report.RowCount(), report.RowCount() > 0 ? &row : nullptr);
    for (std::size_t i = 0; i < report.RowCount() && steps.Next(); ++i) {
        report.ReadRow(i, row);
        body.Add(row);
    }
    body.End();
    body.WritePageFooter();
    file.Write("</body>\n</html>\n");
    return !steps.IsStopped();
}

} // namespace report
