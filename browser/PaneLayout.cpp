// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/PaneLayout.h"

#include <algorithm>

namespace {

constexpr float kSplitMargin = 1500;
constexpr float kDragMargin = 500;
constexpr float kSplitterGap = 40;
/// The gap and the room at the right edge.
constexpr float kListMargins = 140;

} // namespace

PaneSizes ArrangePanes(const FrameSizes& frame, float& x) {
    x = std::max(x, kSplitMargin);
    x = std::min(x, frame.width - kSplitMargin);

    PaneSizes panes{};
    panes.treeWidth = x;
    panes.splitterLeft = x;
    panes.listLeft = x + kSplitterGap;
    panes.listWidth = frame.width - (x + kListMargins);
    panes.top = frame.progressHeight + (frame.isToolBarVisible ? frame.toolBarHeight : 0);
    panes.height = frame.height - (frame.toolBarHeight + frame.progressHeight +
                                   (frame.isStatusBarVisible ? frame.statusBarHeight : 0));
    return panes;
}

float DragStop(float position, float windowWidth) {
    if (position < kDragMargin)
        return kDragMargin;
    return std::min(position, windowWidth - kDragMargin);
}
