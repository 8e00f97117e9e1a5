// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/PaneLayout.h"

#include <gtest/gtest.h>

namespace {

/// A window of 9000 by 6000 twips with toolbar 500, progress bar 100 and status bar 300.
FrameSizes Frame(float width, bool hasToolBar = true, bool hasStatusBar = true) {
    return {width, 6000, 500, 100, 300, hasToolBar, hasStatusBar};
}

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
        const PaneSizes panes = ArrangePanes(Frame(c.width), x);
        EXPECT_EQ(x, c.split) << c.why;
        EXPECT_EQ(panes.treeWidth, c.split) << c.why;
        EXPECT_EQ(panes.splitterLeft, c.split) << c.why;
        EXPECT_EQ(panes.listLeft, c.split + 40) << c.why;
        EXPECT_EQ(panes.listWidth, c.listWidth) << c.why;
    }
}

TEST(ArrangePanes, LeavesAGapBelowWhenTheToolbarIsHidden) {
    struct {
        const char* why;
        bool hasToolBar, hasStatusBar;
        float top, height, roomBelow;
    } cases[] = {
        {"all bars: the panes fill the room", true, true, 600, 5100, 0},
        {"no status bar: they grow by its height", true, false, 600, 5400, 0},
        {"no toolbar: they move up and do not grow", false, true, 100, 5100, 500},
        {"neither", false, false, 100, 5400, 500},
    };
    for (const auto& c : cases) {
        float x = 3000;
        const PaneSizes panes = ArrangePanes(Frame(9000, c.hasToolBar, c.hasStatusBar), x);
        EXPECT_EQ(panes.top, c.top) << c.why;
        EXPECT_EQ(panes.height, c.height) << c.why;
        const float statusBar = c.hasStatusBar ? 300 : 0;
        EXPECT_EQ(6000 - statusBar - (panes.top + panes.height), c.roomBelow) << c.why;
    }
}

TEST(DragStop, IsNearerToTheSidesThanASplitMayCome) {
    EXPECT_EQ(DragStop(499, 9000), 500);
    EXPECT_EQ(DragStop(-3000, 9000), 500);
    EXPECT_EQ(DragStop(4321, 9000), 4321);
    EXPECT_EQ(DragStop(8501, 9000), 8500);
}

} // namespace
