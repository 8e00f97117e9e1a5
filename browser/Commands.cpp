// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/Commands.h"

#include "browser/frmMain.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace {

using enum CommandKind;

/// A member of frmMain as a click handler, given the index where it takes one.
template <auto Member>
void Click(frmMain& form, int index) {
    if constexpr (std::is_invocable_v<decltype(Member), frmMain&, int>)
        (form.*Member)(index);
    else
        (form.*Member)();
}

/// A literal as an argument of a template.
template <std::size_t Size>
struct Name {
    // NOLINTNEXTLINE(google-explicit-constructor): literals are to be taken as they stand
    consteval Name(const char (&literal)[Size]) { std::copy_n(literal, Size, text.begin()); }
    std::array<char, Size> text{};
};

/// Shows the catalogue's report of the menu item.
template <Name MenuItem>
void Report(frmMain& form, int /*index*/) {
    form.ShowReport(MenuItem.text.data());
}

/// mnuPopPersonal with an index that is not that of the item.
template <int Index>
void Personal(frmMain& form, int /*index*/) {
    form.mnuPopPersonal(Index);
}

/// The toolbar's Copy does nothing; copying is reached by the menus.
void Nothing(frmMain& /*form*/, int /*index*/) {}

// clang-format off
constexpr auto kMenuCommands = std::to_array<CommandRow>({
    {Menu, "mnuFile", -1, "&File", "", "", "", nullptr},
    {Item, "mnuSelectDatabase", -1, "&Select Database", "", "mnuFile", "document-open", Click<&frmMain::mnuSelectDatabase>},
    {Item, "mnuNewDatabase", -1, "Create a &New Database", "", "mnuFile", "document-new", Click<&frmMain::mnuNewDatabase>},
    {Item, "mnuCloseDatabase", -1, "&Close Database", "", "mnuFile", "document-close", Click<&frmMain::mnuCloseDatabase>},
    {Separator, "mnuFileBar3", -1, "", "", "mnuFile", "", nullptr},
    {Item, "mnuImport", -1, "&Import", "Ctrl+I", "mnuFile", "import", Click<&frmMain::mnuImport>},
    {Item, "mnuQuickImport", -1, "&Quick Import", "F12", "mnuFile", "", Click<&frmMain::mnuQuickImport>},
    {Item, "mnuExport", -1, "&Export", "Ctrl+E", "mnuFile", "document-export", Click<&frmMain::mnuExport>},
    {Separator, "mnuFileBar5", -1, "", "", "mnuFile", "", nullptr},
    {Menu, "mnuPreferences", -1, "&Preferences", "", "mnuFile", "", nullptr},
    {Item, "mnuViewOptions", -1, "&Options", "Ctrl+P", "mnuPreferences", "preferences", Click<&frmMain::mnuViewOptions>},
    {Item, "mnuUsers", -1, "Admin Users", "Ctrl+A", "mnuPreferences", "users", Click<&frmMain::mnuUsers>},
    {Menu, "mnuMBackup", -1, "Backup", "", "mnuFile", "", nullptr},
    {Item, "mnuBackup", -1, "Backup Database", "Ctrl+B", "mnuMBackup", "backup", Click<&frmMain::mnuBackup>},
    {Item, "mnuRestore", -1, "Restore Database", "Ctrl+R", "mnuMBackup", "restore", Click<&frmMain::mnuRestore>},
    {Separator, "mnuFileBar5a", -1, "", "", "mnuFile", "", nullptr},
    {Item, "mnuFileClose", -1, "E&xit", "Ctrl+X", "mnuFile", "application-exit", Click<&frmMain::mnuFileClose>},

    {Menu, "mnuEdit", -1, "&Edit", "", "", "", nullptr},
    {Item, "mnuCopy", -1, "Copy", "Ctrl+C", "mnuEdit", "edit-copy", Click<&frmMain::mnuCopy>},
    {Item, "mnuFileDelete", -1, "Delete", "Del", "mnuEdit", "edit-delete", Click<&frmMain::mnuFileDelete>},
    {Item, "mnuFileRemoveComp", -1, "Remove Completely", "Shift+Del", "mnuEdit", "remove", Click<&frmMain::mnuFileRemoveComp>},
    {Separator, "mnuEditBar2aa", -1, "", "", "mnuEdit", "", nullptr},
    {Item, "mnuProperties", -1, "Properties", "F11", "mnuEdit", "properties", Click<&frmMain::mnuProperties>},

    {Menu, "mnuView", -1, "&View", "", "", "", nullptr},
    {Menu, "mnuTools", -1, "&Tools", "", "mnuView", "", nullptr},
    {Item, "mnuPing", -1, "Ping All (TCP/IP Only)", "", "mnuTools", "ping", Click<&frmMain::mnuPing>},
    {Separator, "mnuSplitToolsSub", -1, "", "", "mnuTools", "", nullptr},
    {Item, "mnuCommit", -1, "Update Original Configurations", "", "mnuTools", "commit", Click<&frmMain::mnuCommit>},
    {Separator, "mnuSplitTools", -1, "", "", "mnuView", "", nullptr},
    {Check, "mnuViewToolbar", -1, "&Toolbar", "", "mnuView", "", Click<&frmMain::mnuViewToolbar>},
    {Check, "mnuViewStatusBar", -1, "Status &Bar", "", "mnuView", "", Click<&frmMain::mnuViewStatusBar>},
    {Check, "mnuProgress", -1, "&Progress Bar", "", "mnuView", "", Click<&frmMain::mnuProgress>},
    {Separator, "mnuViewBar2", -1, "", "", "mnuView", "", nullptr},
    {Radio, "mnuListViewMode", 0, "Lar&ge Icons", "F6", "mnuView", "", Click<&frmMain::mnuListViewMode>},
    {Radio, "mnuListViewMode", 1, "S&mall Icons", "F7", "mnuView", "", Click<&frmMain::mnuListViewMode>},
    {Radio, "mnuListViewMode", 2, "&List", "F8", "mnuView", "", Click<&frmMain::mnuListViewMode>},
    {Radio, "mnuListViewMode", 3, "&Details", "F9", "mnuView", "", Click<&frmMain::mnuListViewMode>},
    {Separator, "mnuViewBar3", -1, "", "", "mnuView", "", nullptr},
    {Check, "mnuViewLineUpIcons", -1, "Li&ne Up Icons", "", "mnuView", "", Click<&frmMain::mnuViewLineUpIcons>},
    {Separator, "mnuViewBar4a", -1, "", "", "mnuView", "", nullptr},
    {Menu, "mnuShow", -1, "&Show", "", "mnuView", "", nullptr},
    {Radio, "mnuConfig", 0, "Original Configuration", "Ctrl+O", "mnuShow", "", Click<&frmMain::mnuConfig>},
    {Radio, "mnuConfig", 1, "Current Configuration", "Ctrl+U", "mnuShow", "", Click<&frmMain::mnuConfig>},
    {Separator, "mnuViewBar4", -1, "", "", "mnuView", "", nullptr},
    {Item, "mnuViewRefresh", -1, "&Refresh", "F5", "mnuView", "view-refresh", Click<&frmMain::mnuViewRefresh>},

    {Menu, "MNUReport", -1, "&Report", "", "", "", nullptr},
    {Menu, "mnuRepUser", -1, "User Reports", "", "MNUReport", "", nullptr},
    {Item, "mnuRepBasicUser", -1, "Basic User Info", "", "mnuRepUser", "", Report<"mnuRepBasicUser">},
    {Item, "mnuRepUserDetailed", -1, "Detailed User Info", "", "mnuRepUser", "", Report<"mnuRepUserDetailed">},
    {Item, "mnuRepUserLogon", -1, "User Logon", "", "mnuRepUser", "", Report<"mnuRepUserLogon">},
    {Item, "mnuRepUserPCConfig", -1, "User PC Configuration", "", "mnuRepUser", "", Click<&frmMain::mnuRepUserPCConfig>},
    {Menu, "mnuRepHardware", -1, "Hardware Reports", "", "MNUReport", "", nullptr},
    {Item, "mnuRepRAM", -1, "Random Access Memory (RAM)", "", "mnuRepHardware", "", Report<"mnuRepRAM">},
    {Item, "mnuRepFixedDrive", -1, "Fixed Drive", "", "mnuRepHardware", "", Report<"mnuRepFixedDrive">},
    {Item, "mnuRepCPU", -1, "Central Processing Unit (CPU)", "", "mnuRepHardware", "", Report<"mnuRepCPU">},
    {Menu, "mnuRepSoftware", -1, "Software Reports", "", "MNUReport", "", nullptr},
    {Item, "mnuRepOffice", -1, "Microsoft Office", "", "mnuRepSoftware", "", Report<"mnuRepOffice">},
    {Item, "mnuRepOS", -1, "Operating System", "", "mnuRepSoftware", "", Report<"mnuRepOS">},
    {Item, "mnuRepUninstall", -1, "Installed Software", "", "mnuRepSoftware", "", Report<"mnuRepUninstall">},
    {Item, "mnuRepODBC", -1, "ODBC Drivers", "", "mnuRepSoftware", "", Report<"mnuRepODBC">},
    {Menu, "mnuRepFault", -1, "Fault Reports", "", "MNUReport", "", nullptr},
    {Item, "mnuRepDeviceConf", -1, "Device Conflicts", "", "mnuRepFault", "", Report<"mnuRepDeviceConf">},
    {Item, "mnuCompare", -1, "Comparison (all)", "", "mnuRepFault", "", Click<&frmMain::mnuCompare>},
    {Item, "mnuCompareMis", -1, "Comparison (mismatches)", "", "mnuRepFault", "", Click<&frmMain::mnuCompareMis>},
    {Menu, "mnuRepStats", -1, "Chart Reports", "", "MNUReport", "", nullptr},
    {Item, "mnuRepUserAgainsOS", -1, "Proportional OS Graph", "", "mnuRepStats", "", Report<"mnuRepUserAgainsOS">},
    {Menu, "mnuRepNetwork", -1, "Network Reports", "", "MNUReport", "", nullptr},
    {Item, "mnuRepNetPrinters", -1, "Mapped Printers", "", "mnuRepNetwork", "", Report<"mnuRepNetPrinters">},
    {Item, "mnuRepNetDrives", -1, "Mapped Drives", "", "mnuRepNetwork", "", Report<"mnuRepNetDrives">},
    {Item, "mnuRepNetProtocol", -1, "Network Protocol", "", "mnuRepNetwork", "", Report<"mnuRepNetProtocol">},
    {Separator, "mnuSplit10", -1, "", "", "MNUReport", "", nullptr},
    {Item, "mnuCustomReport", -1, "Custom Reports", "", "MNUReport", "report", Click<&frmMain::mnuCustomReport>},

    {Menu, "mnuHelp", -1, "&Help", "", "", "", nullptr},
    {Item, "mnuHelpContents", -1, "&Contents", "", "mnuHelp", "help-contents", Click<&frmMain::mnuHelpContents>},
    {Item, "mnuHelpSearch", -1, "&Search For Help On...", "", "mnuHelp", "help-search", Click<&frmMain::mnuHelpSearch>},
    {Separator, "mnuHelpBar1", -1, "", "", "mnuHelp", "", nullptr},
    {Menu, "mnuZulWebMenu", -1, "Orvane on the web", "", "mnuHelp", "", nullptr},
    {Item, "mnuZulWeb", 0, "Orvane Home Page", "", "mnuZulWebMenu", "web", Click<&frmMain::mnuZulWeb>},
    {Separator, "mnuSplitHelp2", -1, "", "", "mnuZulWebMenu", "", nullptr},
    {Item, "mnuZulEmail", 0, "Email Orvane Sales (United Kingdom)", "", "mnuZulWebMenu", "mail", Click<&frmMain::mnuZulEmail>},
    {Item, "mnuZulEmail", 1, "Email Orvane Support (United Kingdom)", "", "mnuZulWebMenu", "mail", Click<&frmMain::mnuZulEmail>},
    {Item, "mnuZulEmail", 2, "Email Orvane Sales (South Africa)", "", "mnuZulWebMenu", "mail", Click<&frmMain::mnuZulEmail>},
    {Item, "mnuZulEmail", 3, "Email Orvane Support (South Africa)", "", "mnuZulWebMenu", "mail", Click<&frmMain::mnuZulEmail>},
    {Separator, "mnuSplitHelp1", -1, "", "", "mnuHelp", "", nullptr},
    {Item, "mnuHelpAbout", -1, "&About Mova Pro Admin...", "", "mnuHelp", "help-about", Click<&frmMain::mnuHelpAbout>},

    {PopUp, "mnuPopup", -1, "Popup", "", "", "", nullptr},
    {Item, "mnuPopPersonal", 0, "Mark to Retrieve Personal Info", "", "mnuPopup", "", Click<&frmMain::mnuPopPersonal>},
    {Item, "mnuPopPersonal", 1, "UnMark to Retrieve Personal Info", "", "mnuPopup", "", Click<&frmMain::mnuPopPersonal>},
    {Separator, "mnuFileBarPop1a", -1, "", "", "mnuPopup", "", nullptr},
    {Item, "mnuPopFullExport", -1, "Full Export", "", "mnuPopup", "document-export", Click<&frmMain::mnuPopFullExport>},
    {Item, "mnuPopTxtlExport", -1, "Export To Text", "", "mnuPopup", "", Click<&frmMain::mnuPopTxtlExport>},
    {Separator, "mnuFileBarPop1", -1, "", "", "mnuPopup", "", nullptr},
    {Item, "mnuPopRefresh", -1, "Refresh", "", "mnuPopup", "view-refresh", Click<&frmMain::mnuViewRefresh>},
    {Menu, "mnuPopShow", -1, "Show", "", "mnuPopup", "", nullptr},
    {Radio, "mnuPopConfig", 0, "Original Configuration", "", "mnuPopShow", "", Click<&frmMain::mnuConfig>},
    {Radio, "mnuPopConfig", 1, "Current Configuration", "", "mnuPopShow", "", Click<&frmMain::mnuConfig>},
    {Separator, "mnuFileBarPop2", -1, "", "", "mnuPopup", "", nullptr},
    {Item, "mnuPopCopy", -1, "Copy", "", "mnuPopup", "edit-copy", Click<&frmMain::mnuCopy>},
    {Item, "mnuPopDelete", -1, "Delete", "", "mnuPopup", "edit-delete", Click<&frmMain::mnuFileDelete>},
    {Separator, "mnuFileBarPop3", -1, "", "", "mnuPopup", "", nullptr},
    {Item, "mnuRemove", -1, "Remove Completely", "", "mnuPopup", "remove", Click<&frmMain::mnuFileRemoveComp>},
    {Separator, "mnuFileBarPop4", -1, "", "", "mnuPopup", "", nullptr},
    {Item, "mnuPopProperties", -1, "Properties", "", "mnuPopup", "properties", Click<&frmMain::mnuProperties>},

    {PopUp, "mnuPopupR", -1, "PopupR", "", "", "", nullptr},
    {Item, "mnuPingPrivate", -1, "Ping", "", "mnuPopupR", "ping", Click<&frmMain::mnuPingPrivate>},
    {Separator, "mnuPingMarker", -1, "", "", "mnuPopupR", "", nullptr},
    {Item, "mnuPopRPersonal", -1, "Mark to Retrieve Personal Info", "", "mnuPopupR", "", Personal<0>},
    {Item, "mnuPopRUnPersonal", -1, "UnMark to Retrieve Personal Info", "", "mnuPopupR", "", Personal<1>},
    {Separator, "mnuPopRMarkers1", -1, "", "", "mnuPopupR", "", nullptr},
    {Item, "mnuPopRImport", -1, "Import", "", "mnuPopupR", "import", Click<&frmMain::mnuPopRImport>},
    {Item, "mnuPopRExport", -1, "Export", "", "mnuPopupR", "document-export", Click<&frmMain::mnuExport>},
    {Separator, "mnuPopRMarkers1a", -1, "", "", "mnuPopupR", "", nullptr},
    {Item, "mnuPopRRefresh", -1, "Refresh", "", "mnuPopupR", "view-refresh", Click<&frmMain::mnuViewRefresh>},
    {Menu, "mnuPopRShow", -1, "Show", "", "mnuPopupR", "", nullptr},
    {Radio, "mnuPopRConfig", 0, "Original Configuration", "", "mnuPopRShow", "", Click<&frmMain::mnuConfig>},
    {Radio, "mnuPopRConfig", 1, "Current Configuration", "", "mnuPopRShow", "", Click<&frmMain::mnuConfig>},
    {Separator, "mnuFileBarPopR1", -1, "", "", "mnuPopupR", "", nullptr},
    {Item, "mnuPopRCopy", -1, "Copy", "", "mnuPopupR", "edit-copy", Click<&frmMain::mnuCopy>},
    {Item, "mnuPopRDelete", -1, "Delete", "", "mnuPopupR", "edit-delete", Click<&frmMain::mnuFileDelete>},
    {Separator, "mnuFileBarPopR2", -1, "", "", "mnuPopupR", "", nullptr},
    {Item, "mnuPopRRemove", -1, "Remove Completely", "", "mnuPopupR", "remove", Click<&frmMain::mnuFileRemoveComp>},
});

