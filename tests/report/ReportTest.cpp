// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/report/ReportTest.h"

#include "platform/text.h"
#include "tests/support/Database.h"

#include <cstdio>

const char* const kProgramsHead = R"(title = "Programs"
[table]
name = "Programs"
fields = [
  {name = "Machine", type = "text", width = 50},
  {name = "Program", type = "text", width = 255},
  {name = "Size", type = "number"},
]
)";

const char* const kNotesHead = R"(title = "Notes"
[table]
name = "Notes"
fields = [{name = "PC", type = "text", width = 50}, {name = "Note", type = "text", width = 255}]
)";

ReportTest::ReportTest() : connection(OpenDatabase(folder.WriteFile("test.mdb", ""))) {
    RunSQL(*connection,
           "PRAGMA journal_mode = WAL; PRAGMA synchronous = OFF;"
           "CREATE TABLE Programs (Machine TEXT(50) COLLATE NOCASE, Program TEXT(255) COLLATE NOCASE, Size "
           "NUMERIC);"
           "CREATE TABLE Other (Machine TEXT(50) COLLATE NOCASE, Note TEXT(50), Flag BOOLEAN);");
}

void ReportTest::FillPrograms(int count) {
    ADODB::Recordset rows;
    rows.Open("Programs", connection, ADODB::Cursor::Keyset, ADODB::Lock::Optimistic);
    connection->BeginTrans();
    for (int i = 0; i < count; ++i) {
        char program[24];
        std::snprintf(program, sizeof program, "Program %06d", i + 1);
        rows.AddNew();
        rows.Fields().Item(0).SetText("PC" + std::to_string(i % 10));
        rows.Fields().Item(1).SetText(program);
        rows.Fields().Item(2).SetNumber(i);
        rows.Update();
    }
    connection->CommitTrans();
}

std::shared_ptr<ADODB::Recordset> ReportTest::Query(const std::string& sql) {
    auto rows = std::make_shared<ADODB::Recordset>();
    rows->Open(sql, connection);
    return rows;
}

std::unique_ptr<report::Report> ReportTest::Programs(const std::string& sections) {
    auto made = std::make_unique<report::Report>(kProgramsHead + sections, "programs.rpt");
    made->DatabaseTable(1).SetDataSource(Query("SELECT * FROM Programs"));
    return made;
}

std::string ReportTest::Rows(const report::Report& report) {
    std::string shown;
    report::Row row;
    for (std::size_t i = 0; i < report.RowCount(); ++i) {
        report.ReadRow(i, row);
        for (const ADODB::Value& value : row) {
            if (&value != row.data())
                shown += "|";
            if (const auto* number = std::get_if<double>(&value))
                shown += NumberText(*number);
            else
                shown += ADODB::IsNull(value) ? "-" : std::get<std::string>(value);
        }
        shown += "\n";
    }
    return shown;
}
