// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the sections of an inventory file into their tables. One object serves a whole import; it holds
// the connection and the recordset of the pass in progress.
// A column's meaning lies in its position alone: the routines walk the columns in their stored order and
// convert by the column's own type. Failures inside a writer are swallowed, the row in progress is
// cancelled; a failure of the opening itself travels on and ends the import.
#pragma once

#include "import/Record.h"
#include "import/TimeFrame.h"
#include "import/cINIReader.h"
#include "platform/adodb.h"
#include "platform/codepage.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// What a file of the pass writes: the original configuration, the current one, personal details.
enum class ImportType { Original = 0, Current = 1, Personal = 2 };

class SectionWriters {
public:
    SectionWriters(std::shared_ptr<ADODB::Connection> connection, TimeFrame frame, const CodePage& page);

    /// Finds the row of a one-row section by `sql`, or adds it, and fills its columns up to the position
    /// `columnLimit` (all where it is negative) from the fields of `record`. An empty `machine` takes the
    /// machine's name from the record. `stamp` is given for Net alone: it is tested against the row's stamp
    /// of this type, and stored. Type Personal stores the stamp and nothing else, and never adds a row.
    /// False where the file is older than the time frame allows or the row can't be written.
    bool Insert_Update(const std::string& machine, const std::string& sql, std::string_view record,
                       int columnLimit, ImportType type, std::optional<LocalTime> stamp);

    /// Adds a row to the table `section` for each of the records INFO0 to INFO<count-1> that has a value.
    void Insert_Multi(const std::string& machine, const std::string& section, ImportType type, int count);

    /// Adds the devices, and their rows in the subtables of displays, boards and network adapters.
    void InsertDevices(const std::string& machine, ImportType type, int count);

    /// Adds the machine's row of personal details. False where it can't be written.
    bool InsertPersonal(const std::string& machine);

    /// Runs one statement; failures are ignored. Always false.
    bool ExecuteSQL(const std::string& sql);

    /// The file in hand. Its contents must stay until the next one is read.
    cINIReader& Reader() { return mReader; }
    /// Whether the last Insert_Update added its row.
    bool HasAddedRow() const { return mHasAddedRow; }
    /// UTF-8 of bytes of the file.
    std::string Decoded(std::string_view bytes) const { return mPage.Decode(bytes); }

private:
    bool PassesTimeFrame(ADODB::FieldList& fields, ImportType type, LocalTime stamp);
    bool FillRow(const std::string& machine, std::string_view record, int columnLimit, ImportType type,
                 const std::optional<LocalTime>& stamp);
    void StoreField(ADODB::Field& field, std::string_view bytes);
    /// As it stands, without a cut.
    void StoreText(ADODB::Field& field, std::string_view bytes);
    void StoreDate(ADODB::Field& field, std::string_view bytes);
    void InsertDevice(const std::string& machine, ImportType type, const Record& record);
    void InsertSubtables(std::string_view identifier, const Record& record);
    void InsertProtocols(std::string_view identifier, const Record& record);

    std::shared_ptr<ADODB::Connection> mConnection;
    TimeFrame mFrame;
    const CodePage& mPage;
    cINIReader mReader;
    ADODB::Recordset mRows;
    ADODB::Recordset mDisplays;
    ADODB::Recordset mBoards;
    ADODB::Recordset mProtocols;
    std::string mScratch;
    std::size_t mProtocolRows = 0;
    bool mHasAddedRow = false;
};
