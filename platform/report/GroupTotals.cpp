// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/GroupTotals.h"

#include "platform/report/FormulaNode.h"
#include "platform/report/RowOrder.h"

namespace report {

GroupTotals::GroupTotals(const Document& document) : mDocument(document), mNames(document) {
    for (const Section& section : document.sections)
        for (const Line& line : section.lines)
            for (const ObjectDefinition& object : line.objects)
                if (object.kind == Kind::Field && object.source.kind == Source::Kind::Sum)
                    mSummed.emplace(object.source.index, mSummed.size());
    Begin(0);
}

void GroupTotals::Begin(std::size_t rowCount) {
    mTotals.assign(mDocument.groups.size() + 1, Totals{0, std::vector<Sum>(mSummed.size())});
    mNames = GroupNames(mDocument);
    mRowCount = rowCount;
    mHasRows = false;
}

std::size_t GroupTotals::FirstNewGroup(const Row& row) const {
    if (!mHasRows)
        return 0;
    const std::vector<Group>& groups = mDocument.groups;
    std::size_t level = 0;
    while (level < groups.size() && IsSameGroup(groups[level], mNames.Of(level), row[groups[level].field]))
        ++level;
    return level;
}

void GroupTotals::Add(const Row& row) {
    const std::size_t begins = FirstNewGroup(row);
    mNames.Begin(begins, row);
    for (std::size_t level = begins; level < mDocument.groups.size(); ++level)
        mTotals[level + 1] = Totals{0, std::vector<Sum>(mSummed.size())};
    mHasRows = true;
    for (Totals& totals : mTotals) {
        ++totals.rows;
        for (const auto& [field, position] : mSummed)
            totals.sums[position].Add(Sum(NumberIn(row[field])));
    }
}

const GroupTotals::Totals& GroupTotals::Of(std::size_t group) const {
    return group == kReport ? mTotals.front() : mTotals[group + 1];
}

ADODB::Value GroupTotals::Value(const Source& source, std::size_t group) const {
    const Totals& totals = Of(group);
    if (source.kind == Source::Kind::Sum)
        return totals.sums[mSummed.at(source.index)].Value();
    const auto rows = static_cast<double>(totals.rows);
    if (source.kind == Source::Kind::Count)
        return rows;
    return mRowCount > 0 ? rows / static_cast<double>(mRowCount) : 0.0;
}

std::string GroupTotals::Text(const ObjectDefinition& object, std::size_t group) const {
    const std::string text = FormatValue(object.format, Value(object.source, group), false);
    return text.empty() ? text : object.prefix + text + object.suffix;
}

} // namespace report