constexpr auto kToolButtons = std::to_array<ToolButton>({
    {"", "", "", ButtonGroup::None, -1, nullptr},
    {"Copy", "Copy (Ctrl-C)", "edit-copy", ButtonGroup::None, -1, Nothing},
    {"Delete", "Delete (Del)", "edit-delete", ButtonGroup::None, -1, Click<&frmMain::mnuFileDelete>},
    {"", "", "", ButtonGroup::None, -1, nullptr},
    {"ViewLarge", "Large Icon View (F6)", "view-large", ButtonGroup::Views, 0, Click<&frmMain::mnuListViewMode>},
    {"ViewSmall", "Small Icon View (F7)", "view-small", ButtonGroup::Views, 1, Click<&frmMain::mnuListViewMode>},
    {"ViewList", "List View (F8)", "view-list", ButtonGroup::Views, 2, Click<&frmMain::mnuListViewMode>},
    {"ViewDetails", "Details View (F9)", "view-details", ButtonGroup::Views, 3, Click<&frmMain::mnuListViewMode>},
    {"", "", "", ButtonGroup::None, -1, nullptr},
    {"Import", "Quick Import (F12)", "import", ButtonGroup::None, -1, Click<&frmMain::mnuQuickImport>},
    {"", "", "", ButtonGroup::None, -1, nullptr},
    {"ConfID0", "Show Original Configuration (Ctrl-O)", "config-original", ButtonGroup::Configurations, 0, Click<&frmMain::mnuConfig>},
    {"ConfID1", "Show Current Configuration (Ctrl-U)", "config-current", ButtonGroup::Configurations, 1, Click<&frmMain::mnuConfig>},
    {"", "", "", ButtonGroup::None, -1, nullptr},
    {"Props", "Properties (F11)", "properties", ButtonGroup::None, -1, Click<&frmMain::mnuProperties>},
});
// clang-format on

