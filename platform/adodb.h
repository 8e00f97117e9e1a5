// SPDX-License-Identifier: GPL-3.0-or-later
// Database access in the shape that the system was written for, over SQLite: a Connection runs SQL of the
// desktop database's dialect, a Recordset reads rows forward, adds them and updates them in place.
//
// A Connection owns its file and its prepared statements, which are cached by the shape of their text. A
// Recordset keeps a hold on its connection's state, so it may outlive it: used after the connection was
// closed it raises error 3704. Opening a whole table reads nothing until a row is asked for.
// All failures are RunTimeError; those of the engine carry number -1 and the engine's own words.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

struct sqlite3;

namespace ADODB {

struct Column;
struct ConnectionState;
class Recordset;

enum class Cursor { ForwardOnly = 0, Keyset = 1, Dynamic = 2 };
enum class Lock { ReadOnly = 1, Pessimistic = 2, Optimistic = 3 };

/// Type numbers of fields: text(n), numbers, flags.
constexpr int kTypeText = 200;
constexpr int kTypeNumber = 5;
constexpr int kTypeFlag = 11;

/// A database value: Null, a number (a flag is -1 or 0), or UTF-8 text.
using Value = std::variant<std::monostate, double, std::string>;

inline bool IsNull(const Value& value) {
    return std::holds_alternative<std::monostate>(value);
}

class Connection {
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// "Driver=…;DBQ=<path>;…": the path is what counts.
    void ConnectionString(const std::string& text);

    /// Opens the file that the connection string names. A missing file is an error, never a new database.
    /// Brings back the indexes that a killed bulk load left dropped.
    void Open();

    /// Ends every recordset that was opened on it, writes the log back into the file and closes. Raises
    /// error -1 if the log file remains, since the file alone would then not be the database. Does
    /// nothing on a closed connection. Where there is a `wait`, the log is written back aside (see Aside.h).
    void Close(const std::function<void()>& wait = {});
    bool IsOpen() const;

    /// Runs one statement to its end, without rows.
    void Execute(std::string_view sql);

    /// Deletes all rows of `table`, and those of other tables that hang on them, as a DELETE with its
    /// cascades does, but table by table rather than row by row where no row of theirs can stay. All of it or
    /// nothing, in the open transaction if there is one. Calls `progress` at each table, and within one where
    /// its rows are checked; what it raises undoes all.
    void EmptyTable(std::string_view table, const std::function<void()>& progress = {});

    void BeginTrans();
    /// Where there is a `wait`, the disk is written to aside (see Aside.h).
    void CommitTrans(const std::function<void()>& wait = {});
    void RollbackTrans();

    /// Drops the indexes that no key needs, to fill an empty database faster; they are noted in the file.
    /// Until EndBulkLoad nothing checks that rows have their parents, and nothing cascades: that is the
    /// caller's care. Both must be called outside of a transaction.
    void BeginBulkLoad();
    /// Makes the indexes anew, aside where there is a `wait` (see Aside.h). Does nothing where no bulk load
    /// has begun.
    void EndBulkLoad(const std::function<void()>& wait = {});
    bool IsBulkLoading() const;

    /// The engine's own handle, for what has no shape here (checks of integrity in tests and benches).
    sqlite3* Handle() const;

private:
    friend class Recordset;
    std::shared_ptr<ConnectionState> mState;
    std::string mPath;
};

/// One column of a recordset's current row. Valid as long as its recordset is open.
class Field {
public:
    const std::string& Name() const;
    int Type() const;
    /// Characters of a text column, bytes of any other.
    int DefinedSize() const;

    /// The value in the current or the new row. Raises error 3021 where there is none.
    ADODB::Value Value() const;
    /// The same into `value`, whose memory is used again.
    void Read(ADODB::Value& value) const;
    /// The value as plain text without a copy: numbers in decimal, flags as "True" and "False", Null as "".
    /// Valid until the recordset moves or the field is read or written again.
    std::string_view Text() const;
    bool IsNull() const;
    /// The numeric reading: of text by its leading number, of Null 0.
    double Number() const;

    /// Assign to the new or the current row. A text longer than its column raises error -1; for a
    /// number column, text that begins with no number raises error 13.
    void SetText(std::string_view utf8);
    /// A flag takes any number but 0 as true.
    void SetNumber(double value);
    void SetNull();

private:
    friend class Recordset;
    Recordset* mRecordset = nullptr;
    std::size_t mPosition = 0;
    const Column* mColumn = nullptr;
};

class FieldList {
public:
    std::size_t Count() const { return mFields.size(); }
    /// By position from 0; raises error 3265 where there is none.
    Field& Item(std::size_t position);
    const Field& Item(std::size_t position) const;
    /// By name without regard to case; raises error 3265 where there is none.
    Field& Item(std::string_view name);
    const Field& Item(std::string_view name) const;

private:
    friend class Recordset;
    std::vector<Field> mFields;
};

class Recordset {
public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    void ActiveConnection(const std::shared_ptr<Connection>& connection);
    void CursorType(Cursor cursor);
    void LockType(Lock lock);
    /// A query, or the name of a table.
    void Source(std::string_view text);
    void Open();
    /// All of it at once.
    void Open(std::string_view source, const std::shared_ptr<Connection>& connection,
              Cursor cursor = Cursor::Keyset, Lock lock = Lock::ReadOnly);

    /// Raises error 3704 on a closed recordset, as every operation below.
    void Close();
    bool IsOpen() const;

    bool EndOfFile();
    void MoveNext();
    /// Back to the first row; no error where there is none.
    void MoveFirst();
    /// Whether it has not moved from where it was opened or moved to the first row.
    bool IsAtStart() const;
    /// Rows of the query, counted by the engine.
    std::int32_t RecordCount();

    /// Begins a new row with all columns Null.
    void AddNew();
    /// Writes the new row, or what was changed in the current one; nothing where nothing was changed.
    void Update();
    /// Forgets the new row, or the changes to the current one.
    void CancelUpdate();

    FieldList& Fields();

    /// For a slow reader of all rows: `reader` is called, once, before anybody moves, changes or closes this
    /// recordset, writes over its connection or closes that, and may read the rest. Takes the place of the
    /// reader before it, which is called; an empty function takes off the present one, without a call.
    /// `reader` must not raise. Whoever is registered takes it off before moving the recordset itself.
    void OnInterference(std::function<void()> reader);

private:
    friend class Field;
    struct Implementation;
    std::unique_ptr<Implementation> mThis;
};

/// Runs statements of plain text, one after the other.
class Command {
public:
    explicit Command(std::shared_ptr<Connection> connection) : mConnection(std::move(connection)) {}
    void CommandText(std::string text) { mText = std::move(text); }
    void Execute() { mConnection->Execute(mText); }

private:
    std::shared_ptr<Connection> mConnection;
    std::string mText;
};

} // namespace ADODB
