// SPDX-License-Identifier: GPL-3.0-or-later
// The roads to an open database and back, walked over a small fake of the main window.
#include "core/DatabaseSession.h"
#include "core/Globals.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "tests/support/Database.h"
#include "tests/support/FakeForm.h"
#include "tests/support/FixedClock.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>

namespace {

class DatabaseSessionTest : public testing::Test {
protected:
    DatabaseSessionTest()
        : session(form, prompts, clock, folder.Path(), [this] { form.told += "splash gone\n"; }) {
        form.session = &session;
        gDatabasePath.clear();
        gConnection.reset();
        gRecordset.reset();
    }
    ~DatabaseSessionTest() override {
        gConnection.reset();
        gRecordset.reset();
        gDatabasePath.clear();
    }

    /// A database whose table Version holds the given row, or none.
    std::string Database(const std::string& name, const std::string& version) {
        const std::string path = folder.Path(name);
        sqlite3* database = nullptr;
        sqlite3_open(path.c_str(), &database);
        std::string sql =
            "CREATE TABLE Version (VersionNumber TEXT(50), Compatibility TEXT(255), LastImportDate TEXT(8));";
        if (!version.empty())
            sql += "INSERT INTO Version VALUES (" + version + ");";
        EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
        return path;
    }

    std::string Told() { return std::exchange(form.told, ""); }

