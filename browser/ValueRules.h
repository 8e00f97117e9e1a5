// SPDX-License-Identifier: GPL-3.0-or-later
// How a database value reads in a list. The rules differ from list to list in what they make of Null and of
// empty values; the differences are meant, since each list answers another question.
#pragma once

#include "platform/adodb.h"

#include <cstdint>
#include <string>
#include <string_view>

enum class Rule : std::uint8_t {
    /// The value, "n/a" for Null.
    Text,
    /// A stored date as yyyy-mm-dd, "n/a" for Null.
    Date,
    /// The value of a column that is never Null: Null raises error 94.
    Plain,
    /// Bytes, kilobytes as whole megabytes; see FormatMegabytes.
    SizeBytes,
    SizeKilobytes,
    /// Flags: Null is "No" or "n/a".
    YesNo,
    YesNoNotAvailable,
    /// As a flag that is empty for Null where the column is one, else as text or as kilobytes: databases of
    /// older versions have other types.
    FlagOrText,
    FlagOrKilobytes,
    /// "Yes" for Null alone: whether the value is missing, not whether the flag is set.
    NullYes,
    /// The value, "n/a" where it is the number 0. Null raises error 94.
    ZeroNotAvailable,
    /// Whether a device's problem code tells of a problem. The list of one machine takes an empty code for
    /// none, the list of all machines for a problem.
    ProblemOfAll,
    ProblemOfOne,
    /// As ProblemOfOne, with the code itself: "Yes (28 00 00 00)".
    ProblemCode,
    /// A printer's "L" is "Local", any other value "Remote".
    LocalRemote,
    /// Names of office programs without their vertical bars; "n/a", "Not Installed" for Null.
    OfficeNotAvailable,
    OfficeNotInstalled,
    /// The same, "-- Not Installed --" where nothing is left. Null raises error 94.
    OfficeInstalled,
};

/// What `field` of the current row shows under `rule`. Valid until `buffer` changes, the recordset moves or
/// the field is read again.
std::string_view DisplayText(Rule rule, const ADODB::Field& field, std::string& buffer);

/// A size in whole megabytes, halves to even: 2560 KB and 1536 KB are both "2Mb". `mode` is the value's unit:
/// 0 bytes, 1 kilobytes; any other counts as nothing. Text counts by its leading number. Empty for 0; raises
/// error 94 for Null and 6 where the megabytes do not fit into 32 bits.
std::string FormatMegabytes(const ADODB::Value& value, std::int16_t mode);
