// SPDX-License-Identifier: GPL-3.0-or-later
// A main window without widgets: notes what the commands ask of it, and answers what a test has set. Who
// includes it links mova_core.
#pragma once

#include "core/DatabaseSession.h"
#include "core/MainForm.h"
#include "platform/errors.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class FakeForm : public MainForm {
public:
    void StatusText(const std::string& text) override { told += text + "\n"; }
    void ProgressMaximum(int maximum) override { progressMaximum = maximum; }
    void ProgressValue(int value) override { progress.push_back(value); }
    void Pointer(MousePointer pointer) override {
        told += pointer == MousePointer::Hourglass ? "hourglass\n" : "arrow\n";
    }
    QWidget* OwnerWindow() override { return nullptr; }
    int ShowConf() const override { return configuration; }
    void mnuConfig(int index) override { told += "config " + std::to_string(index) + "\n"; }
    std::string SelectedNodeKey() const override {
        if (!node)
            Raise(Errors::kNoObject);
        return *node;
    }
    std::vector<std::string> ListColumns() const override { return columns; }
    std::size_t ListItems() const override { return rows.size(); }
    std::size_t HiddenListItems() const override { return hidden; }
    std::string ListItemText(std::size_t row) const override { return rows.at(row); }
    std::string ListSubItem(std::size_t row, int column) const override {
        return subItems.at(row).at(static_cast<std::size_t>(column) - 1);
    }
    std::vector<std::size_t> SelectedListItems() const override { return selected; }
    std::size_t SelectedListItem() const override {
        if (!focusedItem)
            Raise(Errors::kNoObject);
        return *focusedItem;
    }
    bool IsListItemSelected(std::size_t row) const override {
        return std::find(selected.begin(), selected.end(), row) != selected.end();
    }
    bool CheckIfSelected() const override { return !selected.empty(); }
    void Activate() override {
        if (failure)
            throw RunTimeError(*failure);
        told += "activate\n";
    }
    bool ConnectSinDatabase(const std::string& path) override { return session->ConnectSinDatabase(path); }
    void OpenSinDatabase() override { told += "tree\n"; }
    void CloseSinDatabase(bool clearPath) override { session->CloseSinDatabase(clearPath); }
    void Relink() override {
        if (session != nullptr)
            session->Relink();
        else
            told += "relink\n";
    }
    void EnableDatabaseCommands() override { told += "enable\n"; }
    void DisableDatabaseCommands() override { told += "disable\n"; }
    void mnuQuickImport() override {
        told += "quick import\n";
        if (quickImport)
            quickImport();
    }
    void ClearTreeAndList() override { told += "clear\n"; }
    void mnuViewRefresh() override { told += "refresh\n"; }
    void mnuViewOptions() override { told += "options\n"; }

    /// For the commands of the database; the test owns it. Without one, to re-link is only noted.
    DatabaseSession* session = nullptr;
    /// What the window was told to do, a line each.
    std::string told;
    std::vector<int> progress;
    int progressMaximum = 0;
    /// Raised by Activate.
    std::optional<RunTimeError> failure;
    /// What mnuQuickImport does.
    std::function<void()> quickImport;
    /// The configuration on display.
    int configuration = 1;
    /// The key of the tree's selected node; nothing where none is selected.
    std::optional<std::string> node;
    /// The list: captions, texts of the first column and of the others, and which rows are selected.
    std::vector<std::string> columns;
    std::vector<std::string> rows;
    std::vector<std::vector<std::string>> subItems;
    std::vector<std::size_t> selected;
    std::size_t hidden = 0;
    /// The row that bears the list's focus.
    std::optional<std::size_t> focusedItem;
};
