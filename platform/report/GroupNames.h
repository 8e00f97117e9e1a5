// SPDX-License-Identifier: GPL-3.0-or-later
// The values with which the open groups of a report began. A footer calls its group by them, as the header
// does: later rows may write the same name in other letters. Internal to the report.
#pragma once

#include "platform/report/Document.h"
#include "platform/report/RowStore.h"

#include <cstddef>
#include <vector>

namespace report {

class GroupNames {
public:
    /// `document` must outlive it.
    explicit GroupNames(const Document& document)
        : mGroups(&document.groups), mValues(document.groups.size()) {}

    /// The groups of the levels from `level` inwards begin with `row`.
    void Begin(std::size_t level, const Row& row) {
        for (; level < mValues.size(); ++level)
            mValues[level] = row[(*mGroups)[level].field];
    }
    const ADODB::Value& Of(std::size_t level) const { return mValues[level]; }
    /// `row`, which ends groups, as their footers show it; holds until the next call.
    const Row& Closing(const Row& row) {
        mRow = row;
        for (std::size_t level = mValues.size(); level-- > 0;)
            mRow[(*mGroups)[level].field] = mValues[level];
        return mRow;
    }

private:
    const std::vector<Group>* mGroups;
    std::vector<ADODB::Value> mValues;
    Row mRow;
};

} // namespace report
