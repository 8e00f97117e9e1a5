// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds any bytes to the translator. What it translates must be one statement that the engine can look at; it
// is never run.
#include "platform/accessfunctions.h"
#include "platform/accesssql.h"
#include "platform/errors.h"
#include "tests/platform/DialectSamples.h"

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

sqlite3* OpenSchema() {
    sqlite3* database = nullptr;
    if (sqlite3_open(":memory:", &database) != SQLITE_OK)
        std::abort();
    RegisterAccessFunctions(database);
    if (sqlite3_exec(database, Samples::kSchema, nullptr, nullptr, nullptr) != SQLITE_OK)
        std::abort();
    return database;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static sqlite3* database = OpenSchema();
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    IsQuery(text);
    try {
        const TranslatedSQL translated = TranslateAccessSQL(text);
        sqlite3_stmt* statement = nullptr;
        const char* rest = nullptr;
        const int result = sqlite3_prepare_v2(database, translated.sql.c_str(), -1, &statement, &rest);
        const bool isWhole = result != SQLITE_OK || *rest == '\0';
        const auto parameters = static_cast<std::size_t>(sqlite3_bind_parameter_count(statement));
        sqlite3_finalize(statement);
        if (!isWhole || (result == SQLITE_OK && parameters != translated.parameters.size()))
            std::abort();
    } catch (const RunTimeError&) {
        return 0;
    }
    return 0;
}
