// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that pack the open database into an archive, and bring one back from there. The database is
// closed meanwhile, since the archive takes the file itself, and opened again whatever happened.
// Neither ever costs the database or the archive that was there before: see ReplacedFile and KeptDatabase.
// What could prevent a restore is found out before it asks whether to overwrite; what prevents it all the
// same stands on the status panel when it is over.
#pragma once

#include "archive/VBZip.h"
#include "platform/clock.h"

#include <functional>
#include <optional>
#include <string>

class DatabaseBackup {
public:
    /// Temporary folders are made in `programFolder`. The arguments outlive it.
    DatabaseBackup(MainForm& form, Prompts& prompts, const Clock& clock, std::string programFolder);

    void mnuBackup();
    void mnuRestore();

private:
    struct Successor;

    void Backup();
    bool Pack(const std::string& archive);
    void Restore();
    void RestoreFrom(const std::string& archive, const std::string& chosenFolder);
    void TellRestoreFailed();
    /// Puts the file at the database's path, and returns what prevented it. Gives it up then, and where the
    /// user wants to keep the old one.
    std::string PutInPlace(std::optional<Successor>& successor);
    /// Opens the database that is there now. A successor that turns out to be none leaves its place to the
    /// old one when it goes.
    void Reopen(std::optional<Successor>& successor);
    /// Whether `work` ended without a failure; one is told in a box.
    bool Succeeds(const std::function<void()>& work);

    MainForm& mForm;
    Prompts& mPrompts;
    const Clock& mClock;
    std::string mProgramFolder;
};
