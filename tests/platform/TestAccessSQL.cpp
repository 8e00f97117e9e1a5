// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialectSamples.h"
#include "DialectTest.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Texts.h"

#include <random>

namespace {

using AccessSQL = DialectTest;

struct StatementCase {
    const char* why;
    const char* statement;
    const char* rows;
};

TEST_F(AccessSQL, GivesTheRowsThatTheDesktopDatabaseGives) {
    const StatementCase cases[] = {
        {"a name is found in any case, and so are table and column",
         "select computername from NET where computername='pc0001'", "PC0001"},
        {"a join reads its left table in order of insertion, though the right one has no such order",
         R"(SELECT DeviceDisplay.[DAC Type] FROM DeviceData INNER JOIN DeviceDisplay ON DeviceData.[Device Auto ID]
            = DeviceDisplay.[Device Auto ID] WHERE DeviceData.ConfID=0)",
         "B\nA"},
        {"joins nest in parentheses",
         R"(SELECT NET.COMPUTERNAME, PC.RAM, MSOffice.[MS Word] FROM (NET INNER JOIN PC ON NET.COMPUTERNAME =
            PC.COMPUTERNAME) INNER JOIN MSOffice ON (PC.COMPUTERNAME = MSOffice.COMPUTERNAME) AND
            (PC.ConfID = MSOffice.ConfID))",
         "PC0002|131072|NULL\nPC0001|65536|9.0"},
        {"a right join keeps the machines of the right table",
         R"(SELECT NET.COMPUTERNAME FROM Personal RIGHT JOIN NET ON NET.COMPUTERNAME = Personal.COMPUTERNAME
            WHERE Personal.COMPUTERNAME IS NULL)",
         "PC0003"},
        {"tables with a comma between are joined by the condition",
         "SELECT PC.RAM FROM NET, PC WHERE NET.COMPUTERNAME=PC.COMPUTERNAME AND PC.ConfID=0",
         "131072\n65536"},
        {"TOP counts within a subselect alone, behind its order",
         R"(SELECT COMPUTERNAME, (SELECT TOP 1 RAM FROM PC WHERE PC.COMPUTERNAME = NET.COMPUTERNAME
            ORDER BY RAM DESC) FROM NET)",
         "PC0002|131072\nPC0001|131072\nPC0003|NULL"},
        {"TOP counts within its member of a union, first or last",
         "SELECT TOP 1 COMPUTERNAME FROM NET UNION ALL SELECT TOP 2 COMPUTERNAME FROM PC",
         "PC0002\nPC0001\nPC0002"},
        {"members of a union may stand in parentheses, the order is the union's",
         "(SELECT RAM FROM PC WHERE ConfID=1) UNION (SELECT CDRom FROM Drives) ORDER BY 1 DESC;",
         "131072\n2\n1"},
        {"a query serves as a table",
         R"(SELECT d.Most FROM (SELECT COMPUTERNAME, Max(RAM) AS Most FROM PC GROUP BY COMPUTERNAME) AS d
            WHERE d.COMPUTERNAME='PC0001')",
         "131072"},
        {"First and Last go by the order of insertion within a group",
         "SELECT COMPUTERNAME, First(RAM), Last(RAM), Count(*) FROM PC GROUP BY COMPUTERNAME",
         "PC0001|65536|131072|2\nPC0002|131072|131072|1"},
        {"only one odd device: eleven characters are not the twelve of a sound one",
         Samples::kDeviceConflicts, "PC0001|0|00 00 00 00|Modem|1"},
        {"the office's name comes from either configuration, none is Null", Samples::kOfficeOfAll,
         "PC0001|0|9.0|Microsoft Office 2000\nPC0002|0|NULL|NULL"},
        {"all current drives stand against the fixed original ones", Samples::kComparison,
         "PC0001|CD Rom|1|2\nPC0001|CPU|Slow|Slow\nPC0001|Hard Disk Size|6000|6000\nPC0002|CPU|Fast|NULL"},
        {"EXISTS and IN take queries",
         R"(SELECT COMPUTERNAME FROM NET WHERE NOT EXISTS (SELECT * FROM PC WHERE PC.COMPUTERNAME =
            NET.COMPUTERNAME) OR COMPUTERNAME IN (SELECT COMPUTERNAME FROM Drives))",
         "PC0001\nPC0003"},
        {"flags compare with the constants of every spelling",
         "SELECT RAM FROM PC WHERE [CPU DLL FPU]=True AND [CPU DLL FPU]=Yes AND NOT [CPU DLL FPU]=Off",
         "65536\n131072"},
        {"computed texts sort without regard to case, as columns do",
         "SELECT Trim([Logon User Name]) AS Who FROM NET WHERE ORGFileDate='' ORDER BY Who DESC",
         "Ellen\narno\nNULL"},
        {"groups of computed texts are of one case",
         "SELECT Count(*) FROM Net GROUP BY IIf(COMPUTERNAME='PC0001','a','A') & ''", "3"},
        {"a sum that leaves 64 bits goes on as a double", "SELECT Sum(9223372036854775807) > 2E19 FROM NET",
         "-1"},
        {"names that are words of the engine's grammar",
         "SELECT Glob.RAM AS [Index], Glob.ConfID AS Query FROM PC AS Glob WHERE Glob.RAM<70000", "65536|0"},
        {"a field may be picked with an exclamation mark",
         "SELECT [Net]![COMPUTERNAME] FROM Net WHERE Net!COMPUTERNAME='PC0003'", "PC0003"},
    };
    for (const StatementCase& c : cases)
        EXPECT_EQ(Rows(c.statement), c.rows) << c.why << '\n' << c.statement;
}

