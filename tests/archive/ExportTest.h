// SPDX-License-Identifier: GPL-3.0-or-later
// The exports over an open database and a main window without widgets.
#pragma once

#include "archive/ExportFile.h"
#include "core/Globals.h"
#include "import/Schema.h"
#include "tests/support/Database.h"
#include "tests/support/FakeForm.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

class ExportTest : public testing::Test {
protected:
    ExportTest() {
        CreateDatabase(folder.Path("Demodb.mdb"));
        gConnection = OpenDatabase(folder.Path("Demodb.mdb"));
    }
    ~ExportTest() override {
        gRecordset.reset();
        gConnection.reset();
    }

    /// Runs statements of the engine's own SQL on the open database.
    static void Run(const std::string& statements) { RunSQL(*gConnection, statements); }
    /// The save dialog, answered with a file of the test's folder.
    void ExpectPath(const std::string& name) {
        prompts.Expect(SaveFile("Please enter export filename"), folder.Path(name));
    }
    /// Nothing but the file `name` and the database are there: no temporary file is left.
    void ExpectNoOtherFile(const std::string& name) const {
        for (const std::string& found : folder.Names())
            EXPECT_TRUE(found == name || found.starts_with("Demodb.mdb")) << found;
    }

    TemporaryFolder folder;
    QueuedPrompts prompts;
    FakeForm form;
    ExportContext context{form, prompts, "/opt/velmora"};
};
