// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/adodb.h"
#include "platform/adodbstate.h"
#include "platform/errors.h"
#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace ADODB {

namespace {

/// A value assigned to a row that is not written yet. Its text lies in the row's buffer.
struct Cell {
    enum class Kind { Unset, Null, Number, Text };
    Kind kind = Kind::Unset;
    double number = 0;
    std::size_t offset = 0;
    std::size_t length = 0;
};

bool IsTableName(std::string_view source) {
    const std::size_t start = source.find_first_not_of(" \t\r\n(");
    if (start != std::string_view::npos && EqualNoCase(source.substr(start, 6), "SELECT"))
        return false;
    // Comments may stand in front of a query.
    return !IsQuery(source);
}

std::string_view ValueText(sqlite3_value* value) {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text == nullptr ? std::string_view()
                           : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

std::string_view ColumnText(sqlite3_stmt* statement, int column) {
    return ValueText(sqlite3_column_value(statement, column));
}

} // namespace

struct Recordset::Implementation final : Dependent {
    std::shared_ptr<Connection> connection;
    std::shared_ptr<ConnectionState> state;
    std::string source;
    Lock lock = Lock::ReadOnly;
    bool isOpen = false;

    // The query and where it stands.
    TranslatedSQL translated;
    std::string table;
    Lease select;
    bool hasStepped = false;
    bool isOnRow = false;
    bool hasMoved = false;
    std::function<void()> reader;
    /// The row's identity for an update in place, in a hidden last column.
    bool hasRowID = false;

    // The new row, or what was assigned to the current one.
    Lease insert;
    bool isAdding = false;
    bool holdsAddedRow = false;
    std::vector<Cell> cells;
    std::string buffer;
    mutable std::string scratch;

    FieldList fields;

    ~Implementation() { End(); }

    void ConnectionCloses() override { End(); }

    std::function<void()> TakeReader() {
        if (state)
            std::erase(state->watched, this);
        return std::exchange(reader, nullptr);
    }

    void Interfere() override {
        if (reader)
            TakeReader()();
    }

    void End() {
        TakeReader();
        isOpen = false;
        select = Lease();
        insert = Lease();
        isOnRow = hasStepped = hasMoved = isAdding = holdsAddedRow = false;
        if (state)
            std::erase(state->dependents, this);
        state.reset();
    }

    void CheckOpen() const {
        if (!isOpen)
            Raise(Errors::kRecordsetClosed);
    }

    void MoveToFirstRow() {
        if (hasStepped)
            return;
        hasStepped = true;
        isOnRow = select->Step();
    }

    void ForgetCells() {
        std::fill(cells.begin(), cells.end(), Cell());
        buffer.clear();
        isAdding = holdsAddedRow = false;
    }

    /// Raises where there is neither a new row nor a current one.
    void CheckRow() {
        CheckOpen();
        if (isAdding || holdsAddedRow)
            return;
        MoveToFirstRow();
        if (!isOnRow)
            Raise(Errors::kNoCurrentRow);
    }

    void BeforeAssignment() {
        Interfere();
        CheckRow();
    }

    bool IsAssigned(std::size_t position) const {
        return isAdding || holdsAddedRow || cells[position].kind != Cell::Kind::Unset;
    }

    std::string_view CellText(const Cell& cell) const {
        return std::string_view(buffer).substr(cell.offset, cell.length);
    }

    void BindCell(Statement& statement, int place, std::size_t position) const {
        const Cell& cell = cells[position];
        sqlite3_stmt* handle = statement.Handle();
        switch (cell.kind) {
            case Cell::Kind::Text:
                CheckBinding(handle, sqlite3_bind_text64(handle, place, buffer.data() + cell.offset,
                                                         cell.length, SQLITE_STATIC, SQLITE_UTF8));
                break;
            case Cell::Kind::Number:
                BindNumber(handle, place, cell.number);
                break;
            default:
                CheckBinding(handle, sqlite3_bind_null(handle, place));
        }
    }