constexpr auto kClosedDatabase = std::to_array<std::string_view>({"mnuSelectDatabase", "mnuNewDatabase"});

constexpr auto kOpenDatabase = std::to_array<std::string_view>({"mnuCloseDatabase",
                                                                "mnuImport",
                                                                "mnuQuickImport",
                                                                "mnuExport",
                                                                "mnuEdit",
                                                                "mnuShow",
                                                                "mnuViewRefresh",
                                                                "MNUReport",
                                                                "mnuBackup",
                                                                "mnuTools",
                                                                "Import",
                                                                "ConfID0",
                                                                "ConfID1",
                                                                "Copy",
                                                                "Delete",
                                                                "mnuPopRRemove",
                                                                "mnuPopRDelete",
                                                                "mnuPopRCopy",
                                                                "mnuPopRShow",
                                                                "mnuPopRRefresh",
                                                                "mnuPopRExport",
                                                                "mnuPopRImport",
                                                                "mnuPopRUnPersonal",
                                                                "mnuPopRPersonal",
                                                                "mnuRemove",
                                                                "mnuPopDelete",
                                                                "mnuPopCopy",
                                                                "mnuPopShow",
                                                                "mnuPopRefresh",
                                                                "mnuPopPersonal(0)",
                                                                "mnuPopPersonal(1)",
                                                                "mnuPopProperties",
                                                                "mnuPopFullExport",
                                                                "mnuPopTxtlExport"});

