// SPDX-License-Identifier: GPL-3.0-or-later
// The Options dialog, run modally by exec: the console's folders and time frame, which are settings; what all
// collectors are asked, which stands in MOVANTA.INI in the folder above that of the inventory files; and the
// change of a logon password, which takes effect by its own button. Its controls are built in
// frmOptionsTabs.cpp.
#pragma once

#include <QDialog>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

class Desktop;
class MainForm;
class Prompts;
class QComboBox;
class QLineEdit;
class QPushButton;
class QTabWidget;
class SettingsStore;

class frmOptions final : public QDialog {
    Q_OBJECT
public:
    /// Raises error 5 where gImportDir holds no separator; nothing handles it, and the program ends. The
    /// arguments must outlive the dialog.
    frmOptions(MainForm& form, SettingsStore& settings, Prompts& prompts, Desktop& desktop);
    ~frmOptions() override;

    /// Selects the first row that stands for `value`; where there is none, the selection stays.
    static void SelectItemData(QComboBox& combo, std::int16_t value);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Of BTNInfo: behind the line of the agreement.
    static constexpr std::size_t kAgreementButton = 3;

    void BuildControls();
    QWidget* PathsTab();
    QWidget* GeneralTab();
    QWidget* TimesTab();
    QWidget* PasswordTab();
    QPushButton* BrowseButton(QWidget* parent, std::size_t index, const char* accessibleName);
    void ConnectControls();

    void Load();
    void ReadCollectorIni(const std::string& folder);
    void WriteCollectorIni(const std::string& folder);
    void BTNInfoClick(std::size_t index);
    void ChooseFolder(const std::string& folder);
    /// Strips separators from the folder's end: the last one marks the folder above.
    void LeaveFolder();
    void ViewAgreement();
    void OK();
    void LimitCount(std::int16_t timeUnit);

    void OldPasswordTyped();
    void ChooseDefault();
    void ChangePassword();
    void ClearPasswords();

    MainForm& mForm;
    SettingsStore& mSettings;
    Prompts& mPrompts;
    Desktop& mDesktop;
    /// Whether the text of txtPath(1) has been changed since the load.
    bool mDatabasePathEdited = false;

    QTabWidget* SSTab1 = nullptr;
    std::array<QLineEdit*, 3> txtPath{};
    std::array<QPushButton*, 4> BTNInfo{};
    QComboBox* CMBSeconds = nullptr;
    QComboBox* CMBInfo = nullptr;
    QComboBox* CMBSound = nullptr;
    QLineEdit* txtAGREEPATH = nullptr;
    QLineEdit* txtOld = nullptr;
    QComboBox* cmbOld = nullptr;
    std::array<QLineEdit*, 3> txtPassword{};
    QPushButton* btnChange = nullptr;
    QPushButton* btnCancelChange = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
};
