// SPDX-License-Identifier: GPL-3.0-or-later
// The editor of the logon users, run modally by exec. Nothing is stored before "Save & Close". Names are kept
// in the order of the list box; a place without a name ends the list.
#pragma once

#include "core/LogonUsers.h"

#include <QDialog>

#include <array>
#include <string>

class Prompts;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QPushButton;

class frmUsers final : public QDialog {
    Q_OBJECT
public:
    /// Raises error 5 for a stored list that can't be read.
    frmUsers(QWidget* owner, SettingsStore& settings, Prompts& prompts);
    ~frmUsers() override;

    /// btnClose, and Escape and the frame with it: asks where changes are waiting.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildControls();
    void Load();
    /// -1 where no user is selected.
    int SelectedRow() const;
    void ShowSelected();
    void LSTUsersClick();
    void Add();
    void Delete();
    void Update();
    void Apply();

    SettingsStore& mSettings;
    Prompts& mPrompts;
    std::array<std::string, LogonUsers::kMost> mUserNames;
    std::array<std::string, LogonUsers::kMost> mUserPasswords;

    QListWidget* LSTUsers = nullptr;
    QPushButton* btnAdd = nullptr;
    QPushButton* BTNDelete = nullptr;
    QPushButton* btnUpply = nullptr;
    QGroupBox* FRMEdit = nullptr;
    QLineEdit* txtName = nullptr;
    QLineEdit* txtPassword = nullptr;
    QPushButton* btnUpdate = nullptr;
    QPushButton* btnClose = nullptr;
};
