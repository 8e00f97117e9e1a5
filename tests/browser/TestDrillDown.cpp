// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/DrillDown.h"

#include <gtest/gtest.h>

namespace {

using enum DrillKind;

TEST(DrillDown, LeadsFromARowToItsNode) {
    const struct {
        const char* rowKey;
        DrillKind kind;
        const char* target;
        const char* why;
    } cases[] = {
        {"", Nothing, "", "a row without a key"},
        {"DEV_5_PC1", Nothing, "", "a machine's own list has no node below it"},
        {"PC1?MAIN", Node, "PC1?MAIN", "the overview of all machines"},
        {"PC1?CPU", Node, "PC1?CPU", "one row a machine: the row's key is the node's"},
        {"PC1?DEV", UnknownKey, "PC1?DEV", "devices have many rows a machine"},
        {"PC1?MULTI?UNI?7", Node, "PC1?UNI", "many rows a machine"},
        {"PC1?MULTI?DRVDETAIL?12", Node, "PC1?DRVDETAIL", "a category of the second level"},
        {"PC1?MULTI?DEVDRV?1", Node, "PC1?DEVDRV", "known, though no node bears it"},
        {"PC1?MULTI?CPU?1", UnknownKey, "PC1?MULTI?CPU?1", "no category of many rows"},
        {"PC1?MULTI??1", UnknownKey, "PC1?MULTI??1", "an empty category"},
        {"PC1?MULTI?DEV", Nothing, "", "nothing closes the category"},
        {"?MULTI?DEV?1", Node, "?DEV", "a machine without a name: no node will be found"},
        {"A?B?CPU", UnknownKey, "A?B?CPU", "the machine's own \"?\" hides the category"},
        {"A?B?MULTI?PRN?3", Node, "A?PRN", "and cuts the name short"},
    };
    for (const auto& c : cases) {
        const DrillDown target = DrillDownFrom(c.rowKey);
        EXPECT_EQ(target.kind, c.kind) << c.rowKey << ": " << c.why;
        EXPECT_EQ(target.key, c.target) << c.rowKey << ": " << c.why;
    }
}

} // namespace
