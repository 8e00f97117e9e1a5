// SPDX-License-Identifier: GPL-3.0-or-later
// What the exports have in common: the questions before one, and the file that it fills. Lines are UTF-8
// here and end in CR LF; in the file they are in the system's 8-bit code page, with "?" for what it lacks.
#pragma once

#include "platform/ReplacedFile.h"

#include <functional>
#include <string>
#include <string_view>

class CodePage;
class MainForm;
class Prompts;

/// What the exports work with. All of it outlives them.
struct ExportContext {
    MainForm& form;
    Prompts& prompts;
    /// Where the save dialog starts.
    std::string programFolder;
};

/// Asks where to export to, and whether to overwrite what stands there. The path without NUL characters;
/// empty where the user wants no export. Raises error 70 for the open database.
std::string AskForExportPath(const ExportContext& context, const std::string& filter);

/// Runs an export; a failure ends it with a box, but for error 91, which ends it in silence.
void GuardedExport(const ExportContext& context, const std::function<void()>& work);

/// A file that takes its name when it is whole; see ReplacedFile. It holds the personal details of users, so
/// it is for who made it alone.
class ExportFile {
public:
    explicit ExportFile(const std::string& path);

    /// Adds a line and its end. Raises what the disk refuses.
    void WriteLine(std::string_view line);
    void Commit();

    /// Whether the file itself has failed, so that nothing more can be written to it.
    bool HasFailed() const { return mHasFailed; }

private:
    template <class Step>
    void Try(const Step& step);

    ReplacedFile mFile;
    const CodePage& mPage;
    bool mHasFailed = false;
};
