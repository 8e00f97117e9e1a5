// SPDX-License-Identifier: GPL-3.0-or-later
// The controls of the Options dialog, a tab at a time.
#include "core/Controls.h"
#include "core/HelpKey.h"
#include "core/frmOptions.h"
#include "platform/prompts.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>

#include <span>

using Controls::Button;
using Controls::Echo;
using Controls::Guarded;
using Controls::LabelFor;
using Controls::TextBox;
using Controls::WrappedLabelFor;

namespace {

constexpr int kPathColumns = 56;

struct Row {
    const char* text;
    int itemData;
};

constexpr Row kSeconds[] = {{"None", 0},    {"5 Sec", 5},   {"10 Sec", 10}, {"15 Sec", 15},
                            {"20 Sec", 20}, {"25 Sec", 25}, {"30 Sec", 30}, {"60 Sec", 60}};
constexpr Row kNoYes[] = {{"No", 0}, {"Yes", 1}};
constexpr Row kUnits[] = {{"Second", 0}, {"Minute", 1}, {"Hour", 2}, {"Day", 3}};

QComboBox* Combo(QWidget* parent, const char* name, const char* accessibleName, std::span<const Row> rows) {
    auto* const combo = new QComboBox(parent);
    combo->setObjectName(name);
    combo->setAccessibleName(accessibleName);
    for (const Row& row : rows)
        combo->addItem(row.text, row.itemData);
    combo->setCurrentIndex(-1);
    return combo;
}

/// A page of the tab control with its one frame.
QGroupBox* Frame(QWidget* page, const char* name, const char* caption) {
    auto* const frame = new QGroupBox(caption, page);
    frame->setObjectName(name);
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(frame);
    layout->addStretch();
    return frame;
}

/// A font is measured in points or in pixels; the other measure is -1.
QFont Small(QFont font) {
    constexpr double kPart = 0.85;
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * kPart);
    else
        font.setPixelSize(static_cast<int>(font.pixelSize() * kPart));
    return font;
}

std::string Indexed(const char* name, std::size_t index) {
    return std::string(name) + "(" + std::to_string(index) + ")";
}

} // namespace

void frmOptions::BuildControls() {
    SSTab1 = new QTabWidget(this);
    SSTab1->setObjectName("SSTab1");
    SSTab1->addTab(PathsTab(), "Default Paths");
    SSTab1->addTab(GeneralTab(), "General");
    SSTab1->addTab(TimesTab(), "Import Times");
    SSTab1->addTab(PasswordTab(), "Password");
    Controls::TurnTabsByKeys(*SSTab1);
    cmdOK = Button(this, "cmdOK", "OK");
    cmdOK->setDefault(true);
    cmdCancel = Button(this, "cmdCancel", "Cancel");

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1);
    layout->addLayout(buttons);
    ConnectControls();
}

QPushButton* frmOptions::BrowseButton(QWidget* parent, std::size_t index, const char* accessibleName) {
    QPushButton* const button = Button(parent, Indexed("BTNInfo", index).c_str(), "...");
    button->setAccessibleName(accessibleName);
    button->setToolTip(accessibleName);
    button->setFixedWidth(button->fontMetrics().averageCharWidth() * 6);
    BTNInfo.at(index) = button;
    return button;
}

QWidget* frmOptions::PathsTab() {
    struct Path {
        const char* label;
        const char* browse;
    };
    constexpr std::array<Path, 3> kPaths = {{
        {"Default Location For MOVA Collector Files:", "Choose the folder of the collector files"},
        {"Default Location For MOVA Admin Data File", "Choose the database"},
        {"Default Location For Backup Data File", "Choose the folder of the backups"},
    }};
    auto* const page = new QWidget(SSTab1);
    QGroupBox* const frame = Frame(page, "Frame1", "Paths / Locations ");
    auto* const grid = new QGridLayout(frame);
    int row = 0;
    for (std::size_t i = 0; i < kPaths.size(); ++i) {
        const Path& path = kPaths.at(i);
        txtPath.at(i) = TextBox(frame, Indexed("txtPath", i).c_str(), path.label, kPathColumns);
        grid->addWidget(LabelFor(txtPath.at(i), path.label), row++, 0, 1, 2);
        grid->addWidget(txtPath.at(i), row, 0);
        grid->addWidget(BrowseButton(frame, i, path.browse), row++, 1);
    }
    return page;
}

