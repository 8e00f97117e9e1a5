// SPDX-License-Identifier: GPL-3.0-or-later
// The sum of a field over some rows. Rows without a number leave it as it is; where no row has one it is not
// known, which is not 0. As small as its number: a report may keep a million of them. Internal to the report.
#pragma once

#include "platform/adodb.h"

#include <cmath>
#include <limits>
#include <optional>

namespace report {

class Sum {
public:
    Sum() = default;
    explicit Sum(std::optional<double> number) : mNumber(number.value_or(kNone)) {}

    void Add(const Sum& other) {
        if (!std::isnan(other.mNumber))
            mNumber = std::isnan(mNumber) ? other.mNumber : mNumber + other.mNumber;
    }
    /// Null where it is not known.
    ADODB::Value Value() const { return std::isnan(mNumber) ? ADODB::Value() : ADODB::Value(mNumber); }

private:
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    double mNumber = kNone;
};

} // namespace report