TEST_F(AccessSQL, ChangesRows) {
    const struct {
        const char* why;
        const char* statement;
        const char* query;
        const char* rows;
    } cases[] = {
        {"a value may hold the other quote and a doubled one",
         "INSERT INTO Personal (COMPUTERNAME, [Name], Surname) VALUES ('PC0003', \"O'Neil\", 'D''Arc')",
         "SELECT Name, Surname FROM Personal WHERE COMPUTERNAME='PC0003'", "O'Neil|D'Arc"},
        {"rows come from a query", "INSERT INTO Input (COMPUTERNAME, ConfID) SELECT COMPUTERNAME, 1 FROM Net",
         "SELECT Count(*) FROM Input", "3"},
        {"columns may bear the table's name",
         "UPDATE Personal SET Personal.Building = UCase(Building) WHERE Personal.COMPUTERNAME='pc0002'",
         "SELECT Building FROM Personal WHERE COMPUTERNAME='PC0002'", "SOUTH"},
        {"the star of a delete counts for nothing",
         "DELETE Personal.* FROM Personal WHERE Building LIKE 'n*'", "SELECT COMPUTERNAME FROM Personal",
         "PC0002\nPC0003"},
        {"a default is written with the dialect's constants",
         "CREATE TABLE [New Table] ([A Column] text(50) COLLATE NOCASE, Flag yesno DEFAULT Yes)",
         "SELECT sql FROM sqlite_master WHERE name='New Table'",
         "CREATE TABLE [New Table] ( [A Column] text ( 50 ) COLLATE NOCASE , Flag yesno DEFAULT -1 )"},
        {"and dropped again", "DROP TABLE [New Table]",
         "SELECT Count(*) FROM sqlite_master WHERE name='New Table'", "0"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Rows(c.statement), "") << c.why;
        EXPECT_EQ(Rows(c.query), c.rows) << c.why;
    }
}

