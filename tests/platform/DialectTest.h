// SPDX-License-Identifier: GPL-3.0-or-later
// Runs statements of the desktop database's SQL on a small inventory in memory and writes their rows as text:
// columns are joined by "|", rows by line feeds, and Null shows as "NULL".
#pragma once

#include "platform/accesssql.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>
#include <string_view>

class DialectTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override { sqlite3_close(mDatabase); }

    /// The rows of a statement, or the message of the error that it raised.
    std::string Rows(std::string_view statement);
    /// The value of one expression.
    std::string Value(const std::string& expression) { return Rows("SELECT " + expression); }
    std::string Run(const TranslatedSQL& translated);
    /// SQLite's own statements.
    void Execute(const char* statements);

    sqlite3* mDatabase = nullptr;
};
