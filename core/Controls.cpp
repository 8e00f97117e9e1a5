// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Controls.h"

#include "core/SelectAllText.h"
#include "platform/errors.h"
#include "platform/prompts.h"
#include "platform/text.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>

namespace {

class DoubleClickFilter final : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::MouseButtonDblClick)
            return false;
        const auto& mouse = static_cast<const QMouseEvent&>(*event);
        if (mouse.button() == Qt::LeftButton)
            return false;
        QMouseEvent press(QEvent::MouseButtonPress, mouse.position(), mouse.scenePosition(),
                          mouse.globalPosition(), mouse.button(), mouse.buttons(), mouse.modifiers(),
                          mouse.pointingDevice());
        QCoreApplication::sendEvent(watched, &press);
        return true;
    }
};

} // namespace

namespace Controls {

QPushButton* Button(QWidget* parent, const char* name, const char* caption) {
    auto* const button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

QLineEdit* TextBox(QWidget* parent, const char* name, const char* accessibleName, int columns, Echo echo) {
    auto* const box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setAccessibleName(accessibleName);
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * columns);
    box->setEchoMode(echo == Echo::Masked ? QLineEdit::Password : QLineEdit::Normal);
    SelectAllOnFocus(*box);
    return box;
}

QLabel* LabelFor(QWidget* buddy, const char* caption) {
    auto* const label = new QLabel(caption, buddy->parentWidget());
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(buddy);
    return label;
}

QLabel* WrappedLabelFor(QWidget* buddy, const char* caption, int columns) {
    QLabel* const label = LabelFor(buddy, caption);
    label->setWordWrap(true);
    // A page of a tab control does not ask for the height that a width needs.
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * columns);
    label->setMinimumHeight(label->heightForWidth(label->minimumWidth()));
    return label;
}

void TurnTabsByKeys(QTabWidget& tabs) {
    const auto turn = [&tabs](const char* keys, int step) {
        auto* const shortcut = new QShortcut(QKeySequence(keys), &tabs);
        QObject::connect(shortcut, &QShortcut::activated, &tabs, [&tabs, step] {
            int next = tabs.currentIndex();
            do
                next = (next + step + tabs.count()) % tabs.count();
            while (!tabs.isTabEnabled(next));
            tabs.setCurrentIndex(next);
        });
    };
    turn("Ctrl+Tab", 1);
    turn("Ctrl+Shift+Backtab", -1);
}

std::string TextOf(const QLineEdit& box) {
    return box.text().toStdString();
}

QString Shown(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void Guarded(Prompts& prompts, const std::function<void()>& command, const char* title) {
    try {
        command();
    } catch (const RunTimeError& failure) {
        prompts.MsgBox(failure.description, MsgBoxStyle::kCritical, title + NumberText(failure.number));
    }
}

void OnlyLeftDoubleClicks(QAbstractItemView& view) {
    view.viewport()->installEventFilter(new DoubleClickFilter(&view));
}

void PaintHint(QAbstractItemView& list, const QString& hint) {
    constexpr float kDimmed = 0.6F; // opacity
    if (hint.isEmpty() || list.model() == nullptr || list.model()->rowCount() > 0)
        return;
    QPainter painter(list.viewport());
    // Not the palette's colour of placeholders: some dark themes leave that one black.
    QColor dimmed = list.palette().color(QPalette::Text);
    dimmed.setAlphaF(kDimmed);
    painter.setPen(dimmed);
    const int margin = list.fontMetrics().height();
    const QRect area = list.viewport()->rect().adjusted(margin, margin, -margin, -margin);
    painter.drawText(area, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, hint);
}

} // namespace Controls
