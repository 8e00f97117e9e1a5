// SPDX-License-Identifier: GPL-3.0-or-later
// Counts how often each value of a field stands in the rows of a report: what a chart shows, on pages and in
// exports alike.
#pragma once

#include "platform/report/RowOrder.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace report {

class ValueCounts {
public:
    /// Of the field at the position `field` of the document's table.
    ValueCounts(const Document& document, std::size_t field);

    void Add(const Row& row);
    /// Each value with its count, in the order in which they came. Texts that differ in case alone are one
    /// value, which reads as it did the first time.
    const std::vector<std::pair<std::string, std::size_t>>& Slices() const { return mSlices; }

private:
    std::size_t mField;
    bool mIsFlag;
    ValueIndex mValues;
    std::vector<std::pair<std::string, std::size_t>> mSlices;
};

} // namespace report
