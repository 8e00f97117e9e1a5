// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/report/ReportTest.h"

#include <chrono>

namespace {

using namespace std::chrono_literals;
using report::DocumentSource;
using report::Report;

const char* const kDetail = R"(
[[detail.line]]
objects = [{field = "{Programs.Program}"}]
)";

/// The five of three machines in the order that the queries of the tests give.
void FillFive(ADODB::Connection& connection) {
    for (const char* row :
         {"'b', 'Zip', 30", "'A', 'edit', 5", "NULL, 'Zip', 5", "'B', 'zip', 200", "'a', 'Paint', NULL"})
        connection.Execute(std::string("INSERT INTO Programs (Machine, Program, [Size]) VALUES (") + row +
                           ")");
}

TEST_F(ReportTest, FieldsAreBoundByNameThenByPosition) {
    connection->Execute("INSERT INTO Programs (Machine, Program, [Size]) VALUES ('PC1', 'Zip', 12)");
    connection->Execute("INSERT INTO Other (Machine, Note, Flag) VALUES ('PC1', 'x', True)");
    struct {
        const char* why;
        const char* sql;
        const char* rows;
    } cases[] = {
        {"names in another order and case", "SELECT [Size], PROGRAM, machine FROM Programs", "PC1|Zip|12\n"},
        {"an unknown name takes the column of its position",
         "SELECT Machine, Program AS Title, [Size] FROM Programs", "PC1|Zip|12\n"},
        {"a column may serve two fields", "SELECT Machine, [Size] FROM Programs", "PC1|12|12\n"},
        {"no column of that position: empty", "SELECT Machine FROM Programs", "PC1|-|-\n"},
        {"flags read as words where texts are meant", "SELECT Machine, Flag, Flag AS [Size] FROM Other",
         "PC1|True|-1\n"},
    };
    for (const auto& c : cases) {
        Report report(std::string(kProgramsHead) + kDetail, "programs.rpt");
        report.DatabaseTable(1).SetDataSource(Query(c.sql));
        report.Finish();
        EXPECT_EQ(Rows(report), c.rows) << c.why;
    }
}

TEST_F(ReportTest, OnlyAnOpenRecordsetCanBePoured) {
    Report report(std::string(kProgramsHead) + kDetail, "programs.rpt");
    report::Table& table = report.DatabaseTable(1);
    EXPECT_EQ(ErrorOf([&] { table.SetDataSource(Query("SELECT * FROM Programs"), 1); }), 5);
    EXPECT_EQ(ErrorOf([&] { table.SetDataSource(std::make_shared<ADODB::Recordset>()); }), 3704);
    EXPECT_EQ(ErrorOf([&] { table.SetDataSource(nullptr); }), 91);
    EXPECT_EQ(ErrorOf([&] { report.DatabaseTable(2); }), 9);
    EXPECT_TRUE(report.IsComplete()) << "without data a report is empty";
    EXPECT_EQ(report.RowCount(), 0U);
}

TEST_F(ReportTest, ARecordsetThatHasMovedIsReadFromItsFirstRow) {
    FillPrograms(3);
    Report report(std::string(kProgramsHead) + kDetail, "programs.rpt");
    const auto rows = Query("SELECT * FROM Programs");
    rows->MoveNext();
    report.DatabaseTable(1).SetDataSource(rows);
    report.Finish();
    EXPECT_EQ(report.RowCount(), 3U);
    EXPECT_TRUE(rows->IsOpen()) << "its owner may walk it again";
    rows->MoveFirst();
    EXPECT_FALSE(rows->EndOfFile());
    EXPECT_EQ(report.RowCount(), 3U);
}

TEST_F(ReportTest, ASelectionTakesTheDocumentsPlaceUntilItIsTakenBack) {
    FillFive(*connection);
    const std::string document =
        "selection = '{Programs.Size} < 100'\n" + std::string(kProgramsHead) + kDetail;
    struct {
        const char* why;
        const char* selection;
        std::size_t rows;
    } cases[] = {
        {"the document's own: a Null is not less", "", 3},
        {"in its place, not with it", "{Programs.Program} = 'ZIP'", 3},
        {"of no row", "false", 0},
        {"the document's own again", "", 3},
    };
    Report report(document, "programs.rpt");
    for (const auto& c : cases) {
        report.RecordSelectionFormula(c.selection);
        report.DatabaseTable(1).SetDataSource(Query("SELECT * FROM Programs"));
        report.Finish();
        EXPECT_EQ(report.RowCount(), c.rows) << c.why;
    }
    EXPECT_EQ(ErrorOf([&] { report.RecordSelectionFormula("{Programs.None} = 1"); }), report::kMalformed);
}

