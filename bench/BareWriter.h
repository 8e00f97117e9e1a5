// SPDX-License-Identifier: GPL-3.0-or-later
// The yardstick of the import: the same files read in the same order, their rows written by prepared
// statements into the same schema, with all its indexes and foreign keys and the same commits, and nothing
// else: no stamps tested, no edge of the format minded, every file taken for a well-formed one of a
// machine that the database has not seen.
#pragma once

#include <string>

/// Writes the files of `folder` into the empty inventory database `database`; returns the rows written.
long BareWrite(const std::string& folder, const std::string& database);
