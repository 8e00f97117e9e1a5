// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/PaneLayout.h"

#include <gtest/gtest.h>

namespace {

TEST(ArrangePanes, KeepsTheSplitWithin1500OfEitherSide) {
    struct {
        const char* why;
        float width, asked, split, listWidth;
    } cases[] = {
        {"a split in the middle stays", 9000, 4000, 4000, 4860},
        {"dragged to the left edge, it snaps back", 9000, 100, 1500, 7360},
        {"dragged to the right edge, it snaps back", 9000, 8500, 7500, 1360},
        {"on the limit itself", 9000, 7500, 7500, 1360},
        {"the narrowest window splits in the middle", 3000, 2700, 1500, 1360},
        {"narrower still, the right limit is tested last", 2000, 1500, 500, 1360},
    };
    for (const auto& c : cases) {
        float x = c.asked;
        const PaneSizes panes = ArrangePanes({c.width, 6000, 500, 100, 300, true, true}, x);
        EXPECT_EQ(x, c.split) << c.why;
        EXPECT_EQ(panes.treeWidth, c.split) << c.why;
        EXPECT_EQ(panes.listWidth, c.listWidth) << c.why;
    }
}

} // namespace
