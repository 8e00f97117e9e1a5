// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/ValueCounts.h"

namespace report {

ValueCounts::ValueCounts(const Document& document, std::size_t field)
    : mField(field), mIsFlag(document.fields[field].IsFlag()), mValues({}, mIsFlag) {}

void ValueCounts::Add(const Row& row) {
    const ADODB::Value& value = row[mField];
    const std::size_t number = mValues.Number(value);
    if (number == mSlices.size()) {
        const bool hasName = !ADODB::IsNull(ShownValue({}, value, mIsFlag));
        mSlices.emplace_back(hasName ? FormatValue({}, value, mIsFlag) : kNoName, 0);
    }
    ++mSlices[number].second;
}

} // namespace report
