// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/MachineMaintenance.h"

#include "core/Controls.h"
#include "core/FileModule.h"
#include "core/Globals.h"
#include "core/LongWork.h"
#include "core/MainForm.h"
#include "core/NodeKeys.h"
#include "platform/InventoryFiles.h"
#include "platform/accesssql.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/prompts.h"
#include "platform/text.h"

#include <array>
#include <optional>
#include <unordered_set>
#include <utility>

struct MachineMaintenance::Message {
    const char* title;
    /// Before and behind the machine's name or number, if it is told; else the whole text.
    const char* before;
    const char* behind = "";

    std::string Text(const std::string& machine) const { return before + machine + behind; }
};

struct MachineMaintenance::MarkTexts {
    bool isMarking;
    Message one;
    Message selected;
    Message allQuestion;
    Message all;
};

namespace {

constexpr const char* kFailure = "Error #";

constexpr const char* kMarker = ".pnf";
constexpr std::array kInventoryFiles = {".ORG", ".INF", ".PNF"};

void DeleteIfThere(const std::string& path) {
    try {
        DeleteFile(path);
    } catch (const RunTimeError& failure) {
        // A collector has taken it away since the folder was listed.
        if (failure.number != Errors::kFileNotFound)
            throw;
    }
}

/// The inventory folder as it stands when a command begins; collectors may change it meanwhile.
class InventoryFolder {
public:
    /// Deletes the machine's file with this extension, however its name is written.
    void Delete(const std::string& machine, const std::string& extension) const {
        if (!IsFileName(machine))
            return;
        for (const std::string& name : mListing.Spellings(machine + extension))
            DeleteIfThere(JoinPath(mFolder, name));
    }

    /// Leaves an empty file in place of whatever the machine has with this extension.
    void CreateEmpty(const std::string& machine, const std::string& extension) const {
        if (!IsFileName(machine))
            return;
        Delete(machine, extension);
        FileModule::CreateEmptyFile(JoinPath(mFolder, machine + extension));
    }

    /// Deletes all files with this extension that can be deleted.
    void DeleteAll(const std::string& extension, LongWork& work) const {
        for (const std::string& name : mListing.WithExtension(extension))
            for (const std::string& spelling : mListing.Spellings(name)) {
                work.Look();
                try {
                    DeleteFile(JoinPath(mFolder, spelling));
                } catch (const RunTimeError&) {
                    // A locked file stays; the database is what was asked about.
                    continue;
                }
            }
    }

private:
    std::string mFolder = FolderOnDisk(gImportDir);
    DirectoryListing mListing{mFolder};
};

void DeleteMachine(const std::string& machine) {
    gConnection->Execute("DELETE * FROM Net WHERE COMPUTERNAME = " + SQLText(machine));
}

} // namespace

void MachineMaintenance::mnuFileDelete() {
    Controls::Guarded(
        mPrompts, [this] { Delete(); }, kFailure);
}

void MachineMaintenance::mnuFileRemoveComp() {
    Controls::Guarded(
        mPrompts, [this] { RemoveCompletely(); }, kFailure);
}

void MachineMaintenance::mnuPopPersonal(int index) {
    static constexpr std::array<MarkTexts, 2> kTexts = {{
        {true,
         {"Machine Marked", "Next time machine '", "' starts up, it will be asked to enter personal detail."},
         {"Marked Ok", "Machines marked successfully !"},
         {"Mark All?", "Are you sure your want to mark all machines to retrieve personal information?"},
         {"All Marked", "All machines are marked for personal information retrieval!"}},
        {false,
         {"Machine Unmarked", "Machine '", "' was successfully Unmarked for personal information retrieval."},
         {"Unmarked Ok", "Machines unmarked successfully !"},
         {"Unmark All?", "Are you sure your want to unmark all machines for personal information retrieval?"},
         {"All Unmarked", "All machines are unmarked for personal information retrieval!"}},
    }};
    Controls::Guarded(
        mPrompts, [&] { Mark(kTexts.at(static_cast<std::size_t>(index))); }, kFailure);
}

void MachineMaintenance::Delete() {
    constexpr Message kOne = {"Delete Selected Machine?", "You are about to DELETE Machine ",
                              " from the database! Continue?"};
    constexpr Message kSelected = {"Delete Selected Machines?",
                                   "You are about to DELETE the selected machines! Continue?"};
    constexpr Message kAll = {"Delete MACHINES!!",
                              "Are you sure you want to DELETE ALL MACHINES from the database?"};
    const std::string machine = NodeKeys::BeforeCategory(mForm.SelectedNodeKey());
    if (!NodeKeys::IsAllMachines(machine)) {
        if (!IsConfirmed(kOne, machine))
            return;
        const LongWork work(mForm);
        DeleteMachine(machine);
    } else if (mForm.CheckIfSelected()) {
        if (!IsConfirmed(kSelected))
            return;
        ForSelected(DeleteMachine);
    } else {
        if (!MayActOnHidden() || !IsConfirmed(kAll))
            return;
        EmptyDatabase();
    }
    mForm.mnuViewRefresh();
}

