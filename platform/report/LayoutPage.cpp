// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors.h"
#include "platform/report/LayoutState.h"

#include <algorithm>
#include <limits>

namespace report {

namespace {

constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

void WriteWhole(PageWriter& writer, const ReportPlan& plan, const SectionPlan& section, const Row& first,
                const Totals* totals) {
    writer.Show(0, kAll);
    if (!section.lines.empty())
        writer.Add({&plan, &section, section.lines, &first, totals, false});
}

} // namespace

Page Layout::Implementation::BuildPage(std::size_t number) const {
    if (number >= PageCount())
        Raise(Errors::kOutOfRange, std::to_string(number));
    Page page;
    const PageFacts facts = FactsOf(number);
    PageWriter writer(page, facts);
    const Row first = FirstRowOf(number);
    WriteHead(writer, number, first);
    if (mPages.empty()) {
        const Totals totals = TotalsOfReport();
        WriteWhole(writer, plan, plan.reportFooter, first, &totals);
    } else {
        WriteRows(
            writer, mPages[number],
            number + 1 < mPages.size() ? mPages[number + 1] : PageStart{static_cast<std::uint32_t>(mRow), 0});
    }
    writer.MoveTo(format.height - format.bottomMargin - HeightOf(plan.pageFooter, first));
    WriteWhole(writer, plan, plan.pageFooter, first, nullptr);
    return page;
}

double Layout::Implementation::TopOf(const GroupEntry& group) const {
    Page above;
    const PageFacts facts = FactsOf(group.page);
    PageWriter writer(above, facts);
    WriteHead(writer, group.page, FirstRowOf(group.page));
    WriteRows(writer, mPages.at(group.page), PageStart{static_cast<std::uint32_t>(group.firstRow), 0});
    return writer.Top();
}

PageFacts Layout::Implementation::FactsOf(std::size_t number) const {
    PageFacts facts{number + 1, std::nullopt, printDate};
    if (isComplete)
        facts.count = PageCount();
    return facts;
}

/// The values that a page's header and footer show.
Row Layout::Implementation::FirstRowOf(std::size_t number) const {
    Row first(report.Definition().fields.size());
    if (!mPages.empty())
        report.ReadRow(mPages[number].row, first);
    return first;
}

/// What stands above a page's rows. Of all this only the report's own header can hold a chart, whose slices
/// are many.
void Layout::Implementation::WriteHead(PageWriter& writer, std::size_t number, const Row& first) const {
    writer.MoveTo(format.topMargin);
    if (number == 0 && mHeaderStandsOnTop) {
        const Totals totals = TotalsOfReport();
        WriteWhole(writer, plan, plan.reportHeader, first, &totals);
    }
    WriteWhole(writer, plan, plan.pageHeader, first, nullptr);
    if (!mPages.empty())
        WriteRepeatedHeaders(writer, number, first);
}

void Layout::Implementation::WriteRepeatedHeaders(PageWriter& writer, std::size_t page,
                                                  const Row& first) const {
    const PageStart start = mPages[page];
    // The last page may have begun with a row that is not placed yet.
    if (start.row >= mRow || (plan.Levels() == 0 && start.strip == 0))
        return;
    RowStrips strips;
    GroupNames names(report.Definition());
    FlowRow(plan, PlaceOf(start.row, first, names), {}, strips);
    const std::size_t levels = strips.LevelsAt(start.strip, plan.Levels());
    std::vector<Row> rows(levels);
    std::vector<double> heights(plan.Levels());
    for (std::size_t level = 0; level < levels; ++level) {
        report.ReadRow(mGroups.Of(mGroups.Find(level, start.row)).firstRow, rows[level]);
        heights[level] = HeightOf(plan.groupHeaders[level], rows[level]);
    }
    if (RepeatedHeight(strips, start.strip, BodyHeight(page, first), heights) == 0)
        return;
    for (std::size_t level = 0; level < levels; ++level) {
        const SectionPlan& header = plan.groupHeaders[level];
        writer.Show(0, kAll);
        if (report.Definition().groups[level].repeatsHeader && !header.lines.empty())
            writer.Add({&plan, &header, header.lines, &rows[level], nullptr, false});
    }
    if (const RowStrips::SubreportHeader* const header = strips.HeaderAt(start.strip)) {
        writer.Show(0, kAll);
        const SectionPlan& section = header->plan->pageHeader;
        writer.Add({header->plan, &section, section.lines, &header->row, nullptr, true});
    }
}

void Layout::Implementation::WriteRows(PageWriter& writer, PageStart from, PageStart until) const {
    Row values;
    Totals totals;
    GroupNames names(report.Definition());
    for (std::size_t row = from.row; row < until.row || (row == until.row && until.strip > 0);
         row = NextWithBands(row)) {
        report.ReadRow(row, values);
        writer.Show(row == from.row ? from.strip : 0, row == until.row ? until.strip : kAll);
        FlowRow(
            plan, PlaceOf(row, values, names),
            [&](std::optional<std::size_t> level) -> const Totals& {
                totals = level ? TotalsOf(mGroups.Find(*level, row)) : TotalsOfReport();
                return totals;
            },
            writer);
    }
}

/// The next row behind `row` that may show something.
std::size_t Layout::Implementation::NextWithBands(std::size_t row) const {
    if (!plan.detail.lines.empty())
        return row + 1;
    // Only headers and footers: what is between a group's first row and its last one shows nothing.
    if (plan.Levels() == 0)
        return std::max(row + 1, mRow - 1);
    const GroupIndex::Entry& group = mGroups.Of(mGroups.Find(plan.Levels() - 1, row));
    return std::max<std::size_t>(row + 1, std::size_t{group.firstRow} + group.rowCount - 1);
}

RowPlace Layout::Implementation::PlaceOf(std::size_t row, const Row& values, GroupNames& names) const {
    RowPlace place{&values,       plan.Levels(),
                   plan.Levels(), mHasPlacedLast && row + 1 == mRow,
                   nullptr,       row == 0 && !mHeaderStandsOnTop};
    for (std::size_t level = plan.Levels(); level-- > 0;) {
        const GroupIndex::Entry& group = mGroups.Of(mGroups.Find(level, row));
        if (group.firstRow == row)
            place.begins = level;
        if (std::size_t{group.firstRow} + group.rowCount == row + 1)
            place.ends = level;
    }
    // Groups of the last row that is placed may go on.
    if (row + 1 == mRow)
        place.ends = mBegins;
    if (place.ends < plan.Levels()) {
        Row first;
        for (std::size_t level = 0; level < plan.Levels(); ++level) {
            report.ReadRow(mGroups.Of(mGroups.Find(level, row)).firstRow, first);
            names.Begin(level, first);
        }
        place.closing = &names.Closing(values);
    }
    return place;
}

Totals Layout::Implementation::TotalsOf(GroupIndex::Place place) const {
    const std::size_t count = mGroups.Of(place).rowCount;
    const std::span<const Sum> sums = mGroups.SumsOf(place);
    Totals totals{count, {sums.begin(), sums.end()}, std::nullopt, {}};
    if (isComplete)
        totals.share = static_cast<double>(count) / static_cast<double>(mRow);
    return totals;
}

Totals Layout::Implementation::TotalsOfReport() const {
    Totals totals{mRow, mSums, std::nullopt, {}};
    for (const ValueCounts& chart : mCharts)
        totals.charts.push_back(chart.Slices());
    return totals;
}

} // namespace report
