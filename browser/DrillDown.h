// SPDX-License-Identifier: GPL-3.0-or-later
// Where a row of the list leads when it is opened: its key tells the node of the tree that shows more of it.
// Keys of rows that stand for a machine's node are that node's key, "PC1?CPU"; those of lists with many rows
// a machine are "PC1?MULTI?DEV?12"; those of a machine's own lists have no "?" and lead nowhere.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

enum class DrillKind : std::uint8_t {
    /// The row leads nowhere.
    Nothing,
    /// To the node whose key is `key`.
    Node,
    /// A key of no known form, which is shown to the user.
    UnknownKey,
};

struct DrillDown {
    DrillKind kind;
    std::string key;
};

DrillDown DrillDownFrom(std::string_view rowKey);
