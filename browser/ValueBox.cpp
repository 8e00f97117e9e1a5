// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ValueBox.h"

#include "browser/ListModel.h"
#include "core/SelectAllText.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QStyleOptionFrame>

#include <algorithm>

namespace {

constexpr int kUsualCharacters = 28;
/// A date.
constexpr int kFewestDigits = 8;
constexpr int kMostCharacters = 60;

} // namespace

ValueBox::ValueBox(const QString& text, QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setFrame(false);
    QPalette colours;
    colours.setBrush(QPalette::Base, Qt::transparent);
    setPalette(colours);
    SelectAllOnFocus(*this);
    Show(text);
}

void ValueBox::Show(const QString& text) {
    setText(text);
    setCursorPosition(0);
    updateGeometry();
}

QSize ValueBox::sizeHint() const {
    const int letter = fontMetrics().averageCharWidth();
    const int wanted = fontMetrics().horizontalAdvance(text()) + 2 * letter;
    return {std::clamp(wanted, kUsualCharacters * letter, kMostCharacters * letter),
            QLineEdit::sizeHint().height()};
}

QSize ValueBox::minimumSizeHint() const {
    const int margins = width() - Room().width();
    return {fontMetrics().horizontalAdvance(QString(kFewestDigits, '0')) + margins,
            QLineEdit::minimumSizeHint().height()};
}

QRect ValueBox::Room() const {
    constexpr int kMargin = 2; // the toolkit's own, on either side
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect contents = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    return contents.adjusted(kMargin, 0, -kMargin, 0);
}

bool ValueBox::IsCut() const {
    return fontMetrics().horizontalAdvance(text()) > Room().width();
}

bool ValueBox::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip)
        setToolTip(IsCut() ? PlainToolTip(text()) : QString());
    return QLineEdit::event(event);
}

void ValueBox::paintEvent(QPaintEvent* event) {
    const QRect room = Room();
    if (IsCut() && !hasFocus()) {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                         fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
        return;
    }
    QLineEdit::paintEvent(event);
    if (!IsCut())
        return;
    // With the focus the text scrolls: either end may be out of sight.
    const int middle = room.center().y();
    if (const int first = cursorPositionAt({room.left(), middle}); first > 0)
        PaintDots(Qt::AlignLeft, first);
    if (const int last = cursorPositionAt({room.right(), middle}); last < text().size())
        PaintDots(Qt::AlignRight, last - 1);
}

/// Over the end of what is seen, whose first or last character is the one at `position`, if it is selected: a
/// user who moves within the text sees it scroll.
void ValueBox::PaintDots(Qt::Alignment side, int position) {
    if (position < selectionStart() || position >= selectionEnd())
        return;
    const QString dots = QChar(0x2026);
    const QSize size(fontMetrics().horizontalAdvance(dots), fontMetrics().height());
    const QRect place = QStyle::alignedRect(Qt::LeftToRight, side | Qt::AlignVCenter, size, Room());
    QPainter painter(this);
    painter.fillRect(place, palette().color(QPalette::Highlight));
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawText(place, Qt::AlignCenter, dots);
}

QLabel* AddValue(QGridLayout& grid, int row, const QString& caption, const QString& name, ValueBox& box) {
    auto* const label = new QLabel(caption, box.parentWidget());
    label->setTextFormat(Qt::PlainText);
    box.setObjectName(name);
    box.setAccessibleName(caption);
    grid.addWidget(label, row, 0);
    grid.addWidget(&box, row, 1);
    return label;
}