QWidget* frmOptions::GeneralTab() {
    constexpr int kQuestionColumns = 44;
    auto* const page = new QWidget(SSTab1);
    QGroupBox* const frame = Frame(page, "fraSample1", "These settings are applicable to all machines");
    auto* const grid = new QGridLayout(frame);
    int row = 0;
    const auto ask = [&](const char* name, const char* question, std::span<const Row> rows) {
        QComboBox* const combo = Combo(frame, name, question, rows);
        grid->addWidget(WrappedLabelFor(combo, question, kQuestionColumns), row, 0);
        grid->addWidget(combo, row++, 1, 1, 2);
        return combo;
    };
    CMBSeconds = ask(
        "CMBSeconds",
        "How long should the MOVA Collector wait after logon to collect and report information:", kSeconds);
    CMBInfo = ask("CMBInfo", "Should the MOVA Collector ask new users their personal information:", kNoYes);
    CMBSound =
        ask("CMBSound", "Should the MOVA Collector make a audible sound when collecting data ?", kNoYes);

    constexpr const char* kAgreement = "File to display for the agreement";
    txtAGREEPATH = TextBox(frame, "txtAGREEPATH", kAgreement, kPathColumns);
    txtAGREEPATH->setToolTip("Double-click, or press Ctrl+Enter, to view the document");
    QLabel* const hint = LabelFor(txtAGREEPATH, "Double-Click the above line to view the document");
    hint->setFont(Small(hint->font()));
    grid->addWidget(LabelFor(txtAGREEPATH, kAgreement), row++, 0, 1, 3);
    grid->addWidget(txtAGREEPATH, row, 0, 1, 2);
    grid->addWidget(BrowseButton(frame, kAgreementButton, "Choose the agreement file"), row++, 2);
    grid->addWidget(hint, row, 0, 1, 3);
    grid->setColumnStretch(0, 1);
    return page;
}

QWidget* frmOptions::TimesTab() {
    constexpr int kDigits = 8;
    auto* const page = new QWidget(SSTab1);
    QGroupBox* const frame = Frame(page, "Frame2", " Time Frame Import ");
    txtOld = TextBox(frame, "txtOld", "Number of units of the time frame", kDigits);
    txtOld->setMaximumWidth(txtOld->minimumWidth());
    cmbOld = Combo(frame, "cmbOld", "Unit of the time frame", kUnits);
    auto* const grid = new QGridLayout(frame);
    grid->addWidget(LabelFor(txtOld, "Import only data files that have been changed more than"), 0, 0, 1, 4);
    grid->addWidget(txtOld, 1, 0);
    grid->addWidget(cmbOld, 1, 1);
    grid->addWidget(LabelFor(cmbOld, "from last import time stamp."), 1, 2);
    grid->setColumnStretch(3, 1);
    return page;
}

QWidget* frmOptions::PasswordTab() {
    constexpr int kColumns = 28;
    constexpr std::array kLabels = {"Ol&d Password:", "&New Password:", "&Verify Password:"};
    constexpr std::array kNames = {"Old Password", "New Password", "Verify Password"};
    auto* const page = new QWidget(SSTab1);
    QGroupBox* const frame = Frame(page, "Frame3", "Change Password");
    auto* const form = new QFormLayout(frame);
    for (std::size_t i = 0; i < txtPassword.size(); ++i) {
        txtPassword.at(i) =
            TextBox(frame, Indexed("txtPassword", i).c_str(), kNames.at(i), kColumns, Echo::Masked);
        form->addRow(LabelFor(txtPassword.at(i), kLabels.at(i)), txtPassword.at(i));
    }
    btnChange = Button(frame, "btnChange", "&Change");
    btnCancelChange = Button(frame, "btnCancelChange", "Cance&l Change");
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(btnChange);
    buttons->addWidget(btnCancelChange);
    buttons->addStretch();
    form->addRow("", buttons);
    btnChange->setEnabled(false);
    btnCancelChange->setEnabled(false);
    return page;
}

void frmOptions::ConnectControls() {
    constexpr std::array kTopics = {"options.html#paths", "options.html#general", "options.html#times",
                                    "options.html#password"};
    HelpTopic(*this, kTopics.front());
    connect(SSTab1, &QTabWidget::currentChanged, this, [this, kTopics](int tab) {
        HelpTopic(*this, kTopics.at(static_cast<std::size_t>(tab)));
        ChooseDefault();
    });
    txtPath[0]->installEventFilter(this);
    connect(txtPath[0], &QLineEdit::returnPressed, this, &frmOptions::LeaveFolder);
    connect(txtPath[1], &QLineEdit::textChanged, this, [this] { mDatabasePathEdited = true; });
    for (std::size_t i = 0; i < BTNInfo.size(); ++i)
        connect(BTNInfo.at(i), &QPushButton::clicked, this,
                [this, i] { Guarded(mPrompts, [this, i] { BTNInfoClick(i); }); });
    txtAGREEPATH->installEventFilter(this);
    auto* const view = new QShortcut(QKeySequence("Ctrl+Return"), txtAGREEPATH);
    view->setContext(Qt::WidgetShortcut);
    connect(view, &QShortcut::activated, this, [this] { Guarded(mPrompts, [this] { ViewAgreement(); }); });
    connect(txtPassword[0], &QLineEdit::textChanged, this, &frmOptions::OldPasswordTyped);
    connect(btnChange, &QPushButton::clicked, this,
            [this] { Guarded(mPrompts, [this] { ChangePassword(); }); });
    connect(btnCancelChange, &QPushButton::clicked, this, &frmOptions::ClearPasswords);
    connect(cmdOK, &QPushButton::clicked, this, [this] { Guarded(mPrompts, [this] { OK(); }); });
    connect(cmdCancel, &QPushButton::clicked, this, &frmOptions::reject);
}