constexpr auto kStandingMenus = std::to_array<std::string_view>({"mnuFile", "mnuView", "mnuHelp"});

constexpr auto kNodeCommands =
    std::to_array<std::string_view>({"mnuPopPersonal(0)", "mnuPopPersonal(1)", "mnuPopFullExport",
                                     "mnuExport", "mnuPopDelete", "mnuFileDelete", "Delete", "mnuRemove",
                                     "mnuFileRemoveComp", "mnuPopProperties", "mnuProperties", "Props"});

constexpr auto kCommonCommands =
    std::to_array<std::string_view>({"mnuPopRefresh", "mnuPopShow", "mnuPopCopy", "Copy", "mnuCopy"});

constexpr auto kMachineRowCommands = std::to_array<std::string_view>(
    {"mnuPopRPersonal", "mnuPopRUnPersonal", "mnuPopRImport", "mnuPopRDelete", "Delete", "mnuPopRRemove"});

} // namespace

std::span<const CommandRow> MenuCommands() {
    return kMenuCommands;
}

std::span<const ToolButton> ToolButtons() {
    return kToolButtons;
}

std::string ObjectName(std::string_view name, int index) {
    std::string text(name);
    if (index >= 0)
        text += "(" + std::to_string(index) + ")";
    return text;
}

std::string WithoutAccessKey(std::string_view caption) {
    std::string text(caption);
    std::erase(text, '&');
    return text;
}

CommandNames ClosedDatabaseCommands() {
    return kClosedDatabase;
}

CommandNames OpenDatabaseCommands() {
    return kOpenDatabase;
}

CommandNames StandingMenus() {
    return kStandingMenus;
}

CommandNames NodeCommands() {
    return kNodeCommands;
}

CommandNames CommonCommands() {
    return kCommonCommands;
}

CommandNames MachineRowCommands() {
    return kMachineRowCommands;
}
