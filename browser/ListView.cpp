// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListView.h"

#include "browser/FilterLine.h"
#include "browser/FontScale.h"
#include "browser/ItemViews.h"
#include "browser/ListSelection.h"
#include "platform/twips.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

bool IsEnter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

ListView::ListView(QWidget* parent)
    : QWidget(parent),
      mStack(new QStackedWidget(this)),
      mDetails(new DetailsView(mStack)),
      mIcons(new IconsView(mStack)),
      mSelection(new ListSelection(mModel, this)),
      mFilterLine(new FilterLine(this)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(mStack);
    layout->addWidget(mFilterLine);
    mStack->addWidget(mDetails);
    mStack->addWidget(mIcons);
    for (QAbstractItemView* view :
         {static_cast<QAbstractItemView*>(mDetails), static_cast<QAbstractItemView*>(mIcons)}) {
        view->setModel(&mModel);
        const QItemSelectionModel* const own = view->selectionModel();
        view->setSelectionModel(mSelection);
        delete own;
    }
    setFocusProxy(mDetails);
    connect(mDetails->header(), &QHeaderView::sectionClicked, this, &ListView::ColumnClick);
    // The captions' font may be another one than the texts'.
    mDetails->header()->installEventFilter(this);
    for (QAbstractItemView* view :
         {static_cast<QAbstractItemView*>(mDetails), static_cast<QAbstractItemView*>(mIcons)}) {
        view->installEventFilter(this);
        connect(view, &QAbstractItemView::doubleClicked, this, &ListView::DblClick);
    }
    connect(mFilterLine, &FilterLine::TextChanged, this, &ListView::FilterTyped);
    connect(mFilterLine, &FilterLine::Closed, this, &ListView::CloseFilter);
    connect(mFilterLine, &FilterLine::Left, this, &ListView::GoToRows);
}

void ListView::View(ListStyle mode) {
    const bool hadFocus = CurrentView().hasFocus();
    mMode = mode;
    if (mode != ListStyle::Details) {
        mIcons->Mode(mode);
        // Icons have the first column alone, and would take the focus to be nowhere.
        mSelection->setCurrentIndex(mSelection->currentIndex().siblingAtColumn(0),
                                    QItemSelectionModel::NoUpdate);
    }
    QAbstractItemView& view = CurrentView();
    mStack->setCurrentWidget(&view);
    setFocusProxy(&view);
    if (hadFocus)
        view.setFocus();
}

void ListView::Arrange(bool automatic) {
    mIcons->setResizeMode(automatic ? QListView::Adjust : QListView::Fixed);
}

void ListView::AddColumn(std::string_view caption, int width) {
    mModel.AddColumn(caption, width);
    const int column = mModel.columnCount() - 1;
    mFitted.push_back(FittedWidth(column));
    mDetails->header()->resizeSection(column, mFitted.back());
}

/// The width at which a column of the list begins, in pixels: its own for the font in use, and never less
/// than its caption takes.
int ListView::FittedWidth(int column) const {
    const int width = mModel.Columns().at(static_cast<std::size_t>(column)).width;
    return std::max(ToPixels(width * FontScale(mDetails->fontMetrics())),
                    mDetails->header()->sectionSizeHint(column));
}

/// After a change of the font. A width that was chosen by hand keeps its relation to the first one.
void ListView::FitColumns() {
    QHeaderView& header = *mDetails->header();
    for (int column = 0; column < mModel.columnCount(); ++column) {
        int& fitted = mFitted.at(static_cast<std::size_t>(column));
        const double ratio = static_cast<double>(header.sectionSize(column)) / std::max(fitted, 1);
        fitted = FittedWidth(column);
        header.resizeSection(column, static_cast<int>(std::lround(ratio * fitted)));
    }
}

void ListView::AddRow(std::string_view key, std::string_view text, Image icon) {
    mModel.AddRow(key, text, icon);
}

void ListView::AddCountedRow(std::string_view machine, std::string_view keyEnd, std::string_view text,
                             Image icon) {
    mModel.AddCountedRow(machine, keyEnd, text, icon);
}

void ListView::SetSubItem(int column, std::string_view text) {
    mModel.SetSubItem(column, text);
}

void ListView::ClearItems() {
    mModel.ClearItems();
    CloseFilter();
}

void ListView::ClearColumns() {
    ClearItems();
    mSortKey = 0;
    mSortOrder = Qt::AscendingOrder;
    mSorted = false;
    mDetails->header()->setSortIndicatorShown(false);
    mModel.ClearColumns();
    mFitted.clear();
}

void ListView::Publish() {
    mModel.Publish();
    if (mMode != ListStyle::Details)
        mIcons->Measure();
}

void ListView::SortBy(int column, const Progress& progress) {
    const bool isAgain = column == mSortKey;
    const bool descends = isAgain && mSortOrder == Qt::AscendingOrder;
    mSortOrder = descends ? Qt::DescendingOrder : Qt::AscendingOrder;
    mSortKey = column;
    mSorted = true;
    QHeaderView& header = *mDetails->header();
    header.setSortIndicator(column, mSortOrder);
    header.setSortIndicatorShown(true);
    // The arrow must not cut the caption off.
    header.resizeSection(column, std::max(header.sectionSize(column), header.sectionSizeHint(column)));
    mModel.Sort(column, mSortOrder, progress);
}

bool ListView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FontChange && watched != mIcons)
        FitColumns();
    if (event->type() != QEvent::KeyPress || watched == mDetails->header())
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    return HandleKey(key.key(), key.modifiers() & ~Qt::KeypadModifier);
}

