// SPDX-License-Identifier: GPL-3.0-or-later
// Pages below each other, to scroll, zoom, select and copy from. Only the pages on show are worked out, so
// twenty thousand scroll as one does. Paper is white under every desktop theme.
//
// Keys: arrows scroll; Page Up and Page Down turn a page where whole pages fit, else scroll by what is on
// show; Home and End go to the page's ends, with Ctrl to the report's.
#pragma once

#include "platform/report/PageStack.h"
#include "platform/report/PageStore.h"

#include <QAbstractScrollArea>

#include <optional>

namespace report {

class PageView final : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Fit { None, Width, Page };

    static constexpr double kLeastZoom = 25;
    static constexpr double kMostZoom = 400;

    /// `measure` must outlive it.
    PageView(const FontMeasure& measure, QWidget* parent);

    /// Shows pages of `format` from `build`, none until PageCount says how many there are, then the first.
    /// The zoom stays.
    void Show(const PageFormat& format, BuildPage build);
    /// How many pages there are. The one that was the last is made anew, and all are where `isComplete`.
    /// Until somebody chooses a zoom, pages fit the width.
    void PageCount(std::size_t count, bool isComplete);
    std::size_t PageCount() const { return mStack.count; }
    /// From 0.
    std::size_t CurrentPage() const { return mCurrent; }
    /// Goes to the top of page `page`, or of the last one.
    void GoTo(std::size_t page);
    /// Goes to what stands `top` points below a page's upper edge: with the page's top in sight where that
    /// leaves room for it.
    void GoTo(std::size_t page, double top);
    /// Goes to the bottom of the last page.
    void GoToEnd();
    /// How far the view's upper edge is below that of the page on show, in points.
    double TopOnPage() const;
    /// Shows page `page` with the view's edge there again.
    void Restore(std::size_t page, double top);

    /// In percent, between kLeastZoom and kMostZoom.
    void Zoom(double percent);
    void ZoomToFit(Fit fit);
    double Zoom() const { return mZoom; }
    Fit ZoomFit() const { return mFit; }

    /// Marks `sought` wherever it stands; nothing where it is empty.
    void Highlight(const QString& sought);
    /// Scrolls to a match and marks it before the others.
    void Reveal(std::size_t page, const TextRange& match);
    std::optional<std::pair<std::size_t, TextRange>> RevealedMatch() const { return mRevealed; }

    void SelectPage();
    QString SelectedText();

signals:
    void CurrentPageChanged();
    /// Somebody has scrolled, or gone to another place.
    void Moved();
    void ZoomChanged();
    void SelectionChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct PagePoint {
        std::size_t page = 0;
        /// In points from the paper's corner.
        QPointF point;
    };

    /// Pixels of a point of the paper.
    double Scale() const;
    double FittingZoom() const;
    /// Takes the zoom `percent`, with what is at `anchor`, in the viewport, staying there.
    void ZoomAbout(double percent, const QPointF& anchor);
    void Arrange();
    void Jump(std::size_t page);
    std::int64_t Offset() const;
    void Offset(std::int64_t offset);
    std::int64_t LeftOfPages() const;
    PagePoint PointAt(const QPointF& position) const;
    void FollowScrolling();
    void SetCurrent(std::size_t page);
    void TurnPage(int pages);
    void Select(std::size_t page, const TextRange& range);
    void PaintMarks(QPainter& painter, std::size_t page, const PageText& text) const;

    const FontMeasure& mMeasure;
    PageStore mStore;
    PageFormat mFormat;
    PageStack mStack;
    double mZoom = 100;
    Fit mFit = Fit::Width;
    std::size_t mCurrent = 0;
    /// Pixels to a step of the scroll bar: more than one where the stack is higher than it counts.
    std::int64_t mUnit = 1;
    bool mIsJumping = false;
    QString mSought;
    std::optional<std::pair<std::size_t, TextRange>> mRevealed;
    std::size_t mSelectedPage = 0;
    TextRange mSelection;
    /// Where the pointer was pressed, while it is.
    std::optional<TextPlace> mAnchor;
};

} // namespace report
