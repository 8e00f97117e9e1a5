// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's tree: its building from the table of machines, the click on a node, and the overview of
// all machines.
#include "browser/Categories.h"
#include "browser/ListView.h"
#include "browser/MachineAge.h"
#include "browser/TreeModel.h"
#include "browser/frmMain.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/LongWork.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/text.h"

#include <QItemSelectionModel>
#include <QTreeView>

#include <optional>
#include <vector>

namespace {

constexpr const char* kAllMachines = "SELECT * FROM Net";
constexpr std::string_view kNotAvailable = "n/a";
/// Positions of the columns in the table of machines.
constexpr std::size_t kName = 0;
constexpr std::size_t kLogonDate = 2;
constexpr std::size_t kLogonTime = 3;

void OpenMachines() {
    gRecordset = std::make_shared<ADODB::Recordset>();
    gRecordset->Open(kAllMachines, gConnection);
}

/// A machine without a logon date counts as one of today, and leaves the date of the last import unknown.
int AgeOf(const ADODB::Field& logonDate, const AgeScale& ages) {
    if (!logonDate.IsNull())
        return ages.Age(logonDate.Text());
    gLastImportDate = "N/A";
    return 1;
}

std::string_view TextOrNotAvailable(const ADODB::Field& field) {
    return field.IsNull() ? kNotAvailable : field.Text();
}

/// What the machine's file of personal details tells: the console asks with an empty one, which the
/// collector fills.
std::string_view RetrieveState(const std::string& folder, const DirectoryListing& files,
                               const std::string& machine) {
    const std::optional<std::string> file = files.Find(machine + ".PNF");
    if (!file)
        return "";
    try {
        return FileLength(JoinPath(folder, *file)) == 0 ? "Marked" : "Retrieved";
    } catch (const RunTimeError&) {
        // A collector has taken it away since the folder was listed.
        return "";
    }
}

} // namespace

void frmMain::OpenSinDatabase() {
    try {
        BuildTree();
    } catch (const RunTimeError& error) {
        StatusText("Error opening database...");
        FormRegistry::Instance().Unload("frmSplash");
        mPrompts.MsgBox(error.description, MsgBoxStyle::kCritical, "Error# " + NumberText(error.number));
    }
    ShowHint();
}

void frmMain::BuildTree() {
    mLastNodeKey.clear();
    OpenMachines();
    // A recordset reads when it is asked: what fails must fail before the tree is cleared.
    const int machines = gRecordset->EndOfFile() ? 0 : gRecordset->RecordCount();
    ClearTreeAndList();
    mTree->ShowRoot(FormatDate(mClock.Now(), "dd mmm yyyy"));
    tvTreeView->setRootIsDecorated(true);
    tvTreeView->expand(mTree->Root());
    gMachineCount = machines;
    if (gMachineCount < 1)
        return;
    ProgressMaximum(gMachineCount);
    ReadMachines();
    tvTreeView->expand(mTree->Root());
    ProgressValue(0);
    gRecordset->Close();
    gRecordset.reset();
    StatusText("Database Open.");
}

void frmMain::ReadMachines() {
    LongWork work(*this);
    const AgeScale ages(mClock.Now());
    std::vector<Machine> machines;
    machines.reserve(static_cast<std::size_t>(gMachineCount));
    const ADODB::Field& name = gRecordset->Fields().Item("COMPUTERNAME");
    const ADODB::Field& logonDate = gRecordset->Fields().Item("Logon Date");
    try {
        for (; !gRecordset->EndOfFile(); gRecordset->MoveNext()) {
            // The bar stands full from the first row on.
            ProgressValue(gMachineCount);
            machines.push_back({std::string(name.Text()), AgeOf(logonDate, ages)});
            work.Step();
        }
    } catch (const RunTimeError&) {
        mTree->ShowMachines(std::move(machines));
        throw;
    }
    mTree->ShowMachines(std::move(machines));
}

void frmMain::ClearTreeAndList() {
    mTree->Clear();
    lvListView->ClearItems();
}

bool frmMain::IsBusy() const {
    return LongWork::IsRunning() || mHasHourglass;
}

