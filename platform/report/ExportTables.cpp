// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/ExportTables.h"

#include "platform/report/ExportCaptions.h"
#include "platform/report/GroupTotals.h"

#include <algorithm>

namespace report {

namespace {

/// Which fields and formulas of a document its objects and groups use.
struct Usage {
    explicit Usage(const Document& document)
        : fields(document.fields.size()), formulas(document.formulas.size()) {
        for (const Group& group : document.groups)
            fields[group.field] = true;
        for (const Section& section : document.sections)
            for (const Line& line : section.lines)
                for (const ObjectDefinition& object : line.objects)
                    Add(object);
    }

    void Add(const ObjectDefinition& object) {
        if (object.kind == Kind::Chart)
            fields[object.chartField] = true;
        if (object.kind == Kind::Subreport)
            fields[object.parentField] = true;
        if (object.kind != Kind::Field)
            return;
        if (object.source.kind == Source::Kind::Field || object.source.kind == Source::Kind::Sum)
            fields[object.source.index] = true;
        if (object.source.kind == Source::Kind::Formula)
            formulas[object.source.index] = true;
    }

    bool IsNone() const {
        return std::find(fields.begin(), fields.end(), true) == fields.end() &&
               std::find(formulas.begin(), formulas.end(), true) == formulas.end();
    }

    std::vector<bool> fields;
    std::vector<bool> formulas;
};

} // namespace

bool GoesOn(const ExportProgress& progress, double share) {
    return !progress || progress(share);
}

bool ExportSteps::Next() {
    if (mIsStopped)
        return false;
    if (mDone++ % mStride == 0) {
        const double share =
            mCount == 0 ? 1 : static_cast<double>(mDone) / static_cast<double>(std::max(mCount, mDone));
        mIsStopped = !GoesOn(mProgress, mFrom + (mTo - mFrom) * share);
    }
    return !mIsStopped;
}

std::vector<ExportTable> ExportTable::Of(const Report& report) {
    std::vector<ExportTable> tables;
    tables.push_back(ExportTable(report, nullptr));
    if (std::optional<ExportTable> groups = OfGroups(report))
        tables.push_back(*std::move(groups));
    for (const Section& section : report.Definition().sections)
        for (const Line& line : section.lines)
            for (const ObjectDefinition& object : line.objects)
                if (object.kind == Kind::Subreport)
                    tables.push_back(ExportTable(report, &object));
    return tables;
}

ExportTable::ExportTable(const Report& main, const ObjectDefinition* subreport)
    : mMain(&main),
      mSubreport(subreport),
      mReport(subreport == nullptr ? &main : &main.Subreport(*subreport)),
      mTitle(mReport->Definition().title) {
    const Document& document = mReport->Definition();
    Usage usage(document);
    if (mSubreport != nullptr)
        usage.fields[mSubreport->childField] = true;
    if (usage.IsNone() || ShownColumns(*mReport).Rows().kind == SectionKind::GroupFooter)
        usage.fields.assign(usage.fields.size(), true);
    for (std::size_t i = 0; i < document.fields.size(); ++i) {
        const FieldDefinition& field = document.fields[i];
        if (usage.fields[i])
            mColumns.push_back({field.name, {Source::Kind::Field, i}, field.IsFlag(), field.width});
    }
    for (std::size_t i = 0; i < document.formulas.size(); ++i) {
        const NamedFormula& formula = document.formulas[i];
        if (usage.formulas[i])
            mColumns.push_back({formula.name, {Source::Kind::Formula, i}, formula.formula.IsFlag(), 0});
    }
}

/// Nothing where the document shows the rows themselves.
std::optional<ExportTable> ExportTable::OfGroups(const Report& report) {
    const ShownColumns shown(report);
    if (shown.Rows().kind != SectionKind::GroupFooter)
        return std::nullopt;
    ExportTable table(report, nullptr);
    table.mIsOfGroups = true;
    table.mTitle += ", summary";
    std::vector<ExportColumn> columns;
    for (const ShownColumn& column : shown.Columns()) {
        if (column.object->kind != Kind::Field)
            continue;
        const Source& source = column.object->source;
        const auto same =
            std::find_if(table.mColumns.begin(), table.mColumns.end(), [&source](const ExportColumn& known) {
                return known.source.kind == source.kind && known.source.index == source.index;
            });
        columns.push_back(same == table.mColumns.end() ? ExportColumn{{}, source, false, 0} : *same);
        columns.back().name = column.caption;
    }
    if (columns.empty())
        return std::nullopt;
    table.mColumns = std::move(columns);
    return table;
}

ADODB::Value ExportTable::Value(const ExportColumn& column, const Row& row) const {
    if (column.source.kind == Source::Kind::Formula)
        return mReport->Definition().formulas[column.source.index].formula.Evaluate(row);
    return row[column.source.index];
}

void ExportTable::ForEachRow(ExportSteps& steps, const std::function<void(const Row& values)>& visit) const {
    if (mIsOfGroups)
        return ForEachGroup(steps, visit);
    Row row;
    Row values;
    const auto visitRow = [&] {
        values.clear();
        for (const ExportColumn& column : mColumns)
            values.push_back(Value(column, row));
        visit(values);
    };
    for (std::size_t i = 0; i < mMain->RowCount() && steps.Next(); ++i) {
        mMain->ReadRow(i, row);
        if (mSubreport == nullptr) {
            visitRow();
            continue;
        }
        for (const std::size_t joined : mMain->RowsJoinedTo(*mSubreport, row[mSubreport->parentField])) {
            if (!steps.Next())
                return;
            mReport->ReadRow(joined, row);
            visitRow();
        }
    }
}

void ExportTable::ForEachGroup(ExportSteps& steps,
                               const std::function<void(const Row& values)>& visit) const {
    const std::size_t levels = Definition().groups.size();
    GroupTotals totals(Definition());
    totals.Begin(mReport->RowCount());
    Row row;
    Row last;
    const auto visitGroup = [&] {
        const Row& closing = totals.Closing(last);
        Row values;
        for (const ExportColumn& column : mColumns) {
            const bool isOfRow =
                column.source.kind == Source::Kind::Field || column.source.kind == Source::Kind::Formula;
            values.push_back(isOfRow ? Value(column, closing) : totals.Value(column.source, levels - 1));
        }
        visit(values);
    };
    for (std::size_t i = 0; i < mReport->RowCount() && steps.Next(); ++i) {
        mReport->ReadRow(i, row);
        if (totals.HasRows() && totals.FirstNewGroup(row) < levels)
            visitGroup();
        totals.Add(row);
        std::swap(row, last);
    }
    if (totals.HasRows() && !steps.IsStopped())
        visitGroup();
}

} // namespace report
