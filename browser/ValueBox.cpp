// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ValueBox.h"

#include "browser/ListModel.h"
#include "core/SelectAllText.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>

#include <algorithm>

namespace {

constexpr int kUsualCharacters = 28;
constexpr int kFewestCharacters = 10;
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
    return {kFewestCharacters * fontMetrics().averageCharWidth(), QLineEdit::minimumSizeHint().height()};
}

bool ValueBox::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip)
        setToolTip(fontMetrics().horizontalAdvance(text()) > contentsRect().width() ? PlainToolTip(text())
                                                                                    : QString());
    return QLineEdit::event(event);
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
