// SPDX-License-Identifier: GPL-3.0-or-later
// Where the tree, the splitter and the list stand within the main window. All in twips.
#pragma once

/// What the arrangement depends on. Height is the room below the menu bar.
struct FrameSizes {
    float width;
    float height;
    float toolBarHeight;
    float progressHeight;
    float statusBarHeight;
    bool isToolBarVisible;
    bool isStatusBarVisible;
};

/// The tree begins at the left edge; all three have the same top and height.
struct PaneSizes {
    float treeWidth;
    float splitterLeft;
    float listLeft;
    float listWidth;
    float top;
    float height;
};

/// A narrower window goes back to this width.
constexpr float kNarrowestWindow = 3000;

/// Splits the window at `x`, which is first brought within 1500 of either side. The heights of toolbar and
/// progress bar are taken off whether these are visible or not, so that the panes don't grow into the room
/// of a hidden one.
PaneSizes ArrangePanes(const FrameSizes& frame, float& x);

/// Where the bar that marks a dragged split stands for the mouse at `position`: it stops 500 short of
/// either side, which is nearer than a split may come.
float DragStop(float position, float windowWidth);