    /// Whether the assigned value differs from what the current row holds, to the byte.
    bool IsChanged(std::size_t position) const {
        const Cell& cell = cells[position];
        const auto column = static_cast<int>(position);
        const int type = sqlite3_column_type(select->Handle(), column);
        switch (cell.kind) {
            case Cell::Kind::Unset:
                return false;
            case Cell::Kind::Null:
                return type != SQLITE_NULL;
            case Cell::Kind::Number:
                return (type != SQLITE_INTEGER && type != SQLITE_FLOAT) ||
                       sqlite3_column_double(select->Handle(), column) != cell.number;
            case Cell::Kind::Text:
                return type != SQLITE_TEXT || ColumnText(select->Handle(), column) != CellText(cell);
        }
        return true;
    }

    void Insert() {
        if (table.empty())
            throw RunTimeError(Errors::kDatabase, "No row can be added to this query: " + source);
        if (!insert) {
            std::string sql = "INSERT INTO " + QuotedName(table) + " VALUES (";
            for (std::size_t i = 0; i < fields.Count(); ++i)
                sql += i == 0 ? "?" : ",?";
            insert = Lease(*state, sql + ")");
        }
        state->BeforeChange();
        for (std::size_t i = 0; i < cells.size(); ++i)
            BindCell(*insert.operator->(), static_cast<int>(i) + 1, i);
        insert->Run();
        isAdding = false;
        holdsAddedRow = true;
    }

    void UpdateInPlace() {
        std::string assignments;
        std::vector<std::size_t> changed;
        for (std::size_t i = 0; i < cells.size(); ++i)
            if (isOnRow && IsChanged(i)) {
                assignments += (changed.empty() ? "" : ", ") + QuotedName(fields.Item(i).Name()) + " = ?";
                changed.push_back(i);
            }
        if (changed.empty())
            return;
        if (!hasRowID)
            throw RunTimeError(Errors::kDatabase, "The rows of this query can not be changed: " + source);
        state->BeforeChange();
        const Lease update(*state,
                           "UPDATE " + QuotedName(table) + " SET " + assignments + " WHERE rowid = ?");
        int place = 0;
        for (const std::size_t position : changed)
            BindCell(*update.operator->(), ++place, position);
        const auto rowID = static_cast<int>(fields.Count());
        CheckBinding(update->Handle(), sqlite3_bind_int64(update->Handle(), ++place,
                                                          sqlite3_column_int64(select->Handle(), rowID)));
        update->Run();
    }
};

Recordset::Recordset() : mThis(std::make_unique<Implementation>()) {}
Recordset::~Recordset() = default;

void Recordset::ActiveConnection(const std::shared_ptr<Connection>& connection) {
    mThis->connection = connection;
}

// Every cursor reads forward over the rows as they are; the numbers are kept for what the callers ask for.
void Recordset::CursorType(Cursor /*cursor*/) {}

void Recordset::LockType(Lock lock) {
    mThis->lock = lock;
}

void Recordset::Source(std::string_view text) {
    mThis->source = text;
}

void Recordset::Open(std::string_view source, const std::shared_ptr<Connection>& connection, Cursor cursor,
                     Lock lock) {
    ActiveConnection(connection);
    CursorType(cursor);
    LockType(lock);
    Source(source);
    Open();
}

void Recordset::Open() {
    Implementation& self = *mThis;
    if (self.isOpen)
        throw RunTimeError(Errors::kDatabase, "The recordset is open already");
    if (!self.connection)
        Raise(Errors::kConnectionClosed);
    self.connection->mState->CheckOpen();
    self.state = self.connection->mState;
    if (IsTableName(self.source)) {
        self.translated = {"SELECT * FROM " + QuotedName(self.source), {}, self.source};
    } else {
        self.translated = TranslateAccessSQL(self.source);
    }
    self.table = self.translated.updatableTable;
    std::string sql = self.translated.sql;
    self.hasRowID = !self.table.empty() && self.lock != Lock::ReadOnly && sql.starts_with("SELECT * FROM");
    if (self.hasRowID)
        sql.insert(8, ", rowid");
    try {
        self.select = Lease(*self.state, sql);
        self.select->Bind(self.translated.parameters);
    } catch (const RunTimeError&) {
        self.End();
        throw;
    }
    const std::vector<Column>& columns = self.select->Columns();
    const std::size_t count = columns.size() - (self.hasRowID ? 1 : 0);
    self.fields.mFields.clear();
    self.fields.mFields.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        Field& field = self.fields.mFields.emplace_back();
        field.mRecordset = this;
        field.mPosition = i;
        field.mColumn = &columns[i];
    }
    self.cells.assign(count, Cell());
    self.ForgetCells();
    self.hasStepped = self.isOnRow = self.hasMoved = false;
    self.isOpen = true;
    self.state->dependents.push_back(&self);
}