TEST_F(ReportTest, GroupsSortRowsOrTakeThemAsTheyCome) {
    FillFive(*connection);
    const auto group = [](const char* field, const char* order) {
        return std::string("[[group]]\nfield = \"{Programs.") + field + "}\"\norder = \"" + order + "\"\n";
    };
    struct {
        const char* why;
        std::string groups;
        const char* rows;
    } cases[] = {
        {"as read: nothing moves", group("Machine", "as-read"),
         "b|Zip|30\nA|edit|5\n-|Zip|5\nB|zip|200\na|Paint|-\n"},
        {"texts without case, Null first; equal ones keep their order", group("Machine", "ascending"),
         "-|Zip|5\nA|edit|5\na|Paint|-\nb|Zip|30\nB|zip|200\n"},
        {"numbers by value, not by digits", group("Size", "descending"),
         "B|zip|200\nb|Zip|30\nA|edit|5\n-|Zip|5\na|Paint|-\n"},
        {"the inner sorts within the outer", group("Program", "descending") + group("Machine", "ascending"),
         "-|Zip|5\nb|Zip|30\nB|zip|200\na|Paint|-\nA|edit|5\n"},
        {"an outer one as read keeps its stretches apart",
         group("Machine", "as-read") + group("Size", "ascending"),
         "b|Zip|30\nA|edit|5\n-|Zip|5\nB|zip|200\na|Paint|-\n"},
        {"an inner one as read keeps the rows' order",
         group("Machine", "descending") + group("Size", "as-read"),
         "b|Zip|30\nB|zip|200\nA|edit|5\na|Paint|-\n-|Zip|5\n"},
    };
    for (const auto& c : cases) {
        const auto report = Programs(c.groups + kDetail);
        report->Finish();
        EXPECT_EQ(Rows(*report), c.rows) << c.why;
    }
}

TEST_F(ReportTest, SortedRowsAreKnownWhenAllAreRead) {
    FillPrograms(500);
    const std::string groups = "[[group]]\nfield = \"{Programs.Program}\"\norder = \"descending\"\n";
    const auto sorted = Programs(groups + kDetail);
    EXPECT_TRUE(sorted->Work(0ms));
    EXPECT_EQ(sorted->RowCount(), 0U);
    sorted->Finish();
    EXPECT_EQ(sorted->RowCount(), 500U);
    EXPECT_TRUE(Rows(*sorted).starts_with("PC9|Program 000500|"));

    const auto asRead = Programs(kDetail);
    EXPECT_TRUE(asRead->Work(0ms));
    EXPECT_GT(asRead->RowCount(), 0U) << "the first page need not wait";
    EXPECT_LT(asRead->RowCount(), 500U);
}

struct Disturbance {
    const char* how;
    void (*disturb)(const std::shared_ptr<ADODB::Connection>& connection, ADODB::Recordset& rows);
};

using Shared = std::shared_ptr<ADODB::Connection>;

void OpenToWrite(ADODB::Recordset& rows, const Shared& connection) {
    rows.Open("SELECT * FROM Programs", connection, ADODB::Cursor::Keyset, ADODB::Lock::Optimistic);
}

const Disturbance kDisturbances[] = {
    {"moved to the first row", [](const Shared&, ADODB::Recordset& rows) { rows.MoveFirst(); }},
    {"moved on, when the report has passed its end",
     [](const Shared&, ADODB::Recordset& rows) {
         EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), Errors::kNoCurrentRow);
     }},
    {"closed", [](const Shared&, ADODB::Recordset& rows) { rows.Close(); }},
    {"its connection closed", [](const Shared& connection, ADODB::Recordset&) { connection->Close(); }},
    {"a transaction begun", [](const Shared& connection, ADODB::Recordset&) { connection->BeginTrans(); }},
    {"a bulk load begun", [](const Shared& connection, ADODB::Recordset&) { connection->BeginBulkLoad(); }},
    {"its rows deleted",
     [](const Shared& connection, ADODB::Recordset&) { connection->Execute("DELETE * FROM Programs"); }},
    {"a row added by another recordset",
     [](const Shared& connection, ADODB::Recordset&) {
         ADODB::Recordset other;
         OpenToWrite(other, connection);
         other.AddNew();
         other.Fields().Item(1).SetText("new");
         other.Update();
     }},
    {"its first row changed by another recordset",
     [](const Shared& connection, ADODB::Recordset&) {
         ADODB::Recordset other;
         OpenToWrite(other, connection);
         other.Fields().Item(1).SetText("changed");
         other.Update();
     }},
};

