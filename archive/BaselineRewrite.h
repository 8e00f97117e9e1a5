// SPDX-License-Identifier: GPL-3.0-or-later
// The command that makes every machine's current configuration its original one: each .INF file is copied
// over its .ORG file, and everything is imported anew. Nothing takes that back, so it offers an archive of
// the .ORG files first. The folder is one that client PCs write to. A link in it is neither read nor written
// through.
#pragma once

#include <string>

class MainForm;
class Prompts;

class BaselineRewrite {
public:
    /// Both outlive it.
    BaselineRewrite(MainForm& form, Prompts& prompts) : mForm(form), mPrompts(prompts) {}

    void mnuCommit();

    /// Asks for an archive's name, which goes to `chosenName`, and packs the .ORG files of `folder` into it.
    /// False where there is no archive, which a box has told unless the user wanted none.
    bool BackupORGFiles(const std::string& folder, std::string& chosenName);

private:
    void Commit();
    /// False where the command ends. `archive` is where the backup was made, if it was.
    bool OfferBackup(const std::string& folder, std::string& archive);
    void RewriteFiles(const std::string& folder);

    MainForm& mForm;
    Prompts& mPrompts;
};
