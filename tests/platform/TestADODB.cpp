// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files.h"
#include "tests/support/Database.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

using ADODB::Cursor;
using ADODB::Lock;

class ADODBTest : public testing::Test {
protected:
    ADODBTest() : path(folder.WriteFile("test.mdb", "")), connection(std::make_shared<ADODB::Connection>()) {
        connection->ConnectionString("Driver={Some Driver (*.mdb)};DBQ=" + path + ";USR=Admin;PWD=x;");
        connection->Open();
        RunSQL(*connection,
               "PRAGMA journal_mode = WAL;"
               "CREATE TABLE Net (COMPUTERNAME TEXT(20) COLLATE NOCASE PRIMARY KEY, \"Logon Date\" TEXT(8) "
               "COLLATE NOCASE);"
               "CREATE TABLE PC (COMPUTERNAME TEXT(50) COLLATE NOCASE REFERENCES Net ON DELETE CASCADE,"
               " ConfID NUMERIC, RAM NUMERIC, FPU BOOLEAN, Name TEXT(5) COLLATE NOCASE);"
               "CREATE INDEX PCParent ON PC (COMPUTERNAME);"
               "INSERT INTO Net VALUES ('PC1', '20011102'), ('PC2', NULL);"
               "INSERT INTO PC VALUES ('PC1', 0, 4294967296, -1, 'née'), ('PC1', 1, 1.5, 0, NULL);");
    }

    std::string One(const std::string& sql) {
        ADODB::Recordset rows;
        rows.Open(sql, connection);
        return rows.EndOfFile() ? "nothing" : std::string(rows.Fields().Item(0).Text());
    }

    TemporaryFolder folder;
    std::string path;
    std::shared_ptr<ADODB::Connection> connection;
};

TEST_F(ADODBTest, ReadsValuesByTheirColumns) {
    ADODB::Recordset rows;
    rows.Open("SELECT * FROM PC", connection);
    ASSERT_FALSE(rows.EndOfFile());
    ADODB::FieldList& fields = rows.Fields();
    ASSERT_EQ(fields.Count(), 5U);
    EXPECT_EQ(fields.Item(0).Type(), ADODB::kTypeText);
    EXPECT_EQ(fields.Item(0).DefinedSize(), 50);
    EXPECT_EQ(fields.Item("ram").Type(), ADODB::kTypeNumber) << "names have no case";
    EXPECT_EQ(fields.Item(3).Type(), ADODB::kTypeFlag);
    EXPECT_EQ(fields.Item(2).Text(), "4294967296") << "whole numbers have no point";
    EXPECT_EQ(fields.Item(3).Text(), "True");
    EXPECT_EQ(std::get<double>(fields.Item(3).Value()), -1);
    EXPECT_EQ(std::get<std::string>(fields.Item(4).Value()), "née");
    rows.MoveNext();
    EXPECT_EQ(fields.Item(2).Text(), "1.5");
    EXPECT_EQ(fields.Item(3).Text(), "False");
    EXPECT_TRUE(fields.Item(4).IsNull());
    EXPECT_EQ(fields.Item(4).Text(), "");
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveNext();
    EXPECT_TRUE(rows.EndOfFile());
    EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), Errors::kNoCurrentRow);
    EXPECT_EQ(ErrorOf([&] { fields.Item(0).Text(); }), Errors::kNoCurrentRow);
    EXPECT_EQ(ErrorOf([&] { fields.Item("No such"); }), Errors::kNoSuchField);
    rows.MoveFirst();
    EXPECT_EQ(fields.Item(1).Number(), 0);
}

