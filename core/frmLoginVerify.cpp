// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmLoginVerify.h"

#include "core/Controls.h"
#include "core/FormRegistry.h"
#include "core/HelpKey.h"
#include "core/SelectAllText.h"
#include "platform/prompts.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using Controls::Button;
using Controls::Echo;
using Controls::LabelFor;
using Controls::Shown;
using Controls::TextBox;
using Controls::TextOf;

frmLoginVerify::frmLoginVerify(QWidget* owner, Prompts& prompts) : QDialog(owner), mPrompts(prompts) {
    constexpr int kColumns = 28;
    setObjectName("frmLoginVerify");
    HelpTopic(*this, "users.html#logon");
    setWindowTitle("Verify Password");
    txtOldPassword = TextBox(this, "txtOldPassword", "New Password", kColumns, Echo::Masked);
    txtPassword = TextBox(this, "txtPassword", "Retype Password", kColumns, Echo::Masked);
    QPushButton* const ok = Button(this, "cmdOK", "OK");
    ok->setDefault(true);
    QPushButton* const cancel = Button(this, "cmdCancel", "Cancel");

    auto* const form = new QFormLayout(this);
    form->addRow(LabelFor(txtOldPassword, "New Password:"), txtOldPassword);
    form->addRow(LabelFor(txtPassword, "Retype Password:"), txtPassword);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    form->addRow(buttons);

    connect(ok, &QPushButton::clicked, this, &frmLoginVerify::OK);
    connect(cancel, &QPushButton::clicked, this, &frmLoginVerify::reject);
    FormRegistry::Instance().Load("frmLoginVerify", this, [this] { close(); });
}

frmLoginVerify::~frmLoginVerify() {
    FormRegistry::Instance().Unloaded(this);
}

void frmLoginVerify::OldPassword(const std::string& password) {
    txtOldPassword->setText(Shown(password));
    txtPassword->setFocus();
}

std::string frmLoginVerify::Password() const {
    return TextOf(*txtPassword);
}

void frmLoginVerify::OK() {
    if (txtOldPassword->text().isEmpty() || txtPassword->text().isEmpty()) {
        mPrompts.MsgBox("Please enter a password in both fields!", MsgBoxStyle::kCritical, "No password");
        txtOldPassword->setFocus();
        SelectAllText(*txtOldPassword);
        return;
    }
    if (txtOldPassword->text() == txtPassword->text()) {
        Verified = true;
        return accept();
    }
    mPrompts.MsgBox("Passwords don't match!", MsgBoxStyle::kOKOnly, "Verify");
    txtPassword->setFocus();
    SelectAllText(*txtPassword);
}

void frmLoginVerify::reject() {
    Verified = false;
    QDialog::reject();
}