bool ListView::HandleKey(int key, Qt::KeyboardModifiers modifiers) {
    if (IsEnter(key) && modifiers == Qt::NoModifier) {
        if (SelectedItem() >= 0)
            emit DblClick();
        return true;
    }
    if (key == Qt::Key_Escape && !mFilterLine->isHidden()) {
        CloseFilter();
        return true;
    }
    if (mMode == ListStyle::Details && HandleColumnKey(key, modifiers))
        return true;
    const int column = modifiers == Qt::ControlModifier ? ColumnOfKey(key) : -1;
    if (column < 0 || column >= mModel.columnCount())
        return false;
    emit ColumnClick(column);
    return true;
}

/// Left and right go from cell to cell; Ctrl with a sign sets the width of the column that they stand in.
bool ListView::HandleColumnKey(int key, Qt::KeyboardModifiers modifiers) {
    const QModelIndex cell = mDetails->currentIndex();
    if (!cell.isValid())
        return false;
    if (modifiers == Qt::NoModifier && (key == Qt::Key_Left || key == Qt::Key_Right)) {
        const QModelIndex next = cell.siblingAtColumn(cell.column() + (key == Qt::Key_Left ? -1 : 1));
        if (next.isValid())
            mSelection->setCurrentIndex(next, QItemSelectionModel::NoUpdate);
        return true;
    }
    // Some keyboards have the signs behind Shift.
    if ((modifiers & ~Qt::ShiftModifier) != Qt::ControlModifier)
        return false;
    switch (key) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            Widen(cell.column(), 1);
            return true;
        case Qt::Key_Minus:
            Widen(cell.column(), -1);
            return true;
        case Qt::Key_Asterisk:
            mDetails->resizeColumnToContents(cell.column());
            return true;
        default:
            return false;
    }
}

void ListView::Widen(int column, int steps) {
    constexpr int kCharacters = 3; // of a step
    QHeaderView& header = *mDetails->header();
    const int step = kCharacters * mDetails->fontMetrics().averageCharWidth();
    header.resizeSection(column, std::max(header.sectionSize(column) + steps * step, step));
    mDetails->scrollTo(mDetails->currentIndex());
}

int ListView::ColumnOfKey(int key) const {
    constexpr int kTenth = 9;
    // Among icons the arrows with Ctrl move the focus and leave the selection.
    const bool hasColumns = mMode == ListStyle::Details;
    if (key >= Qt::Key_1 && key <= Qt::Key_9)
        return key - Qt::Key_1;
    switch (key) {
        case Qt::Key_0:
            return kTenth;
        case Qt::Key_Left:
            return hasColumns ? mSortKey - 1 : -1;
        case Qt::Key_Right:
            return hasColumns ? mSortKey + 1 : -1;
        default:
            return -1;
    }
}

void ListView::OpenFilter() {
    if (mFilterLine->isHidden())
        mFilterLine->ShowCount(mModel.Rows(), mModel.AllRows());
    mFilterLine->Open();
}

void ListView::CloseFilter() {
    const bool hadFocus = mFilterLine->isAncestorOf(QApplication::focusWidget());
    mFilterLine->Close();
    if (hadFocus)
        CurrentView().setFocus();
}

void ListView::Filter(const QString& text, const Progress& progress) {
    ListSelection::Rows selected = mSelection->Kept();
    mFilter = text;
    mModel.Filter(text.toStdString(), progress);
    mSelection->Restore(std::move(selected));
    mFilterLine->ShowCount(mModel.Rows(), mModel.AllRows());
    ShowHint();
    if (text.isEmpty())
        CurrentView().scrollTo(mSelection->currentIndex(), QAbstractItemView::PositionAtCenter);
}

void ListView::GoToRows() {
    QAbstractItemView& view = CurrentView();
    view.setFocus();
    if (HasSelection() || mModel.rowCount() == 0)
        return;
    const QModelIndex row = view.currentIndex().isValid() ? view.currentIndex() : mModel.index(0, 0);
    // To select it would be a new selection, and the rows out of sight would lose theirs.
    if (mSelection->HasHidden())
        mSelection->setCurrentIndex(row, QItemSelectionModel::NoUpdate);
    else
        view.setCurrentIndex(row);
}

bool ListView::HasSelection() const {
    return mSelection->hasSelection();
}

std::vector<std::size_t> ListView::SelectedRows() const {
    // By ranges: a million rows that are selected at once are a single one.
    std::vector<std::size_t> rows;
    for (const QItemSelectionRange& range : mSelection->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(static_cast<std::size_t>(row));
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

bool ListView::IsSelected(std::size_t row) const {
    return mSelection->isRowSelected(static_cast<int>(row), {});
}

QAbstractItemView& ListView::CurrentView() const {
    if (mMode == ListStyle::Details)
        return *mDetails;
    return *mIcons;
}

int ListView::SelectedItem() const {
    return mSelection->currentIndex().row();
}

void ListView::Name(const QString& name) {
    setAccessibleName(name);
    mDetails->setAccessibleName(name);
    mIcons->setAccessibleName(name);
}

void ListView::Watch(QObject& observer) {
    for (QAbstractItemView* view :
         {static_cast<QAbstractItemView*>(mDetails), static_cast<QAbstractItemView*>(mIcons)}) {
        view->installEventFilter(&observer);
        view->viewport()->installEventFilter(&observer);
    }
}

void ListView::Hint(const QString& text) {
    mHint = text;
    ShowHint();
}

void ListView::ShowHint() {
    const QString text = mFilter.isEmpty() ? mHint : QString("No row holds \"%1\".").arg(mFilter);
    mDetails->Hint(text);
    mIcons->Hint(text);
}
