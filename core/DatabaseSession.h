// SPDX-License-Identifier: GPL-3.0-or-later
// The life of the one database connection: how a database is opened and recognised as one of a fitting
// version, the roads that lead to an open database (first activation, select, create, re-link) and the one
// that leaves it (close). frmMain owns the session and forwards its commands to it.
// Sequence of every road: ConnectSinDatabase, on true OpenSinDatabase, then EnableDatabaseCommands.
#pragma once

#include "platform/clock.h"
#include "platform/prompts.h"

#include <functional>
#include <string>

class MainForm;

/// Says on the status panel how old the open database's data is, and beeps, where its last import was before
/// today.
void TellAgeOfData(MainForm& form, Prompts& prompts, const Clock& clock);

class DatabaseSession {
public:
    /// `programFolder` is where the template stands. `unloadSplash` takes the top-most splash away before a
    /// box that it would cover; it must do nothing when the splash is gone.
    DatabaseSession(MainForm& form, Prompts& prompts, const Clock& clock, std::string programFolder,
                    std::function<void()> unloadSplash);

    /// Opens gConnection on `path`, checks the table Version and fills gLastImportDate. False, with
    /// everything closed, where the file is no database of a fitting version; each reason has its box, but
    /// for a Version table without rows.
    bool ConnectSinDatabase(const std::string& path);
    /// Empties the tree and the list and closes gConnection; gDatabasePath too if `clearPath`.
    void CloseSinDatabase(bool clearPath);

    /// The main window's activate handler; it acts when gFirstActivation asks for it.
    void Activate();
    void SelectDatabase();
    void NewDatabase();
    void CloseDatabase();
    /// Connects to gDatabasePath anew after it has changed.
    void Relink();

private:
    enum class Age { Tell, Keep };
    void ActivateFirst();
    void CreateDatabase();
    void CheckAndOpen();
    void FinishOpening(Age age);
    /// Runs a road; a failure ends it with a box whose title is `title` and the error's number.
    void Guarded(const std::string& title, const std::function<void()>& road);

    MainForm& mForm;
    Prompts& mPrompts;
    const Clock& mClock;
    std::string mProgramFolder;
    std::function<void()> mUnloadSplash;
};
