// SPDX-License-Identifier: GPL-3.0-or-later
// A test's own look into a database: opened as the console opens it, asked and filled by the engine's own
// SQL.
#pragma once

#include "platform/adodb.h"

#include <memory>
#include <string>

/// An open connection to the database at `path`.
std::shared_ptr<ADODB::Connection> OpenDatabase(const std::string& path);
/// Runs statements; a failure fails the test.
void RunSQL(const ADODB::Connection& connection, const std::string& statements);
/// The rows of a query, fields joined by "|", rows by a line feed; Null reads as "<Null>". A query that fails
/// gives the engine's words.
std::string RowsOf(const ADODB::Connection& connection, const std::string& sql);
std::string RowsOf(sqlite3* database, const std::string& sql);
