// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Aside.h"
#include "platform/accessfunctions.h"
#include "platform/accesssql.h"
#include "platform/adodb.h"
#include "platform/adodbstate.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/text.h"

#include <algorithm>
#include <cerrno>
#include <cmath>

namespace ADODB {

namespace {

/// Texts of statements vary with the literals that stay in them; past this the cache starts anew.
constexpr std::size_t kMostStatements = 500;

/// Notes the indexes that a bulk load has dropped, so that the next opening can make them.
constexpr const char* kBulkLoadTable = "~BulkLoad";

Column Described(const char* name, const char* declaredType) {
    const std::string_view declared = declaredType == nullptr ? "TEXT(255)" : declaredType;
    if (declared == "BOOLEAN")
        return {name, kTypeFlag, 2};
    if (!declared.starts_with("TEXT"))
        return {name, kTypeNumber, 8};
    constexpr double kWidest = 65535;
    const std::size_t width = declared.find('(');
    return {name, kTypeText,
            width == std::string_view::npos
                ? 255
                : static_cast<int>(std::clamp(Val(declared.substr(width + 1)), 0.0, kWidest))};
}

std::string PathOf(std::string_view connectionString) {
    const std::size_t key = connectionString.find("DBQ=");
    if (key == std::string_view::npos)
        Raise(Errors::kInvalidCall, "no DBQ in the connection string");
    std::string_view path = connectionString.substr(key + 4);
    // A path may hold ";", so it ends where the next key that the system writes begins.
    path = path.substr(0, std::min(path.rfind(";USR="), path.size()));
    return std::string(path);
}

} // namespace

void RaiseDatabase(sqlite3* database) {
    throw RunTimeError(Errors::kDatabase, database == nullptr ? "out of memory" : sqlite3_errmsg(database));
}

std::string QuotedName(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name) {
        quoted += c;
        if (c == '"')
            quoted += c;
    }
    return quoted + '"';
}

Statement::Statement(ConnectionState& state, const std::string& sql) : mState(state) {
    if (sqlite3_prepare_v3(state.database, sql.data(), static_cast<int>(sql.size()),
                           SQLITE_PREPARE_PERSISTENT, &mHandle, nullptr) != SQLITE_OK)
        Fail();
    if (mHandle == nullptr)
        throw RunTimeError(Errors::kDatabase, "There is no statement to run");
}

const std::vector<Column>& Statement::Columns() {
    const int count = sqlite3_column_count(mHandle);
    if (mColumns.empty())
        for (int i = 0; i < count; ++i)
            mColumns.push_back(
                Described(sqlite3_column_name(mHandle, i), sqlite3_column_decltype(mHandle, i)));
    return mColumns;
}

void BindNumber(sqlite3_stmt* statement, int place, double number) {
    // Compared with a text column, 1.0 would be "1.0".
    constexpr double kExact = 9007199254740992.0;
    if (number == std::trunc(number) && std::abs(number) <= kExact)
        CheckBinding(statement, sqlite3_bind_int64(statement, place, static_cast<sqlite3_int64>(number)));
    else
        CheckBinding(statement, sqlite3_bind_double(statement, place, number));
}

void Statement::Bind(const std::vector<SQLLiteral>& parameters) {
    int place = 0;
    for (const SQLLiteral& parameter : parameters) {
        ++place;
        if (const auto* text = std::get_if<std::string>(&parameter))
            CheckBinding(mHandle, sqlite3_bind_text64(mHandle, place, text->data(), text->size(),
                                                      SQLITE_TRANSIENT, SQLITE_UTF8));
        else
            BindNumber(mHandle, place, std::get<double>(parameter));
    }
}

bool Statement::Step() {
    const int result = sqlite3_step(mHandle);
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        Fail();
    return false;
}

void Statement::Run() {
    int result = SQLITE_ROW;
    while (result == SQLITE_ROW)
        result = sqlite3_step(mHandle);
    // The reset returns the failure of the run, and leaves its message in place.
    if (sqlite3_reset(mHandle) != SQLITE_OK)
        Fail();
}