class DisturbedReport : public ReportTest, public testing::WithParamInterface<Disturbance> {};

TEST_P(DisturbedReport, IsWhole) {
    FillPrograms(1000);
    const auto rows = Query("SELECT * FROM Programs");
    Report report(std::string(kProgramsHead) + kDetail, "programs.rpt");
    report.DatabaseTable(1).SetDataSource(rows);
    ASSERT_TRUE(report.Work(0ms));
    connection->Execute("SELECT * FROM Other");
    ASSERT_LT(report.RowCount(), 1000U) << "a query disturbs nobody";
    GetParam().disturb(connection, *rows);
    EXPECT_TRUE(report.IsComplete());
    ASSERT_EQ(report.RowCount(), 1000U);
    EXPECT_TRUE(Rows(report).starts_with("PC0|Program 000001|0\n"));
    EXPECT_TRUE(Rows(report).ends_with("PC9|Program 001000|999\n"));
}

INSTANTIATE_TEST_SUITE_P(Ways, DisturbedReport, testing::ValuesIn(kDisturbances),
                         [](const auto& way) { return "Way" + std::to_string(way.index); });

TEST_F(ReportTest, TwoReportsOfOneRecordsetAreBothWhole) {
    FillPrograms(300);
    const auto rows = Query("SELECT * FROM Programs");
    Report first(std::string(kProgramsHead) + kDetail, "programs.rpt");
    Report second(std::string(kProgramsHead) + kDetail, "programs.rpt");
    first.DatabaseTable(1).SetDataSource(rows);
    first.Work(0ms);
    second.DatabaseTable(1).SetDataSource(rows);
    second.Finish();
    first.Finish();
    EXPECT_EQ(first.RowCount(), 300U);
    EXPECT_EQ(Rows(first), Rows(second));
}

TEST_F(ReportTest, AReportThatIsGoneIsNotAskedToReadOn) {
    FillPrograms(300);
    const auto rows = Query("SELECT * FROM Programs");
    {
        Report report(std::string(kProgramsHead) + kDetail, "programs.rpt");
        report.DatabaseTable(1).SetDataSource(rows);
        report.Work(0ms);
    }
    connection->Close();
    EXPECT_FALSE(rows->IsOpen());
}

TEST_F(ReportTest, AFailureWhileAnotherClosesIsToldByTheNextWork) {
    FillPrograms(300);
    connection->Execute("UPDATE Programs SET [Size] = 99999 WHERE Program = 'Program 000200'");
    Report report(std::string(kProgramsHead) + kDetail, "programs.rpt");
    report.DatabaseTable(1).SetDataSource(
        Query("SELECT Machine, Program, CInt([Size]) AS [Size] FROM Programs"));
    ASSERT_TRUE(report.Work(0ms));
    EXPECT_EQ(ErrorOf([&] { connection->Close(); }), 0) << "closing goes on";
    EXPECT_FALSE(connection->IsOpen());
    EXPECT_FALSE(report.IsComplete());
    EXPECT_NE(ErrorOf([&] { report.Work(0ms); }), 0);
    EXPECT_FALSE(report.Work(0ms)) << "told once; what was read stays";
    EXPECT_EQ(report.RowCount(), 199U);
}

TEST_F(ReportTest, StoppingKeepsWhatIsReadAndRefreshingReadsItAll) {
    FillPrograms(300);
    const auto report = Programs(kDetail);
    report->Work(0ms);
    const std::size_t read = report->RowCount();
    const int generation = report->Generation();
    report->Stop();
    EXPECT_TRUE(report->IsComplete());
    EXPECT_EQ(report->RowCount(), read);
    EXPECT_NE(report->Generation(), generation) << "who shows it lays it out again";

    connection->Execute("DELETE * FROM Programs WHERE Machine = 'PC0'");
    report->Refresh();
    report->Finish();
    EXPECT_EQ(report->RowCount(), 270U);
    connection->Close();
    EXPECT_EQ(ErrorOf([&] { report->Refresh(); }), Errors::kRecordsetClosed);
    EXPECT_EQ(report->RowCount(), 270U) << "what is on show stays";
}

const char* const kWithSub = R"(
[[detail.line]]
objects = [{field = "{Programs.Machine}"}]
[[detail.line]]
objects = [{subreport = "notes.rpt", name = "Notes", join = ["{Programs.Machine}", "{Notes.PC}"]}]
)";
const std::string kNotes =
    std::string(kNotesHead) + "[[detail.line]]\nobjects = [{field = \"{Notes.Note}\"}]\n";

