// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/BandFlow.h"

#include "platform/report/FormulaNode.h"
#include "platform/report/GroupNames.h"
#include "platform/report/ValueCounts.h"

namespace report {

namespace {

/// The rows of a subreport that belong to one row of the main report.
class SubreportFlow {
public:
    SubreportFlow(const ReportPlan& plan, std::vector<std::size_t> rows, bool needsTotals, BandSink& sink)
        : mPlan(plan),
          mRows(std::move(rows)),
          mNeedsTotals(needsTotals),
          mSink(sink),
          mNames(plan.report.Definition()) {
        for (std::size_t level = 0; level <= plan.Levels(); ++level)
            mTotals.push_back(Empty());
    }

    void Run() {
        Row row(mPlan.report.Definition().fields.size());
        Row next;
        if (!mRows.empty())
            mPlan.report.ReadRow(mRows[0], row);
        if (mNeedsTotals && !mPlan.chartFields.empty())
            CountCharts();
        Totals& all = mTotals.back();
        Add(mPlan.reportHeader, row, &all);
        Add(mPlan.pageHeader, row, nullptr);
        std::size_t begins = 0;
        for (std::size_t i = 0; i < mRows.size(); ++i) {
            const bool isLast = i + 1 == mRows.size();
            if (!isLast)
                mPlan.report.ReadRow(mRows[i + 1], next);
            const std::size_t ends = isLast ? 0 : mPlan.FirstDifference(row, next);
            mNames.Begin(begins, row);
            for (std::size_t level = begins; level < mPlan.Levels(); ++level) {
                mTotals[level] = Empty();
                Add(mPlan.groupHeaders[level], row, nullptr);
            }
            Count(row);
            Add(mPlan.detail, row, nullptr);
            for (std::size_t level = mPlan.Levels(); level-- > ends;) {
                mTotals[level].share =
                    static_cast<double>(mTotals[level].count) / static_cast<double>(mRows.size());
                Add(mPlan.groupFooters[level], mNames.Closing(row), &mTotals[level]);
            }
            begins = ends;
            // The footer of the report goes with the last row.
            if (!isLast)
                std::swap(row, next);
        }
        Add(mPlan.reportFooter, row, &all);
    }

private:
    Totals Empty() const { return {0, std::vector<Sum>(mPlan.sumFields.size()), std::nullopt, {}}; }

    void Add(const SectionPlan& section, const Row& row, const Totals* totals) {
        if (!section.lines.empty())
            mSink.Add({&mPlan, &section, section.lines, &row, totals, true});
    }

    void Count(const Row& row) {
        for (Totals& totals : mTotals) {
            ++totals.count;
            if (mNeedsTotals)
                AddSums(mPlan, row, totals.sums);
        }
    }

    void CountCharts() {
        Row row;
        for (const std::size_t field : mPlan.chartFields) {
            ValueCounts counts(mPlan.report.Definition(), field);
            for (const std::size_t place : mRows) {
                mPlan.report.ReadRow(place, row);
                counts.Add(row);
            }
            mTotals.back().charts.push_back(counts.Slices());
        }
    }

    const ReportPlan& mPlan;
    std::vector<std::size_t> mRows;
    bool mNeedsTotals;
    BandSink& mSink;
    GroupNames mNames;
    /// Of each level, and of all rows.
    std::vector<Totals> mTotals;
};

void FlowDetail(const ReportPlan& plan, const Row& row, bool needsTotals, BandSink& sink) {
    const std::span<const LinePlan> lines = plan.detail.lines;
    std::size_t begin = 0;
    const auto addLines = [&](std::size_t end) {
        if (end > begin)
            sink.Add({&plan, &plan.detail, lines.subspan(begin, end - begin), &row, nullptr, false});
        begin = end + 1;
    };
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].subreport == nullptr)
            continue;
        addLines(i);
        SubreportFlow(*lines[i].plan,
                      plan.report.RowsJoinedTo(*lines[i].subreport, row[lines[i].subreport->parentField]),
                      needsTotals, sink)
            .Run();
    }
    addLines(lines.size());
}

} // namespace

void AddSums(const ReportPlan& plan, const Row& row, std::vector<Sum>& sums) {
    for (std::size_t i = 0; i < plan.sumFields.size(); ++i)
        sums[i].Add(Sum(NumberIn(row[plan.sumFields[i]])));
}

void FlowRow(const ReportPlan& plan, const RowPlace& place, const TotalsOf& totals, BandSink& sink) {
    const auto add = [&](const SectionPlan& section, const Row* row, const Totals* known) {
        if (!section.lines.empty())
            sink.Add({&plan, &section, section.lines, row, known, false});
    };
    const auto known = [&](std::optional<std::size_t> level) { return totals ? &totals(level) : nullptr; };
    if (place.hasReportHeader)
        add(plan.reportHeader, place.row, known(std::nullopt));
    for (std::size_t level = place.begins; level < plan.Levels(); ++level)
        add(plan.groupHeaders[level], place.row, nullptr);
    FlowDetail(plan, *place.row, static_cast<bool>(totals), sink);
    for (std::size_t level = plan.Levels(); level-- > place.ends;)
        add(plan.groupFooters[level], place.closing, known(level));
    if (place.isLast)
        add(plan.reportFooter, place.row, known(std::nullopt));
}

} // namespace report
