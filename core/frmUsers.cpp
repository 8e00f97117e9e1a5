// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmUsers.h"

#include "core/Controls.h"
#include "core/FormRegistry.h"
#include "core/HelpKey.h"
#include "platform/prompts.h"

#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include <algorithm>

using Controls::Button;
using Controls::Guarded;
using Controls::LabelFor;
using Controls::Shown;
using Controls::TextBox;
using Controls::TextOf;

namespace {

std::size_t Place(int row) {
    return static_cast<std::size_t>(row);
}

/// Takes one place out; those behind it move up, and the last is empty then.
template <class Texts>
void CloseGap(Texts& texts, std::size_t place) {
    const auto gap = texts.begin() + static_cast<std::ptrdiff_t>(place);
    std::move(gap + 1, texts.end(), gap);
    texts.back().clear();
}

} // namespace

frmUsers::frmUsers(QWidget* owner, SettingsStore& settings, Prompts& prompts)
    : QDialog(owner), mSettings(settings), mPrompts(prompts) {
    setObjectName("frmUsers");
    HelpTopic(*this, "users.html");
    setWindowTitle("Add Edit Logon Users");
    BuildControls();
    Load();
    FormRegistry::Instance().Load("frmUsers", this, [this] { close(); });
}

frmUsers::~frmUsers() {
    FormRegistry::Instance().Unloaded(this);
}

void frmUsers::BuildControls() {
    constexpr int kColumns = 24;
    auto* const users = new QGroupBox("Users", this);
    users->setObjectName("FRMUsers");
    LSTUsers = new QListWidget(users);
    LSTUsers->setObjectName("LSTUsers");
    LSTUsers->setAccessibleName("Users");
    LSTUsers->setMinimumWidth(fontMetrics().averageCharWidth() * kColumns);
    LSTUsers->installEventFilter(this);
    btnAdd = Button(users, "btnAdd", "&Add");
    BTNDelete = Button(users, "BTNDelete", "&Delete");
    auto* const list = new QGridLayout(users);
    list->addWidget(LSTUsers, 0, 0, 1, 2);
    list->addWidget(btnAdd, 1, 0);
    list->addWidget(BTNDelete, 1, 1);

    FRMEdit = new QGroupBox("Edit Values", this);
    FRMEdit->setObjectName("FRMEdit");
    txtName = TextBox(FRMEdit, "txtName", "Logon Name", kColumns);
    txtPassword = TextBox(FRMEdit, "txtPassword", "Logon Password", kColumns);
    btnUpdate = Button(FRMEdit, "btnUpdate", "Change");
    btnUpdate->setDefault(true);
    auto* const edit = new QFormLayout(FRMEdit);
    edit->addRow(LabelFor(txtName, "Logon Name"), txtName);
    edit->addRow(LabelFor(txtPassword, "Logon Password"), txtPassword);
    edit->addRow("", btnUpdate);

    btnUpply = Button(this, "btnUpply", "&Save && Close");
    btnClose = Button(this, "btnClose", "&Close");
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnUpply);
    buttons->addWidget(btnClose);
    auto* const grid = new QGridLayout(this);
    grid->addWidget(users, 0, 0);
    grid->addWidget(FRMEdit, 0, 1, Qt::AlignTop);
    grid->addLayout(buttons, 1, 0, 1, 2);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);

    // The arrow keys show a user and stay in the list; a click, on the selected line too, leads on to the
    // boxes.
    connect(LSTUsers, &QListWidget::itemSelectionChanged, this, &frmUsers::ShowSelected);
    connect(LSTUsers, &QListWidget::itemClicked, this, &frmUsers::LSTUsersClick);
    for (QLineEdit* const box : {txtName, txtPassword})
        connect(box, &QLineEdit::textChanged, this, [this] { btnUpdate->setEnabled(true); });
    connect(btnAdd, &QPushButton::clicked, this, &frmUsers::Add);
    connect(BTNDelete, &QPushButton::clicked, this, &frmUsers::Delete);
    connect(btnUpdate, &QPushButton::clicked, this, &frmUsers::Update);
    connect(btnUpply, &QPushButton::clicked, this, [this] { Guarded(mPrompts, [this] { Apply(); }); });
    connect(btnClose, &QPushButton::clicked, this, &frmUsers::reject);
}

