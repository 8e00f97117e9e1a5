// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that start an import from the main window: the dialog, Quick Import, and the list's Import of
// its selected machines. They see the window as a MainForm alone, which forwards its menu items to them.
// An import runs on the calling thread; the window paints meanwhile and takes no input.
#pragma once

#include "platform/clock.h"
#include "platform/prompts.h"
#include "platform/settings.h"

#include <memory>
#include <string>
#include <utility>

class cSinImport;
class ImportEvents;
class MainForm;

/// What the import's windows and commands work with. All of it outlives them.
struct ImportContext {
    MainForm& form;
    SettingsStore& settings;
    Prompts& prompts;
    const Clock& clock;
    /// The folder of the program, in which that of the inventory files stands.
    std::string programFolder;

    /// An import into the open database, in the time frame that now holds.
    std::unique_ptr<cSinImport> NewImport(ImportEvents& events) const;
    /// Remembers the folder of the inventory files, in the settings and for the running program.
    void StoreFolder(const std::string& folder) const;
    /// The folder in the settings as it stands on disk; empty where none is set.
    std::string StoredFolder() const;
};

class ImportCommands {
public:
    explicit ImportCommands(ImportContext context) : mContext(std::move(context)) {}

    /// Shows the Import dialog, and opens the database anew when it is closed, whatever it did.
    void mnuImport();
    /// Imports the stored folder without a dialog. Changes younger than thirty minutes are left for later,
    /// or than the stored time frame if that is longer.
    void mnuQuickImport();
    /// Imports the machines that are selected in the list, or the stored folder if none is.
    void mnuPopRImport();

private:
    void QuickImport();
    void ReImport();
    /// False, after a box, where the import failed.
    bool ImportFolder(const std::string& folder);
    void ImportSelectedMachines(const std::string& folder);
    void Finish();
    void OpenAnew();
    /// Runs a command; a failure ends it with a box.
    void Guarded(void (ImportCommands::*command)());

    ImportContext mContext;
};
