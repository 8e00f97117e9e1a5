// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/DatabaseBackup.h"

#include "archive/KeptDatabase.h"
#include "archive/ShownCopy.h"
#include "archive/SoleHold.h"
#include "core/Controls.h"
#include "core/DatabaseSession.h"
#include "core/FileModule.h"
#include "core/Globals.h"
#include "core/LongWork.h"
#include "core/MainForm.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/prompts.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <utility>

namespace {

constexpr const char* kFilter = "Backup File (*.zbk)|*.zbk";
constexpr const char* kExtension = "zbk";
constexpr const char* kNamePanel = "Enter a backup filename name ...";
constexpr const char* kDatabaseExtension = ".mdb";

/// Whether the pages of the open database hold together: opening it has read few of them.
bool IsWhole() {
    std::string verdict;
    const auto keep = [](void* text, int, char** values, char**) {
        if (values[0] != nullptr)
            *static_cast<std::string*>(text) = values[0];
        return 0;
    };
    LongWork::Aside(
        [&] { sqlite3_exec(gConnection->Handle(), "PRAGMA quick_check(1)", keep, &verdict, nullptr); });
    return verdict == "ok";
}

/// The name of the database in its archive. A restore looks for the extension.
std::string EntryName(const std::string& database) {
    const std::string name = FileNameOf(database);
    return LowerCase(name).ends_with(kDatabaseExtension) ? name : name + kDatabaseExtension;
}

std::string MakeTemporaryFolder(const std::string& parent) {
    std::string folder = JoinPath(parent, "DIRXXXXXX");
    if (mkdtemp(folder.data()) == nullptr)
        RaiseSystem(errno, parent);
    return folder;
}

/// The file that has this path, however its name is written.
std::optional<std::string> OnDisk(const std::string& path) {
    return FileExists(path) ? path : FindFile(FolderOf(path), FileNameOf(path));
}

/// The failure of `work` in words; empty where there was none.
std::string FailureOf(const std::function<void()>& work) {
    try {
        work();
        return {};
    } catch (const RunTimeError& failure) {
        return failure.description;
    }
}

} // namespace

/// An unpacked database that is ready to take the place of the one at gDatabasePath: it is whole beside that,
/// and no other program has the old one open. Given up, it leaves all as it was.
struct DatabaseBackup::Successor {
    Successor(MainForm& form, const std::string& unpacked)
        : file(gDatabasePath, ReplacedFile::Rights::OwnerOnly), replaced(form, file) {
        ShownCopy(form, unpacked, [this](std::string_view bytes) { file.Write(bytes); });
        file.Flush();
    }

    ReplacedFile file;
    KeptDatabase replaced;
};

DatabaseBackup::DatabaseBackup(MainForm& form, Prompts& prompts, const Clock& clock,
                               std::string programFolder)
    : mForm(form), mPrompts(prompts), mClock(clock), mProgramFolder(std::move(programFolder)) {}

void DatabaseBackup::mnuBackup() {
    Controls::Guarded(mPrompts, [this] { Backup(); });
}

void DatabaseBackup::mnuRestore() {
    Controls::Guarded(mPrompts, [this] { Restore(); });
}

void DatabaseBackup::Backup() {
    mForm.StatusText(kNamePanel);
    const std::string archive = WithoutNuls(FileModule::ShowSaveDialog(
        mPrompts, kFilter, "Please enter backup filename", kExtension, gBackupDir));
    mForm.StatusText("");
    if (archive.empty())
        return;
    if (std::error_code ignored; std::filesystem::equivalent(archive, gDatabasePath, ignored))
        Raise(Errors::kPermissionDenied, archive);
    // The old archive goes when the new one takes its place.
    if (FileExists(archive) &&
        mPrompts.MsgBox("Replace this backup file?",
                        MsgBoxStyle::kYesNo + MsgBoxStyle::kCritical + MsgBoxStyle::kDefaultButton2,
                        "Replace?") != MsgBoxAnswer::Yes)
        return;
    mForm.StatusText("Backup in progress ...");
    if (Pack(archive))
        mForm.StatusText("Backup done successfully");
    else
        mPrompts.MsgBox(
            "Backup failed. Please check the MOVA database and make sure nobody has got the file open at "
            "this time.",
            MsgBoxStyle::kCritical, "Backup Failed");
    if (mForm.ConnectSinDatabase(gDatabasePath)) {
        mForm.StatusText("Opening Database ... Please wait");
        mForm.OpenSinDatabase();
        mForm.EnableDatabaseCommands();
        return;
    }
    mForm.StatusText("Not a MOVA Database ...");
    gDatabasePath.clear();
}

