// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmOptions.h"

#include "core/Admin.h"
#include "core/ConsoleSettings.h"
#include "core/Controls.h"
#include "core/FileModule.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/LogonUsers.h"
#include "core/MainForm.h"
#include "platform/codepage.h"
#include "platform/desktop.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/profile.h"
#include "platform/prompts.h"
#include "platform/text.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

using Controls::Guarded;
using Controls::Shown;
using Controls::TextOf;

namespace {

constexpr int kGeneralTab = 1;
constexpr int kPasswordTab = 3;
constexpr const char* kSeparator = "/";

constexpr const char* kStartup = "STARTUP";
constexpr const char* kDelay = "DELAYTIMER";
constexpr const char* kAskUser = "ASKNEWUSERINFO";
constexpr const char* kSound = "PINGSOUND";
constexpr const char* kAgreement = "AGREEPATH";

/// The text before the separator at the 1-based `position`. Raises error 5 where there is none.
std::string Before(const std::string& path, std::size_t position) {
    if (position == 0)
        Raise(Errors::kInvalidCall);
    return path.substr(0, position - 1);
}

/// The collectors' file in `folder`, however its name is written. The folder of the root is empty here.
std::string CollectorIni(const std::string& folder) {
    constexpr const char* kName = "MOVANTA.INI";
    return FindFile(folder + kSeparator, kName).value_or(folder + kSeparator + kName);
}

/// Any PC can write to the file, so what it holds may be no profile at all.
Profile ReadableProfile(const std::string& path) {
    try {
        return Profile::Load(path);
    } catch (const RunTimeError&) {
        return {};
    }
}

std::string ItemData(const QComboBox& combo) {
    return std::to_string(combo.currentData().toInt());
}

} // namespace

frmOptions::frmOptions(MainForm& form, SettingsStore& settings, Prompts& prompts, Desktop& desktop)
    : QDialog(form.OwnerWindow()), mForm(form), mSettings(settings), mPrompts(prompts), mDesktop(desktop) {
    setObjectName("frmOptions");
    setWindowTitle("Options");
    BuildControls();
    Load();
    txtPath[0]->setFocus();
    FormRegistry::Instance().Load("frmOptions", this, [this] { close(); });
}

frmOptions::~frmOptions() {
    FormRegistry::Instance().Unloaded(this);
}

void frmOptions::Load() {
    txtPath[0]->setText(Shown(gImportDir));
    if (gImportDir.empty()) {
        SSTab1->setTabEnabled(kGeneralTab, false);
    } else {
        const std::size_t separator = LastPositionOf(gImportDir, kSeparator);
        SSTab1->setTabEnabled(kGeneralTab, separator >= 1);
        ReadCollectorIni(Before(gImportDir, separator));
    }
    txtPath[1]->setText(Shown(gDatabasePath));
    txtPath[2]->setText(Shown(gBackupDir));
    txtOld->setText(QString::number(gImportTimeNum));
    cmbOld->setCurrentIndex(gImportTime < cmbOld->count() ? gImportTime : -1);
    mDatabasePathEdited = false;
}

void frmOptions::SelectItemData(QComboBox& combo, std::int16_t value) {
    for (int row = 0; row < combo.count(); ++row)
        if (combo.itemData(row).toInt() == value)
            return combo.setCurrentIndex(row);
}

void frmOptions::ReadCollectorIni(const std::string& folder) {
    const Profile profile = ReadableProfile(CollectorIni(folder));
    // What another folder's file says must not be taken for what this one does.
    for (QComboBox* const combo : {CMBSeconds, CMBInfo, CMBSound})
        combo->setCurrentIndex(-1);
    const auto select = [&profile](QComboBox& combo, const char* key, const char* fallback) {
        if (const auto value = ShortOrNothing(profile.Get(kStartup, key, fallback)))
            SelectItemData(combo, *value);
    };
    select(*CMBSeconds, kDelay, "30");
    select(*CMBInfo, kAskUser, "0");
    select(*CMBSound, kSound, "0");
    txtAGREEPATH->setText(Shown(profile.Get(kStartup, kAgreement, "")));
}

