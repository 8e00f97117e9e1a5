// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ItemViews.h"

#include "core/Controls.h"

#include <QEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

namespace {

/// Rows whose texts decide how wide an icon's item is.
constexpr int kMeasuredRows = 1000;
constexpr int kNarrowestItem = 12;
constexpr int kWidestItem = 40;
/// Longer texts take a second line below a large icon.
constexpr int kWidestLargeItem = 20;

void Prepare(QAbstractItemView& view) {
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setTextElideMode(Qt::ElideRight);
    // Ctrl+A and the like belong to the menu; Tab leaves for the next control.
    view.setTabKeyNavigation(false);
    Controls::OnlyLeftDoubleClicks(view);
}

void Search(QAbstractItemView& view, TypeAhead& typeAhead, const QString& typed) {
    const auto* const list = static_cast<const ListModel*>(view.model());
    const int row = typeAhead.Find(*list, view.currentIndex().row(), typed);
    if (row >= 0)
        view.setCurrentIndex(list->index(row, 0));
}

void ShowNoTip(const QEvent& event, QWidget& widget) {
    QToolTip::showText(static_cast<const QHelpEvent&>(event).globalPos(), "n/a", &widget);
}

/// Off the rows the tip says so; on a row it is the row's own.
bool IsTipOffRows(const QAbstractItemView& view, const QEvent& event) {
    return event.type() == QEvent::ToolTip &&
           !view.indexAt(static_cast<const QHelpEvent&>(event).pos()).isValid();
}

} // namespace

/// Gives all rows one height, whatever the first one holds and whichever of its columns are in sight: that of
/// a line of text beside a picture.
class DetailsView::Delegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QStyleOptionViewItem line = option;
        line.features |= QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration;
        line.text = "X";
        const QStyle& style = *option.widget->style();
        const QSize size = style.sizeFromContents(QStyle::CT_ItemViewItem, &line, {}, option.widget);
        return {QStyledItemDelegate::sizeHint(option, index).width(), size.height()};
    }
};

DetailsView::DetailsView(QWidget* parent) : QTreeView(parent) {
    Prepare(*this);
    setItemDelegate(new Delegate(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    header()->setStretchLastSection(false);
    header()->setSectionsClickable(true);
    header()->setHighlightSections(false);
    header()->viewport()->installEventFilter(this);
}

void DetailsView::Hint(const QString& text) {
    mHint = text;
    viewport()->update();
}

QModelIndex DetailsView::indexAt(const QPoint& point) const {
    const QModelIndex index = QTreeView::indexAt(point);
    if (index.isValid() || header()->count() == 0)
        return index;
    return QTreeView::indexAt(QPoint(columnViewportPosition(0), point.y()));
}

void DetailsView::keyboardSearch(const QString& typed) {
    Search(*this, mTypeAhead, typed);
}

bool DetailsView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != header()->viewport() || event->type() != QEvent::ToolTip)
        return QTreeView::eventFilter(watched, event);
    ShowNoTip(*event, *header()->viewport());
    return true;
}

bool DetailsView::viewportEvent(QEvent* event) {
    if (!IsTipOffRows(*this, *event))
        return QTreeView::viewportEvent(event);
    ShowNoTip(*event, *viewport());
    return true;
}

void DetailsView::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    Controls::PaintHint(*this, mHint);
    PaintCell();
}

/// Frames the cell that the keyboard is in: some styles' own mark can not be seen on a selected row.
void DetailsView::PaintCell() {
    if (!currentIndex().isValid() || !hasFocus() || !window()->testAttribute(Qt::WA_KeyboardFocusChange))
        return;
    const bool isSelected = selectionModel()->isSelected(currentIndex());
    QPainter painter(viewport());
    painter.setPen(
        QPen(palette().color(isSelected ? QPalette::HighlightedText : QPalette::Text), 1, Qt::DotLine));
    painter.drawRect(visualRect(currentIndex()).adjusted(0, 0, -1, -1));
}

/// Gives all items one size.
class IconsView::Delegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const override {
        return mSize;
    }
    void Size(QSize size) { mSize = size; }

private:
    QSize mSize;
};

IconsView::IconsView(QWidget* parent) : QListView(parent), mDelegate(new Delegate(this)) {
    Prepare(*this);
    setItemDelegate(mDelegate);
    setUniformItemSizes(true);
    setWrapping(true);
    setResizeMode(QListView::Adjust);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void IconsView::Hint(const QString& text) {
    mHint = text;
    viewport()->update();
}

void IconsView::Mode(ListStyle mode) {
    mMode = mode;
    const bool isLarge = mode == ListStyle::LargeIcons;
    const int size = style()->pixelMetric(isLarge ? QStyle::PM_LargeIconSize : QStyle::PM_SmallIconSize);
    setIconSize(QSize(size, size));
    // What the toolkit calls its icon mode keeps an object per item; its list mode draws as well with the
    // icon above the text.
    setFlow(mode == ListStyle::List ? QListView::TopToBottom : QListView::LeftToRight);
    setWordWrap(isLarge);
    Measure();
}

void IconsView::Measure() {
    const QFontMetrics metrics = fontMetrics();
    const bool isLarge = mMode == ListStyle::LargeIcons;
    int textWidth = metrics.averageCharWidth() * kNarrowestItem;
    const int rows = std::min(model() == nullptr ? 0 : model()->rowCount(), kMeasuredRows);
    for (int row = 0; row < rows; ++row)
        textWidth = std::max(textWidth, metrics.horizontalAdvance(model()->index(row, 0).data().toString()));
    textWidth = std::min(textWidth, metrics.averageCharWidth() * (isLarge ? kWidestLargeItem : kWidestItem));

    const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1);
    const QSize beside(iconSize().width() + textWidth + 3 * margin,
                       std::max(iconSize().height(), metrics.height()) + margin);
    const QSize below(std::max(iconSize().width(), textWidth) + 3 * margin,
                      iconSize().height() + 2 * metrics.lineSpacing() + 2 * margin);
    mDelegate->Size(isLarge ? below : beside);
    scheduleDelayedItemsLayout();
}

void IconsView::keyboardSearch(const QString& typed) {
    Search(*this, mTypeAhead, typed);
}

bool IconsView::viewportEvent(QEvent* event) {
    if (!IsTipOffRows(*this, *event))
        return QListView::viewportEvent(event);
    ShowNoTip(*event, *viewport());
    return true;
}

void IconsView::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    Controls::PaintHint(*this, mHint);
}

void IconsView::initViewItemOption(QStyleOptionViewItem* option) const {
    QListView::initViewItemOption(option);
    if (mMode != ListStyle::LargeIcons)
        return;
    option->decorationPosition = QStyleOptionViewItem::Top;
    option->decorationAlignment = Qt::AlignCenter;
    option->displayAlignment = Qt::AlignHCenter | Qt::AlignTop;
}

void IconsView::changeEvent(QEvent* event) {
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        Mode(mMode);
}