bool DatabaseBackup::Pack(const std::string& archive) {
    bool isPacked = false;
    // Where another program has it open, the file alone may not be all of it.
    return Succeeds([&] {
               mForm.CloseSinDatabase(false);
               const SoleHold hold(gDatabasePath);
               isPacked = VBZip::ZipFile({mForm, mPrompts}, gDatabasePath, archive, EntryName(gDatabasePath));
           }) &&
           isPacked;
}

bool DatabaseBackup::Succeeds(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const RunTimeError& failure) {
        mPrompts.MsgBox(failure.description, MsgBoxStyle::kCritical, "Error #" + NumberText(failure.number));
        return false;
    }
}

void DatabaseBackup::Restore() {
    mForm.StatusText(kNamePanel);
    const std::string archive = WithoutNuls(
        FileModule::ShowOpenDialog(mPrompts, kFilter, "Please select a backup file", kExtension, gBackupDir));
    mForm.StatusText("");
    if (archive.empty())
        return;
    std::string chosenFolder;
    if (!gConnection || !gConnection->IsOpen()) {
        chosenFolder = WithoutNuls(
            FileModule::BrowseForFolder(mPrompts, "Please select Restore Directory", mProgramFolder));
        if (chosenFolder.empty())
            return;
    }
    try {
        if (chosenFolder.empty())
            mForm.CloseSinDatabase(false);
        RestoreFrom(archive, chosenFolder);
    } catch (const RunTimeError&) {
        // Closed it is, with commands that would do nothing but fail.
        mForm.DisableDatabaseCommands();
        throw;
    }
}

void DatabaseBackup::RestoreFrom(const std::string& archive, const std::string& chosenFolder) {
    mForm.StatusText("Restore in progress ...");
    const std::string folder = MakeTemporaryFolder(mProgramFolder);
    if (!VBZip::UnzipFile({mForm, mPrompts}, archive, folder))
        return TellRestoreFailed();
    const std::vector<std::string> found = DirectoryListing(folder, kDatabaseExtension).Names();
    const std::string name = found.empty() ? std::string() : found.front();
    if (!chosenFolder.empty())
        gDatabasePath = JoinPath(chosenFolder, name);
    std::optional<Successor> successor;
    bool isReady = true;
    if (!name.empty()) {
        const std::string unpacked = JoinPath(folder, name);
        isReady = Succeeds([&] { successor.emplace(mForm, unpacked); });
        LongWork::Aside([&] { unlink(unpacked.c_str()); });
    }
    // Stays where the archive held more.
    rmdir(folder.c_str());
    if (!isReady) {
        if (!chosenFolder.empty())
            gDatabasePath.clear();
        return TellRestoreFailed();
    }
    std::string failure;
    if (successor)
        failure = PutInPlace(successor);
    mForm.StatusText("Restore done successfully");
    Reopen(successor);
    // The old database is open again, and must not be taken for the restored one.
    if (!failure.empty())
        mForm.StatusText("Restore failed: " + failure);
}

void DatabaseBackup::TellRestoreFailed() {
    mPrompts.MsgBox(
        "Restore failed. Please check the MOVA database and make sure nobody has got the file open at this "
        "time.",
        MsgBoxStyle::kCritical, "Restore Failed");
    mForm.DisableDatabaseCommands();
}

std::string DatabaseBackup::PutInPlace(std::optional<Successor>& successor) {
    const std::optional<std::string> present = OnDisk(gDatabasePath);
    if (present &&
        mPrompts.MsgBox("Overwrite " + gDatabasePath + "?",
                        MsgBoxStyle::kYesNo + MsgBoxStyle::kExclamation + MsgBoxStyle::kDefaultButton2,
                        "Overwrite?") != MsgBoxAnswer::Yes) {
        gDatabasePath = *present;
        successor.reset();
        return {};
    }
    std::string failure = FailureOf([&] { successor->replaced.GiveWayTo(successor->file); });
    // The old database is opened next, which the hold on it would prevent.
    if (!failure.empty())
        successor.reset();
    return failure;
}

void DatabaseBackup::Reopen(std::optional<Successor>& successor) {
    bool isGood = mForm.ConnectSinDatabase(gDatabasePath);
    if (isGood && successor && !IsWhole()) {
        mForm.CloseSinDatabase(false);
        isGood = false;
    }
    if (!isGood) {
        mForm.StatusText("Incompatible database");
        mForm.DisableDatabaseCommands();
        return;
    }
    if (successor)
        LongWork::Aside([&] { successor->replaced.Release(); });
    mForm.StatusText("Opening Database ... Please wait");
    mForm.OpenSinDatabase();
    mForm.EnableDatabaseCommands();
    TellAgeOfData(mForm, mPrompts, mClock);
}
