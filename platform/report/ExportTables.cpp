// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/ExportTables.h"

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
      mReport(subreport == nullptr ? &main : &main.Subreport(*subreport)) {
    const Document& document = mReport->Definition();
    Usage usage(document);
    if (mSubreport != nullptr)
        usage.fields[mSubreport->childField] = true;
    if (usage.IsNone())
        usage.fields.assign(usage.fields.size(), true);
    for (std::size_t i = 0; i < document.fields.size(); ++i) {
        const FieldDefinition& field = document.fields[i];
        if (usage.fields[i])
            mColumns.push_back({field.name, false, i, field.IsFlag(), field.width});
    }
    for (std::size_t i = 0; i < document.formulas.size(); ++i) {
        const NamedFormula& formula = document.formulas[i];
        if (usage.formulas[i])
            mColumns.push_back({formula.name, true, i, formula.formula.IsFlag(), 0});
    }
}

ADODB::Value ExportTable::Value(const ExportColumn& column, const Row& row) const {
    if (column.isFormula)
        return mReport->Definition().formulas[column.index].formula.Evaluate(row);
    return row[column.index];
}

void ExportTable::ForEachRow(ExportSteps& steps, const std::function<void(const Row& row)>& visit) const {
    Row row;
    Row inner;
    for (std::size_t i = 0; i < mMain->RowCount() && steps.Next(); ++i) {
        mMain->ReadRow(i, row);
        if (mSubreport == nullptr) {
            visit(row);
            continue;
        }
        for (const std::size_t joined : mMain->RowsJoinedTo(*mSubreport, row[mSubreport->parentField])) {
            if (!steps.Next())
                return;
            mReport->ReadRow(joined, inner);
            visit(inner);
        }
    }
}

} // namespace report
