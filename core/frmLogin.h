// SPDX-License-Identifier: GPL-3.0-or-later
// The logon to the console, for whoever wants one: it is run modally by exec, and `LoginSucceeded` and
// gCurrentUser then tell the outcome. The start-up wants none. The very first logon founds the list of users.
#pragma once

#include <QDialog>

#include <string>

class Prompts;
class QLineEdit;
class SettingsStore;

class frmLogin final : public QDialog {
    Q_OBJECT
public:
    frmLogin(QWidget* owner, SettingsStore& settings, Prompts& prompts);
    ~frmLogin() override;

    bool LoginSucceeded = false;

    /// Cancel, Escape and the frame.
    void reject() override;

private:
    void OK();
    /// Makes the first user's list; false where the password was not verified.
    bool FoundList(const std::string& name, const std::string& password);

    SettingsStore& mSettings;
    Prompts& mPrompts;
    QLineEdit* txtUserName = nullptr;
    QLineEdit* txtPassword = nullptr;
};