TEST_F(AccessSQL, RefusesWhatItCannotTranslateAndQuotesThePlace) {
    const struct {
        const char* why;
        std::string statement;
        const char* complaint;
    } cases[] = {
        {"a second statement", "SELECT * FROM Net; DELETE * FROM Net", "near \"OM Net; DELETE * FROM Net\""},
        {"a text that ended early", "SELECT * FROM Net WHERE COMPUTERNAME='O'BRIEN'",
         "closing ', near \"'O'BRIEN'\""},
        {"a name with a text's end and a comment", "DELETE * FROM Net WHERE COMPUTERNAME='x' OR 1=1 --'",
         "closing '"},
        {"a comment in the middle hides nothing", "DELETE * FROM Net WHERE COMPUTERNAME='x' /* AND */",
         "does not belong here"},
        {"the engine's own statements", "PRAGMA journal_mode", "begins with SELECT"},
        {"nothing at all", "  ", "begins with SELECT"},
        {"the engine's own functions", "SELECT load_extension('x')", "undefined function \"load_extension\""},
        {"a parameter without a value", "SELECT * FROM Net WHERE COMPUTERNAME=?", "no meaning here"},
        {"a NUL", std::string("SELECT * FROM Net WHERE a='\0'", 29), "NUL"},
        {"too few arguments", "SELECT Left(COMPUTERNAME) FROM Net", "wrong number of arguments for \"Left\""},
        {"a share of the rows", "SELECT TOP 10 PERCENT * FROM Net", "PERCENT"},
        {"a bracket without its twin", "SELECT [Logon FROM Net", "closing ]"},
        {"no day of the calendar", "SELECT #30/30/2001#", "no date"},
        {"an endless name", std::string(70000, 'x'), "too long"},
    };
    for (const auto& c : cases) {
        const std::string rows = Rows(c.statement);
        EXPECT_TRUE(rows.starts_with("Syntax error in query: ")) << c.why << '\n' << rows;
        EXPECT_NE(rows.find(c.complaint), std::string::npos) << c.why << '\n' << rows;
    }
    EXPECT_EQ(Rows("SELECT Count(*) FROM Net"), "3") << "none of them did anything";
    EXPECT_TRUE(Rows("SELECT [No Such Column] FROM Net").starts_with("engine: no such column"))
        << "a misspelled column must never read as a text";
}

TEST_F(AccessSQL, NestsAsDeepAsPeopleWriteAndRefusesMore) {
    const auto nested = [](int depth, const char* open, const char* core, const char* close) {
        return "SELECT " + Repeated(open, depth) + core + Repeated(close, depth);
    };
    EXPECT_EQ(Rows(nested(40, "(", "1", ")")), "1");
    for (const char* open : {"(", "NOT ", "- ", "IIf(1,", "(SELECT ", "1 IN (", "2^("})
        EXPECT_NE(Rows(nested(5000, open, "1", "")).find("nested too deeply"), std::string::npos) << open;
    EXPECT_NE(Rows("SELECT * FROM " + std::string(5000, '(')).find("nested too deeply"), std::string::npos);
}

TEST(TranslateAccessSQL, LiftsLiteralsSoThatMachinesShareAStatement) {
    const TranslatedSQL one = TranslateAccessSQL("SELECT * FROM OS WHERE COMPUTERNAME='PC0001' AND ConfID=1");
    const TranslatedSQL other =
        TranslateAccessSQL("SELECT * FROM OS WHERE COMPUTERNAME='It''s' AND ConfID=-2.5");
    EXPECT_EQ(one.sql, other.sql);
    EXPECT_EQ(one.parameters, (std::vector<SQLLiteral>{"PC0001", 1.0}));
    EXPECT_EQ(other.parameters, (std::vector<SQLLiteral>{"It's", -2.5}));

    // Where a group may name the same expression, where no column lends the value its type, and where a
    // double could not hold it.
    for (const char* statement : {"SELECT RAM=5, (SELECT RAM FROM PC WHERE RAM=5) FROM PC",
                                  "SELECT * FROM PC WHERE 5=RAM OR 5=5 OR RAM+1=5 OR Left(RAM,1)='5'",
                                  "SELECT * FROM PC WHERE RAM LIKE '5' OR RAM IN (5) OR RAM BETWEEN 5 AND 6",
                                  "SELECT * FROM DrivesData WHERE [Drive Size]=9007199254740993"})
        EXPECT_TRUE(TranslateAccessSQL(statement).parameters.empty()) << statement;
}

