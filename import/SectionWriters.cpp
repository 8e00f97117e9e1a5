// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/SectionWriters.h"

#include "platform/errors.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t kPersonalValues = 11;

struct StampColumns {
    std::string_view date;
    std::string_view time;
};

constexpr std::array kStampColumns = {
    StampColumns{"ORGFileDate", "ORGFileTime"},
    StampColumns{"INFFileDate", "INFFileTime"},
    StampColumns{"PNFFileDate", "PNFFileTime"},
};

/// After a failure inside a writer: the row in progress goes, the recordset is closed. False where the
/// failure came from the opening: there is nothing to cancel then, and the failure travels on.
bool AbandonRow(ADODB::Recordset& rows) {
    if (!rows.IsOpen())
        return false;
    rows.CancelUpdate();
    rows.Close();
    return true;
}

} // namespace

SectionWriters::SectionWriters(std::shared_ptr<ADODB::Connection> connection, TimeFrame frame,
                               const CodePage& page)
    : mConnection(std::move(connection)), mFrame(frame), mPage(page) {
    mRows.ActiveConnection(mConnection);
    mRows.CursorType(ADODB::Cursor::Dynamic);
    mRows.LockType(ADODB::Lock::Optimistic);
}

bool SectionWriters::Insert_Update(const std::string& machine, const std::string& sql,
                                   std::string_view record, int columnLimit, ImportType type,
                                   std::optional<LocalTime> stamp) {
    mHasAddedRow = false;
    try {
        mRows.Source(sql);
        mRows.Open();
        const bool isWritten = FillRow(machine, record, columnLimit, type, stamp);
        mRows.Close();
        return isWritten;
    } catch (const RunTimeError&) {
        mHasAddedRow = false;
        if (!AbandonRow(mRows))
            throw;
        return false;
    }
}

bool SectionWriters::FillRow(const std::string& machine, std::string_view record, int columnLimit,
                             ImportType type, const std::optional<LocalTime>& stamp) {
    ADODB::FieldList& fields = mRows.Fields();
    const bool isMissing = mRows.EndOfFile();
    if (isMissing && type == ImportType::Personal)
        return false;
    if (isMissing)
        mRows.AddNew();
    if (stamp) {
        if (!PassesTimeFrame(fields, type, *stamp))
            return false;
        if (type == ImportType::Personal) {
            mRows.Update();
            return true;
        }
    }
    const Record values(mReader.Search(), record);
    const std::size_t count = columnLimit < 0 ? fields.Count() : static_cast<std::size_t>(columnLimit) + 1;
    int counter = 1;
    for (std::size_t position = 0; position < count; ++position) {
        ADODB::Field& field = fields.Item(position);
        if (EqualNoCase(field.Name(), "ConfID")) {
            if (type != ImportType::Personal)
                field.SetNumber(static_cast<int>(type));
        } else if (!machine.empty() && EqualNoCase(field.Name(), "COMPUTERNAME")) {
            field.SetText(machine);
        } else {
            StoreField(field, values.GetField(counter));
            ++counter;
        }
    }
    mRows.Update();
    mHasAddedRow = isMissing;
    return true;
}

bool SectionWriters::PassesTimeFrame(ADODB::FieldList& fields, ImportType type, LocalTime stamp) {
    const StampColumns& columns = kStampColumns[static_cast<std::size_t>(type)];
    ADODB::Field& date = fields.Item(columns.date);
    ADODB::Field& time = fields.Item(columns.time);
    if (!CheckDate(std::string(date.Text()), std::string(time.Text()), stamp, mFrame))
        return false;
    date.SetText(FormatDate(stamp, "yyyymmdd"));
    time.SetText(FormatDate(stamp, "hh:nn:ss"));
    return true;
}

void SectionWriters::StoreField(ADODB::Field& field, std::string_view bytes) {
    switch (field.Type()) {
        case ADODB::kTypeNumber:
        case ADODB::kTypeFlag:
            field.SetNumber(Val(bytes));
            break;
        case ADODB::kTypeText:
            // The cut comes before the decoding: there a byte is a character.
            StoreText(field, bytes.substr(0, static_cast<std::size_t>(field.DefinedSize())));
            break;
        default:
            break;
    }
}

void SectionWriters::StoreText(ADODB::Field& field, std::string_view bytes) {
    if (bytes.size() > static_cast<std::size_t>(field.DefinedSize()))
        throw RunTimeError(Errors::kDatabase, "The text is longer than its column: " + field.Name());
    if (IsASCII(bytes))
        return field.SetText(bytes);
    mScratch.clear();
    mPage.DecodeTo(bytes, mScratch);
    field.SetText(mScratch);
}

void SectionWriters::StoreDate(ADODB::Field& field, std::string_view bytes) {
    // What reads as no date passes unchanged, and only what the column then refuses becomes the date
    // that stands for an unknown one.
    try {
        if (const auto date = ParseDate(bytes))
            field.SetText(FormatDate(*date, "yyyymmdd"));
        else
            StoreText(field, bytes);
    } catch (const RunTimeError&) {
        field.SetText("19800101");
    }
}

void SectionWriters::Insert_Multi(const std::string& machine, const std::string& section, ImportType type,
                                  int count) {
    try {
        mRows.Source(section);
        mRows.Open();
        ADODB::FieldList& fields = mRows.Fields();
        for (int i = 0; i < count; ++i) {
            const std::string_view value = mReader.GetValue(section, "INFO" + std::to_string(i), "");
            if (value.empty())
                continue;
            const Record record(mReader.Search(), value);
            mRows.AddNew();
            fields.Item(0).SetText(machine);
            fields.Item(1).SetNumber(static_cast<int>(type));
            for (std::size_t position = 2; position < fields.Count(); ++position)
                StoreField(fields.Item(position), record.GetField(static_cast<int>(position) - 1));
            mRows.Update();
        }
        mRows.Close();
    } catch (const RunTimeError&) {
        if (!AbandonRow(mRows))
            throw;
    }
}

bool SectionWriters::InsertPersonal(const std::string& machine) {
    try {
        mRows.Source("Personal");
        mRows.Open();
        ADODB::FieldList& fields = mRows.Fields();
        mRows.AddNew();
        fields.Item(0).SetText(machine);
        for (std::size_t i = 1; i <= kPersonalValues; ++i)
            StoreText(fields.Item(i), mReader.GetValue("DETAIL", "TXTINPUT" + std::to_string(i - 1), "N/A"));
        mRows.Update();
        mRows.Close();
        return true;
    } catch (const RunTimeError&) {
        if (!AbandonRow(mRows))
            throw;
        return false;
    }
}

bool SectionWriters::ExecuteSQL(const std::string& sql) {
    try {
        ADODB::Command command(mConnection);
        command.CommandText(sql);
        command.Execute();
    } catch (const RunTimeError&) {
        // A section whose old rows can't be deleted still gets its new ones.
    }
    return false;
}
