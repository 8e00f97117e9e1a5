// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: the navigation tree on the left, the list of what is chosen on the right, menu, toolbar,
// progress bar and status bar around them. Whoever creates it owns it; closing it unloads it (see Unload)
// and hides it, but does not destroy it.
// Its files: frmMain.cpp the frame's life, frmMainCommands.cpp menus and their availability,
// frmMainLayout.cpp the arrangement, frmMainView.cpp the view commands, frmMainTree.cpp the tree and the
// machine overview, frmMainLists.cpp the lists of the categories, frmMainInteraction.cpp what is done to a
// list, frmMainPopup.cpp the pop-up menus, frmMainHelp.cpp help, mail and web.
#pragma once

#include "archive/BaselineRewrite.h"
#include "archive/DatabaseBackup.h"
#include "archive/ListExport.h"
#include "archive/MachineDump.h"
#include "browser/Commands.h"
#include "browser/MachineMaintenance.h"
#include "core/DatabaseSession.h"
#include "core/MainForm.h"
#include "import/ImportCommands.h"
#include "platform/clock.h"
#include "platform/prompts.h"
#include "platform/settings.h"
#include "reports/ReportCommands.h"
#include "tools/PingCommands.h"

#include <QMainWindow>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

class Desktop;
class frmHelp;
class ListView;
enum class ListStyle : std::uint8_t;
class QAction;
class QLabel;
class QMenu;
class QModelIndex;
class QProgressBar;
class QStatusBar;
class QToolBar;
class QTreeView;
class TreeModel;

class frmMain final : public QMainWindow, public MainForm {
    Q_OBJECT
public:
    /// `programFolder` holds the template, the program's own database and the help. The arguments must
    /// outlive the window.
    frmMain(SettingsStore& settings, Prompts& prompts, const Clock& clock, Desktop& desktop,
            report::Printing& printing, EchoProbes& probes, std::string programFolder);
    ~frmMain() override;

    /// Reads the settings and opens the database, while the window is still hidden. To be called once.
    void Load();
    /// Runs at the end of mnuFileClose: ends the process.
    void OnExit(std::function<void()> handler);
    /// Name of the help file beside the program, MOVA.HLP at first; empty where the program has none.
    void HelpFile(std::string name);

    void StatusText(const std::string& text) override;
    void ProgressMaximum(int maximum) override;
    void ProgressValue(int value) override;
    void Pointer(MousePointer pointer) override;
    QWidget* OwnerWindow() override { return this; }
    int ShowConf() const override { return mShowConf; }
    std::string SelectedNodeKey() const override;
    std::vector<std::string> ListColumns() const override;
    std::size_t ListItems() const override;
    std::size_t HiddenListItems() const override;
    std::string ListItemText(std::size_t row) const override;
    std::string ListSubItem(std::size_t row, int column) const override;
    std::vector<std::size_t> SelectedListItems() const override;
    std::size_t SelectedListItem() const override;
    bool IsListItemSelected(std::size_t row) const override;
    bool CheckIfSelected() const override;
    void Activate() override;
    bool ConnectSinDatabase(const std::string& path) override;
    void OpenSinDatabase() override;
    void CloseSinDatabase(bool clearPath) override;
    void Relink() override;
    void EnableDatabaseCommands() override;
    void DisableDatabaseCommands() override;
    void ClearTreeAndList() override;

    /// Brings the split position `x` (twips) within its limits and arranges the panes around it.
    void SizeControls(float& x);
    /// Enables what the selected node allows: `restricted` takes away what needs one machine or all of
    /// them, `machineItems` gives the list's commands on its selected machines.
    void FlagPopup(bool restricted, bool machineItems);
    /// Shows the node's list, unless it is on display already.
    void NodeClick(const QModelIndex& node);
    /// Fills an empty list with the overview of all machines.
    void DisplayUsers(ListView& list);
    /// Goes to the node that the list's current row stands for, if any.
    void lvListView_DblClick();
    /// Sorts the list by the column, from 0, or turns its order round.
    void lvListView_ColumnClick(int column);
    /// Leaves the rows of the list that hold `text`.
    void lvListView_FilterTyped(const QString& text);