void Recordset::Close() {
    mThis->CheckOpen();
    mThis->Interfere();
    mThis->End();
}

bool Recordset::IsOpen() const {
    return mThis->isOpen;
}

bool Recordset::EndOfFile() {
    mThis->CheckOpen();
    mThis->MoveToFirstRow();
    return !mThis->isOnRow;
}

void Recordset::MoveNext() {
    Implementation& self = *mThis;
    self.CheckOpen();
    self.Interfere();
    self.MoveToFirstRow();
    if (!self.isOnRow)
        Raise(Errors::kNoCurrentRow);
    self.ForgetCells();
    self.hasMoved = true;
    self.isOnRow = self.select->Step();
}

void Recordset::MoveFirst() {
    Implementation& self = *mThis;
    self.CheckOpen();
    self.Interfere();
    self.ForgetCells();
    self.select->Reset();
    self.hasStepped = self.isOnRow = self.hasMoved = false;
}

bool Recordset::IsAtStart() const {
    mThis->CheckOpen();
    return !mThis->hasMoved;
}

void Recordset::OnInterference(std::function<void()> reader) {
    Implementation& self = *mThis;
    self.CheckOpen();
    if (!reader) {
        self.TakeReader();
        return;
    }
    self.Interfere();
    self.reader = std::move(reader);
    self.state->watched.push_back(&self);
}

std::int32_t Recordset::RecordCount() {
    Implementation& self = *mThis;
    self.CheckOpen();
    const Lease count(*self.state, "SELECT COUNT(*) FROM (" + self.translated.sql + ")");
    count->Bind(self.translated.parameters);
    count->Step();
    return sqlite3_column_int(count->Handle(), 0);
}

void Recordset::AddNew() {
    mThis->CheckOpen();
    if (mThis->lock == Lock::ReadOnly)
        throw RunTimeError(Errors::kDatabase, "The recordset is read-only");
    mThis->Interfere();
    mThis->ForgetCells();
    mThis->isAdding = true;
}

void Recordset::Update() {
    Implementation& self = *mThis;
    self.CheckOpen();
    if (self.isAdding)
        self.Insert();
    else if (!self.holdsAddedRow)
        self.UpdateInPlace();
}

void Recordset::CancelUpdate() {
    mThis->CheckOpen();
    mThis->ForgetCells();
}

FieldList& Recordset::Fields() {
    mThis->CheckOpen();
    return mThis->fields;
}

Field& FieldList::Item(std::size_t position) {
    if (position >= mFields.size())
        Raise(Errors::kNoSuchField, std::to_string(position));
    return mFields[position];
}

const Field& FieldList::Item(std::size_t position) const {
    return const_cast<FieldList*>(this)->Item(position);
}

Field& FieldList::Item(std::string_view name) {
    for (Field& field : mFields)
        if (EqualNoCase(field.Name(), name))
            return field;
    Raise(Errors::kNoSuchField, std::string(name));
}

const Field& FieldList::Item(std::string_view name) const {
    return const_cast<FieldList*>(this)->Item(name);
}

const std::string& Field::Name() const {
    return mColumn->name;
}

int Field::Type() const {
    return mColumn->type;
}

int Field::DefinedSize() const {
    return mColumn->definedSize;
}

ADODB::Value Field::Value() const {
    Recordset::Implementation& row = *mRecordset->mThis;
    row.CheckRow();
    if (IsNull())
        return {};
    if (row.IsAssigned(mPosition)) {
        const Cell& cell = row.cells[mPosition];
        if (cell.kind == Cell::Kind::Number)
            return cell.number;
        return std::string(row.CellText(cell));
    }
    const auto column = static_cast<int>(mPosition);
    if (sqlite3_column_type(row.select->Handle(), column) == SQLITE_TEXT ||
        sqlite3_column_type(row.select->Handle(), column) == SQLITE_BLOB)
        return std::string(ColumnText(row.select->Handle(), column));
    return sqlite3_column_double(row.select->Handle(), column);
}

