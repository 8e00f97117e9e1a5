// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/SelectAllText.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QTimer>

namespace {

class FocusWatch final : public QObject {
public:
    explicit FocusWatch(QLineEdit& box) : QObject(&box), mBox(box) { box.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == &mBox && event->type() == QEvent::FocusOut)
            mIsLent = IsLoan(*event);
        // Later, since the press that brings the focus sets the caret after this event.
        if (watched == &mBox && event->type() == QEvent::FocusIn && !(mIsLent && IsLoan(*event)))
            QTimer::singleShot(0, &mBox, [this] { SelectAllText(mBox); });
        return QObject::eventFilter(watched, event);
    }

private:
    /// Whether the focus goes to, or comes back from, the box's own pop-up menu or another window.
    static bool IsLoan(const QEvent& event) {
        const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
        return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
    }

    QLineEdit& mBox;
    bool mIsLent = false;
};

} // namespace

void SelectAllText(QLineEdit& box) {
    box.selectAll();
}

void SelectAllOnFocus(QLineEdit& box) {
    new FocusWatch(box); // the box owns it
}
