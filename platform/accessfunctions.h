// SPDX-License-Identifier: GPL-3.0-or-later
// The built-in functions of the desktop database's SQL, as functions of SQLite. One table lists them: the
// translator looks up names and argument counts in it, and a connection registers its functions from it.
//
// Null in, Null out, unless a function's entry says otherwise. Dates are texts yyyymmdd, with " hh:mm:ss"
// behind them where there is a time of day. What fails (overflow, a negative length) fails the statement with
// the error's description. A text that is no date gives Null: one machine's bad date must not stop a report
// over all of them.
#pragma once

#include <string_view>

struct sqlite3;

namespace Access {

class Call;

/// What the translator may rely on about a value. Truth is SQLite's 0 and 1 of a condition.
enum class ValueKind { Unknown, Number, Text, Date, Truth };

/// How a function treats its arguments and rows.
enum class FunctionTraits { None, TakesNull, Changing };

struct Function {
    /// In capitals; empty for what only the translator's own operators use.
    std::string_view name;
    /// The function's name in SQLite.
    const char* engineName;
    int leastArguments;
    int mostArguments;
    ValueKind result;
    /// Null where SQLite has the function of itself, and for the aggregates.
    void (*run)(Call&);
    FunctionTraits traits = FunctionTraits::None;
};

/// The function of this name, in any case and with or without a closing "$"; null if there is none.
const Function* FindFunction(std::string_view name);

} // namespace Access

/// Makes the functions known to a connection. Must be called before a translated statement is prepared.
void RegisterAccessFunctions(sqlite3* db);
