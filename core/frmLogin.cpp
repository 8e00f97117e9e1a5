// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmLogin.h"

#include "core/Admin.h"
#include "core/Controls.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/HelpKey.h"
#include "core/LogonUsers.h"
#include "core/SelectAllText.h"
#include "core/frmLoginVerify.h"
#include "platform/prompts.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using Controls::Button;
using Controls::Echo;
using Controls::Guarded;
using Controls::LabelFor;
using Controls::Shown;
using Controls::TextBox;
using Controls::TextOf;

frmLogin::frmLogin(QWidget* owner, SettingsStore& settings, Prompts& prompts)
    : QDialog(owner), mSettings(settings), mPrompts(prompts) {
    constexpr int kColumns = 28;
    setObjectName("frmLogin");
    HelpTopic(*this, "users.html#logon");
    setWindowTitle("MOVA Admin Login");
    txtUserName = TextBox(this, "txtUserName", "User Name", kColumns);
    txtPassword = TextBox(this, "txtPassword", "Password", kColumns, Echo::Masked);
    auto* const version = new QLabel(Shown("Version\n" + Admin::LongVersionText()), this);
    version->setObjectName("lblVersion");
    QPushButton* const ok = Button(this, "cmdOK", "OK");
    ok->setDefault(true);
    QPushButton* const cancel = Button(this, "cmdCancel", "Cancel");

    auto* const form = new QFormLayout(this);
    form->addRow(LabelFor(txtUserName, "&User Name:"), txtUserName);
    form->addRow(LabelFor(txtPassword, "&Password:"), txtPassword);
    auto* const foot = new QHBoxLayout;
    foot->addWidget(version);
    foot->addStretch();
    foot->addWidget(ok, 0, Qt::AlignBottom);
    foot->addWidget(cancel, 0, Qt::AlignBottom);
    form->addRow(foot);

    connect(ok, &QPushButton::clicked, this, [this] { Guarded(mPrompts, [this] { OK(); }); });
    connect(cancel, &QPushButton::clicked, this, &frmLogin::reject);
    FormRegistry::Instance().Load("frmLogin", this, [this] { close(); });
}

frmLogin::~frmLogin() {
    FormRegistry::Instance().Unloaded(this);
}

void frmLogin::OK() {
    const std::string name = TextOf(*txtUserName);
    const std::string password = TextOf(*txtPassword);
    if (name.empty()) {
        mPrompts.MsgBox("Please enter your user name", MsgBoxStyle::kQuestion, "No User Name");
        return txtUserName->setFocus();
    }
    if (password.empty()) {
        mPrompts.MsgBox("Please enter a password!", MsgBoxStyle::kQuestion, "No Password");
        return txtPassword->setFocus();
    }
    if (LogonUsers::IsStoreEmpty(mSettings) && !FoundList(name, password))
        return;
    if (!LogonUsers::Contains(LogonUsers::Read(mSettings), name, password)) {
        mPrompts.MsgBox("Invalid Password, try again!", MsgBoxStyle::kOKOnly, "Login");
        txtPassword->setFocus();
        return SelectAllText(*txtPassword);
    }
    gCurrentUser = name;
    LoginSucceeded = true;
    accept();
}

bool frmLogin::FoundList(const std::string& name, const std::string& password) {
    frmLoginVerify verify(this, mPrompts);
    verify.OldPassword(password);
    verify.exec();
    if (verify.Verified)
        LogonUsers::Write(mSettings, LogonUsers::Entry(name, verify.Password()));
    return verify.Verified;
}

void frmLogin::reject() {
    LoginSucceeded = false;
    QDialog::reject();
}