void frmOptions::WriteCollectorIni(const std::string& folder) {
    try {
        const std::string path = CollectorIni(folder);
        Profile profile = Profile::Load(path);
        const auto set = [&profile](const QComboBox& combo, const char* key) {
            if (combo.currentIndex() >= 0)
                profile.Set(kStartup, key, ItemData(combo));
        };
        set(*CMBSeconds, kDelay);
        set(*CMBInfo, kAskUser);
        set(*CMBSound, kSound);
        profile.Set(kStartup, kAgreement, std::string(WithoutOuterBlanks(TextOf(*txtAGREEPATH))));
        profile.Save(path);
    } catch (const RunTimeError&) {
        // The console's own settings are to be saved all the same, whoever owns the shared folder.
    }
}

void frmOptions::BTNInfoClick(std::size_t index) {
    std::string choice;
    if (index == 0)
        choice = FileModule::BrowseForFolder(mPrompts, "Please select INF Directory", TextOf(*txtPath[0]));
    else if (index == 1)
        choice = FileModule::ShowOpenDialog(mPrompts, "MOVA Database (*.mdb)|*.MDB",
                                            "Please select a database...", "mdb");
    else if (index == 2)
        choice = FileModule::BrowseForFolder(mPrompts, "Please select Default Backup Directory",
                                             TextOf(*txtPath[2]));
    else
        choice = FileModule::ShowOpenDialog(mPrompts, "Agreement File (*.*)|*.*",
                                            "Please select the Agreement file ", "txt");
    choice = WithoutNuls(choice);
    if (choice.empty())
        return;
    if (index == 0)
        ChooseFolder(choice);
    else
        (index == kAgreementButton ? txtAGREEPATH : txtPath.at(index))->setText(Shown(choice));
}

void frmOptions::ChooseFolder(const std::string& folder) {
    const std::size_t separator = LastPositionOf(folder, kSeparator);
    SSTab1->setTabEnabled(kGeneralTab, separator > 0);
    if (separator == 0) {
        mPrompts.MsgBox("This is an invalid path!", MsgBoxStyle::kOKOnly, "");
        return;
    }
    txtPath[0]->setText(Shown(folder));
    ReadCollectorIni(Before(folder, separator));
}

void frmOptions::LeaveFolder() {
    QString folder = txtPath[0]->text();
    while (folder.size() > 1 && folder.endsWith(kSeparator))
        folder.chop(1);
    if (folder != txtPath[0]->text())
        txtPath[0]->setText(folder);
}