void MachineMaintenance::RemoveCompletely() {
    constexpr Message kOne = {"Remove Selected Machine Completely?", "You are about to REMOVE Machine ",
                              " Completely! Are you sure you want to continue?"};
    constexpr Message kSelected = {
        "Remove Selected Machines Completely?",
        "You are about to DELETE all the Selected Machines COMPLETELY ! This is not "
        "reversable are you sure you want to continue?"};
    constexpr Message kAll = {
        "Remove MACHINES Completely!",
        "Are you sure you want to REMOVE ALL MACHINES COMPLETELY? This is not reversible!"};
    std::optional<InventoryFolder> files;
    const auto remove = [&files](const std::string& machine) {
        DeleteMachine(machine);
        for (const char* extension : kInventoryFiles)
            files->Delete(machine, extension);
    };
    const std::string machine = NodeKeys::WithoutMain(mForm.SelectedNodeKey());
    if (!NodeKeys::IsAllMachines(machine)) {
        if (!IsConfirmed(kOne, machine))
            return;
        const LongWork work(mForm);
        files.emplace();
        remove(machine);
    } else if (mForm.CheckIfSelected()) {
        if (!IsConfirmed(kSelected))
            return;
        files.emplace();
        ForSelected(remove);
    } else {
        if (!MayActOnHidden() || !IsConfirmed(kAll))
            return;
        EmptyDatabase();
        LongWork work(mForm);
        files.emplace();
        for (const char* extension : kInventoryFiles)
            files->DeleteAll(extension, work);
    }
    mForm.mnuViewRefresh();
}

void MachineMaintenance::Mark(const MarkTexts& texts) {
    if (gImportDir.empty()) {
        if (mPrompts.MsgBox("You haven't specified the INF directory path. Start the Options Dialog?",
                            MsgBoxStyle::kYesNo + MsgBoxStyle::kQuestion,
                            "Start Options") == MsgBoxAnswer::Yes)
            mForm.mnuViewOptions();
        return;
    }
    std::optional<InventoryFolder> files;
    const auto mark = [&](const std::string& machine) {
        if (!texts.isMarking)
            return files->Delete(machine, kMarker);
        try {
            files->CreateEmpty(machine, kMarker);
        } catch (const RunTimeError&) {
            // The list tells which machines are marked; one that can't be must not keep the others from it.
            return;
        }
    };
    const std::string machine = NodeKeys::BeforeCategory(NodeKeys::WithoutMain(mForm.SelectedNodeKey()));
    if (!NodeKeys::IsAllMachines(machine)) {
        files.emplace();
        mark(machine);
        Tell(texts.one, machine);
    } else if (mForm.CheckIfSelected()) {
        files.emplace();
        ForSelected(mark);
        Tell(texts.selected);
    } else {
        if (!MayActOnHidden() ||
            mPrompts.MsgBox(texts.allQuestion.before,
                            MsgBoxStyle::kYesNo + MsgBoxStyle::kQuestion + MsgBoxStyle::kDefaultButton2,
                            texts.allQuestion.title) != MsgBoxAnswer::Yes)
            return;
        files.emplace();
        MarkAll(mark);
        Tell(texts.all);
    }
    mForm.mnuViewRefresh();
}

void MachineMaintenance::MarkAll(const std::function<void(const std::string&)>& mark) {
    LongWork work(mForm);
    gRecordset = std::make_shared<ADODB::Recordset>();
    gRecordset->Open("SELECT * FROM Net", gConnection, ADODB::Cursor::Keyset, ADODB::Lock::ReadOnly);
    const ADODB::Field& name = gRecordset->Fields().Item(std::size_t{0});
    for (; !gRecordset->EndOfFile(); gRecordset->MoveNext()) {
        mark(std::string(name.Text()));
        work.Look();
    }
    gRecordset->Close();
}

void MachineMaintenance::EmptyDatabase() {
    LongWork work(mForm);
    gConnection->EmptyTable("Net", [&work] { work.Look(); });
}

bool MachineMaintenance::MayActOnHidden() {
    if (mForm.HiddenListItems() == 0)
        return true;
    ADODB::Recordset machines;
    machines.Open("SELECT * FROM Net", gConnection);
    const auto all = static_cast<std::size_t>(machines.RecordCount());
    const std::size_t shown = MachinesInList();
    if (shown >= all)
        return true;
    return IsConfirmed({"Machines Out of Sight", "The list is filtered: ",
                        " machines are out of sight. Do you want to go on with all?"},
                       std::to_string(all - shown) + " of " + std::to_string(all));
}

/// A machine may have many rows, and names that differ in case alone are one.
std::size_t MachineMaintenance::MachinesInList() {
    LongWork work(mForm);
    std::unordered_set<std::string> machines;
    std::string last;
    for (std::size_t row = 0; row < mForm.ListItems(); ++row) {
        work.Step();
        std::string machine = mForm.ListItemText(row);
        if (row > 0 && machine == last)
            continue;
        machines.insert(LowerCase(machine));
        last = std::move(machine);
    }
    return machines.size();
}

bool MachineMaintenance::IsConfirmed(const Message& question, const std::string& machine) {
    return mPrompts.MsgBox(question.Text(machine),
                           MsgBoxStyle::kYesNo + MsgBoxStyle::kCritical + MsgBoxStyle::kDefaultButton2,
                           question.title) == MsgBoxAnswer::Yes;
}

void MachineMaintenance::Tell(const Message& message, const std::string& machine) {
    mPrompts.MsgBox(message.Text(machine), MsgBoxStyle::kQuestion, message.title);
}

void MachineMaintenance::ForSelected(const std::function<void(const std::string&)>& act) {
    LongWork work(mForm);
    std::string last;
    for (const std::size_t row : mForm.SelectedListItems()) {
        const std::string machine = mForm.ListItemText(row);
        if (machine != last)
            act(machine);
        last = machine;
        work.Look();
    }
}
