// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/DatabaseBackup.h"

#include "archive/KeptDatabase.h"
#include "core/Controls.h"
#include "core/DatabaseSession.h"
#include "core/FileModule.h"
#include "core/Globals.h"
#include "core/LongWork.h"
#include "core/MainForm.h"
#include "platform/Descriptor.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/prompts.h"

#include <fcntl.h>
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

/// Keeps every other program from opening a database while it lives; raises error 70 where one has it open.
class SoleHold {
public:
    explicit SoleHold(const std::string& path)
        : mIsWritable(access(path.c_str(), W_OK) == 0), mFile(path, mIsWritable ? O_RDWR : O_RDONLY) {
        // Where the engine has its locks: https://www.sqlite.org/fileformat.html#the_lock_byte_page
        struct flock lock {};
        lock.l_type = mIsWritable ? F_WRLCK : F_RDLCK;
        lock.l_whence = SEEK_SET;
        lock.l_start = 0x40000000;
        lock.l_len = 512;
        // Disks without locks have none to look at.
        if (fcntl(mFile.Number(), F_OFD_SETLK, &lock) != 0 && (errno == EAGAIN || errno == EACCES))
            Raise(Errors::kPermissionDenied, path);
    }

private:
    bool mIsWritable;
    Descriptor mFile;
};

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

void IgnoringErrors(const std::function<void()>& work) {
    try {
        work();
    } catch (const RunTimeError&) {
        // What follows works with what is there.
        return;
    }
}

} // namespace

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
    try {
        mForm.CloseSinDatabase(false);
        const SoleHold hold(gDatabasePath);
        return VBZip::ZipFile({mForm, mPrompts}, gDatabasePath, archive, EntryName(gDatabasePath));
    } catch (const RunTimeError& failure) {
        // Another program has it open: the file alone may then not be all of it.
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
    if (!VBZip::UnzipFile({mForm, mPrompts}, archive, folder)) {
        mPrompts.MsgBox(
            "Restore failed. Please check the MOVA database and make sure nobody has got the file open at "
            "this time.",
            MsgBoxStyle::kCritical, "Restore Failed");
        mForm.DisableDatabaseCommands();
        return;
    }
    const std::vector<std::string> found = DirectoryListing(folder, kDatabaseExtension).Names();
    const std::string name = found.empty() ? std::string() : found.front();
    if (!chosenFolder.empty())
        gDatabasePath = JoinPath(chosenFolder, name);
    std::unique_ptr<KeptDatabase> replaced;
    if (!name.empty()) {
        const std::string unpacked = JoinPath(folder, name);
        IgnoringErrors([&] { replaced = PutInPlace(unpacked); });
        IgnoringErrors([&] { DeleteFile(unpacked); });
    }
    // Stays where the archive held more.
    rmdir(folder.c_str());
    mForm.StatusText("Restore done successfully");
    bool isGood = mForm.ConnectSinDatabase(gDatabasePath);
    if (isGood && replaced && !IsWhole()) {
        mForm.CloseSinDatabase(false);
        isGood = false;
    }
    if (!isGood) {
        mForm.StatusText("Incompatible database");
        mForm.DisableDatabaseCommands();
        return;
    }
    if (replaced)
        replaced->Release();
    mForm.StatusText("Opening Database ... Please wait");
    mForm.OpenSinDatabase();
    mForm.EnableDatabaseCommands();
    TellAgeOfData(mForm, mPrompts, mClock);
}

std::unique_ptr<KeptDatabase> DatabaseBackup::PutInPlace(const std::string& unpacked) {
    const std::optional<std::string> present = OnDisk(gDatabasePath);
    if (present &&
        mPrompts.MsgBox("Overwrite " + gDatabasePath + "?",
                        MsgBoxStyle::kYesNo + MsgBoxStyle::kExclamation + MsgBoxStyle::kDefaultButton2,
                        "Overwrite?") != MsgBoxAnswer::Yes) {
        gDatabasePath = *present;
        return nullptr;
    }
    ReplacedFile target(gDatabasePath, ReplacedFile::Rights::OwnerOnly);
    {
        ShownWork work(mForm);
        const auto length = static_cast<double>(FileLength(unpacked));
        Descriptor from(unpacked, O_RDONLY | O_NOFOLLOW);
        std::string block(std::size_t{1} << 20U, '\0');
        double done = 0;
        while (const std::size_t count = from.Read(block.data(), block.size())) {
            target.Write(std::string_view(block).substr(0, count));
            done += static_cast<double>(count);
            work.Look(done, length);
        }
    }
    auto replaced = std::make_unique<KeptDatabase>(target);
    // Another program that has it open would go on writing to a file without a name.
    std::optional<SoleHold> hold;
    if (FileExists(gDatabasePath))
        hold.emplace(gDatabasePath);
    replaced->GiveWayTo(target);
    return replaced;
}