void frmMain::ShowSelectedNode() {
    // An import that has begun since the selection shows the tree anew when it ends.
    if (!IsBusy())
        NodeClick(SelectedNode());
}

void frmMain::NodeClick(const QModelIndex& node) {
    if (!node.isValid())
        return;
    mNodeTimer.stop();
    Guarded("Error#", [&] { ShowNode(node); });
    ShowHint();
}

void frmMain::ShowNode(const QModelIndex& node) {
    const std::string key = mTree->Key(node);
    if (key == mLastNodeKey)
        return;
    mLastNodeKey = key;
    // What the list said of the node before must not stand while this one's is read.
    lvListView->Hint({});
    lvListView->ClearItems();
    lvListView->ClearColumns();

    const std::size_t question = key.find('?');
    const std::string prefix = key.substr(0, question);
    const std::string suffix = question == std::string::npos ? std::string() : key.substr(question);
    const bool isCategory = FindCategory(suffix) >= 0;
    // A machine that is named as the branch of all machines behaves as that branch.
    if (key == "MAIN" || (prefix == "ALL" && (suffix.empty() || suffix == kMachineSuffix))) {
        DisplayUsers(*lvListView);
        FlagPopup(false, true);
    } else if (prefix == "ALL") {
        FlagPopup(true, true);
        if (isCategory) {
            ShowCategory(key);
        } else {
            TellUnknownNode();
            FlagPopup(false, false);
        }
    } else {
        FlagPopup(true, false);
        if (!isCategory)
            FlagPopup(false, false);
        if (isCategory || suffix == kMachineSuffix)
            ShowCategory(key);
        else
            TellUnknownNode();
    }
}

void frmMain::TellUnknownNode() {
    mPrompts.MsgBox("You have clicked on a sub-tree that is not supported??", MsgBoxStyle::kOKOnly, "");
}

void frmMain::DisplayUsers(ListView& list) {
    Guarded("Error#", [&] { ListUsers(list); });
}

void frmMain::ListUsers(ListView& list) {
    list.AddColumn("User Name", 3000);
    list.AddColumn("Logon Date", 1000);
    list.AddColumn("Logon Time", 1000);
    list.AddColumn("Retrieve Personal Info", 2000);
    OpenMachines();
    const AgeScale ages(mClock.Now());
    const std::string folder = FolderOnDisk(gImportDir);
    const DirectoryListing files(folder, ".PNF");
    const int count = gRecordset->RecordCount();
    ProgressMaximum(count);
    {
        LongWork work(*this);
        const ListFill fill(list);
        const ADODB::FieldList& fields = gRecordset->Fields();
        const ADODB::Field& logonDate = fields.Item("Logon Date");
        for (; !gRecordset->EndOfFile(); gRecordset->MoveNext()) {
            ProgressValue(count);
            const int age = AgeOf(logonDate, ages);
            const std::string name(fields.Item(kName).Text());
            list.AddRow(name + std::string(kMachineSuffix), TextOrNotAvailable(fields.Item(kName)),
                        AgeImage(age));
            list.SetSubItem(1, TextOrNotAvailable(fields.Item(kLogonDate)));
            list.SetSubItem(2, TextOrNotAvailable(fields.Item(kLogonTime)));
            list.SetSubItem(3, RetrieveState(folder, files, name));
            work.Step();
        }
    }
    ProgressValue(0);
    gRecordset->Close();
    StatusText("Database Open.");
}

QModelIndex frmMain::SelectedNode() const {
    const QModelIndexList selected = tvTreeView->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? QModelIndex() : selected.first();
}

void frmMain::ShowHint() {
    QString hint;
    if (!gConnection || !gConnection->IsOpen())
        hint = "No database is open. Open one with File, Select Database.";
    else if (mTree->Machines().empty())
        hint = "No machines yet. Import inventory files with File, Import.";
    else if (mLastNodeKey.empty())
        hint = "Select a category or a machine in the tree.";
    else
        hint = "There is nothing to show here.";
    lvListView->Hint(hint);
}
