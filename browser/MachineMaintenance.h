// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that delete machines, remove them with their inventory files, and mark them for the retrieval
// of personal information. Each acts on the machine of the tree's selected node; where that stands for all
// machines, on those selected in the list; and where none is, on every one, those that a filter hides too.
// They see the window as a MainForm alone, and use gConnection, gRecordset and gImportDir. Names come from
// client PCs. One that is no file name, such as "../PC1", has no files: nothing outside of the inventory
// folder is ever touched.
#pragma once

#include <functional>
#include <string>

class MainForm;
class Prompts;

class MachineMaintenance {
public:
    /// Both outlive it.
    MachineMaintenance(MainForm& form, Prompts& prompts) : mForm(form), mPrompts(prompts) {}

    /// Deletes machines from the database. Their inventory files stay, so a later import brings them back.
    /// A category's node stands for its machine.
    void mnuFileDelete();
    /// Deletes machines from the database and their files from the inventory folder. A category's node is
    /// taken for a machine of that name, of which there is none.
    void mnuFileRemoveComp();
    /// With `index` 0 leaves an empty file for each machine, which asks its collector for personal details;
    /// with 1 takes that file away.
    void mnuPopPersonal(int index);

private:
    struct Message;
    struct MarkTexts;

    void Delete();
    void RemoveCompletely();
    void Mark(const MarkTexts& texts);
    void MarkAll(const std::function<void(const std::string&)>& mark);
    void EmptyDatabase();

    /// Tells how many machines a filter keeps out of sight, if any, and whether the user goes on.
    bool MayActOnHidden();
    std::size_t MachinesInList();
    bool IsConfirmed(const Message& question, const std::string& machine = {});
    void Tell(const Message& message, const std::string& machine = {});
    /// Runs `act` for the machines selected in the list; for one that has several rows together, once.
    void ForSelected(const std::function<void(const std::string&)>& act);

    MainForm& mForm;
    Prompts& mPrompts;
};
