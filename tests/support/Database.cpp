// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/Database.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

std::shared_ptr<ADODB::Connection> OpenDatabase(const std::string& path) {
    auto connection = std::make_shared<ADODB::Connection>();
    connection->ConnectionString("DBQ=" + path + ";USR=Admin;");
    connection->Open();
    return connection;
}

void RunSQL(const ADODB::Connection& connection, const std::string& statements) {
    EXPECT_EQ(sqlite3_exec(connection.Handle(), statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(connection.Handle());
}

std::string RowsOf(const ADODB::Connection& connection, const std::string& sql) {
    return RowsOf(connection.Handle(), sql);
}

std::string RowsOf(sqlite3* database, const std::string& sql) {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(database, sql.c_str(), -1, &prepared, nullptr) != SQLITE_OK)
        return sqlite3_errmsg(database);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, sqlite3_finalize);
    std::string rows;
    int result = sqlite3_step(prepared);
    for (; result == SQLITE_ROW; result = sqlite3_step(prepared)) {
        if (!rows.empty())
            rows += '\n';
        for (int i = 0; i < sqlite3_column_count(prepared); ++i) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, i));
            if (i > 0)
                rows += '|';
            rows += text == nullptr ? "<Null>" : text;
        }
    }
    return result == SQLITE_DONE ? rows : sqlite3_errmsg(database);
}