void Statement::Fail() {
    sqlite3* const database = mState.database;
    constexpr int kPrimary = 0xFF;
    // The system may have refused to map the log's index.
    if (mState.isInTransaction && sqlite3_get_autocommit(database) != 0)
        mState.hasLackedMemory |= (sqlite3_errcode(database) & kPrimary) == SQLITE_NOMEM ||
                                  sqlite3_system_errno(database) == ENOMEM;
    RaiseDatabase(database);
}

void ConnectionState::CheckOpen() const {
    if (database == nullptr)
        Raise(Errors::kConnectionClosed);
    if (isInTransaction && sqlite3_get_autocommit(database) != 0)
        Raise(hasLackedMemory ? Errors::kOutOfMemory : Errors::kDiskFull,
              "the database has undone what was not committed");
}

Statement& ConnectionState::Acquire(const std::string& sql) {
    CheckOpen();
    if (statements.size() >= kMostStatements)
        std::erase_if(statements, [](const auto& entry) {
            return std::none_of(entry.second.begin(), entry.second.end(),
                                [](const auto& statement) { return statement->inUse; });
        });
    auto& sameText = statements[sql];
    const auto found = std::find_if(sameText.begin(), sameText.end(),
                                    [](const auto& statement) { return !statement->inUse; });
    Statement& statement =
        found != sameText.end() ? **found : *sameText.emplace_back(std::make_unique<Statement>(*this, sql));
    statement.inUse = true;
    return statement;
}

Connection::Connection() : mState(std::make_shared<ConnectionState>()) {}

Connection::~Connection() {
    try {
        Close();
    } catch (const RunTimeError&) {
        // A destructor has nobody to tell; who needs the file whole calls Close.
    }
}

void Connection::ConnectionString(const std::string& text) {
    mPath = PathOf(text);
}

