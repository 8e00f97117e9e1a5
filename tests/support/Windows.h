// SPDX-License-Identifier: GPL-3.0-or-later
// Windows as a person finds them. Who includes it links Qt6::Test.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

/// Shows a window and waits until it has the keyboard.
inline void ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

/// Acts on the modal dialog that runs next, which must come while the object lives and be closed by what is
/// done to it:
///     const NextDialog answer([](QDialog& dialog) { dialog.findChild<QPushButton*>("cmdOK")->click(); });
///     command.Run();
class NextDialog {
public:
    explicit NextDialog(std::function<void(QDialog&)> act) : mAct(std::move(act)) {
        mTimer.setSingleShot(true);
        mTimer.callOnTimeout([this] { Act(); });
        mTimer.start(0);
    }
    ~NextDialog() { EXPECT_TRUE(mHasCome) << "no dialog came"; }
    NextDialog(const NextDialog&) = delete;
    NextDialog& operator=(const NextDialog&) = delete;

private:
    void Act() {
        mHasCome = true;
        const QPointer<QDialog> dialog(qobject_cast<QDialog*>(QApplication::activeModalWidget()));
        ASSERT_NE(dialog, nullptr);
        mAct(*dialog);
        if (!dialog || !dialog->isVisible())
            return;
        ADD_FAILURE() << "the dialog stays open";
        dialog->QDialog::done(QDialog::Rejected);
    }

    std::function<void(QDialog&)> mAct;
    QTimer mTimer;
    bool mHasCome = false;
};
