// SPDX-License-Identifier: GPL-3.0-or-later
// Turns the desktop database's SQL into SQLite's. The statements of the system and of the customers' own
// reports are written in that dialect. The result runs on a connection that knows the functions of
// platform/accessfunctions.h.
//
// Texts compare without regard to case, also where no column lends its collation. An inner join is read from
// its left table, so rows come in that table's order. TOP n gives n rows, without those that tie with the
// last. And/Or/Not are logical, division by zero gives Null.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// A literal that stood on the right of a comparison with a column and became a numbered parameter. A number
/// without a fraction must be bound as an integer: a text column would compare 1.0 as "1.0".
using SQLLiteral = std::variant<double, std::string>;

struct TranslatedSQL {
    /// SQLite's SQL, with ?1, ?2 … where literals were lifted out. Statements that differ in those alone
    /// have the same text, so one prepared statement serves them all.
    std::string sql;
    std::vector<SQLLiteral> parameters;
    /// The table of a plain `SELECT * FROM <table> [WHERE …]`, as written and unquoted: the statement's rows
    /// are that table's rows and can be updated in place. Empty for any other statement.
    std::string updatableTable;
};

/// Translates one statement; a semicolon may close it. Raises error -1, "Syntax error in query: …" with the
/// place quoted, for what it cannot translate and for anything behind the statement.
TranslatedSQL TranslateAccessSQL(std::string_view text);

/// `text` as a quoted SQL text. Raises error -1 for a text with an apostrophe or a NUL: client PCs write
/// these names, and a statement with such a name breaks and never turns into another one.
std::string SQLText(std::string_view text);

/// Whether `text` is a single SELECT, behind comments, blanks and parentheses; its grammar is not looked at.
bool IsQuery(std::string_view text);
