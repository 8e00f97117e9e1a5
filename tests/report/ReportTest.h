// SPDX-License-Identifier: GPL-3.0-or-later
// A small database to make reports of: machines, and the programs on them. Documents are put together from
// a head that names the table and whatever sections a test is about.
#pragma once

#include "platform/adodb.h"
#include "platform/report/Report.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

class ReportTest : public testing::Test {
protected:
    ReportTest();

    /// Fills table Programs with `count` rows: machine "PC0" to "PC9" in turn, "Program 000001" and so on.
    void FillPrograms(int count);
    std::shared_ptr<ADODB::Recordset> Query(const std::string& sql);
    /// A report of the table Programs, bound to all of it in the order of its insertion.
    std::unique_ptr<report::Report> Programs(const std::string& sections);

    /// The rows of a report, complete or not: "a|b|c", Null as "-", a line each.
    static std::string Rows(const report::Report& report);

    TemporaryFolder folder;
    std::shared_ptr<ADODB::Connection> connection;
};

/// The head of a document of the table Programs, and of one that can stand in it: of PC and Note.
extern const char* const kProgramsHead;
extern const char* const kNotesHead;
