// SPDX-License-Identifier: GPL-3.0-or-later
// Has the password of the very first logon typed a second time. Its owner fills in the first one, runs it
// modally, and reads `Verified`.
#pragma once

#include <QDialog>

#include <string>

class Prompts;
class QLineEdit;

class frmLoginVerify final : public QDialog {
    Q_OBJECT
public:
    frmLoginVerify(QWidget* owner, Prompts& prompts);
    ~frmLoginVerify() override;

    /// The text of txtOldPassword, the password as it was typed first. The focus goes to the other box.
    void OldPassword(const std::string& password);
    std::string Password() const;

    bool Verified = false;

    /// Cancel, Escape and the frame.
    void reject() override;

private:
    void OK();

    Prompts& mPrompts;
    QLineEdit* txtOldPassword = nullptr;
    QLineEdit* txtPassword = nullptr;
};
