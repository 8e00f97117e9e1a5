// SPDX-License-Identifier: GPL-3.0-or-later
// What keys, wheel and pointer do to the pages on show.
#include "platform/report/PageView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace report {

namespace {

/// A notch of the wheel, in the toolkit's eighths of a degree, and what it zooms.
constexpr double kNotch = 120;
constexpr double kZoomOfNotch = 1.15;

} // namespace

void PageView::wheelEvent(QWheelEvent* event) {
    if ((event->modifiers() & Qt::ControlModifier) == 0) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    const double notches = event->angleDelta().y() / kNotch;
    mFit = Fit::None;
    ZoomAbout(std::clamp(mZoom * std::pow(kZoomOfNotch, notches), kLeastZoom, kMostZoom), event->position());
    event->accept();
}

void PageView::keyPressEvent(QKeyEvent* event) {
    const bool isWhole = event->modifiers() == Qt::ControlModifier;
    if (!isWhole && event->modifiers() != Qt::NoModifier && event->modifiers() != Qt::KeypadModifier) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    const bool fitsPage = mStack.Step() <= viewport()->height();
    QScrollBar& bar = *verticalScrollBar();
    switch (event->key()) {
        case Qt::Key_PageUp:
        case Qt::Key_PageDown: {
            const int direction = event->key() == Qt::Key_PageDown ? 1 : -1;
            if (fitsPage || isWhole)
                TurnPage(direction);
            else
                // A step of the text stays on show, to read on from.
                bar.setValue(bar.value() + direction * (bar.pageStep() - bar.singleStep()));
            break;
        }
        case Qt::Key_Home:
            GoTo(isWhole ? 0 : mCurrent);
            break;
        case Qt::Key_End:
            if (isWhole) {
                GoToEnd();
            } else {
                const std::size_t page = mCurrent;
                Offset(std::max(mStack.TopOf(page) - PageStack::kGap,
                                mStack.TopOf(page) + mStack.Step() - viewport()->height()));
            }
            break;
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

void PageView::Select(std::size_t page, const TextRange& range) {
    if (page == mSelectedPage && range == mSelection)
        return;
    mSelectedPage = page;
    mSelection = range;
    viewport()->update();
    emit SelectionChanged();
}

void PageView::SelectPage() {
    if (mStack.count > 0)
        Select(mCurrent, mStore.At(mCurrent)->All());
}

QString PageView::SelectedText() {
    if (mSelection.IsEmpty() || mSelectedPage >= mStack.count)
        return {};
    return mStore.At(mSelectedPage)->Copy(mSelection);
}

void PageView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || mStack.count == 0) {
        QAbstractScrollArea::mousePressEvent(event);
        return;
    }
    const PagePoint at = PointAt(event->position());
    mAnchor = mStore.At(at.page)->PlaceAt(at.point);
    Select(at.page, {});
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
    if (mStack.count == 0)
        return;
    const PagePoint at = PointAt(event->position());
    if (!mAnchor) {
        viewport()->setCursor(mStore.At(at.page)->HasTextAt(at.point) ? Qt::IBeamCursor : Qt::ArrowCursor);
        return;
    }
    // A selection stays on its page: what is pulled beyond it takes the page up to its end.
    const std::shared_ptr<const PageText> page = mStore.At(mSelectedPage);
    TextPlace place = page->PlaceAt(at.point);
    if (at.page < mSelectedPage)
        place = {};
    else if (at.page > mSelectedPage)
        place = page->All().last;
    Select(mSelectedPage, {std::min(*mAnchor, place), std::max(*mAnchor, place)});
}

void PageView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        mAnchor.reset();
}

void PageView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || mStack.count == 0)
        return;
    const PagePoint at = PointAt(event->position());
    const std::shared_ptr<const PageText> page = mStore.At(at.page);
    if (page->HasTextAt(at.point))
        Select(at.page, page->ObjectAt(page->PlaceAt(at.point)));
}

} // namespace report
