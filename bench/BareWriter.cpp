// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/BareWriter.h"

#include "import/Guid.h"
#include "import/Schema.h"
#include "import/cSinImport.h"
#include "platform/files.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace {

class Database {
public:
    explicit Database(const std::string& path) {
        if (sqlite3_open_v2(path.c_str(), &mHandle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) !=
            SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(mHandle));
        for (const char* pragma :
             {"PRAGMA foreign_keys = ON", "PRAGMA synchronous = NORMAL", "PRAGMA cache_size = -32000",
              "PRAGMA wal_autocheckpoint = 4000", "PRAGMA cell_size_check = ON"})
            Run(pragma);
        for (const TableDefinition& table : InventoryTables()) {
            std::string sql = "INSERT INTO \"" + std::string(table.name) + "\" VALUES (";
            for (std::size_t i = 0; i < table.columns.size(); ++i)
                sql += i == 0 ? "?" : ",?";
            Table& entry = mTables[std::string(table.name)];
            entry.columns = table.columns;
            entry.insert = Prepare(sql + ")");
        }
        mUpdateNet = Prepare(
            "UPDATE Net SET \"Logon User Name\" = ?1, \"Logon Date\" = ?2, \"Logon Time\" = ?3,"
            " \"MAC Address\" = ?4, INFFileDate = '20011102', INFFileTime = '08:00:00' WHERE COMPUTERNAME = "
            "?5");
    }
    ~Database() {
        for (auto& [name, table] : mTables)
            sqlite3_finalize(table.insert);
        sqlite3_finalize(mUpdateNet);
        sqlite3_close(mHandle);
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void Run(const char* sql) {
        if (sqlite3_exec(mHandle, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(mHandle));
    }

    void Insert(const std::string& name, const std::vector<std::string_view>& values) {
        const Table& table = mTables.at(name);
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            const std::string_view value = i < values.size() ? values[i] : std::string_view();
            const int place = static_cast<int>(i) + 1;
            if (table.columns[i].type == ColumnType::Text) {
                sqlite3_bind_text(table.insert, place, value.data(), static_cast<int>(value.size()),
                                  SQLITE_STATIC);
            } else {
                double number = 0;
                std::from_chars(value.data(), value.data() + value.size(), number);
                sqlite3_bind_double(table.insert, place, number);
            }
        }
        Step(table.insert);
        ++rows;
    }

    void UpdateNet(const std::vector<std::string_view>& values) {
        for (int place = 1; place <= 5; ++place) {
            const std::string_view value = values[static_cast<std::size_t>(place) % 5];
            sqlite3_bind_text(mUpdateNet, place, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
        }
        Step(mUpdateNet);
    }

    long rows = 0;

private:
    struct Table {
        std::span<const ColumnDefinition> columns;
        sqlite3_stmt* insert = nullptr;
    };

    sqlite3_stmt* Prepare(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(mHandle, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(mHandle));
        return statement;
    }

    void Step(sqlite3_stmt* statement) {
        if (sqlite3_step(statement) != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(mHandle));
        sqlite3_reset(statement);
    }

    sqlite3* mHandle = nullptr;
    std::map<std::string, Table> mTables;
    sqlite3_stmt* mUpdateNet = nullptr;
};

std::vector<std::string_view> Fields(std::string_view value) {
    std::vector<std::string_view> fields;
    for (std::size_t bar = value.find('|'); bar != std::string_view::npos; bar = value.find('|')) {
        fields.push_back(value.substr(0, bar));
        value.remove_prefix(bar + 1);
    }
    return fields;
}

std::string_view Tagged(std::string_view value, std::string_view tag, char terminator) {
    const std::size_t place = value.find(tag);
    if (place == std::string_view::npos)
        return {};
    value.remove_prefix(place + tag.size());
    return value.substr(0, value.find(terminator));
}

void WriteDevice(Database& database, std::string_view machine, std::string_view configuration,
                 std::string_view value) {
    const std::string identifier = Guid::Create(1);
    const std::string_view category = Tagged(value, "Cat=", '|');
    database.Insert("DeviceData",
                    {identifier, machine, configuration, category, Tagged(value, "Prob=", '|'),
                     Tagged(value, "DevName=", '|'), "20000101", Tagged(value, "IO=", '|'),
                     Tagged(value, "IRQ=", '|'), Tagged(value, "DMA=", '|'), Tagged(value, "MEM=", '|'), ""});
    if (category == "Display adapters")
        database.Insert("DeviceDisplay",
                        {identifier, Tagged(value, "VidMem=", ';'), Tagged(value, "DACType=", ';')});
    else if (Tagged(value, "DevName=", '|') == "System Board")
        database.Insert("DeviceMotherBoard",
                        {identifier, Tagged(value, "BName=", ';'), "19990314", Tagged(value, "BVer=", ';'),
                         Tagged(value, "BUSType=", ';'), Tagged(value, "CPU=", ';'),
                         Tagged(value, "MachType=", ';'), Tagged(value, "Model=", ';')});
    else if (category == "Network adapters")
        for (const char* n : {"0", "1"}) {
            const auto tag = [&](const char* name, const char* suffix = "=") {
                return Tagged(value, std::string(name) + n + suffix, ';');
            };
            database.Insert("DeviceNetwork",
                            {identifier, n, tag("PR"), tag("IP"), tag("Mk"), tag("Gw"), tag("WS1"),
                             tag("WS2"), tag("Client", "0="), tag("Client", "1=")});
        }
}

void WriteFile(Database& database, const std::string& contents, std::string_view configuration) {
    static const std::map<std::string_view, std::string> oneRow = {
        {"OS", "OS"}, {"MSOFFICE", "MSOffice"}, {"INPUT", "Input"}, {"PC", "PC"}, {"DRIVES", "Drives"}};
    static const std::map<std::string_view, std::string> manyRows = {{"UNINSTALLDATA", "UninstallData"},
                                                                     {"ODBCDATA", "ODBCData"},
                                                                     {"PRINTERDATA", "PrinterData"},
                                                                     {"DRIVESDATA", "DrivesData"}};
    std::string_view rest = contents;
    std::string_view section;
    std::string machine;
    const std::string* table = nullptr;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find("\r\n"));
        rest.remove_prefix(std::min(line.size() + 2, rest.size()));
        if (line.front() == '[') {
            section = line.substr(1, line.size() - 2);
            const auto one = oneRow.find(section);
            const auto many = manyRows.find(section);
            table = one != oneRow.end() ? &one->second : many != manyRows.end() ? &many->second : nullptr;
            continue;
        }
        const std::string_view value = line.substr(line.find('=') + 1);
        if (section == "NET") {
            const std::vector<std::string_view> fields = Fields(value);
            machine = fields[0];
            if (configuration == "0")
                database.Insert("Net", {fields[0], fields[1], fields[2], fields[3], fields[4], "20011102",
                                        "08:00:00", "", "", "", ""});
            else
                database.UpdateNet(fields);
        } else if (section == "DEVICEDATA") {
            WriteDevice(database, machine, configuration, value);
        } else if (table != nullptr) {
            std::vector<std::string_view> values = Fields(value);
            values.insert(values.begin(), {machine, configuration});
            database.Insert(*table, values);
        }
    }
}

} // namespace

long BareWrite(const std::string& folder, const std::string& path) {
    Database database(path);
    const DirectoryListing listing(folder);
    int files = 0;
    database.Run("BEGIN");
    for (const char* configuration : {"0", "1"})
        for (const std::string& name : listing.WithExtension(*configuration == '0' ? ".org" : ".inf")) {
            WriteFile(database, ReadFile(JoinPath(folder, name)), configuration);
            if (++files % cSinImport::kFilesPerCommit == 0)
                database.Run("COMMIT; BEGIN");
        }
    database.Run("COMMIT");
    return database.rows;
}
