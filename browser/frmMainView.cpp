// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's view commands: its bars, the list's modes, and the configuration on display.
#include "browser/ListView.h"
#include "browser/frmMain.h"
#include "platform/errors.h"
#include "platform/text.h"

#include <QAction>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolBar>

#include <array>

namespace {

constexpr std::array<const char*, 4> kModeButtons = {"ViewLarge", "ViewSmall", "ViewList", "ViewDetails"};
constexpr std::array<const char*, 2> kConfigButtons = {"ConfID0", "ConfID1"};
constexpr std::string_view kFirstMode = "3";

} // namespace

void frmMain::showEvent(QShowEvent* event) {
    ApplyStoredMode();
    Arrange();
    QMainWindow::showEvent(event);
}

void frmMain::ApplyStoredMode() {
    const std::string stored = Setting("ViewMode", std::string(kFirstMode));
    const bool isMode = stored.size() == 1 && stored[0] >= '0' && stored[0] <= '3';
    ShowMode(static_cast<ListStyle>((isMode ? stored : kFirstMode)[0] - '0'));
}

void frmMain::ShowMode(ListStyle mode) {
    lvListView->View(mode);
    Action(ObjectName("mnuListViewMode", static_cast<int>(mode))).setChecked(true);
    Action(kModeButtons.at(static_cast<std::size_t>(mode))).setChecked(true);
}

void frmMain::mnuListViewMode(int index) {
    ShowMode(static_cast<ListStyle>(index));
    SaveSetting("ViewMode", NumberText(index));
}

void frmMain::mnuViewToolbar() {
    ToggleBar("mnuViewToolbar", "ViewTool", *tbToolBar);
}

void frmMain::mnuViewStatusBar() {
    ToggleBar("mnuViewStatusBar", "ViewStatus", *sbStatusBar);
}

void frmMain::mnuProgress() {
    ToggleBar("mnuProgress", "ViewProg", *pgbLoaded);
}

void frmMain::ToggleBar(const char* item, const char* key, QWidget& bar) {
    QAction& mark = Action(item);
    mark.setChecked(!mark.isChecked());
    bar.setVisible(mark.isChecked());
    Arrange();
    SaveSetting(key, mark.isChecked() ? "1" : "0");
}

void frmMain::mnuViewLineUpIcons() {
    QAction& mark = Action("mnuViewLineUpIcons");
    mark.setChecked(!mark.isChecked());
    lvListView->Arrange(mark.isChecked());
    SaveSetting("ViewLineUp", mark.isChecked() ? "1" : "0");
}

void frmMain::mnuConfig(int index) {
    Guarded("Error#", [&] {
        for (const char* menu : {"mnuConfig", "mnuPopConfig", "mnuPopRConfig"})
            Action(ObjectName(menu, index)).setChecked(true);
        Action(kConfigButtons.at(static_cast<std::size_t>(index))).setChecked(true);
        // The tree is the same in both; this empties the list, which is not.
        if (index != mShowConf)
            mnuViewRefresh();
        mShowConf = CInt(index);
    });
}

void frmMain::mnuViewRefresh() {
    OpenSinDatabase();
}
