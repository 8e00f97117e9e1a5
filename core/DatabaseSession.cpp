// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/DatabaseSession.h"

#include "core/Admin.h"
#include "core/FileModule.h"
#include "core/Globals.h"
#include "core/LongWork.h"
#include "core/MainForm.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/text.h"

#include <algorithm>
#include <filesystem>

namespace {

constexpr const char* kDatabaseFilter = "MOVA Database (*.mdb)|*.MDB";
constexpr const char* kTemplateName = "Template.sdb";
constexpr const char* kTemplateMissing = "Template.sdb Not Found";

std::string Numbered(const std::string& title, int number) {
    return title + std::to_string(number);
}

/// The date of a text "yyyy-mm-dd" by its positions; a month or day past its range rolls over.
std::chrono::local_days DateFromPositions(std::string_view text) {
    const auto number = [text](std::size_t start, std::size_t count) {
        constexpr double kLargest = 9999; // "1e99" is a number too
        const double value = start < text.size() ? Val(text.substr(start, count)) : 0;
        return static_cast<int>(std::clamp(value, -kLargest, kLargest));
    };
    const std::chrono::year_month month =
        std::chrono::year(number(0, 4)) / std::chrono::January + std::chrono::months(number(5, 2) - 1);
    return std::chrono::local_days(month / 1) + std::chrono::days(number(8, 2) - 1);
}

/// Closes a database that is refused or replaced. A log that remains may belong to another program that is
/// at work, and is no failure here.
void CloseSilently() {
    try {
        if (gConnection)
            gConnection->Close(LongWork::LetPaint);
    } catch (const RunTimeError&) {
    }
}

} // namespace

void TellAgeOfData(MainForm& form, Prompts& prompts, const Clock& clock) {
    const LocalTime now = clock.Now();
    if (gLastImportDate >= FormatDate(now, "yyyy-mm-dd") || gLastImportDate == "n/a")
        return;
    const auto days =
        (std::chrono::floor<std::chrono::days>(now) - DateFromPositions(gLastImportDate)).count();
    form.StatusText("Your data is " + std::to_string(days) + " day(s) old.");
    prompts.Beep();
}

DatabaseSession::DatabaseSession(MainForm& form, Prompts& prompts, const Clock& clock,
                                 std::string programFolder, std::function<void()> unloadSplash)
    : mForm(form),
      mPrompts(prompts),
      mClock(clock),
      mProgramFolder(std::move(programFolder)),
      mUnloadSplash(std::move(unloadSplash)) {}

bool DatabaseSession::ConnectSinDatabase(const std::string& path) {
    // Closed here and not by its last owner: an open report is one, and would keep the file open.
    CloseSilently();
    try {
        gConnection = std::make_shared<ADODB::Connection>();
        gConnection->ConnectionString("Driver={Microsoft Access Driver (*.mdb)};DBQ=" + WithoutNuls(path) +
                                      ";USR=Admin;PWD=" + gDatabasePassword + ";");
        gConnection->Open();
        gRecordset = std::make_shared<ADODB::Recordset>();
        gRecordset->Open("SELECT * FROM Version", gConnection);
        const auto refuse = [] {
            gRecordset->Close();
            CloseSilently();
            return false;
        };
        if (gRecordset->EndOfFile())
            return refuse();
        const ADODB::FieldList& version = gRecordset->Fields();
        const std::string own = Admin::VersionText();
        if (version.Item("VersionNumber").Text() != own) {
            const std::string compatibility(version.Item("Compatibility").Text());
            if (InStr(1, compatibility, own + ";") < 1) {
                mUnloadSplash();
                mPrompts.MsgBox(
                    "Not a MOVA database or database is not a compatible version. This database supports "
                    "the following versions : " +
                        compatibility + " only.",
                    MsgBoxStyle::kCritical, "Not a MOVA Database.");
                return refuse();
            }
        }
        const ADODB::Field& lastImport = version.Item("LastImportDate");
        gLastImportDate = lastImport.IsNull() ? "n/a" : DisplayDate(lastImport.Text());
        gRecordset->Close();
        return true;
    } catch (const RunTimeError& failure) {
        // The recordset ends with its connection.
        CloseSilently();
        mUnloadSplash();
        mPrompts.MsgBox(
            "This is either not a MOVA database or it's an incompatible database.\r\n\r\n"
            "If you are sure it's a MOVA database try repairing it.\r\n\r\n"
            "Error Description: " +
                failure.description,
            MsgBoxStyle::kCritical, Numbered("Error #", failure.number));
        return false;
    }
}

void DatabaseSession::CloseSinDatabase(bool clearPath) {
    if (clearPath)
        gDatabasePath.clear();
    mForm.ClearTreeAndList();
    if (gConnection)
        gConnection->Close(LongWork::LetPaint);
}