TEST_F(ADODBTest, RefusesWhatDoesNotFitAndAddsTheNextRow) {
    ADODB::Recordset rows;
    rows.Open("pc", connection, Cursor::Dynamic, Lock::Optimistic);
    ADODB::FieldList& fields = rows.Fields();
    rows.AddNew();
    fields.Item(0).SetText("PC2");
    fields.Item(4).SetText("ééééé");
    EXPECT_EQ(ErrorOf([&] { fields.Item(4).SetText("éééééé"); }), Errors::kDatabase)
        << "six characters for five";
    EXPECT_EQ(ErrorOf([&] { fields.Item(2).SetText("much"); }), Errors::kTypeMismatch);
    fields.Item(3).SetNumber(7);
    EXPECT_EQ(fields.Item(4).Text(), "ééééé") << "a new row can be read back before it is written";
    rows.Update();
    EXPECT_EQ(fields.Item(4).Text(), "ééééé") << "and after";
    EXPECT_EQ(One("SELECT Name FROM PC WHERE COMPUTERNAME = 'pc2'"), "ééééé");
    EXPECT_EQ(One("SELECT FPU FROM PC WHERE COMPUTERNAME = 'PC2'"), "True") << "any number but 0";
    EXPECT_EQ(One("SELECT COUNT(*) FROM PC WHERE COMPUTERNAME = 'PC2' AND RAM IS NULL"), "1");
    rows.AddNew();
    fields.Item(0).SetText("NOBODY");
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), Errors::kDatabase) << "no such machine";
    rows.CancelUpdate();
    rows.AddNew();
    fields.Item(0).SetText("PC2");
    rows.Update();
    EXPECT_EQ(One("SELECT COUNT(*) FROM PC"), "4") << "a row that failed stands in nobody's way";
}

TEST_F(ADODBTest, UpdatesInPlaceWhatWasChanged) {
    ADODB::Recordset rows;
    rows.Open("SELECT * FROM Net WHERE COMPUTERNAME='pc1'", connection, Cursor::Dynamic, Lock::Optimistic);
    ASSERT_FALSE(rows.EndOfFile());
    EXPECT_EQ(rows.Fields().Count(), 2U);
    rows.Fields().Item(1).SetText("20021231");
    rows.Fields().Item(0).SetText("Pc1");
    rows.Update();
    rows.Close();
    EXPECT_EQ(One("SELECT COMPUTERNAME FROM Net WHERE [Logon Date] = '20021231'"), "Pc1");
    rows.Open("SELECT * FROM Net WHERE COMPUTERNAME='PC2'", connection, Cursor::Dynamic, Lock::Optimistic);
    rows.Fields().Item(1).SetText("x");
    rows.CancelUpdate();
    rows.Update();
    EXPECT_TRUE(rows.Fields().Item(1).IsNull());
    rows.Fields().Item(0).SetText("PC1");
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), Errors::kDatabase) << "a key that another row has";
}

TEST_F(ADODBTest, ClosingTheConnectionEndsItsRecordsetsAndLeavesOneFile) {
    ADODB::Recordset rows;
    rows.Open("SELECT * FROM PC", connection);
    EXPECT_FALSE(rows.EndOfFile());
    connection->Execute("DELETE * FROM Net WHERE COMPUTERNAME='PC1'");
    EXPECT_TRUE(FileExists(path + "-wal"));
    connection->Close();
    EXPECT_FALSE(FileExists(path + "-wal")) << "the file alone is the database";
    EXPECT_EQ(ErrorOf([&] { rows.EndOfFile(); }), Errors::kRecordsetClosed);
    EXPECT_EQ(ErrorOf([&] { rows.CancelUpdate(); }), Errors::kRecordsetClosed);
    EXPECT_EQ(ErrorOf([&] { connection->Execute("DELETE * FROM Net"); }), Errors::kConnectionClosed);
    connection->Close();
    connection->Open();
    EXPECT_EQ(One("SELECT COUNT(*) FROM PC"), "0") << "deleted with their machine";
}

TEST_F(ADODBTest, OpensOnlyWhatIsADatabase) {
    ADODB::Connection other;
    other.ConnectionString("DBQ=" + folder.Path("missing.mdb") + ";USR=Admin;");
    EXPECT_EQ(ErrorOf([&] { other.Open(); }), Errors::kDatabase);
    EXPECT_FALSE(FileExists(folder.Path("missing.mdb"))) << "never a new one";
    other.ConnectionString("DBQ=" + folder.WriteFile("text.mdb", std::string(5000, 'x')) + ";USR=Admin;");
    EXPECT_EQ(ErrorOf([&] { other.Open(); }), Errors::kDatabase);
    EXPECT_FALSE(other.IsOpen());
    EXPECT_EQ(ErrorOf([&] { other.ConnectionString("Driver=x"); }), Errors::kInvalidCall);
}

