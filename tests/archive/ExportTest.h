// SPDX-License-Identifier: GPL-3.0-or-later
// The exports over an open database and a main window without widgets.
#pragma once

#include "archive/ExportFile.h"
#include "tests/support/FakeForm.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

class ExportTest : public testing::Test {
protected:
    ExportTest();
    ~ExportTest() override;

    /// Runs statements of the engine's own SQL on the open database.
    static void Run(const std::string& statements);
    /// The save dialog, answered with a file of the test's folder.
    void ExpectPath(const std::string& name);
    /// Nothing but the file `name` and the database are there: no temporary file is left.
    void ExpectNoOtherFile(const std::string& name) const;

    TemporaryFolder folder;
    QueuedPrompts prompts;
    FakeForm form;
    ExportContext context;
};
