// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/BaselineRewrite.h"

#include "archive/VBZip.h"
#include "core/FileModule.h"
#include "core/Globals.h"
#include "core/LongWork.h"
#include "core/MainForm.h"
#include "platform/InventoryFiles.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/prompts.h"

#include <filesystem>

namespace {

constexpr std::string_view kCurrent = ".INF";
constexpr const char* kOriginal = ".ORG";

bool Asks(Prompts& prompts, const char* title, const char* text, int style) {
    return prompts.MsgBox(text, MsgBoxStyle::kYesNo + style, title) == MsgBoxAnswer::Yes;
}

/// Copies a file of the inventory folder over another one of it.
void CopyOver(const std::string& source, const std::string& target) {
    // No import would read it.
    if (FileLength(source) > kLargestFile)
        Raise(Errors::kOutOfMemory, source);
    CopyInventoryFile(source, target);
}

/// Deletes `path` unless it is `other`: on a disk without case two spellings are one file.
void DeleteOther(const std::string& path, const std::string& other) {
    if (!std::filesystem::equivalent(path, other))
        std::filesystem::remove(path);
}

} // namespace

void BaselineRewrite::mnuCommit() {
    try {
        Commit();
    } catch (const RunTimeError& failure) {
        mForm.Pointer(MousePointer::Default);
        mPrompts.MsgBox(failure.description, MsgBoxStyle::kCritical,
                        "mnuCommit : Error#" + NumberText(failure.number));
    }
}

void BaselineRewrite::Commit() {
    const std::string folder = FolderOnDisk(gImportDir);
    std::string archive;
    if (!OfferBackup(folder, archive))
        return;
    mForm.StatusText("Removing Entries...");
    {
        LongWork work(mForm);
        gConnection->EmptyTable("Net", [&work] { work.Look(); });
    }
    mForm.StatusText("Fixing...");
    RewriteFiles(folder);
    mForm.StatusText("Importing...");
    mForm.mnuQuickImport();
    if (!archive.empty())
        mPrompts.MsgBox("PLEASE NOTE : \r\n\r\nTo do a roll-back you can unzip the file " + archive +
                            " and rewrite the ORG files in the " + gImportDir +
                            " directory with those in the backup ZIP file, and then run the import again!",
                        MsgBoxStyle::kInformation, "Restore tip.");
    mForm.StatusText("");
}

bool BaselineRewrite::OfferBackup(const std::string& folder, std::string& archive) {
    mForm.StatusText("Backup ORG Files?");
    if (!Asks(mPrompts, "Backup ORG files?",
              "Do you want to make a backup ZIP file of original PC configurations first ?",
              MsgBoxStyle::kQuestion)) {
        mForm.StatusText("Continue?");
        return Asks(
            mPrompts, "Rewrite ORG files without backup?",
            "Are you sure you want to continue with this operation without a backup of the ORG files?",
            MsgBoxStyle::kCritical + MsgBoxStyle::kDefaultButton2);
    }
    mForm.StatusText("Working .... Please wait");
    if (!BackupORGFiles(folder, archive)) {
        if (!archive.empty()) {
            mForm.StatusText("Backup FAILED?");
            mPrompts.MsgBox("Backup failed.", MsgBoxStyle::kCritical, "FAILED");
        }
        mForm.StatusText("");
        return false;
    }
    mForm.StatusText("Backup successful?");
    if (!Asks(mPrompts, "Rewrite ORG files?",
              "Backup successful.\r\n\r\nContinue rewriting ORG files with INF files?",
              MsgBoxStyle::kQuestion))
        return false;
    mForm.StatusText("");
    return true;
}

bool BaselineRewrite::BackupORGFiles(const std::string& folder, std::string& chosenName) {
    chosenName = WithoutNuls(FileModule::ShowSaveDialog(mPrompts, "Backup File (*.zip)|*.zip",
                                                        "Please enter backup filename", "zip"));
    if (chosenName.empty())
        return false;
    if (std::error_code ignored; std::filesystem::equivalent(chosenName, gDatabasePath, ignored))
        Raise(Errors::kPermissionDenied, chosenName);
    // The old archive goes when the new one takes its place.
    if (FileExists(chosenName) && !Asks(mPrompts, "Replace?", "Replace this backup file?",
                                        MsgBoxStyle::kCritical + MsgBoxStyle::kDefaultButton2))
        return false;
    if (VBZip::ZipFile({mForm, mPrompts}, JoinPath(folder, std::string("*") + kOriginal), chosenName))
        return true;
    mPrompts.MsgBox(
        "Backup failed. A ORG file could have been created in the time you tried to backup, please retry. ",
        MsgBoxStyle::kCritical, "Backup Failed");
    return false;
}

void BaselineRewrite::RewriteFiles(const std::string& folder) {
    ShownWork work(mForm);
    const DirectoryListing files(folder);
    const std::vector<std::string> names = files.WithExtension(kCurrent);
    double done = 0;
    for (const std::string& name : names) {
        const std::string target = UpperCase(name.substr(0, name.size() - kCurrent.size())) + kOriginal;
        try {
            const std::string path = JoinPath(folder, target);
            CopyOver(JoinPath(folder, name), path);
            for (const std::string& spelling : files.Spellings(target))
                if (spelling != target)
                    DeleteOther(JoinPath(folder, spelling), path);
        } catch (const std::exception&) {
            // A machine whose files can't be read or written keeps its old original configuration.
        }
        work.Look(++done, static_cast<double>(names.size()));
    }
}