TEST_F(ADODBTest, IndexesOfAKilledBulkLoadComeBackAtTheNextOpening) {
    const std::string indexes =
        "SELECT COUNT(*) FROM sqlite_master WHERE type = 'index' AND name = 'PCParent'";
    connection->BeginBulkLoad();
    EXPECT_TRUE(connection->IsBulkLoading());
    EXPECT_EQ(One(indexes), "0");
    connection->Close();
    connection->Open();
    EXPECT_FALSE(connection->IsBulkLoading());
    EXPECT_EQ(One(indexes), "1");
    connection->BeginBulkLoad();
    connection->Execute("INSERT INTO PC (COMPUTERNAME) VALUES ('PC2')");
    connection->EndBulkLoad();
    EXPECT_EQ(One(indexes), "1");
    connection->Execute("DELETE * FROM Net WHERE COMPUTERNAME='PC2'");
    EXPECT_EQ(One("SELECT COUNT(*) FROM PC WHERE COMPUTERNAME='PC2'"), "0") << "deletes cascade again";
}

TEST_F(ADODBTest, WhatIsUndoneForWantOfMemoryIsNoFullDisk) {
    const char* const change = "UPDATE PC SET RAM = RAM";
    connection->Execute(change);
    connection->BeginTrans();
    const sqlite3_int64 before = sqlite3_hard_heap_limit64(sqlite3_memory_used());
    EXPECT_EQ(ErrorOf([&] { connection->Execute(change); }), Errors::kDatabase);
    sqlite3_hard_heap_limit64(before);
    EXPECT_NE(sqlite3_get_autocommit(connection->Handle()), 0) << "the engine has undone all of it";
    EXPECT_EQ(ErrorOf([&] { connection->Execute("DELETE * FROM PC"); }), Errors::kOutOfMemory);
    connection->RollbackTrans();
    EXPECT_EQ(One("SELECT COUNT(*) FROM PC"), "2");
}

TEST_F(ADODBTest, AnEmptiedTableTakesAlongWhatADeleteWould) {
    RunSQL(*connection,
           "CREATE TABLE Device (ID TEXT PRIMARY KEY, Name TEXT COLLATE NOCASE NOT NULL REFERENCES net"
           " ON DELETE CASCADE);"
           "CREATE TABLE Protocol (Device TEXT NOT NULL REFERENCES Device ON DELETE CASCADE);"
           "INSERT INTO Device VALUES ('a', 'PC1'), ('b', 'PC2'); INSERT INTO Protocol VALUES ('a'), ('b');"
           "INSERT INTO PC (ConfID) VALUES (7)");
    const auto rows = [this] {
        std::string counts;
        for (const char* table : {"Net", "PC", "Device", "Protocol"})
            counts += One(std::string("SELECT COUNT(*) FROM ") + table) + " ";
        return counts;
    };
    sqlite3_db_config(connection->Handle(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 1, nullptr);
    RunSQL(*connection,
           "CREATE TRIGGER Locked BEFORE DELETE ON Net BEGIN SELECT RAISE(ABORT, 'locked'); END");
    EXPECT_EQ(ErrorOf([&] { connection->EmptyTable("Net"); }), Errors::kDatabase);
    EXPECT_EQ(rows(), "2 3 2 2 ") << "all or nothing";
    RunSQL(*connection, "DROP TRIGGER Locked");
    connection->BeginTrans();
    connection->EmptyTable("Net");
    connection->RollbackTrans();
    EXPECT_EQ(rows(), "2 3 2 2 ") << "part of a transaction";
    connection->EmptyTable("Device");
    EXPECT_EQ(rows(), "2 3 0 0 ") << "table by table";
    EXPECT_EQ(ErrorOf([&] { connection->Execute("INSERT INTO Protocol (Device) VALUES ('z')"); }),
              Errors::kDatabase)
        << "parents are looked for again";
    connection->EmptyTable("Net");
    EXPECT_EQ(rows(), "0 1 0 0 ") << "a row that belongs to no machine stays";
    EXPECT_EQ(One("SELECT ConfID FROM PC"), "7");
}

TEST_F(ADODBTest, ManyStatementsAtOnceOfOneTextAreApart) {
    ADODB::Recordset outer;
    outer.Open("SELECT * FROM Net", connection);
    ADODB::Recordset inner;
    inner.Open("SELECT * FROM Net", connection);
    ASSERT_FALSE(outer.EndOfFile());
    inner.MoveNext();
    EXPECT_EQ(outer.Fields().Item(0).Text(), "PC1");
    EXPECT_EQ(inner.Fields().Item(0).Text(), "PC2");
}

} // namespace
