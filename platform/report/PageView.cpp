// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PageView.h"

#include "platform/report/PagePainter.h"

#include <QLocale>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace report {

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kPercent = 100;
/// Pixels that an arrow key scrolls; the wheel scrolls three times that.
constexpr int kScrollStep = 32;
/// What a scroll bar counts at most.
constexpr std::int64_t kMostSteps = 1'000'000'000;
/// How far below the window's top a match is shown, as a share of its height.
constexpr double kRevealAt = 0.3;

constexpr QRgb kMatchColor = 0xFFFFF3A0;
constexpr QRgb kRevealedColor = 0xFFFFB347;
constexpr QRgb kSelectionColor = 0xFFB5D5FF;
constexpr QRgb kPaperEdge = 0xFF8A8A8A;

} // namespace

PageView::PageView(const FontMeasure& measure, QWidget* parent)
    : QAbstractScrollArea(parent), mMeasure(measure), mStore(measure) {
    setObjectName(QStringLiteral("Pages"));
    setAccessibleName(QStringLiteral("Report pages"));
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    // A bar that comes and goes would change what fits the width.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setMouseTracking(true);
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
}

void PageView::Show(const PageFormat& format, BuildPage build) {
    mFormat = format;
    mStore.Source(std::move(build));
    mStack.count = 0;
    mCurrent = 0;
    mRevealed.reset();
    mAnchor.reset();
    Select(0, {});
    if (mFit != Fit::None)
        mZoom = FittingZoom();
    Arrange();
    viewport()->update();
    emit ZoomChanged();
}

void PageView::PageCount(std::size_t count, bool isComplete) {
    if (isComplete)
        mStore.Forget();
    else if (mStack.count > 0)
        mStore.Forget(mStack.count - 1);
    const std::size_t before = mStack.count;
    mStack.count = count;
    Arrange();
    if (before == 0)
        Jump(mCurrent);
    else
        SetCurrent(std::min(mCurrent, count == 0 ? 0 : count - 1));
    viewport()->update();
    emit CurrentPageChanged();
}

double PageView::Scale() const {
    return mZoom / kPercent * logicalDpiY() / kPointsPerInch;
}

double PageView::FittingZoom() const {
    const double pixels = logicalDpiY() / kPointsPerInch / kPercent;
    const double gaps = 2.0 * PageStack::kGap;
    double zoom = (viewport()->width() - gaps) / (mFormat.width * pixels);
    if (mFit == Fit::Page)
        zoom = std::min(zoom, (viewport()->height() - gaps) / (mFormat.height * pixels));
    return std::clamp(zoom, kLeastZoom, kMostZoom);
}

void PageView::Arrange() {
    mStack.pageWidth = std::max<std::int64_t>(1, std::llround(mFormat.width * Scale()));
    mStack.pageHeight = std::max<std::int64_t>(1, std::llround(mFormat.height * Scale()));
    const std::int64_t hidden = std::max<std::int64_t>(0, mStack.Height() - viewport()->height());
    mUnit = hidden / kMostSteps + 1;
    mIsJumping = true;
    verticalScrollBar()->setPageStep(std::max(1, static_cast<int>(viewport()->height() / mUnit)));
    verticalScrollBar()->setSingleStep(std::max(1, static_cast<int>(kScrollStep / mUnit)));
    verticalScrollBar()->setRange(0, static_cast<int>(hidden / mUnit));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(kScrollStep);
    horizontalScrollBar()->setRange(
        0, static_cast<int>(std::max<std::int64_t>(0, mStack.Width() - viewport()->width())));
    mIsJumping = false;
}

std::int64_t PageView::Offset() const {
    return verticalScrollBar()->value() * mUnit;
}

void PageView::Offset(std::int64_t offset) {
    mIsJumping = true;
    const std::int64_t most = verticalScrollBar()->maximum();
    verticalScrollBar()->setValue(static_cast<int>(std::clamp<std::int64_t>(offset / mUnit, 0, most)));
    mIsJumping = false;
}

std::int64_t PageView::LeftOfPages() const {
    if (mStack.Width() > viewport()->width())
        return PageStack::kGap - horizontalScrollBar()->value();
    return (viewport()->width() - mStack.pageWidth) / 2;
}

void PageView::SetCurrent(std::size_t page) {
    const QLocale locale;
    setAccessibleDescription(
        QStringLiteral("Page %1 of %2")
            .arg(locale.toString(qulonglong{page} + 1), locale.toString(qulonglong{mStack.count})));
    if (page == mCurrent)
        return;
    mCurrent = page;
    emit CurrentPageChanged();
}

void PageView::GoTo(std::size_t page) {
    emit Moved();
    Jump(page);
}

void PageView::Jump(std::size_t page) {
    if (mStack.count == 0) {
        // Remembered until there are pages.
        mCurrent = page;
        return;
    }
    const std::size_t there = std::min(page, mStack.count - 1);
    Offset(mStack.TopOf(there) - PageStack::kGap);
    SetCurrent(there);
}

void PageView::GoTo(std::size_t page, double top) {
    GoTo(page);
    if (page >= mStack.count)
        return;
    const std::int64_t place = mStack.TopOf(page) + std::llround(top * Scale());
    const int height = viewport()->height();
    if (place > Offset() + std::llround((1 - kRevealAt) * height))
        Offset(place - std::llround(kRevealAt * height));
    SetCurrent(page);
}

double PageView::TopOnPage() const {
    return static_cast<double>(Offset() - mStack.TopOf(mCurrent)) / Scale();
}

