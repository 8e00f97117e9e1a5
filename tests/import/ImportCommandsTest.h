// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the import over a folder, an empty database and a main window without widgets.
#pragma once

#include "import/ImportCommands.h"
#include "tests/import/ImportTest.h"
#include "tests/support/FakeForm.h"

#include <QDialog>

#include <functional>

class ImportCommandsTest : public ImportTest {
protected:
    ImportCommandsTest();
    ~ImportCommandsTest() override;

    void StoreFolder(const std::string& path);
    /// What the settings hold; "<none>" where nothing is stored.
    std::string StoredFolder() const;
    /// Acts on the next Import dialog once it is shown. One that is still open afterwards fails the test.
    void InDialog(std::function<void(QDialog&)> act);

    /// What the window was told since the last call; of the files' names in a row the first, since how many
    /// are shown depends on the machine's speed.
    std::string Told();

    FakeForm form;
    SettingsStore settings;
    ImportCommands commands;

private:
    bool mIsAwaited = false;
};