void Field::Read(ADODB::Value& value) const {
    Recordset::Implementation& row = *mRecordset->mThis;
    row.CheckRow();
    if (row.IsAssigned(mPosition)) {
        value = Value();
        return;
    }
    sqlite3_value* const stored = sqlite3_column_value(row.select->Handle(), static_cast<int>(mPosition));
    const int type = sqlite3_value_type(stored);
    if (type == SQLITE_NULL) {
        value = std::monostate();
    } else if (type == SQLITE_TEXT || type == SQLITE_BLOB) {
        auto* const text = std::get_if<std::string>(&value);
        (text != nullptr ? *text : value.emplace<std::string>()).assign(ValueText(stored));
    } else {
        value = sqlite3_value_double(stored);
    }
}

std::string_view Field::Text() const {
    Recordset::Implementation& row = *mRecordset->mThis;
    row.CheckRow();
    if (row.IsAssigned(mPosition)) {
        const Cell& cell = row.cells[mPosition];
        if (cell.kind == Cell::Kind::Text)
            return row.CellText(cell);
        if (cell.kind != Cell::Kind::Number)
            return {};
    } else {
        // Lists read millions of texts. To look up the value once saves half of what a text costs; it is not
        // safe between threads, but a connection belongs to one.
        sqlite3_value* const value = sqlite3_column_value(row.select->Handle(), static_cast<int>(mPosition));
        const int type = sqlite3_value_type(value);
        if (type == SQLITE_NULL)
            return {};
        if (type == SQLITE_TEXT || type == SQLITE_BLOB)
            return ValueText(value);
    }
    const double number = Number();
    if (Type() == kTypeFlag)
        return number != 0 ? "True" : "False";
    row.scratch = NumberText(number);
    return row.scratch;
}

bool Field::IsNull() const {
    Recordset::Implementation& row = *mRecordset->mThis;
    row.CheckRow();
    if (row.IsAssigned(mPosition))
        return row.cells[mPosition].kind == Cell::Kind::Null ||
               row.cells[mPosition].kind == Cell::Kind::Unset;
    return sqlite3_column_type(row.select->Handle(), static_cast<int>(mPosition)) == SQLITE_NULL;
}

double Field::Number() const {
    const ADODB::Value value = Value();
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    const auto* text = std::get_if<std::string>(&value);
    return text == nullptr ? 0 : Val(*text);
}

void Field::SetText(std::string_view utf8) {
    Recordset::Implementation& row = *mRecordset->mThis;
    row.BeforeAssignment();
    if (Type() != kTypeText) {
        const std::size_t start = utf8.find_first_not_of(" +-.");
        if (start == std::string_view::npos || utf8[start] < '0' || utf8[start] > '9')
            Raise(Errors::kTypeMismatch, Name());
        return SetNumber(Val(utf8));
    }
    const auto size = static_cast<std::size_t>(DefinedSize());
    if (utf8.size() > size && CharacterCount(utf8) > size)
        throw RunTimeError(Errors::kDatabase, "The text is longer than its column: " + Name());
    row.cells[mPosition] = {Cell::Kind::Text, 0, row.buffer.size(), utf8.size()};
    row.buffer.append(utf8);
}

void Field::SetNumber(double value) {
    Recordset::Implementation& row = *mRecordset->mThis;
    row.BeforeAssignment();
    if (Type() == kTypeText)
        return SetText(NumberText(value));
    if (Type() == kTypeFlag)
        value = value != 0 ? -1 : 0;
    row.cells[mPosition] = {Cell::Kind::Number, value, 0, 0};
}

void Field::SetNull() {
    Recordset::Implementation& row = *mRecordset->mThis;
    row.BeforeAssignment();
    row.cells[mPosition] = {Cell::Kind::Null, 0, 0, 0};
}

} // namespace ADODB