TEST_F(ReportTest, ASubreportsRowsAreFoundByTheirMachine) {
    for (const char* row :
         {"'pc1', 'one'", "'PC2', 'two'", "NULL, 'lost'", "'Pc1', 'three'", "'', 'nameless'"})
        connection->Execute(std::string("INSERT INTO Other (Machine, Note) VALUES (") + row + ")");
    connection->Execute("INSERT INTO Programs (Machine) VALUES ('PC1')");
    const DocumentSource documents = [](const std::string&) { return kNotes; };
    Report report(std::string(kProgramsHead) + kWithSub, "programs.rpt", documents);
    // The second object of the third section, on its second line.
    Report& notes = report.Object(3, 2).OpenSubreport();
    const report::ObjectDefinition& object = report.Definition().sections[2].lines[1].objects[0];
    EXPECT_EQ(report.Object(3, 2).Name(), "Notes");
    EXPECT_EQ(ErrorOf([&] { report.Object(3, 1).OpenSubreport(); }), 5);
    report.DatabaseTable(1).SetDataSource(Query("SELECT * FROM Programs"));
    report.Finish();
    EXPECT_TRUE(report.RowsJoinedTo(object, std::string("PC1")).empty()) << "nothing was poured into it";

    notes.DatabaseTable(1).SetDataSource(Query("SELECT Machine AS PC, Note FROM Other ORDER BY Note DESC"));
    EXPECT_EQ(report.RowCount(), 0U) << "rows wait for those that stand in them";
    report.Finish();
    EXPECT_EQ(report.RowCount(), 1U);
    using Places = std::vector<std::size_t>;
    EXPECT_EQ(Rows(notes), "PC2|two\nPc1|three\npc1|one\n|nameless\n-|lost\n");
    EXPECT_EQ(report.RowsJoinedTo(object, std::string("PC1")), (Places{1, 2}));
    EXPECT_EQ(report.RowsJoinedTo(object, std::string("pc2")), (Places{0}));
    EXPECT_EQ(report.RowsJoinedTo(object, std::string()), (Places{3}));
    EXPECT_EQ(report.RowsJoinedTo(object, {}), Places{}) << "Null joins nothing";
    EXPECT_EQ(report.RowsJoinedTo(object, 7.0), Places{});
}

TEST_F(ReportTest, SubreportsThatCanNotBeAreRefused) {
    const std::string document = std::string(kProgramsHead) + kWithSub;
    const auto error = [&](const DocumentSource& documents) {
        return ErrorOf([&] { Report(document, "programs.rpt", documents); });
    };
    EXPECT_EQ(error({}), Errors::kFileNotFound);
    EXPECT_EQ(error([&](const std::string&) { return document; }), report::kMalformed) << "one in the other";
    EXPECT_EQ(error([&](const std::string&) { return std::string(kProgramsHead); }), report::kMalformed)
        << "it has no field to join";
}

TEST_F(ReportTest, ADocumentFileFindsItsSubreportsBesideIt) {
    folder.WriteFile("notes.rpt", kNotes);
    const std::string path = folder.WriteFile("programs.RPT", std::string(kProgramsHead) + kWithSub);
    EXPECT_EQ(Report::OpenFile(path)->Definition().title, "Programs");
    EXPECT_EQ(ErrorOf([&] { Report::OpenFile(folder.Path("none.RPT")); }), Errors::kFileNotFound);

    std::string outside = std::string(kProgramsHead) + kWithSub;
    outside.replace(outside.find("notes.rpt"), 9, "../notes.rpt");
    const std::string inner = folder.WriteFile("inner/programs.RPT", outside);
    EXPECT_EQ(ErrorOf([&] { Report::OpenFile(inner); }), Errors::kFileNotFound) << "not from elsewhere";
}

TEST_F(ReportTest, TextsAreSetByName) {
    const auto report = Programs("[[page-footer.line]]\nobjects = [{text = \"\", name = \"CopLine\"}]\n");
    report->SetText("CopLine", "set");
    EXPECT_EQ(report->Text(report->Definition().sections.back().lines[0].objects[0]), "set");
    EXPECT_EQ(ErrorOf([&] { report->SetText("copline", ""); }), Errors::kOutOfRange) << "names are exact";
    EXPECT_EQ(ErrorOf([&] { report->OnFormat("Section99", {}); }), Errors::kOutOfRange);
}

} // namespace