void PageView::Restore(std::size_t page, double top) {
    Jump(page);
    if (page < mStack.count)
        Offset(mStack.TopOf(page) + std::llround(top * Scale()));
}

void PageView::GoToEnd() {
    emit Moved();
    Offset(mStack.Height());
    SetCurrent(mStack.count == 0 ? 0 : mStack.count - 1);
}

void PageView::TurnPage(int pages) {
    const auto there = static_cast<std::int64_t>(mCurrent) + pages;
    GoTo(static_cast<std::size_t>(std::max<std::int64_t>(0, there)));
}

void PageView::FollowScrolling() {
    if (mIsJumping || mStack.count == 0)
        return;
    emit Moved();
    const QScrollBar& bar = *verticalScrollBar();
    if (bar.value() == bar.minimum())
        SetCurrent(0);
    else if (bar.value() == bar.maximum())
        SetCurrent(mStack.count - 1);
    else
        SetCurrent(mStack.PageAt(Offset() + viewport()->height() / 2));
}

void PageView::scrollContentsBy(int dx, int dy) {
    if (mUnit == 1)
        viewport()->scroll(dx, dy);
    else
        viewport()->update();
    FollowScrolling();
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    if (mFit != Fit::None)
        ZoomAbout(FittingZoom(), {});
    else
        Arrange();
}

void PageView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        Arrange();
}

void PageView::Zoom(double percent) {
    mFit = Fit::None;
    ZoomAbout(std::clamp(percent, kLeastZoom, kMostZoom), QRectF(viewport()->rect()).center());
}

void PageView::ZoomToFit(Fit fit) {
    mFit = fit;
    const std::size_t page = mCurrent;
    ZoomAbout(fit == Fit::None ? mZoom : FittingZoom(), {});
    if (fit == Fit::Page)
        GoTo(page);
}

void PageView::ZoomAbout(double percent, const QPointF& anchor) {
    const PagePoint kept = PointAt(anchor);
    mZoom = percent;
    Arrange();
    Offset(mStack.TopOf(kept.page) + std::llround(kept.point.y() * Scale() - anchor.y()));
    horizontalScrollBar()->setValue(
        static_cast<int>(std::lround(PageStack::kGap + kept.point.x() * Scale() - anchor.x())));
    viewport()->update();
    emit ZoomChanged();
}

PageView::PagePoint PageView::PointAt(const QPointF& position) const {
    const std::int64_t y = Offset() + std::llround(position.y());
    const std::size_t page = mStack.PageAt(y);
    return {page, QPointF(position.x() - static_cast<double>(LeftOfPages()),
                          static_cast<double>(y - mStack.TopOf(page))) /
                      Scale()};
}

void PageView::Highlight(const QString& sought) {
    mSought = sought;
    mRevealed.reset();
    viewport()->update();
}

void PageView::Reveal(std::size_t page, const TextRange& match) {
    emit Moved();
    mRevealed = {page, match};
    const std::vector<QRectF> places = mStore.At(page)->Rectangles(match);
    if (!places.empty()) {
        const QRectF& place = places.front();
        const std::int64_t top = mStack.TopOf(page) + std::llround(place.top() * Scale());
        const std::int64_t bottom = mStack.TopOf(page) + std::llround(place.bottom() * Scale());
        if (top < Offset() || bottom > Offset() + viewport()->height())
            Offset(top - std::llround(kRevealAt * viewport()->height()));
        const int left =
            static_cast<int>(std::lround(place.left() * Scale())) + static_cast<int>(LeftOfPages());
        if (left < 0 || left + place.width() * Scale() > viewport()->width())
            horizontalScrollBar()->setValue(horizontalScrollBar()->value() + left - viewport()->width() / 3);
    }
    SetCurrent(page);
    viewport()->update();
}

void PageView::PaintMarks(QPainter& painter, std::size_t page, const PageText& text) const {
    const auto mark = [&](const TextRange& range, QRgb color) {
        for (const QRectF& place : text.Rectangles(range))
            painter.fillRect(place, QColor::fromRgb(color));
    };
    for (const TextRange& match : text.Find(mSought))
        mark(match, kMatchColor);
    if (mRevealed && mRevealed->first == page)
        mark(mRevealed->second, kRevealedColor);
    if (mSelectedPage == page)
        mark(mSelection, kSelectionColor);
}

void PageView::paintEvent(QPaintEvent* event) {
    if (mStack.count == 0)
        return;
    QPainter painter(viewport());
    const QRect exposed = event->rect();
    const std::size_t first = mStack.PageAt(Offset() + exposed.top());
    const std::size_t last = mStack.PageAt(Offset() + exposed.bottom());
    for (std::size_t page = first; page <= last; ++page) {
        const QRectF paper(static_cast<double>(LeftOfPages()),
                           static_cast<double>(mStack.TopOf(page) - Offset()),
                           static_cast<double>(mStack.pageWidth), static_cast<double>(mStack.pageHeight));
        if (!paper.intersects(exposed))
            continue;
        painter.save();
        painter.fillRect(paper, Qt::white);
        painter.setPen(QColor::fromRgb(kPaperEdge));
        painter.drawRect(paper.adjusted(-0.5, -0.5, 0.5, 0.5));
        painter.setClipRect(paper);
        painter.translate(paper.topLeft());
        painter.scale(Scale(), Scale());
        const std::shared_ptr<const PageText> text = mStore.At(page);
        PaintMarks(painter, page, *text);
        const QRectF part(QPointF(exposed.topLeft() - paper.topLeft()) / Scale(),
                          QSizeF(exposed.size()) / Scale());
        PaintPage(text->Content(), painter, mMeasure, part);
        painter.restore();
    }
}

} // namespace report
