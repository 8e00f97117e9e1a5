// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialectTest.h"

#include "DialectSamples.h"
#include "platform/accessfunctions.h"
#include "platform/errors.h"

#include <cmath>

namespace {

// Two machines, out of alphabetical order, and a third without rows elsewhere.
constexpr const char* kInventory = R"(
insert into Net values ('PC0002', 'Ellen', '20011102', ''), ('PC0001', 'arno', '20011015', ''),
    ('PC0003', null, null, '');
insert into Personal values('PC0001', 'Arno', 'Berg', 'North'), ('PC0002', 'Ellen', null, 'south');
insert into PC values ('PC0001', 0, 'Slow', -1, 65536), ('PC0002', 0, 'Fast', 0, 131072),
    ('PC0001', 1, 'Slow', -1, 131072);
insert into Drives values('PC0001', 0, 1, 1), ('PC0001', 1, 1, 2);
insert into DrivesData values ('PC0001', 0, 'C:', 'Fixed drive', 4000), ('PC0001', 0, 'D:', 'Fixed drive', 2000),
    ('PC0001', 0, 'Z:', 'Network drive', 9000), ('PC0001', 1, 'C:', 'Fixed drive', 6000);
insert into MSOffice values('PC0001', 0, '9.0'), ('PC0002', 0, null);
insert into UninstallData values
    ('PC0001', 1, 'Paint'), ('PC0001', 1, 'Microsoft Office 2000'), ('PC0001', 0, 'MS Office 97');
insert into DeviceData values ('ID1', 'PC0001', 0, '00 00 00 00 ', 'Card'),
    ('ID2', 'PC0001', 0, '00 00 00 00', 'Modem'), ('ID3', 'PC0002', 0, 'STOPED      ', 'M'),
    ('ID4', 'PC0002', 0, '', 'Card');
insert into DeviceDisplay values('ID4', 'A'), ('ID1', 'B');
)";

} // namespace

void DialectTest::SetUp() {
    ASSERT_EQ(sqlite3_open(":memory:", &mDatabase), SQLITE_OK);
    RegisterAccessFunctions(mDatabase);
    Execute(Samples::kSchema);
    Execute(kInventory);
}

void DialectTest::Execute(const char* statements) {
    ASSERT_EQ(sqlite3_exec(mDatabase, statements, nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(mDatabase);
}

std::string DialectTest::Rows(std::string_view statement) {
    try {
        return Run(TranslateAccessSQL(statement));
    } catch (const RunTimeError& error) {
        return error.description;
    }
}

std::string DialectTest::Run(const TranslatedSQL& translated) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(mDatabase, translated.sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        return std::string("engine: ") + sqlite3_errmsg(mDatabase) + " in " + translated.sql;
    int index = 0;
    for (const SQLLiteral& literal : translated.parameters) {
        ++index;
        if (const auto* text = std::get_if<std::string>(&literal))
            sqlite3_bind_text(statement, index, text->c_str(), -1, SQLITE_TRANSIENT);
        else if (const double number = std::get<double>(literal); number == std::trunc(number))
            sqlite3_bind_int64(statement, index, static_cast<sqlite3_int64>(number));
        else
            sqlite3_bind_double(statement, index, number);
    }
    std::string rows;
    int result = sqlite3_step(statement);
    for (; result == SQLITE_ROW; result = sqlite3_step(statement)) {
        if (!rows.empty())
            rows += '\n';
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
            rows += (column > 0 ? "|" : "") + std::string(text == nullptr ? "NULL" : text);
        }
    }
    if (result != SQLITE_DONE)
        rows = std::string("engine: ") + sqlite3_errmsg(mDatabase);
    sqlite3_finalize(statement);
    return rows;
}
