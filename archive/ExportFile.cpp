// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/ExportFile.h"

#include "core/FileModule.h"
#include "core/Globals.h"
#include "core/MainForm.h"
#include "platform/codepage.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/prompts.h"

#include <filesystem>

std::string AskForExportPath(const ExportContext& context, const std::string& filter) {
    context.form.StatusText("Enter a export filename name ...");
    std::string path = WithoutNuls(FileModule::ShowSaveDialog(
        context.prompts, filter, "Please enter export filename", "csv", context.programFolder));
    context.form.StatusText("");
    if (path.empty() || !FileExists(path))
        return path;
    // What is open can not be overwritten; the database would go on in a file without a name.
    if (std::error_code ignored; std::filesystem::equivalent(path, gDatabasePath, ignored))
        Raise(Errors::kPermissionDenied, path);
    const MsgBoxAnswer answer = context.prompts.MsgBox(
        "Overwrite '" + path + "' this file?",
        MsgBoxStyle::kYesNo + MsgBoxStyle::kCritical + MsgBoxStyle::kDefaultButton2, "Overwrite?");
    return answer == MsgBoxAnswer::Yes ? path : std::string();
}

void GuardedExport(const ExportContext& context, const std::function<void()>& work) {
    try {
        work();
    } catch (const RunTimeError& failure) {
        if (failure.number != Errors::kNoObject)
            context.prompts.MsgBox(failure.description, MsgBoxStyle::kCritical,
                                   "Error #" + NumberText(failure.number));
    }
}

ExportFile::ExportFile(const std::string& path)
    : mFile(path, ReplacedFile::Rights::OwnerOnly), mPage(CodePage::System()) {}

void ExportFile::WriteLine(std::string_view line) {
    Try([&] {
        if (IsASCII(line))
            mFile.Write(line);
        else
            mFile.Write(mPage.Encode(line));
        mFile.Write("\r\n");
    });
}

void ExportFile::Commit() {
    Try([this] { mFile.Commit(); });
}

template <class Step>
void ExportFile::Try(const Step& step) {
    try {
        step();
    } catch (const RunTimeError&) {
        mHasFailed = true;
        throw;
    }
}
