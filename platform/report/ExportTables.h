// SPDX-License-Identifier: GPL-3.0-or-later
// A report as plain tables, for the exports that are read by programs: one table of the report's own rows,
// one of its groups where it shows these instead of rows, then one for each of its subreports. And the steps
// in which any export goes, so that it can be watched and stopped.
#pragma once

#include "platform/report/Exports.h"
#include "platform/report/Report.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace report {

/// Tells an export's progress now and then, and remembers that it was stopped.
class ExportSteps {
public:
    /// `count` steps take the progress from one share to another, told every `stride` steps.
    ExportSteps(const ExportProgress& progress, double from, double to, std::size_t count,
                std::size_t stride = 256)
        : mProgress(progress), mFrom(from), mTo(to), mCount(count), mStride(stride) {}

    /// One more step; false from the stop on.
    bool Next();
    bool IsStopped() const { return mIsStopped; }

private:
    const ExportProgress& mProgress;
    double mFrom;
    double mTo;
    std::size_t mCount;
    std::size_t mStride;
    std::size_t mDone = 0;
    bool mIsStopped = false;
};

/// Asks `progress` whether to go on, where there is one.
bool GoesOn(const ExportProgress& progress, double share);

struct ExportColumn {
    std::string name;
    Source source;
    bool isFlag = false;
    /// Characters, for texts; 0 where unknown.
    int width = 0;
};

class ExportTable {
public:
    /// The tables of a complete report, its own first.
    static std::vector<ExportTable> Of(const Report& report);

    const Document& Definition() const { return mReport->Definition(); }
    const std::string& Title() const { return mTitle; }
    /// Of rows: the fields that an object shows or a group uses, in the order of their definition, then the
    /// formulas that an object shows; all fields where the document shows no rows. Of groups: what the
    /// document shows of each.
    const std::vector<ExportColumn>& Columns() const { return mColumns; }

    /// Calls `visit` for each row in the order of the report with its values in the order of the columns;
    /// those of a subreport come with the row that they belong to. Each row of the report is a step.
    void ForEachRow(ExportSteps& steps, const std::function<void(const Row& values)>& visit) const;
    /// The steps that ForEachRow takes where each row of a subreport has its place.
    std::size_t StepCount() const {
        return mMain->RowCount() + (mSubreport == nullptr ? 0 : mReport->RowCount());
    }

private:
    ExportTable(const Report& main, const ObjectDefinition* subreport);
    static std::optional<ExportTable> OfGroups(const Report& report);
    ADODB::Value Value(const ExportColumn& column, const Row& row) const;
    void ForEachGroup(ExportSteps& steps, const std::function<void(const Row& values)>& visit) const;

    const Report* mMain;
    /// The object of the main report that holds this one; none for the report itself.
    const ObjectDefinition* mSubreport;
    const Report* mReport;
    bool mIsOfGroups = false;
    std::string mTitle;
    std::vector<ExportColumn> mColumns;
};

} // namespace report
