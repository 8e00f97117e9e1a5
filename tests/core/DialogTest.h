// SPDX-License-Identifier: GPL-3.0-or-later
// The small dialogs as a person works them: each control by its name, questions answered from a queue, the
// settings in a file of the test's own.
#pragma once

#include "core/LogonUsers.h"
#include "platform/settings.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Windows.h"

#include <QAbstractButton>
#include <QLineEdit>

#include <string>

class DialogTest : public testing::Test {
protected:
    template <class Control>
    static Control& Find(const QDialog& dialog, const char* name) {
        auto* const control = dialog.findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }
    static QLineEdit& Box(const QDialog& dialog, const char* name) { return Find<QLineEdit>(dialog, name); }
    static std::string Text(const QDialog& dialog, const char* name) {
        return Box(dialog, name).text().toStdString();
    }
    static void Type(const QDialog& dialog, const char* name, const std::string& text) {
        Box(dialog, name).setText(QString::fromStdString(text));
    }
    static void Press(const QDialog& dialog, const char* name) {
        Find<QAbstractButton>(dialog, name).click();
    }
    static bool IsEnabled(const QDialog& dialog, const char* name) {
        return Find<QWidget>(dialog, name).isEnabled();
    }
    static bool HasFocus(const QDialog& dialog, const char* name) {
        return dialog.focusWidget() == &Find<QWidget>(dialog, name);
    }

    std::string Users() const { return LogonUsers::Read(settings); }
    std::string Stored(const std::string& key) const {
        return settings.GetSetting("Velmora", "Settings", key, "<none>");
    }

    TemporaryFolder folder;
    SettingsStore settings{folder.Path("settings.ini")};
    QueuedPrompts prompts;
};