TEST(TranslateAccessSQL, NamesTheTableWhoseRowsCanBeUpdated) {
    EXPECT_EQ(TranslateAccessSQL("SELECT * FROM Net").updatableTable, "Net");
    EXPECT_EQ(TranslateAccessSQL("select * from [Net] where COMPUTERNAME='x' and 1=1;").updatableTable,
              "Net");
    for (const char* statement :
         {"SELECT * FROM Net ORDER BY COMPUTERNAME", "SELECT TOP 1 * FROM Net", "SELECT DISTINCT * FROM Net",
          "SELECT *, 1 FROM Net", "SELECT * FROM Net AS n", "SELECT * FROM Net, PC",
          "SELECT * FROM (SELECT * FROM Net)", "SELECT * FROM Net UNION SELECT * FROM Net",
          "SELECT * FROM Net GROUP BY COMPUTERNAME", "DELETE * FROM Net"})
        EXPECT_EQ(TranslateAccessSQL(statement).updatableTable, "") << statement;
}

TEST_F(AccessSQL, KeepsANameInsideItsQuotes) {
    for (const std::string name :
         {"x; DELETE * FROM Net", "x\" OR \"\"=\"", "#1#[%]--", "\\", "\xFF\xC3", ""}) {
        const TranslatedSQL one = TranslateAccessSQL("SELECT * FROM Net WHERE COMPUTERNAME=" + SQLText(name));
        EXPECT_EQ(one.parameters, std::vector<SQLLiteral>{name});
        EXPECT_EQ(Run(one), "") << name;
    }
    for (const std::string& name : {std::string("O'BRIEN"), std::string("a\0b", 3), std::string("''")}) {
        const RunTimeError failure = FailureOf([&] { SQLText(name); });
        EXPECT_EQ(failure.number, -1) << name;
        EXPECT_TRUE(failure.description.starts_with("Syntax error in query")) << failure.description;
    }
}

TEST(IsQuery, TellsQueriesFromTablesAndCommands) {
    for (const char* query : {"SELECT * FROM Net", "SELECT ';' FROM Net",
                              "\r\n -- all\n /* ; */ ((select 1) union (select 2)) ;; "})
        EXPECT_TRUE(IsQuery(query)) << query;
    for (const char* other : {"SELECT 1; SELECT 2", "SELECT 1; 'x", "UNINSTALLDATA", "SELECTED", "[SELECT]",
                              "DELETE * FROM Net", ""})
        EXPECT_FALSE(IsQuery(other)) << other;
}

// Whatever comes of a damaged statement, it is an error or a single statement that the engine can look at.
TEST_F(AccessSQL, SurvivesDamagedStatements) {
    constexpr const char* kPieces[] = {
        "'",  "\"",   "[",     "]",     "#",     "(",       ")",       ";",     "--",  "*",
        "&",  "^",    " NOT ", " TOP ", " AND ", "SELECT ", " UNION ", "IIf(",  " . ", "\\",
        "!=", " IN ", " MOD ", "Left(", "\xC3",  "1E400",   "#1/1/1#", " LIKE "};
    std::mt19937 random(20011102);
    const auto oneOf = [&random](const auto& texts) { return texts[random() % std::size(texts)]; };
    int translated = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string text = Damaged(random, oneOf(Samples::kStatements),
                                         random() % 2 == 0 ? oneOf(kPieces) : oneOf(Samples::kStatements));
        try {
            const TranslatedSQL result = TranslateAccessSQL(text);
            ++translated;
            sqlite3_stmt* statement = nullptr;
            const char* rest = nullptr;
            if (sqlite3_prepare_v2(mDatabase, result.sql.c_str(), -1, &statement, &rest) == SQLITE_OK) {
                EXPECT_EQ(std::string(rest), "") << text;
                EXPECT_EQ(static_cast<std::size_t>(sqlite3_bind_parameter_count(statement)),
                          result.parameters.size())
                    << text;
            }
            sqlite3_finalize(statement);
        } catch (const RunTimeError& error) {
            EXPECT_TRUE(error.description.starts_with("Syntax error in query: ") ||
                        error.number == Errors::kOverflow)
                << error.description;
        }
    }
    EXPECT_GT(translated, 1000) << "the damage must leave enough statements whole to say anything";
}

} // namespace
