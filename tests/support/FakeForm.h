// SPDX-License-Identifier: GPL-3.0-or-later
// A main window without widgets: notes what the commands ask of it, and answers what a test has set. Who
// includes it links mova_core.
#pragma once

#include "core/DatabaseSession.h"
#include "core/MainForm.h"
#include "platform/errors.h"

#include <optional>
#include <string>
#include <vector>

class FakeForm final : public MainForm {
public:
    void StatusText(const std::string& text) override { told += text + "\n"; }
    void ProgressMaximum(int maximum) override { progressMaximum = maximum; }
    void ProgressValue(int value) override { progress.push_back(value); }
    void Pointer(MousePointer pointer) override {
        told += pointer == MousePointer::Hourglass ? "hourglass\n" : "arrow\n";
    }
    QWidget* OwnerWindow() override { return nullptr; }
    int ShowConf() const override { return 1; }
    void mnuConfig(int index) override { told += "config " + std::to_string(index) + "\n"; }
    std::string ListItemText(std::size_t row) const override { return rows.at(row); }
    std::vector<std::size_t> SelectedListItems() const override { return selected; }
    bool CheckIfSelected() const override { return !selected.empty(); }
    void Activate() override {
        if (failure)
            throw RunTimeError(*failure);
        told += "activate\n";
    }
    bool ConnectSinDatabase(const std::string& path) override { return session->ConnectSinDatabase(path); }
    void OpenSinDatabase() override { told += "tree\n"; }
    void CloseSinDatabase(bool clearPath) override { session->CloseSinDatabase(clearPath); }
    void Relink() override { session->Relink(); }
    void EnableDatabaseCommands() override { told += "enable\n"; }
    void DisableDatabaseCommands() override { told += "disable\n"; }
    void ClearTreeAndList() override { told += "clear\n"; }
    void mnuViewRefresh() override {}

    /// For the commands of the database; the test owns it.
    DatabaseSession* session = nullptr;
    /// What the window was told to do, a line each.
    std::string told;
    std::vector<int> progress;
    int progressMaximum = 0;
    /// Raised by Activate.
    std::optional<RunTimeError> failure;
    /// The list: texts of the first column, and which rows are selected.
    std::vector<std::string> rows;
    std::vector<std::size_t> selected;
};
