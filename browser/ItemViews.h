// SPDX-License-Identifier: GPL-3.0-or-later
// The two widgets behind a ListView: the table of details, and the icons in their three sizes. Both take all
// rows to be of one size, without which a million of them could not be laid out at once.
#pragma once

#include "browser/ListView.h"
#include "browser/TypeAhead.h"

#include <QListView>
#include <QStyledItemDelegate>
#include <QTreeView>

class DetailsView final : public QTreeView {
    Q_OBJECT
public:
    explicit DetailsView(QWidget* parent);
    void Hint(const QString& text);
    /// Anywhere on a row is on the row, the room behind the last column too.
    QModelIndex indexAt(const QPoint& point) const override;
    void keyboardSearch(const QString& typed) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    class Delegate;
    void PaintCell();

    QString mHint;
    TypeAhead mTypeAhead;
};

class IconsView final : public QListView {
    Q_OBJECT
public:
    explicit IconsView(QWidget* parent);
    void Hint(const QString& text);
    void Mode(ListStyle mode);
    /// Makes all items as wide as the texts need, up to a limit.
    void Measure();
    void keyboardSearch(const QString& typed) override;

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    void changeEvent(QEvent* event) override;

private:
    class Delegate;
    ListStyle mMode = ListStyle::LargeIcons;
    Delegate* mDelegate;
    QString mHint;
    TypeAhead mTypeAhead;
};