bool frmUsers::eventFilter(QObject* watched, QEvent* event) {
    // The list makes its first line the current one when it gets the focus; the arrow keys are to begin
    // there.
    if (watched == LSTUsers && event->type() == QEvent::FocusIn)
        QTimer::singleShot(0, LSTUsers, [this] {
            if (SelectedRow() < 0)
                LSTUsers->selectionModel()->clearCurrentIndex();
        });
    return QDialog::eventFilter(watched, event);
}

void frmUsers::Load() {
    const QSignalBlocker quiet(LSTUsers); // the first line would select itself
    std::size_t place = 0;
    for (const LogonUsers::User& user : LogonUsers::Users(LogonUsers::Read(mSettings))) {
        LSTUsers->addItem(Shown(user.name));
        mUserNames.at(place) = user.name;
        mUserPasswords.at(place) = user.password;
        ++place;
    }
    LSTUsers->setCurrentRow(-1);
    LSTUsersClick();
    btnUpply->setEnabled(false);
}

int frmUsers::SelectedRow() const {
    const QModelIndexList rows = LSTUsers->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.constFirst().row();
}

void frmUsers::ShowSelected() {
    const int row = SelectedRow();
    const bool isSelected = row >= 0;
    FRMEdit->setEnabled(isSelected);
    txtName->setText(isSelected ? Shown(mUserNames.at(Place(row))) : QString());
    txtPassword->setText(isSelected ? Shown(mUserPasswords.at(Place(row))) : QString());
    btnUpdate->setEnabled(false);
}

void frmUsers::LSTUsersClick() {
    ShowSelected();
    if (SelectedRow() >= 0)
        txtName->setFocus();
}

void frmUsers::Add() {
    if (LSTUsers->count() >= static_cast<int>(LogonUsers::kMost)) {
        mPrompts.MsgBox("Sorry! You can only add 10 users.", MsgBoxStyle::kQuestion, "Exceeding 10 Users");
        return;
    }
    const std::string name = mPrompts.InputBox(
        "Please enter a valid logon name. Please note that the password and the name will be the same.",
        "Add User", "");
    if (name.empty())
        return;
    const int row = LSTUsers->count();
    mUserNames.at(Place(row)) = name;
    mUserPasswords.at(Place(row)) = name;
    {
        const QSignalBlocker quiet(LSTUsers);
        LSTUsers->addItem(Shown(name));
        LSTUsers->setCurrentRow(row);
    }
    LSTUsersClick();
    btnUpply->setEnabled(true);
}

void frmUsers::Delete() {
    const int row = SelectedRow();
    if (row < 0)
        return;
    CloseGap(mUserNames, Place(row));
    CloseGap(mUserPasswords, Place(row));
    {
        const QSignalBlocker quiet(LSTUsers);
        delete LSTUsers->takeItem(row);
        LSTUsers->setCurrentRow(-1);
    }
    LSTUsersClick();
    btnUpply->setEnabled(true);
}

void frmUsers::Update() {
    const int row = SelectedRow();
    if (row < 0)
        return;
    if (txtPassword->text().isEmpty()) {
        mPrompts.MsgBox("Please enter a password of at least one character.", MsgBoxStyle::kExclamation,
                        "No Password");
        return;
    }
    LSTUsers->item(row)->setText(txtName->text());
    mUserNames.at(Place(row)) = TextOf(*txtName);
    mUserPasswords.at(Place(row)) = TextOf(*txtPassword);
    btnUpdate->setEnabled(false);
    btnUpply->setEnabled(true);
}

void frmUsers::Apply() {
    std::vector<LogonUsers::User> users;
    for (std::size_t place = 0; place < mUserNames.size(); ++place)
        users.push_back({mUserNames.at(place), mUserPasswords.at(place)});
    const std::string list = LogonUsers::List(users);
    if (list.empty()) {
        mPrompts.MsgBox("You have to have at least one login name and password!", MsgBoxStyle::kCritical,
                        "Can't accept changes!");
        return;
    }
    LogonUsers::Write(mSettings, list);
    accept();
}

void frmUsers::reject() {
    constexpr int kStyle = MsgBoxStyle::kYesNo + MsgBoxStyle::kCritical + MsgBoxStyle::kDefaultButton2;
    if (btnUpply->isEnabled() && mPrompts.MsgBox("Do you want to discard the changes you have made?", kStyle,
                                                 "Discard changes?") == MsgBoxAnswer::No)
        return;
    QDialog::reject();
}