void Connection::Open() {
    Close();
    sqlite3* database = nullptr;
    const int result =
        sqlite3_open_v2(mPath.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    mState->database = database;
    try {
        if (result != SQLITE_OK)
            RaiseDatabase(database);
        // The statements kept in the cache would use up the engine's own store of small pieces of memory.
        sqlite3_db_config(database, SQLITE_DBCONFIG_LOOKASIDE, nullptr, 256, 8000);
        // The console's databases have neither. A stranger's view can run for ever under the name of a table,
        // and a trigger can do anything behind a row.
        for (const int part : {SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_ENABLE_TRIGGER})
            sqlite3_db_config(database, part, 0, nullptr);
        sqlite3_extended_result_codes(database, 1);
        sqlite3_busy_timeout(database, 5000);
        RegisterAccessFunctions(database);
        for (const char* pragma : {"PRAGMA trusted_schema = OFF", "PRAGMA foreign_keys = ON",
                                   "PRAGMA synchronous = NORMAL", "PRAGMA cache_size = -32000",
                                   "PRAGMA wal_autocheckpoint = 4000", "PRAGMA cell_size_check = ON"})
            if (sqlite3_exec(database, pragma, nullptr, nullptr, nullptr) != SQLITE_OK)
                RaiseDatabase(database);
        // What is no database fails here.
        IsBulkLoading();
    } catch (...) {
        mState->statements.clear();
        sqlite3_close(database);
        mState->database = nullptr;
        throw;
    }
    try {
        EndBulkLoad();
    } catch (const RunTimeError&) {
        // On a full disk the data can still be read, if slowly; the note of the indexes stays for next time.
    }
}

void Connection::Close(const std::function<void()>& wait) {
    if (!IsOpen())
        return;
    mState->BeforeChange();
    // A dependent leaves the list when it ends, so the list is walked as it was.
    for (Dependent* dependent : std::vector(mState->dependents))
        dependent->ConnectionCloses();
    mState->statements.clear();
    mState->isInTransaction = false;
    sqlite3* database = std::exchange(mState->database, nullptr);
    if (sqlite3_get_autocommit(database) == 0)
        sqlite3_exec(database, "ROLLBACK", nullptr, nullptr, nullptr);
    int result = SQLITE_OK;
    RunAside(
        [&] {
            sqlite3_wal_checkpoint_v2(database, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
            result = sqlite3_close(database);
        },
        wait);
    if (result != SQLITE_OK)
        throw RunTimeError(Errors::kDatabase, "The database can not be closed: " + mPath);
    const std::string log = mPath + "-wal";
    if (FileExists(log) && FileLength(log) > 0)
        throw RunTimeError(Errors::kDatabase, "The database's log could not be written back: " + log);
}

bool Connection::IsOpen() const {
    return mState->database != nullptr;
}

void Connection::Execute(std::string_view sql) {
    mState->CheckOpen();
    const TranslatedSQL translated = TranslateAccessSQL(sql);
    const Lease statement(*mState, translated.sql);
    statement->Bind(translated.parameters);
    if (sqlite3_stmt_readonly(statement->Handle()) == 0)
        mState->BeforeChange();
    statement->Run();
}

namespace {

void RunPlain(ConnectionState& state, const std::string& sql) {
    const Lease statement(state, sql);
    statement->Run();
}

std::vector<std::string> Texts(ConnectionState& state, const std::string& sql) {
    std::vector<std::string> texts;
    const Lease statement(state, sql);
    while (statement->Step())
        if (const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement->Handle(), 0)))
            texts.emplace_back(text);
    return texts;
}

/// Calls a function while the engine works, until it goes.
class ProgressHandler {
public:
    ProgressHandler(sqlite3* database, const std::function<void()>& progress) : mDatabase(database) {
        constexpr int kInstructionsBetweenCalls = 100000;
        if (progress)
            sqlite3_progress_handler(
                database, kInstructionsBetweenCalls,
                [](void* function) {
                    // The engine between is no C++.
                    try {
                        (*static_cast<std::function<void()>*>(function))();
                    } catch (...) {
                        return 1;
                    }
                    return 0;
                },
                const_cast<std::function<void()>*>(&progress));
    }
    ~ProgressHandler() { sqlite3_progress_handler(mDatabase, 0, nullptr, nullptr); }
    ProgressHandler(const ProgressHandler&) = delete;
    ProgressHandler& operator=(const ProgressHandler&) = delete;

private:
    sqlite3* mDatabase;
};

/// Adds `table`, behind all tables that hang on it, to `tables`. False where a row of one of these could stay
/// when the table's rows go: then only the engine can tell which do.
bool AddWithDependents(ConnectionState& state, const std::string& table, std::vector<std::string>& tables) {
    const std::string references =
        "FROM sqlite_master child, pragma_foreign_key_list(child.name) reference, "
        "pragma_table_info(child.name) part WHERE child.type = 'table' AND reference.\"table\" = " +
        SQLText(table) + " COLLATE NOCASE AND part.name = reference.\"from\" COLLATE NOCASE";
    if (!Texts(state, "SELECT child.name " + references +
                          " AND (reference.on_delete <> 'CASCADE' OR part.\"notnull\" = 0)")
             .empty())
        return false;
    for (const std::string& child : Texts(state, "SELECT DISTINCT child.name " + references))
        if (!EqualNoCase(child, table) && std::find(tables.begin(), tables.end(), child) == tables.end() &&
            !AddWithDependents(state, child, tables))
            return false;
    tables.push_back(table);
    return true;
}

/// While it lives the engine minds no references between tables, and so can drop a table's rows as a whole.
/// It overwrites what it frees only where the page is written anyway: writing zeros to every page of a
/// database takes longer than all the rest, and the file is its owner's alone.
class WithoutReferences {
public:
    explicit WithoutReferences(sqlite3* database) : mDatabase(database) {
        sqlite3_db_config(mDatabase, SQLITE_DBCONFIG_ENABLE_FKEY, -1, &mBefore);
        sqlite3_db_config(mDatabase, SQLITE_DBCONFIG_ENABLE_FKEY, 0, nullptr);
        const auto keep = [](void* text, int, char** values, char**) {
            *static_cast<std::string*>(text) = values[0];
            return 0;
        };
        sqlite3_exec(mDatabase, "PRAGMA secure_delete", keep, &mOverwrites, nullptr);
        sqlite3_exec(mDatabase, "PRAGMA secure_delete = FAST", nullptr, nullptr, nullptr);
    }
    ~WithoutReferences() {
        sqlite3_exec(mDatabase, ("PRAGMA secure_delete = " + mOverwrites).c_str(), nullptr, nullptr, nullptr);
        sqlite3_db_config(mDatabase, SQLITE_DBCONFIG_ENABLE_FKEY, mBefore, nullptr);
    }
    WithoutReferences(const WithoutReferences&) = delete;
    WithoutReferences& operator=(const WithoutReferences&) = delete;

private:
    sqlite3* mDatabase;
    int mBefore = 1;
    std::string mOverwrites = "1";
};

/// Runs `work` whole or not at all, in a transaction of its own or within the one that is open.
template <class Work>
void AsOne(ConnectionState& state, const Work& work) {
    RunPlain(state, "SAVEPOINT AsOne");
    try {
        work();
        RunPlain(state, "RELEASE AsOne");
    } catch (...) {
        // Some failures undo everything by themselves.
        if (sqlite3_get_autocommit(state.database) == 0) {
            sqlite3_exec(state.database, "ROLLBACK TO AsOne", nullptr, nullptr, nullptr);
            sqlite3_exec(state.database, "RELEASE AsOne", nullptr, nullptr, nullptr);
        }
        throw;
    }
}

} // namespace