void DatabaseSession::Activate() {
    if (!gFirstActivation)
        return;
    Guarded("Error # ", [this] { ActivateFirst(); });
}

void DatabaseSession::ActivateFirst() {
    mForm.mnuConfig(mForm.ShowConf());
    gFirstActivation = false;
    if (gDatabasePath.empty()) {
        mForm.StatusText("No database selected");
        mForm.DisableDatabaseCommands();
        mUnloadSplash();
        const MsgBoxAnswer answer =
            mPrompts.MsgBox("You have no default database selected. Start the open database dialog ?",
                            MsgBoxStyle::kYesNo + MsgBoxStyle::kQuestion, "Open Database ?");
        if (answer == MsgBoxAnswer::Yes)
            SelectDatabase();
        return;
    }
    if (mForm.ConnectSinDatabase(gDatabasePath)) {
        FinishOpening(Age::Tell);
        return;
    }
    mForm.StatusText("Incompatible database");
    gDatabasePath.clear();
    mForm.DisableDatabaseCommands();
}

void DatabaseSession::SelectDatabase() {
    Guarded("Error#", [this] {
        mForm.StatusText("Select MOVA Database ...");
        gDatabasePath =
            FileModule::ShowOpenDialog(mPrompts, kDatabaseFilter, "Please select a database...", "mdb", "");
        CheckAndOpen();
    });
}

void DatabaseSession::Relink() {
    Guarded("Error#", [this] { CheckAndOpen(); });
}

void DatabaseSession::CheckAndOpen() {
    mForm.StatusText("");
    if (gDatabasePath.empty())
        return;
    gDatabasePath = WithoutNuls(gDatabasePath);
    mForm.StatusText("Checking MOVA Database ...");
    if (mForm.ConnectSinDatabase(gDatabasePath)) {
        FinishOpening(Age::Keep);
        return;
    }
    mForm.StatusText("Not a MOVA Database ...");
    gDatabasePath.clear();
}

void DatabaseSession::NewDatabase() {
    Guarded("Error#", [this] { CreateDatabase(); });
}

void DatabaseSession::CreateDatabase() {
    const std::string path = WithoutNuls(FileModule::ShowOpenDialog(
        mPrompts, kDatabaseFilter, "Please select a new database name", "mdb", ""));
    if (path.empty())
        return;
    const std::optional<std::string> emptyDatabase = FindFile(mProgramFolder, kTemplateName);
    if (!emptyDatabase) {
        mPrompts.MsgBox(
            "MOVA Admin is not installed properly! Please find the 'Template.sdb' file and move "
            "it to the '" +
                mProgramFolder +
                "' directory. If you can't find this file, please re-install the MOVA admin "
                "module.",
            MsgBoxStyle::kQuestion, kTemplateMissing);
        return;
    }
    if (std::error_code ignored; std::filesystem::equivalent(*emptyDatabase, path, ignored))
        Raise(Errors::kPermissionDenied, path);
    if (FindFile(FolderOf(path), FileNameOf(path))) {
        const MsgBoxAnswer answer = mPrompts.MsgBox(
            "Are you sure you want to overwrite " + path + " ?",
            MsgBoxStyle::kYesNo + MsgBoxStyle::kCritical + MsgBoxStyle::kDefaultButton2, "Overwrite?");
        if (answer != MsgBoxAnswer::Yes)
            return;
    }
    LongWork::Aside([&] { DeleteDatabase(path); });
    CopyFile(*emptyDatabase, path);
    gDatabasePath = path;
    if (mForm.ConnectSinDatabase(gDatabasePath)) {
        FinishOpening(Age::Tell);
    } else {
        mForm.StatusText("Incompatible database");
        gDatabasePath.clear();
        mForm.DisableDatabaseCommands();
    }
    mPrompts.MsgBox("Database '" + gDatabasePath + "' created and opened successfully.",
                    MsgBoxStyle::kQuestion, "Created successfully!");
}

void DatabaseSession::CloseDatabase() {
    Guarded("Error#", [this] {
        mForm.StatusText("Database closed...");
        // Closed it is, also where it could not be closed cleanly and a box tells so.
        mForm.DisableDatabaseCommands();
        mForm.CloseSinDatabase(true);
    });
}

void DatabaseSession::FinishOpening(Age age) {
    mForm.StatusText("Opening Database ... Please wait");
    mForm.OpenSinDatabase();
    mForm.EnableDatabaseCommands();
    mForm.StatusText("Database Open");
    if (age == Age::Tell)
        TellAgeOfData(mForm, mPrompts, mClock);
}

void DatabaseSession::Guarded(const std::string& title, const std::function<void()>& road) {
    try {
        road();
    } catch (const RunTimeError& failure) {
        mUnloadSplash();
        mPrompts.MsgBox(failure.description, MsgBoxStyle::kCritical, Numbered(title, failure.number));
    }
}
