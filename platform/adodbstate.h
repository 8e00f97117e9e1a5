// SPDX-License-Identifier: GPL-3.0-or-later
// What a Connection and its Recordsets share: the engine's handle, the cache of prepared statements and the
// list of recordsets that end with the connection. Internal to the database seam.
#pragma once

#include "platform/accesssql.h"

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ADODB {

/// Throws the engine's present failure of `database` as a RunTimeError.
[[noreturn]] void RaiseDatabase(sqlite3* database);

/// A value that could not be bound would be Null, and the statement would run with it.
inline void CheckBinding(sqlite3_stmt* statement, int result) {
    if (result != SQLITE_OK)
        RaiseDatabase(sqlite3_db_handle(statement));
}

/// Binds a whole number as an integer, any other as a real one.
void BindNumber(sqlite3_stmt* statement, int place, double number);

/// `name` as a quoted name of a table, column or index.
std::string QuotedName(std::string_view name);

/// A column as a field reports it.
struct Column {
    std::string name;
    int type;
    int definedSize;
};

struct ConnectionState;

/// A prepared statement and the columns of its rows.
class Statement {
public:
    Statement(ConnectionState& state, const std::string& sql);
    ~Statement() { sqlite3_finalize(mHandle); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    sqlite3_stmt* Handle() const { return mHandle; }
    const std::vector<Column>& Columns();
    void Bind(const std::vector<SQLLiteral>& parameters);
    /// True when it stands on a row.
    bool Step();
    /// Runs to the end and readies for the next run; rows are passed over. A failure readies it too.
    void Run();
    void Reset() { sqlite3_reset(mHandle); }

    bool inUse = false;

private:
    /// Raises the engine's failure, and notes where the transaction went for want of memory.
    [[noreturn]] void Fail();

    ConnectionState& mState;
    sqlite3_stmt* mHandle = nullptr;
    std::vector<Column> mColumns;
};

/// Ends with its connection.
class Dependent {
public:
    virtual void ConnectionCloses() = 0;
    /// Has its slow reader read the rest, and forgets it.
    virtual void Interfere() = 0;

protected:
    ~Dependent() = default;
};

struct ConnectionState {
    sqlite3* database = nullptr;
    std::unordered_map<std::string, std::vector<std::unique_ptr<Statement>>> statements;
    std::vector<Dependent*> dependents;
    /// Those of the dependents that have a slow reader.
    std::vector<Dependent*> watched;
    bool isInTransaction = false;
    /// Whether the engine has undone the transaction for want of memory.
    bool hasLackedMemory = false;

    /// Raises error 3709 on a closed connection, and error 61 where the engine has undone the transaction, or
    /// error 7 where it was short of memory: what would follow must not be written as if it were a whole.
    void CheckOpen() const;
    /// To be called before the database is written to or closed.
    void BeforeChange() {
        // A reader leaves the list when it is called.
        while (!watched.empty())
            watched.back()->Interfere();
    }
    /// A statement of this text that nobody is using, from the cache where there is one.
    Statement& Acquire(const std::string& sql);
};

/// Holds a statement of the cache for a time, and gives it back ready for the next use.
class Lease {
public:
    Lease() = default;
    Lease(ConnectionState& state, const std::string& sql) : mStatement(&state.Acquire(sql)) {}
    Lease(Lease&& other) noexcept : mStatement(std::exchange(other.mStatement, nullptr)) {}
    Lease& operator=(Lease&& other) noexcept {
        std::swap(mStatement, other.mStatement);
        return *this;
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    ~Lease() {
        if (mStatement != nullptr) {
            mStatement->Reset();
            mStatement->inUse = false;
        }
    }
    explicit operator bool() const { return mStatement != nullptr; }
    Statement* operator->() const { return mStatement; }

private:
    Statement* mStatement = nullptr;
};

} // namespace ADODB