    /// The lists of the categories, see CategoryLists.h: each fills an empty list, of all machines or of one,
    /// from configuration `confID`. The two that end in DRVDETIAL belong to the nodes that end in
    /// ?DRVDETAIL. Failures are the caller's to show; the rows before one stay.
    void Get_Main(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_CPU_All(ListView& list, std::int16_t confID);
    void Get_CPU(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_DEV_All(ListView& list, std::int16_t confID);
    void Get_DEV(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_DEVDISP_All(ListView& list, std::int16_t confID);
    void Get_DEVDISP(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_DEVMB_All(ListView& list, std::int16_t confID);
    void Get_DEVMB(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_DEVNET_All(ListView& list, std::int16_t confID);
    void Get_DEVNET(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_DRV_All(ListView& list, std::int16_t confID);
    void Get_DRV(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_DRVDETIAL_All(ListView& list, std::int16_t confID);
    void Get_DRVDETIAL(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_IO_All(ListView& list, std::int16_t confID);
    void Get_IO(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_MSO_All(ListView& list, std::int16_t confID);
    void Get_MSO(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_ODB_All(ListView& list, std::int16_t confID);
    void Get_ODB(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_OS_All(ListView& list, std::int16_t confID);
    void Get_OS(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_PRN_All(ListView& list, std::int16_t confID);
    void Get_PRN(ListView& list, const std::string& machine, std::int16_t confID);
    void Get_UNI_All(ListView& list, std::int16_t confID);
    void Get_UNI(ListView& list, const std::string& machine, std::int16_t confID);

    void mnuSelectDatabase();
    void mnuNewDatabase();
    void mnuCloseDatabase();
    void mnuImport();
    void mnuQuickImport() override;
    void mnuPopRImport();
    void mnuExport();
    void mnuPing();
    void mnuPingPrivate();
    void mnuPopFullExport();
    void mnuPopTxtlExport();
    void mnuBackup();
    void mnuRestore();
    void mnuCommit();
    void mnuFileDelete();
    void mnuFileRemoveComp();
    void mnuPopPersonal(int index);
    void mnuFileClose();
    /// Puts the selected rows, or all where none is, on the clipboard as text with tabs.
    void mnuCopy();
    /// Shows the properties of the database or of the machine, by the selected node; nothing on any other.
    void mnuProperties();
    void mnuViewToolbar();
    void mnuViewStatusBar();
    void mnuProgress();
    void mnuListViewMode(int index);
    void mnuViewLineUpIcons();
    void mnuConfig(int index) override;
    void mnuViewRefresh() override;
    void mnuViewOptions() override;
    void mnuUsers();
    /// The catalogue's report of a menu item, in a window titled by the item's caption.
    void ShowReport(std::string_view menuItem);
    void mnuRepUserPCConfig();
    void mnuCompare();
    void mnuCompareMis();
    void mnuCustomReport();
    void mnuHelpContents();
    void mnuHelpSearch();
    void mnuZulWeb(int index);
    void mnuZulEmail(int index);
    void mnuHelpAbout();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void BuildControls();
    void BuildStatusBar();
    void BuildMenus();
    void BuildToolBar();
    void BuildShortcuts();
    void AddCommand(const CommandRow& row, std::map<std::string, QMenu*, std::less<>>& menus);
    QAction* AddItem(const CommandRow& row, QMenu& menu);
    /// Runs the click of `action`, unless the list of a node just selected disables it.
    void Run(const QAction& action, ClickHandler click, int index);
    /// The help window, made if need be; null after a box, where the program has no help.
    frmHelp* OpenHelp();
    void ShowHelpTopic(const std::string& page);
    QAction& Action(std::string_view name) const;
    void SetEnabled(CommandNames names, bool isEnabled);

    void LoadSettings();
    void RestorePosition();
    void Unload();
    std::string Setting(const std::string& key, const std::string& fallback) const;
    void SaveSetting(const std::string& key, const std::string& text);
    /// Runs `work`; a failure is shown in a box with the title `title` and the error's number.
    void Guarded(const std::string& title, const std::function<void()>& work);

    void Arrange();
    float FirstSplit() const;
    void FitSplit();
    void MoveSplit(int steps);
    bool DragSplitter(const QEvent& event);
    void ShowClock();
    void ApplyStoredMode();
    void ShowMode(ListStyle mode);
    void ToggleBar(const char* item, const char* key, QWidget& bar);

    void BuildTree();
    void ReadMachines();
    void ShowSelectedNode();
    void ShowNode(const QModelIndex& node);
    /// Whether work is under way that a click or the window's closing would disturb.
    bool IsBusy() const;
    void ShowCategory(const std::string& key);
    void TellUnknownNode();
    void ListUsers(ListView& list);
    void ShowHint();
    QModelIndex SelectedNode() const;
    void ShowTreePopup(const QPoint& position);
    void ShowListPopup(const QPoint& position);

    SettingsStore& mSettings;
    Prompts& mPrompts;
    const Clock& mClock;
    Desktop& mDesktop;
    std::string mProgramFolder;
    std::string mHelpFile = "MOVA.HLP";
    DatabaseSession mSession;
    ImportCommands mImport;
    ListExport mListExport;
    MachineDump mMachineDump;
    DatabaseBackup mBackup;
    BaselineRewrite mBaseline;
    MachineMaintenance mMaintenance;
    ReportCommands mReports;
    PingCommands mPing;
    std::function<void()> mOnExit;
    bool mIsLoaded = true;
    bool mHasHourglass = false;

    bool mSplitterMoving = false;
    std::int16_t mShowConf = 1;
    std::string mLastNodeKey;
    /// Left edges of imgSplitter and picSplitter, twips.
    float mSplit = 0;
    float mDragged = 0;
    /// The split that a new window has in the font in use.
    float mFirstSplit = 0;

    QToolBar* tbToolBar = nullptr;
    QProgressBar* pgbLoaded = nullptr;
    QTreeView* tvTreeView = nullptr;
    ListView* lvListView = nullptr;
    QWidget* imgSplitter = nullptr;
    QWidget* picSplitter = nullptr;
    QStatusBar* sbStatusBar = nullptr;
    QLabel* mStatusPanel = nullptr;
    QLabel* mDatePanel = nullptr;
    QLabel* mTimePanel = nullptr;
    QMenu* mnuPopup = nullptr;
    QMenu* mnuPopupR = nullptr;
    TreeModel* mTree = nullptr;
    /// Menu items, menus and toolbar buttons by object name.
    std::map<std::string, QAction*, std::less<>> mActions;
    QTimer mClockTimer;
    /// Runs the click of a node after the event that selected it.
    QTimer mNodeTimer;
};
