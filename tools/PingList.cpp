// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/PingList.h"

#include "core/Controls.h"

#include <QAction>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

/// Characters of the longest line that is usual.
constexpr int kLineLength = 80;
constexpr int kShowInterval = 50; // milliseconds

/// The list measures its first line alone, so that no line after it costs time; that one must not be short.
class LineDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return size.expandedTo(QSize(option.fontMetrics.averageCharWidth() * kLineLength, 0));
    }
};

/// No size is set, so that it stays that of the window.
QFont FixedFont() {
    QFont font;
    font.setFamilies({"Courier New", QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    return font;
}

} // namespace

PingList::PingList(QWidget* parent) : QListWidget(parent) {
    setFont(FixedFont());
    setItemDelegate(new LineDelegate(this));
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideNone);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    auto* const copy = new QAction("Copy", this);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &PingList::Copy);
    addAction(copy);
    mShowTimer.setSingleShot(true);
    connect(&mShowTimer, &QTimer::timeout, this, &PingList::ShowLines);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void PingList::AddLine(const std::string& text) {
    mAdded += QString::fromStdString(text);
    if (!mShowTimer.isActive())
        mShowTimer.start(kShowInterval);
}

void PingList::ShowLines() {
    mShowTimer.stop();
    const QScrollBar& bar = *verticalScrollBar();
    const bool isAtEnd = bar.value() == bar.maximum();
    addItems(mAdded);
    mAdded.clear();
    if (isAtEnd)
        scrollToBottom();
}

void PingList::Clear() {
    mShowTimer.stop();
    mAdded.clear();
    clear();
}

void PingList::Hint(const QString& text) {
    mHint = text;
    setAccessibleDescription(text);
    viewport()->update();
}

void PingList::Copy() const {
    QModelIndexList rows = selectionModel()->selectedIndexes();
    if (rows.isEmpty())
        return;
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex& row : rows)
        lines += row.data().toString();
    QGuiApplication::clipboard()->setText(lines.join("\r\n"));
}

void PingList::paintEvent(QPaintEvent* event) {
    QListWidget::paintEvent(event);
    Controls::PaintHint(*this, mHint);
}
