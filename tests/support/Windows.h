// SPDX-License-Identifier: GPL-3.0-or-later
// Windows as a person finds them. Who includes it links Qt6::Test.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QStyleHints>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

/// Lets events through until `condition` holds, and returns whether it does. A busy machine takes its time.
inline bool Eventually(const std::function<bool()>& condition) {
    constexpr int kLongestWait = 60'000; // milliseconds
    return QTest::qWaitFor(condition, kLongestWait);
}

/// How long a pause in typing may be, as long as it lives: a test says whether a text goes on.
class TypingPause {
public:
    enum Length { Endless = 3'600'000, None = 0 }; // milliseconds
    explicit TypingPause(Length length) { QGuiApplication::styleHints()->setKeyboardInputInterval(length); }
    ~TypingPause() { QGuiApplication::styleHints()->setKeyboardInputInterval(mBefore); }
    TypingPause(const TypingPause&) = delete;
    TypingPause& operator=(const TypingPause&) = delete;

private:
    int mBefore = QGuiApplication::styleHints()->keyboardInputInterval();
};

/// Shows a window and waits until it has the keyboard.
inline void ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    ASSERT_TRUE(Eventually([&window] { return window.isActiveWindow(); }));
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
