// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/FilterLine.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

FilterLine::FilterLine(QWidget* parent)
    : QWidget(parent), mText(new QLineEdit(this)), mCount(new QLabel(this)) {
    setObjectName("filterLine");
    auto* const label = new QLabel("Filter:", this);
    label->setBuddy(mText);
    mText->setObjectName("txtFilter");
    mText->setAccessibleName("Filter: show the rows that hold this text");
    mText->setToolTip("The rows that hold this text are shown. Esc closes.");
    mText->setClearButtonEnabled(true);
    mText->installEventFilter(this);
    mCount->setObjectName("lblFilterCount");
    auto* const layout = new QHBoxLayout(this);
    const int margin = layout->spacing() / 2;
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addWidget(label);
    layout->addWidget(mText, 1);
    layout->addWidget(mCount);
    connect(mText, &QLineEdit::textChanged, this, &FilterLine::TextChanged);
    hide();
}

void FilterLine::Open() {
    show();
    mText->setFocus(Qt::ShortcutFocusReason);
    mText->selectAll();
}

void FilterLine::Close() {
    mText->clear();
    hide();
}

void FilterLine::ShowCount(std::size_t left, std::size_t all) {
    mCount->setText(QString("%1 of %2 rows").arg(left).arg(all));
}

bool FilterLine::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return false;
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Escape:
            emit Closed();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Down:
            emit Left();
            return true;
        default:
            return false;
    }
}
