// SPDX-License-Identifier: GPL-3.0-or-later
// The main window as the commands of the other folders see it. frmMain implements it; tests give the
// commands a small fake. Widgets stay behind it, so who includes it needs no toolkit.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

class QWidget;

enum class MousePointer { Default = 0, Hourglass = 11 };

class MainForm {
public:
    virtual ~MainForm() = default;

    /// Panel 1 of the status bar, the running commentary; it stays until the next text.
    virtual void StatusText(const std::string& text) = 0;
    /// The progress bar under the toolbar. The maximum stays until it is set again.
    virtual void ProgressMaximum(int maximum) = 0;
    virtual void ProgressValue(int value) = 0;
    virtual void Pointer(MousePointer pointer) = 0;
    /// Owner of what is shown modally; null where there is no window.
    virtual QWidget* OwnerWindow() = 0;

    /// The configuration on display: 0 original, 1 current.
    virtual int ShowConf() const = 0;
    /// Checks the menu items and presses the button of a configuration, as a click on its menu item does.
    virtual void mnuConfig(int index) = 0;

    /// The key of the tree's selected node; raises error 91 where none is selected.
    virtual std::string SelectedNodeKey() const = 0;

    /// The captions of the list's columns, in their order.
    virtual std::vector<std::string> ListColumns() const = 0;
    /// How many rows the list shows.
    virtual std::size_t ListItems() const = 0;
    /// How many more it would show without its filter.
    virtual std::size_t HiddenListItems() const = 0;
    /// The text of the list's row `row`, which is that of its first column.
    virtual std::string ListItemText(std::size_t row) const = 0;
    /// The text of the row's column `column`, from 1: the first is the row's own text.
    virtual std::string ListSubItem(std::size_t row, int column) const = 0;
    /// The selected rows of the list, from its first to its last.
    virtual std::vector<std::size_t> SelectedListItems() const = 0;
    /// The row that bears the list's focus; raises error 91 where there is none.
    virtual std::size_t SelectedListItem() const = 0;
    /// It need not be selected, whatever its name.
    virtual bool IsListItemSelected(std::size_t row) const = 0;
    /// Whether any row of the list is selected.
    virtual bool CheckIfSelected() const = 0;

    /// Opens the database anew where gFirstActivation asks for it, as a window that comes to the front does.
    virtual void Activate() = 0;
    /// The life of the database session; see DatabaseSession.
    virtual bool ConnectSinDatabase(const std::string& path) = 0;
    virtual void OpenSinDatabase() = 0;
    virtual void CloseSinDatabase(bool clearPath) = 0;
    virtual void Relink() = 0;
    virtual void EnableDatabaseCommands() = 0;
    virtual void DisableDatabaseCommands() = 0;

    /// Imports the folder of the inventory files; its failures have their own boxes.
    virtual void mnuQuickImport() = 0;

    /// Empties the tree and the list; the list keeps its columns.
    virtual void ClearTreeAndList() = 0;
    /// Rebuilds the tree and empties the list.
    virtual void mnuViewRefresh() = 0;
    /// Shows the options window until it is closed.
    virtual void mnuViewOptions() = 0;
};
