// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the import over a folder, an empty database and a main window without widgets.
#pragma once

#include "core/Globals.h"
#include "import/ImportCommands.h"
#include "tests/import/ImportTest.h"
#include "tests/support/FakeForm.h"
#include "tests/support/Windows.h"

#include <sstream>

class ImportCommandsTest : public ImportTest {
protected:
    ImportCommandsTest()
        : settings(folder.Path("settings.ini")),
          commands(ImportContext{form, settings, prompts, clock, folder.Path()}) {
        gConnection = connection;
        gImportDir.clear();
        gImportTime = 0;
        gImportTimeNum = 0;
        gFirstActivation = false;
    }
    ~ImportCommandsTest() override { gConnection.reset(); }

    void StoreFolder(const std::string& path) {
        settings.SaveSetting("Velmora", "Settings", "ImportDir", path);
    }
    /// What the settings hold; "<none>" where nothing is stored.
    std::string StoredFolder() const {
        return settings.GetSetting("Velmora", "Settings", "ImportDir", "<none>");
    }
    /// Acts on the next dialog, which is to be that of the import.
    [[nodiscard]] static NextDialog InDialog(std::function<void(QDialog&)> act) {
        return NextDialog([act = std::move(act)](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), "frmImport");
            act(dialog);
        });
    }

    /// What the window was told since the last call; of the files' names in a row the first, since how many
    /// are shown depends on the machine's speed.
    std::string Told() {
        constexpr const char* kFileStatus = "Import Status : ";
        std::istringstream lines(std::exchange(form.told, ""));
        std::string told;
        std::string last;
        for (std::string line; std::getline(lines, line); last = line)
            if (!line.starts_with(kFileStatus) || !last.starts_with(kFileStatus))
                told += line + "\n";
        return told;
    }

    FakeForm form;
    SettingsStore settings;
    ImportCommands commands;
};
