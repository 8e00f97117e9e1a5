// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/SelectAllText.h"

#include <QEvent>
#include <QLineEdit>
#include <QTimer>

namespace {

class FocusWatch final : public QObject {
public:
    explicit FocusWatch(QLineEdit& box) : QObject(&box), mBox(box) { box.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        // Later, since the press that brings the focus sets the caret after this event.
        if (watched == &mBox && event->type() == QEvent::FocusIn)
            QTimer::singleShot(0, &mBox, [this] { SelectAllText(mBox); });
        return QObject::eventFilter(watched, event);
    }

private:
    QLineEdit& mBox;
};

} // namespace

void SelectAllText(QLineEdit& box) {
    box.selectAll();
}

void SelectAllOnFocus(QLineEdit& box) {
    new FocusWatch(box); // the box owns it
}
