// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's menus and toolbar, built from the tables of commands, and their availability.
#include "browser/Commands.h"
#include "browser/Images.h"
#include "browser/frmAbout.h"
#include "browser/frmMain.h"
#include "core/Controls.h"
#include "core/frmOptions.h"
#include "core/frmUsers.h"
#include "platform/application.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

using Controls::Shown;

namespace {

/// The group of the menu's items of which one is marked; made with the first.
QActionGroup& RadioGroup(QMenu& menu) {
    auto* group = menu.findChild<QActionGroup*>();
    return group != nullptr ? *group : *new QActionGroup(&menu);
}

/// "Copy (Ctrl-C)" without the key.
std::string_view TipWithoutKey(std::string_view tip) {
    return tip.substr(0, tip.find(" ("));
}

} // namespace

void frmMain::BuildMenus() {
    std::map<std::string, QMenu*, std::less<>> menus;
    menuBar()->setObjectName("mnuBar");
    menuBar()->setAccessibleName("Menu bar");
    for (const CommandRow& row : MenuCommands())
        AddCommand(row, menus);
    mnuPopup = menus.at("mnuPopup");
    mnuPopupR = menus.at("mnuPopupR");
}

void frmMain::AddCommand(const CommandRow& row, std::map<std::string, QMenu*, std::less<>>& menus) {
    const std::string name = ObjectName(row.name, row.index);
    const bool isMenu = row.kind == CommandKind::Menu || row.kind == CommandKind::PopUp;
    QAction* action = nullptr;
    if (isMenu) {
        auto* const menu = new QMenu(Shown(row.caption), this);
        menu->setObjectName(Shown(name));
        menus[name] = menu;
        action = menu->menuAction();
        if (!row.parent.empty())
            menus.find(row.parent)->second->addMenu(menu);
        else if (row.kind == CommandKind::Menu)
            menuBar()->addMenu(menu);
    } else if (row.kind == CommandKind::Separator) {
        action = menus.find(row.parent)->second->addSeparator();
    } else {
        action = AddItem(row, *menus.find(row.parent)->second);
    }
    action->setObjectName(Shown(name));
    mActions[name] = action;
}

QAction* frmMain::AddItem(const CommandRow& row, QMenu& menu) {
    QAction* const action = menu.addAction(CommandIcon(row.icon), Shown(row.caption));
    action->setShortcut(QKeySequence(Shown(row.shortcut)));
    action->setCheckable(row.kind != CommandKind::Item);
    if (row.kind == CommandKind::Radio)
        RadioGroup(menu).addAction(action);
    connect(action, &QAction::triggered, this, [this, action, &row](bool isChecked) {
        // The handler decides on the mark.
        if (row.kind == CommandKind::Check)
            action->setChecked(!isChecked);
        Run(*action, row.click, row.index);
    });
    return action;
}

void frmMain::BuildToolBar() {
    tbToolBar = new QToolBar(centralWidget());
    tbToolBar->setObjectName("tbToolBar");
    tbToolBar->setAccessibleName("Commands");
    auto* const views = new QActionGroup(tbToolBar);
    auto* const configurations = new QActionGroup(tbToolBar);
    for (const ToolButton& row : ToolButtons()) {
        if (row.key.empty()) {
            tbToolBar->addSeparator();
            continue;
        }
        QAction* const action = tbToolBar->addAction(CommandIcon(row.icon), Shown(TipWithoutKey(row.tip)));
        action->setObjectName(Shown(row.key));
        action->setToolTip(Shown(row.tip));
        action->setCheckable(row.group != ButtonGroup::None);
        if (row.group != ButtonGroup::None)
            action->setActionGroup(row.group == ButtonGroup::Views ? views : configurations);
        tbToolBar->widgetForAction(action)->setObjectName(Shown(row.key));
        connect(action, &QAction::triggered, this,
                [this, action, &row] { Run(*action, row.click, row.index); });
        mActions[std::string(row.key)] = action;
    }
}

void frmMain::Run(const QAction& action, ClickHandler click, int index) {
    // A key that came right behind the selection of a node: the command acts on that node's list, if it may.
    if (mNodeTimer.isActive())
        ShowSelectedNode();
    if (!action.isEnabled())
        return;
    Guarded("Error#", [&] { click(*this, index); });
}

