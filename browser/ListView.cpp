// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListView.h"

#include "browser/ItemViews.h"
#include "platform/twips.h"

#include <QHeaderView>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

ListView::ListView(QWidget* parent)
    : QWidget(parent),
      mStack(new QStackedWidget(this)),
      mDetails(new DetailsView(mStack)),
      mIcons(new IconsView(mStack)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mStack);
    mStack->addWidget(mDetails);
    mStack->addWidget(mIcons);
    mDetails->setModel(&mModel);
    mIcons->setModel(&mModel);
    mIcons->setSelectionModel(mDetails->selectionModel());
    setFocusProxy(mDetails);
}

void ListView::View(ListStyle mode) {
    const bool hadFocus = CurrentView().hasFocus();
    mMode = mode;
    if (mode != ListStyle::Details)
        mIcons->Mode(mode);
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
    QHeaderView& header = *mDetails->header();
    // A larger font must not cut the caption off.
    header.resizeSection(column, std::max(ToPixels(width), header.sectionSizeHint(column)));
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
}

void ListView::ClearColumns() {
    mModel.ClearColumns();
}

void ListView::Publish() {
    mModel.Publish();
    if (mMode != ListStyle::Details)
        mIcons->Measure();
}

bool ListView::IsSelected(std::size_t row) const {
    return mDetails->selectionModel()->isRowSelected(static_cast<int>(row), {});
}

QAbstractItemView& ListView::CurrentView() const {
    if (mMode == ListStyle::Details)
        return *mDetails;
    return *mIcons;
}

int ListView::SelectedItem() const {
    return mDetails->selectionModel()->currentIndex().row();
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
    mDetails->Hint(text);
    mIcons->Hint(text);
}
