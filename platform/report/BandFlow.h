// SPDX-License-Identifier: GPL-3.0-or-later
// The bands that a row of a report brings, in their order: headers of the groups that it begins, its detail
// with the rows of subreports in their places, footers of the groups that it ends. Measuring and painting
// walk the same bands, so what was measured is what is painted. Internal to the layout.
#pragma once

#include "platform/report/SectionPlan.h"
#include "platform/report/Sum.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace report {

/// What is known of the rows that a footer closes.
struct Totals {
    std::size_t count = 0;
    /// Of the plan's sumFields.
    std::vector<Sum> sums;
    /// Of the report's rows; unknown until all are read.
    std::optional<double> share;
    /// For each of the plan's chartFields: how often each value stands there.
    std::vector<std::vector<std::pair<std::string, std::size_t>>> charts;
};

/// Adds the numbers of a row, each to its sum.
void AddSums(const ReportPlan& plan, const Row& row, std::vector<Sum>& sums);

/// Lines of a section for a row.
struct Band {
    const ReportPlan* plan = nullptr;
    const SectionPlan* section = nullptr;
    std::span<const LinePlan> lines;
    const Row* row = nullptr;
    /// Null where the section shows none.
    const Totals* totals = nullptr;
    bool isOfSubreport = false;

    SectionKind Kind() const { return section->section->kind; }
};

class BandSink {
public:
    virtual void Add(const Band& band) = 0;

protected:
    ~BandSink() = default;
};

/// A row of the main report and what it begins and ends.
struct RowPlace {
    const Row* row = nullptr;
    /// The outermost group level that begins with it, and that ends with it; the number of levels for none.
    std::size_t begins = 0;
    std::size_t ends = 0;
    bool isLast = false;
    /// The row as the footers of the groups that it ends show it; null where it ends none.
    const Row* closing = nullptr;
    /// Whether the report's header comes here, since it is too high to stand on top of the first page.
    bool hasReportHeader = false;
};

/// Totals of the group of a level that ends, and of the report for no level. Never asked while measuring.
using TotalsOf = std::function<const Totals&(std::optional<std::size_t> level)>;

void FlowRow(const ReportPlan& plan, const RowPlace& place, const TotalsOf& totals, BandSink& sink);

} // namespace report