QAction& frmMain::Action(std::string_view name) const {
    return *mActions.find(name)->second;
}

void frmMain::SetEnabled(CommandNames names, bool isEnabled) {
    for (const std::string_view name : names)
        Action(name).setEnabled(isEnabled);
}

void frmMain::EnableDatabaseCommands() {
    SetEnabled(StandingMenus(), true);
    SetEnabled(ClosedDatabaseCommands(), false);
    SetEnabled(OpenDatabaseCommands(), true);
}

void frmMain::DisableDatabaseCommands() {
    SetEnabled(StandingMenus(), true);
    SetEnabled(ClosedDatabaseCommands(), true);
    SetEnabled(OpenDatabaseCommands(), false);
}

void frmMain::FlagPopup(bool restricted, bool machineItems) {
    SetEnabled(NodeCommands(), !restricted);
    SetEnabled(CommonCommands(), true);
    // Last, since it decides on the toolbar's Delete in the end.
    SetEnabled(MachineRowCommands(), machineItems);
}

void frmMain::mnuSelectDatabase() {
    mSession.SelectDatabase();
    ShowHint();
}

void frmMain::mnuNewDatabase() {
    mSession.NewDatabase();
    ShowHint();
}

void frmMain::mnuCloseDatabase() {
    mSession.CloseDatabase();
    ShowHint();
}

bool frmMain::ConnectSinDatabase(const std::string& path) {
    return mSession.ConnectSinDatabase(path);
}

void frmMain::CloseSinDatabase(bool clearPath) {
    mSession.CloseSinDatabase(clearPath);
}

void frmMain::Relink() {
    mSession.Relink();
    ShowHint();
}

void frmMain::Activate() {
    mSession.Activate();
    ShowHint();
}

void frmMain::mnuImport() {
    mImport.mnuImport();
}

void frmMain::mnuQuickImport() {
    mImport.mnuQuickImport();
}

void frmMain::mnuPopRImport() {
    mImport.mnuPopRImport();
}

void frmMain::mnuExport() {
    mListExport.mnuExport();
}

void frmMain::mnuPopFullExport() {
    mMachineDump.mnuPopFullExport();
}

void frmMain::mnuPopTxtlExport() {
    mMachineDump.mnuPopTxtlExport();
}

void frmMain::mnuPing() {
    mPing.mnuPing();
}

void frmMain::mnuPingPrivate() {
    mPing.mnuPingPrivate();
}

void frmMain::mnuBackup() {
    mBackup.mnuBackup();
    ShowHint();
}

void frmMain::mnuRestore() {
    mBackup.mnuRestore();
    ShowHint();
}

void frmMain::mnuCommit() {
    mBaseline.mnuCommit();
}

void frmMain::mnuFileDelete() {
    mMaintenance.mnuFileDelete();
}

void frmMain::mnuFileRemoveComp() {
    mMaintenance.mnuFileRemoveComp();
}

void frmMain::mnuPopPersonal(int index) {
    mMaintenance.mnuPopPersonal(index);
}

void frmMain::mnuViewOptions() {
    try {
        frmOptions options(*this, mSettings, mPrompts, mDesktop);
        options.exec();
    } catch (const RunTimeError& failure) {
        // An inventory folder that has no parent: nothing handles that, so the box of commands must not.
        Application::Fail(failure);
    }
}

void frmMain::mnuUsers() {
    frmUsers users(this, mSettings, mPrompts);
    users.exec();
}

void frmMain::ShowReport(std::string_view menuItem) {
    mReports.ShowReport(menuItem, WithoutAccessKey(Action(menuItem).text().toStdString()));
}

void frmMain::mnuRepUserPCConfig() {
    mReports.mnuRepUserPCConfig();
}

void frmMain::mnuCompare() {
    mReports.mnuCompare();
}

void frmMain::mnuCompareMis() {
    mReports.mnuCompareMis();
}

void frmMain::mnuCustomReport() {
    mReports.mnuCustomReport();
}

void frmMain::mnuFileClose() {
    if (close() && mOnExit)
        mOnExit();
}

void frmMain::mnuHelpAbout() {
    frmAbout about(this);
    about.exec();
}