void Connection::EmptyTable(std::string_view table, const std::function<void()>& progress) {
    mState->CheckOpen();
    mState->BeforeChange();
    const ProgressHandler handler(mState->database, progress);
    std::vector<std::string> tables;
    if (!AddWithDependents(*mState, std::string(table), tables))
        return RunPlain(*mState, "DELETE FROM " + QuotedName(table));
    const WithoutReferences emptying(mState->database);
    AsOne(*mState, [&] {
        for (const std::string& each : tables) {
            RunPlain(*mState, "DELETE FROM " + QuotedName(each));
            if (progress)
                progress();
        }
    });
}

void Connection::BeginTrans() {
    mState->BeforeChange();
    RunPlain(*mState, "BEGIN IMMEDIATE");
    mState->isInTransaction = true;
    mState->hasLackedMemory = false;
}

void Connection::CommitTrans(const std::function<void()>& wait) {
    RunAside([this] { RunPlain(*mState, "COMMIT"); }, wait);
    mState->isInTransaction = false;
}

void Connection::RollbackTrans() {
    mState->BeforeChange();
    mState->isInTransaction = false;
    // The engine undoes a transaction by itself when the disk is full or fails.
    if (mState->database != nullptr && sqlite3_get_autocommit(mState->database) == 0)
        RunPlain(*mState, "ROLLBACK");
}

bool Connection::IsBulkLoading() const {
    mState->CheckOpen();
    const std::string sql = std::string("SELECT name FROM sqlite_master WHERE type = 'table' AND name = '") +
                            kBulkLoadTable + "'";
    return !Texts(*mState, sql).empty();
}

void Connection::BeginBulkLoad() {
    if (IsBulkLoading())
        return;
    mState->BeforeChange();
    RunPlain(*mState, "PRAGMA foreign_keys = OFF");
    const std::string table = std::string("\"") + kBulkLoadTable + "\"";
    try {
        AsOne(*mState, [&] {
            const std::string ownIndexes =
                "FROM sqlite_master WHERE type = 'index' AND sql LIKE 'CREATE INDEX %'";
            const std::vector<std::string> names = Texts(*mState, "SELECT name " + ownIndexes);
            RunPlain(*mState, "CREATE TABLE " + table + " AS SELECT sql " + ownIndexes);
            for (const std::string& name : names)
                RunPlain(*mState, "DROP INDEX " + QuotedName(name));
        });
    } catch (...) {
        // Without a load, rows need their parents again.
        RunPlain(*mState, "PRAGMA foreign_keys = ON");
        throw;
    }
}

void Connection::EndBulkLoad(const std::function<void()>& wait) {
    if (!IsBulkLoading())
        return;
    mState->BeforeChange();
    RunPlain(*mState, "PRAGMA foreign_keys = ON");
    const std::string table = std::string("\"") + kBulkLoadTable + "\"";
    const auto build = [&] {
        constexpr std::string_view kCreate = "CREATE INDEX ";
        for (const std::string& sql : Texts(*mState, "SELECT sql FROM " + table))
            if (sql.starts_with(kCreate))
                RunPlain(*mState, "CREATE INDEX IF NOT EXISTS " + sql.substr(kCreate.size()));
        RunPlain(*mState, "DROP TABLE " + table);
    };
    // The sort for an index is one long step of the engine, within which it tells of no progress.
    RunAside([&] { AsOne(*mState, build); }, wait);
}

sqlite3* Connection::Handle() const {
    return mState->database;
}

} // namespace ADODB