bool frmOptions::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtPath[0] && event->type() == QEvent::FocusOut)
        LeaveFolder();
    if (watched == txtAGREEPATH && event->type() == QEvent::MouseButtonDblClick) {
        Guarded(mPrompts, [this] { ViewAgreement(); });
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmOptions::ViewAgreement() {
    const std::string path = TextOf(*txtAGREEPATH);
    if (path.empty())
        return BTNInfoClick(kAgreementButton);
    if (!FileExists(path)) {
        mPrompts.MsgBox("That file was not found! Please select a file!", MsgBoxStyle::kCritical,
                        "File not Found!");
        return BTNInfoClick(kAgreementButton);
    }
    try {
        const std::string shortPath = Admin::GetShortPath(path);
        // What is left of a longer path names another file, or none.
        if (shortPath != path)
            throw RunTimeError(Errors::kPathNotFound, "The path is longer than 164 characters");
        if (!mDesktop.OpenFile(shortPath))
            throw RunTimeError(Errors::kFileNotFound, "No program was found that opens " + path);
    } catch (const RunTimeError& failure) {
        mPrompts.MsgBox("MOVA Error loading file.\r\n\r\n" + failure.description, MsgBoxStyle::kCritical,
                        "Error#" + NumberText(failure.number));
        BTNInfoClick(kAgreementButton);
    }
}

void frmOptions::OK() {
    // With "?" in its name the collectors would look for another file.
    if (LastPositionOf(TextOf(*txtPath[0]), kSeparator) > 0 &&
        !CodePage::System().Holds(TextOf(*txtAGREEPATH)))
        Raise(Errors::kInvalidCall, TextOf(*txtAGREEPATH));
    // A unit that the settings never knew is nothing to choose from; it stays until one is chosen.
    const auto unit =
        cmbOld->currentIndex() >= 0 ? static_cast<std::int16_t>(cmbOld->currentData().toInt()) : gImportTime;
    LimitCount(unit);
    const std::string count = TextOf(*txtOld);
    // A number that does not fit, or a store that cannot be written, leaves everything as it was.
    const std::int16_t units = CInt(Val(count));
    const std::array paths = {TextOf(*txtPath[0]), TextOf(*txtPath[1]), TextOf(*txtPath[2])};
    ConsoleSettings::Save(mSettings, "Database", paths[1]);
    ConsoleSettings::Save(mSettings, "ImportDir", paths[0]);
    ConsoleSettings::Save(mSettings, "BackupDir", paths[2]);
    ConsoleSettings::Save(mSettings, "ImportTime", std::to_string(unit));
    // The next start reads a number, and would stop at any other text.
    ConsoleSettings::Save(mSettings, "ImportTimeNum", NumberOrNothing(count) ? count : std::to_string(units));
    gImportDir = paths[0];
    if (const std::size_t separator = LastPositionOf(gImportDir, kSeparator); separator > 0)
        WriteCollectorIni(Before(gImportDir, separator));
    gDatabasePath = paths[1];
    gBackupDir = paths[2];
    gImportTime = unit;
    gImportTimeNum = units;
    if (mDatabasePathEdited)
        mForm.Relink();
    accept();
}

void frmOptions::LimitCount(std::int16_t timeUnit) {
    constexpr std::array<int, 3> kHighest = {59, 59, 23}; // seconds, minutes, hours
    const auto unit = static_cast<std::size_t>(timeUnit);
    if (unit < kHighest.size() && Val(TextOf(*txtOld)) > kHighest.at(unit))
        txtOld->setText(QString::number(kHighest.at(unit)));
}

void frmOptions::OldPasswordTyped() {
    if (btnChange->isEnabled() && btnCancelChange->isEnabled())
        return;
    btnChange->setEnabled(true);
    btnCancelChange->setEnabled(true);
    ChooseDefault();
}

void frmOptions::ChooseDefault() {
    // Enter is to change the password that is being typed, not to close the dialog over it.
    const bool isChanging = SSTab1->currentIndex() == kPasswordTab && btnChange->isEnabled();
    (isChanging ? btnChange : cmdOK)->setDefault(true);
}

void frmOptions::ClearPasswords() {
    for (QLineEdit* const box : txtPassword)
        box->clear();
    btnChange->setEnabled(false);
    btnCancelChange->setEnabled(false);
    ChooseDefault();
}

void frmOptions::ChangePassword() {
    const std::string newPassword = TextOf(*txtPassword[1]);
    if (newPassword.empty() || txtPassword[2]->text().isEmpty()) {
        mPrompts.MsgBox("The new password can not be blank. Please enter a new password!",
                        MsgBoxStyle::kOKOnly, "");
        return txtPassword[1]->setFocus();
    }
    if (newPassword != TextOf(*txtPassword[2])) {
        mPrompts.MsgBox(
            "The Verify Password doesn't match the New Password. Please re-enter the New password.",
            MsgBoxStyle::kCritical, "Mismatch!");
        txtPassword[1]->clear();
        txtPassword[2]->clear();
        return txtPassword[1]->setFocus();
    }
    const auto list = LogonUsers::WithNewPassword(LogonUsers::Read(mSettings), gCurrentUser,
                                                  TextOf(*txtPassword[0]), newPassword);
    if (!list) {
        mPrompts.MsgBox("Your old password is incorrect. Please retype old password.", MsgBoxStyle::kCritical,
                        "Incorrect Password");
        return txtPassword[0]->setFocus();
    }
    LogonUsers::Write(mSettings, *list);
    mPrompts.MsgBox("Password changed!", MsgBoxStyle::kQuestion, "Changed Password");
    ClearPasswords();
}
