// SPDX-License-Identifier: GPL-3.0-or-later
// The arrangement of the main window's panes and the splitter between them.
#include "browser/Categories.h"
#include "browser/FontScale.h"
#include "browser/ListView.h"
#include "browser/PaneLayout.h"
#include "browser/frmMain.h"
#include "core/Controls.h"
#include "platform/twips.h"

#include <QMouseEvent>
#include <QProgressBar>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QTreeView>

#include <algorithm>

namespace {

/// Left edge of the splitter in a new window.
constexpr float kFirstSplit = 2700;
/// By which a key moves the splitter.
constexpr float kSplitStep = 300;

/// What the bar that marks a dragged split is shorter than the splitter, twips.
constexpr int kMarkShortening = 20;

/// What the tree needs to show all categories of an open branch, pixels.
int CategoriesWidth(const QTreeView& tree) {
    const QStyle& style = *tree.style();
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &tree) + 1;
    int widest = 0;
    for (const Category& category : kCategories) {
        // Below the root and the branch, and some below another category.
        const int level = category.parent == kBranch ? 3 : 4;
        const QString text = Controls::Shown(category.text);
        widest = std::max(widest, level * tree.indentation() + tree.fontMetrics().horizontalAdvance(text));
    }
    const int icon = style.pixelMetric(QStyle::PM_SmallIconSize, nullptr, &tree);
    return widest + icon + 4 * margin + 2 * tree.frameWidth() +
           style.pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &tree);
}

int ProgressHeight(const QWidget& bar) {
    return std::max(bar.fontMetrics().height() / 2, 4);
}

} // namespace

void frmMain::SizeControls(float& x) {
    const QWidget& room = *centralWidget();
    const int toolBarHeight = tbToolBar->sizeHint().height();
    const int progressHeight = ProgressHeight(*pgbLoaded);
    const int statusBarHeight = sbStatusBar->sizeHint().height();
    const bool isToolBarVisible = !tbToolBar->isHidden();

    FrameSizes frame{};
    frame.width = static_cast<float>(ToTwips(width()));
    frame.height = static_cast<float>(ToTwips(room.height()));
    frame.toolBarHeight = static_cast<float>(ToTwips(toolBarHeight));
    frame.progressHeight = static_cast<float>(ToTwips(progressHeight));
    frame.statusBarHeight = static_cast<float>(ToTwips(statusBarHeight));
    frame.isToolBarVisible = isToolBarVisible;
    frame.isStatusBarVisible = !sbStatusBar->isHidden();
    const PaneSizes panes = ArrangePanes(frame, x);
    mSplit = panes.splitterLeft;

    tbToolBar->setGeometry(0, 0, room.width(), toolBarHeight);
    pgbLoaded->setGeometry(0, isToolBarVisible ? toolBarHeight : 0, room.width(), progressHeight);
    sbStatusBar->setGeometry(0, room.height() - statusBarHeight, room.width(), statusBarHeight);

    const int top = ToPixels(panes.top);
    const int height = std::max(ToPixels(panes.height), 0);
    tvTreeView->setGeometry(0, top, ToPixels(panes.treeWidth), height);
    const int listLeft = ToPixels(panes.listLeft);
    const int listRight = ToPixels(panes.listLeft + panes.listWidth);
    lvListView->setGeometry(listLeft, top, listRight - listLeft, height);
    imgSplitter->setGeometry(ToPixels(panes.splitterLeft), top, imgSplitter->width(), height);
    imgSplitter->raise();
}

void frmMain::Arrange() {
    float x = mSplit;
    SizeControls(x);
}

float frmMain::FirstSplit() const {
    const double scaled = kFirstSplit * FontScale(tvTreeView->fontMetrics());
    return static_cast<float>(std::max<double>(scaled, ToTwips(CategoriesWidth(*tvTreeView))));
}

/// After a change of the font. A split that was moved stays where it is.
void frmMain::FitSplit() {
    const bool isMoved = mSplit != mFirstSplit;
    mFirstSplit = FirstSplit();
    if (!isMoved)
        mSplit = mFirstSplit;
    Arrange();
}

void frmMain::MoveSplit(int steps) {
    float x = mSplit + static_cast<float>(steps) * kSplitStep;
    SizeControls(x);
}

bool frmMain::DragSplitter(const QEvent& event) {
    const auto position = [&] {
        const QPointF mouse = static_cast<const QMouseEvent&>(event).position();
        return mSplit + static_cast<float>(mouse.x() * kTwipsPerPixel);
    };
    switch (event.type()) {
        case QEvent::MouseButtonPress:
            mDragged = mSplit;
            picSplitter->setGeometry(imgSplitter->x(), imgSplitter->y(), imgSplitter->width() / 2,
                                     imgSplitter->height() - ToPixels(kMarkShortening));
            picSplitter->raise();
            picSplitter->show();
            mSplitterMoving = true;
            return true;
        case QEvent::MouseMove:
            if (!mSplitterMoving)
                return false;
            mDragged = DragStop(position(), static_cast<float>(ToTwips(width())));
            picSplitter->move(ToPixels(mDragged), picSplitter->y());
            return true;
        case QEvent::MouseButtonRelease:
            if (!mSplitterMoving)
                return false;
            SizeControls(mDragged);
            picSplitter->hide();
            mSplitterMoving = false;
            return true;
        default:
            return false;
    }
}
