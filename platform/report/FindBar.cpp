// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/FindBar.h"

#include "platform/report/ReportIcons.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace report {

namespace {

QToolButton* Button(QWidget* parent, const char* name, const QString& caption, const char* icon) {
    auto* const button = new QToolButton(parent);
    button->setObjectName(QLatin1String(name));
    button->setText(caption);
    button->setToolTip(caption);
    button->setAccessibleName(caption);
    button->setIcon(ReportIcon(icon));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace

FindBar::FindBar(QWidget* parent)
    : QWidget(parent),
      mText(new QLineEdit(this)),
      mPrevious(Button(this, "btnFindPrevious", QStringLiteral("Find Previous (Shift+F3)"), "go-up")),
      mNext(Button(this, "btnFindNext", QStringLiteral("Find Next (F3)"), "go-down")),
      mNote(new QLabel(this)) {
    setObjectName(QStringLiteral("FindBar"));
    auto* const label = new QLabel(QStringLiteral("F&ind:"), this);
    label->setBuddy(mText);
    mText->setObjectName(QStringLiteral("txtFind"));
    mText->setAccessibleName(QStringLiteral("Text to find"));
    mText->setPlaceholderText(QStringLiteral("Text in the report"));
    mText->setClearButtonEnabled(true);
    mText->setMaximumWidth(fontMetrics().averageCharWidth() * 40);
    mText->installEventFilter(this);
    mNote->setObjectName(QStringLiteral("lblFindNote"));
    mNote->setTextFormat(Qt::PlainText);
    auto* const close =
        Button(this, "btnFindClose", QStringLiteral("Close the find line (Esc)"), "window-close");

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(6, 3, 6, 3);
    row->addWidget(label);
    row->addWidget(mText, 2);
    row->addWidget(mPrevious);
    row->addWidget(mNext);
    row->addWidget(mNote, 1);
    row->addWidget(close);

    connect(mText, &QLineEdit::textChanged, this, [this] {
        const bool hasText = !Sought().isEmpty();
        mPrevious->setEnabled(hasText);
        mNext->setEnabled(hasText);
        Note({});
        emit Changed();
    });
    connect(mPrevious, &QToolButton::clicked, this, [this] { emit Wanted(false); });
    connect(mNext, &QToolButton::clicked, this, [this] { emit Wanted(true); });
    connect(close, &QToolButton::clicked, this, &FindBar::Closed);
    mPrevious->setEnabled(false);
    mNext->setEnabled(false);
}

void FindBar::Open(const QString& initial) {
    show();
    if (!initial.isEmpty())
        mText->setText(initial);
    mText->selectAll();
    mText->setFocus(Qt::ShortcutFocusReason);
}

QString FindBar::Sought() const {
    return mText->text();
}

void FindBar::Note(const QString& text, bool isWarning) {
    QFont font = this->font();
    font.setBold(isWarning);
    mNote->setFont(font);
    mNote->setText(text);
    mNote->setAccessibleName(text);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == mText && event->type() == QEvent::KeyPress) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (!Sought().isEmpty())
                emit Wanted((key->modifiers() & Qt::ShiftModifier) == 0);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace report
