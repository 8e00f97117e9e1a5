// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/GroupTotals.h"

#include "platform/report/FormulaNode.h"
#include "platform/report/RowOrder.h"

namespace report {

GroupTotals::GroupTotals(const Document& document) : mDocument(document) {
    for (const Section& section : document.sections)
        for (const Line& line : section.lines)
            for (const ObjectDefinition& object : line.objects)
                if (object.kind == Kind::Field && object.source.kind == Source::Kind::Sum)
                    mSummed.emplace(object.source.index, mSummed.size());
    Begin(0);
}

void GroupTotals::Begin(std::size_t rowCount) {
    mTotals.assign(mDocument.groups.size() + 1, Totals{0, std::vector<double>(mSummed.size())});
    mGroupValues.assign(mDocument.groups.size(), {});
    mRowCount = rowCount;
    mHasRows = false;
}

std::size_t GroupTotals::FirstNewGroup(const Row& row) const {
    if (!mHasRows)
        return 0;
    std::size_t level = 0;
    while (level < mGroupValues.size() &&
           IsSameGroup(mDocument.groups[level], mGroupValues[level], row[mDocument.groups[level].field]))
        ++level;
    return level;
}

void GroupTotals::Add(const Row& row) {
    for (std::size_t level = FirstNewGroup(row); level < mGroupValues.size(); ++level) {
        mGroupValues[level] = row[mDocument.groups[level].field];
        mTotals[level + 1] = Totals{0, std::vector<double>(mSummed.size())};
    }
    mHasRows = true;
    for (Totals& totals : mTotals) {
        ++totals.rows;
        for (const auto& [field, position] : mSummed)
            totals.sums[position] += NumberIn(row[field]).value_or(0);
    }
}

const GroupTotals::Totals& GroupTotals::Of(std::size_t group) const {
    return group == kReport ? mTotals.front() : mTotals[group + 1];
}

std::string GroupTotals::Text(const ObjectDefinition& object, std::size_t group) const {
    const Totals& totals = Of(group);
    double value = 0;
    if (object.source.kind == Source::Kind::Count)
        value = static_cast<double>(totals.rows);
    else if (object.source.kind == Source::Kind::Sum)
        value = totals.sums[mSummed.at(object.source.index)];
    else if (mRowCount > 0)
        value = static_cast<double>(totals.rows) / static_cast<double>(mRowCount);
    return object.prefix + FormatValue(object.format, value, false) + object.suffix;
}

} // namespace report