    TemporaryFolder folder;
    QueuedPrompts prompts;
    FixedClock clock{2001, 11, 20};
    FakeForm form;
    DatabaseSession session;
};

constexpr const char* kOwnVersion = "'1.20', '1.20;', NULL";

TEST_F(DatabaseSessionTest, KnowsADatabaseOfAFittingVersion) {
    struct {
        const char* why;
        const char* version;
        bool fits;
        const char* lastImport;
    } cases[] = {
        {"its own version, whatever the list says", "'1.20', '', '20011102'", true, "2001-11-02"},
        {"another version that supports this one", "'1.30', '1.19;1.20;', NULL", true, "n/a"},
        {"no row at all is refused without a word", "", false, nullptr},
    };
    for (const auto& c : cases) {
        const std::string path = Database(std::string(c.why) + ".mdb", c.version);
        EXPECT_EQ(session.ConnectSinDatabase(path), c.fits) << c.why;
        EXPECT_EQ(gConnection->IsOpen(), c.fits) << c.why;
        if (c.lastImport != nullptr) {
            EXPECT_EQ(gLastImportDate, c.lastImport) << c.why;
        }
        EXPECT_EQ(Told(), "");
    }
}

TEST_F(DatabaseSessionTest, RefusesOtherFilesInItsOwnWords) {
    for (const char* compatibility : {"1.20", "1.19;", ""}) {
        prompts.Expect(
            Box("Not a MOVA Database.",
                "Not a MOVA database or database is not a compatible version. This database supports the "
                "following versions : " +
                    std::string(compatibility) + " only.",
                MsgBoxStyle::kCritical));
        const std::string path = Database("x" + std::string(compatibility) + ".mdb",
                                          "'9.99', '" + std::string(compatibility) + "', NULL");
        EXPECT_FALSE(session.ConnectSinDatabase(path));
        EXPECT_FALSE(gConnection->IsOpen());
        EXPECT_EQ(Told(), "splash gone\n") << "it would cover the box";
    }
    prompts.Expect(Question{Question::Kind::Box, "Error #-1", {}, MsgBoxStyle::kCritical});
    EXPECT_FALSE(session.ConnectSinDatabase(folder.WriteFile("text.mdb", "no database, but some bytes")));
    EXPECT_EQ(Told(), "splash gone\n");
    prompts.Expect(Question{Question::Kind::Box, "Error #-1", {}, MsgBoxStyle::kCritical});
    const std::string other = Database("other.mdb", "");
    RunSQL(*OpenDatabase(other), "DROP TABLE Version");
    EXPECT_FALSE(session.ConnectSinDatabase(other));
    EXPECT_FALSE(gConnection->IsOpen()) << "another program's database is let go of";
    Told();

    sqlite3* reader = nullptr;
    sqlite3_open(other.c_str(), &reader);
    sqlite3_exec(reader,
                 "PRAGMA journal_mode = WAL; CREATE VIEW Version AS WITH RECURSIVE n(x) AS (SELECT 1 UNION "
                 "ALL SELECT x + 1 FROM n) SELECT * FROM n WHERE x < 0; BEGIN; SELECT * FROM sqlite_master",
                 nullptr, nullptr, nullptr);
    prompts.Expect(Question{Question::Kind::Box, "Error #-1", {}, MsgBoxStyle::kCritical});
    EXPECT_FALSE(session.ConnectSinDatabase(other)) << "its view would run for ever";
    EXPECT_GT(FileLength(other + "-wal"), 0U) << "another program reads its log, which is no second failure";
    sqlite3_close(reader);
}

TEST_F(DatabaseSessionTest, FirstActivationOpensAndTellsTheAgeOfTheData) {
    struct {
        const char* why;
        const char* imported;
        const char* told;
        int beeps;
    } cases[] = {
        {"eighteen days", "'20011102'", "Your data is 18 day(s) old.\n", 1},
        {"today's is not old", "'20011120'", "", 1},
        {"never imported", "NULL", "", 1},
        {"yesterday", "'20011119'", "Your data is 1 day(s) old.\n", 2},
        {"a day that its month lacks rolls over", "'20010931'", "Your data is 50 day(s) old.\n", 3},
    };
    for (const auto& c : cases) {
        gDatabasePath = Database(std::string(c.why) + ".mdb", "'1.20', '1.20;', " + std::string(c.imported));
        gFirstActivation = true;
        session.Activate();
        EXPECT_EQ(Told(), "config 1\nOpening Database ... Please wait\ntree\nenable\nDatabase Open\n" +
                              std::string(c.told))
            << c.why;
        EXPECT_EQ(prompts.Beeps(), c.beeps) << c.why;
        session.Activate();
        EXPECT_EQ(Told(), "") << "later activations do nothing";
    }
}

TEST_F(DatabaseSessionTest, FirstActivationWithoutADatabaseOffersToSelectOne) {
    const Question offer =
        Box("Open Database ?", "You have no default database selected. Start the open database dialog ?", 36);
    gFirstActivation = true;
    prompts.Expect(offer, MsgBoxAnswer::No);
    session.Activate();
    EXPECT_EQ(Told(), "config 1\nNo database selected\ndisable\nsplash gone\n");

    const std::string path = Database("found.mdb", "'1.20', '', '19990101'");
    gFirstActivation = true;
    prompts.Expect(offer, MsgBoxAnswer::Yes);
    prompts.Expect(OpenFile("Please select a database..."), path);
    session.Activate();
    EXPECT_EQ(gDatabasePath, path);
    EXPECT_EQ(Told(),
              "config 1\nNo database selected\ndisable\nsplash gone\nSelect MOVA Database ...\n\n"
              "Checking MOVA Database ...\nOpening Database ... Please wait\ntree\nenable\nDatabase Open\n")
        << "without the age of the data";
    EXPECT_EQ(prompts.FileDialogs().back().filter, "MOVA Database (*.mdb)|*.MDB");

    gDatabasePath = Database("empty.mdb", "");
    gFirstActivation = true;
    session.Activate();
    EXPECT_EQ(gDatabasePath, "");
    EXPECT_EQ(Told(), "config 1\nIncompatible database\ndisable\n");
}

TEST_F(DatabaseSessionTest, SelectTakesOneOrNothing) {
    gDatabasePath = "something";
    prompts.Expect(OpenFile("Please select a database..."));
    session.SelectDatabase();
    EXPECT_EQ(gDatabasePath, "");
    EXPECT_EQ(Told(), "Select MOVA Database ...\n\n");
    prompts.Expect(OpenFile("Please select a database..."), Database("no row.mdb", ""));
    session.SelectDatabase();
    EXPECT_EQ(gDatabasePath, "");
    EXPECT_EQ(Told(), "Select MOVA Database ...\n\nChecking MOVA Database ...\nNot a MOVA Database ...\n");
}

TEST_F(DatabaseSessionTest, RelinkReplacesTheConnectionAndCloseLetsGoOfIt) {
    ASSERT_TRUE(session.ConnectSinDatabase(Database("a.mdb", kOwnVersion)));
    gDatabasePath = Database("b.mdb", "'1.20', '', '20011102'");
    session.Relink();
    EXPECT_EQ(
        Told(),
        "\nChecking MOVA Database ...\nOpening Database ... Please wait\ntree\nenable\nDatabase Open\n");
    EXPECT_EQ(gLastImportDate, "2001-11-02");
    session.CloseDatabase();
    EXPECT_EQ(Told(), "Database closed...\ndisable\nclear\n");
    EXPECT_EQ(gDatabasePath, "");
    EXPECT_FALSE(gConnection->IsOpen());
}

TEST_F(DatabaseSessionTest, ANewDatabaseIsACopyOfTheTemplate) {
    const std::string path = folder.Path("new.mdb");
    const Question ask = OpenFile("Please select a new database name");
    prompts.Expect(ask);
    session.NewDatabase();
    EXPECT_EQ(Told(), "") << "cancelled";

    prompts.Expect(ask, path);
    prompts.Expect(
        Box("Template.sdb Not Found",
            "MOVA Admin is not installed properly! Please find the 'Template.sdb' file and move it to the '" +
                folder.Path() +
                "' directory. If you can't find this file, please re-install the MOVA admin module.",
            MsgBoxStyle::kQuestion));
    session.NewDatabase();
    EXPECT_FALSE(FileExists(path));

    Database("Template.sdb", "'1.20', '1.20;', '20011101'");
    folder.WriteFile("new.mdb", "an older file");
    const Question overwrite = Box("Overwrite?", "Are you sure you want to overwrite " + path + " ?", 276);
    prompts.Expect(ask, path);
    prompts.Expect(overwrite, MsgBoxAnswer::No);
    session.NewDatabase();
    EXPECT_EQ(folder.ReadFile("new.mdb"), "an older file");
    EXPECT_EQ(Told(), "");

    prompts.Expect(ask, path);
    prompts.Expect(overwrite, MsgBoxAnswer::Yes);
    prompts.Expect(Box("Created successfully!", "Database '" + path + "' created and opened successfully.",
                       MsgBoxStyle::kQuestion));
    session.NewDatabase();
    EXPECT_EQ(gDatabasePath, path);
    EXPECT_EQ(Told(),
              "Opening Database ... Please wait\ntree\nenable\nDatabase Open\nYour data is 19 day(s) old.\n");

    prompts.Expect(ask, folder.Path("Template.sdb"));
    prompts.Expect(Question{Question::Kind::Box, "Error#70", {}, MsgBoxStyle::kCritical});
    session.NewDatabase();
    EXPECT_TRUE(folder.Exists("Template.sdb")) << "without it no database could ever be made again";
    Told();

    // A template of no fitting version: the message comes all the same, with an empty name.
    DeleteFile(folder.Path("Template.sdb"));
    Database("Template.sdb", "");
    const std::string other = folder.Path("other.mdb");
    prompts.Expect(ask, other);
    prompts.Expect(Box("Created successfully!", "Database '' created and opened successfully."));
    session.NewDatabase();
    EXPECT_EQ(gDatabasePath, "");
    EXPECT_EQ(Told(), "Incompatible database\ndisable\n");
}

} // namespace
