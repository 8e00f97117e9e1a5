// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the main window as data: its menu bar and pop-up menus, its toolbar, and which of them are
// available when. The windows, the enabling and the tests read these tables; a command that is added here is
// on the menu. Names of arrays carry their index: "mnuConfig(0)".
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

class frmMain;

/// What a click runs; `index` is the command's place in its array.
using ClickHandler = void (*)(frmMain& form, int index);

enum class CommandKind : std::uint8_t { Menu, PopUp, Item, Check, Radio, Separator };

struct CommandRow {
    CommandKind kind;
    std::string_view name;
    /// -1 outside of arrays.
    int index;
    std::string_view caption;
    std::string_view shortcut;
    /// The menu that holds it; empty for the menu bar itself and for pop-up menus.
    std::string_view parent;
    std::string_view icon;
    /// Null for menus and separators.
    ClickHandler click;
};

enum class ButtonGroup : std::uint8_t { None, Views, Configurations };

struct ToolButton {
    /// Empty for a separator.
    std::string_view key;
    std::string_view tip;
    std::string_view icon;
    ButtonGroup group;
    int index;
    ClickHandler click;
};

/// In the order of building: a menu stands before what it holds.
std::span<const CommandRow> MenuCommands();
std::span<const ToolButton> ToolButtons();

/// "mnuConfig(0)" or "mnuFile".
std::string ObjectName(std::string_view name, int index);

/// A caption without the marks of access keys.
std::string WithoutAccessKey(std::string_view caption);

using CommandNames = std::span<const std::string_view>;
/// Available while no database is open, and the opposite.
CommandNames ClosedDatabaseCommands();
CommandNames OpenDatabaseCommands();
/// Menus that opening and closing a database leave available.
CommandNames StandingMenus();
/// What a category's node takes away: commands that need one machine or all of them.
CommandNames NodeCommands();
/// Commands that every node allows.
CommandNames CommonCommands();
/// Commands on the machines that are selected in the list.
CommandNames MachineRowCommands();
