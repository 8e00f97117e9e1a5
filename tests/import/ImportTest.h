// SPDX-License-Identifier: GPL-3.0-or-later
// A folder of inventory files and an empty database to import them into.
#pragma once

#include "import/cSinImport.h"
#include "tests/support/Database.h"
#include "tests/support/FixedClock.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// Lines of a file, each closed by CR LF.
std::string Lines(const std::vector<std::string>& lines);

/// A whole, small inventory file of one machine: one row or more in every section.
std::string SmallFile(const std::string& machine, const std::string& user = "user");

/// Takes any box and notes its title, where an import may end in several ways.
class AnyBox final : public QueuedPrompts {
public:
    MsgBoxAnswer MsgBox(const std::string& /*text*/, int /*style*/, const std::string& title) override {
        lastTitle = title;
        return MsgBoxAnswer::OK;
    }

    std::string lastTitle;
};

class ImportTest : public testing::Test {
protected:
    ImportTest();
    ~ImportTest() override;

    /// Writes a file of the inventory folder, stamped with local time "yyyy-mm-dd hh:mm:ss" if given.
    void Write(const std::string& name, const std::string& bytes, const std::string& stamp = {});

    /// Imports the folder, or one machine; expects no box but those queued.
    bool Import(const std::string& machine = {}, TimeFrame frame = {}, ImportEvents* events = nullptr);

    std::string Rows(const std::string& sql) const { return RowsOf(*connection, sql); }
    std::string Indexes() const {
        return Rows("SELECT name FROM sqlite_master WHERE type = 'index' ORDER BY name");
    }
    /// "ok" for a sound database.
    std::string IntegrityCheck() const;

    TemporaryFolder folder;
    std::string inventory;
    std::string database;
    QueuedPrompts prompts;
    FixedClock clock{2001, 11, 20};
    std::shared_ptr<ADODB::Connection> connection;
    bool noData = false;
};
