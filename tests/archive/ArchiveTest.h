// SPDX-License-Identifier: GPL-3.0-or-later
// The commands on whole databases and baselines, over a real session, a main window without widgets and a
// site of a few machines.
#pragma once

#include "archive/DatabaseBackup.h"
#include "core/DatabaseSession.h"
#include "tests/support/FakeForm.h"
#include "tests/support/FixedClock.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// Every row of every table of a closed or open database, or what the engine says of a broken one.
std::string Contents(const std::string& database);

class ArchiveTest : public testing::Test {
protected:
    ArchiveTest();
    ~ArchiveTest() override;

    /// Makes a database in the test's folder, closed, with a machine of each name.
    std::string MakeDatabase(const std::string& name, const std::vector<std::string>& machines);
    /// Imports the folder INF of the test's folder into the open database.
    void Import();
    void Open(const std::string& database);
    /// What the window was told since the last call.
    std::string Told();
    /// The names in the test's folder, or in one within it, sorted, each followed by a blank.
    std::string Files(const std::string& subfolder = {}) const;
    /// Runs a shell command; its output without the last line end.
    static std::string Shell(const std::string& command);

    TemporaryFolder folder;
    std::string program = folder.Path("program");
    QueuedPrompts prompts;
    FixedClock clock{2001, 11, 20};
    FakeForm form;
    DatabaseSession session;
    DatabaseBackup command;
};
