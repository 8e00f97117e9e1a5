// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/DrillDown.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct KeyCase {
    const char* rowKey;
    DrillKind kind;
    const char* target;
    const char* why;
};

void PrintTo(const KeyCase& c, std::ostream* out) {
    *out << c.rowKey;
}

class DrillDownTest : public testing::TestWithParam<KeyCase> {};

TEST_P(DrillDownTest, LeadsTo) {
    const KeyCase& c = GetParam();
    const DrillDown target = DrillDownFrom(c.rowKey);
    EXPECT_EQ(target.kind, c.kind) << c.why;
    EXPECT_EQ(target.key, c.target) << c.why;
}

using enum DrillKind;

INSTANTIATE_TEST_SUITE_P(
    Keys, DrillDownTest,
    testing::Values(KeyCase{"", Nothing, "", "a row without a key"},
                    KeyCase{"DEV_5_PC1", Nothing, "", "a machine's own list has no node below it"},
                    KeyCase{"PC1?MAIN", Node, "PC1?MAIN", "the overview of all machines"},
                    KeyCase{"PC1?CPU", Node, "PC1?CPU", "one row a machine: the row's key is the node's"},
                    KeyCase{"PC1?DEV", UnknownKey, "PC1?DEV", "devices have many rows a machine"},
                    KeyCase{"PC1?MULTI?UNI?7", Node, "PC1?UNI", "many rows a machine"},
                    KeyCase{"PC1?MULTI?DRVDETAIL?12", Node, "PC1?DRVDETAIL",
                            "a category of the second level"},
                    KeyCase{"PC1?MULTI?DEVDRV?1", Node, "PC1?DEVDRV", "known, though no node bears it"},
                    KeyCase{"PC1?MULTI?CPU?1", UnknownKey, "PC1?MULTI?CPU?1", "no category of many rows"},
                    KeyCase{"PC1?MULTI?XYZ?1", UnknownKey, "PC1?MULTI?XYZ?1", "no category at all"},
                    KeyCase{"PC1?MULTI??1", UnknownKey, "PC1?MULTI??1", "an empty category"},
                    KeyCase{"PC1?MULTI?DEV", Nothing, "", "nothing closes the category"},
                    KeyCase{"PC1?MULTI?", Nothing, "", "nothing follows"},
                    KeyCase{"?MULTI?DEV?1", Node, "?DEV", "a machine without a name: no node will be found"},
                    KeyCase{"A?B?CPU", UnknownKey, "A?B?CPU", "the machine's own \"?\" hides the category"},
                    KeyCase{"A?B?MULTI?PRN?3", Node, "A?PRN", "and cuts the name short"}));

} // namespace
