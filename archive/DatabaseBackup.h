// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that pack the open database into an archive, and bring one back from there. The database is
// closed meanwhile, since the archive takes the file itself, and opened again whatever happened.
// Neither ever costs the database or the archive that was there before: see ReplacedFile and KeptDatabase.
#pragma once

#include "archive/VBZip.h"
#include "platform/clock.h"

#include <memory>
#include <string>

class KeptDatabase;

class DatabaseBackup {
public:
    /// Temporary folders are made in `programFolder`. The arguments outlive it.
    DatabaseBackup(MainForm& form, Prompts& prompts, const Clock& clock, std::string programFolder);

    void mnuBackup();
    void mnuRestore();

private:
    void Backup();
    bool Pack(const std::string& archive);
    void Restore();
    void RestoreFrom(const std::string& archive, const std::string& chosenFolder);
    /// Puts the file at the database's path, and returns what it replaced; nothing where the user wants to
    /// keep that.
    std::unique_ptr<KeptDatabase> PutInPlace(const std::string& unpacked);

    MainForm& mForm;
    Prompts& mPrompts;
    const Clock& mClock;
    std::string mProgramFolder;
};
