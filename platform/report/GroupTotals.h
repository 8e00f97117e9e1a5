// SPDX-License-Identifier: GPL-3.0-or-later
// Follows the rows of a report through its groups: which groups a row begins, and the counts, sums and
// shares that the footers show.
#pragma once

#include "platform/report/GroupNames.h"
#include "platform/report/Report.h"
#include "platform/report/Sum.h"

#include <cstddef>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace report {

class GroupTotals {
public:
    /// In place of a group's level: the whole report.
    static constexpr std::size_t kReport = std::numeric_limits<std::size_t>::max();

    explicit GroupTotals(const Document& document);

    /// Starts anew, for a report of so many rows.
    void Begin(std::size_t rowCount);
    /// The outermost group that begins with `row`, the number of groups where none does. Before Add.
    std::size_t FirstNewGroup(const Row& row) const;
    /// Counts the row in; groups that begin with it start from nothing.
    void Add(const Row& row);
    bool HasRows() const { return mHasRows; }

    /// What a count, sum or share is in the footer of `group`, before the next row is added.
    ADODB::Value Value(const Source& source, std::size_t group) const;
    /// What an object shows of it.
    std::string Text(const ObjectDefinition& object, std::size_t group) const;
    /// `row`, the last one added, as footers of groups show it; holds until the next call.
    const Row& Closing(const Row& row) { return mNames.Closing(row); }

private:
    struct Totals {
        std::size_t rows = 0;
        std::vector<Sum> sums;
    };
    const Totals& Of(std::size_t group) const;

    const Document& mDocument;
    /// The fields that some footer sums, each with its position among the sums.
    std::map<std::size_t, std::size_t> mSummed;
    /// Of the report, then of each group from the outermost.
    std::vector<Totals> mTotals;
    GroupNames mNames;
    std::size_t mRowCount = 0;
    bool mHasRows = false;
};

} // namespace report
