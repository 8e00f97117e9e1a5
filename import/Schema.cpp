// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/Schema.h"

#include "core/Admin.h"
#include "platform/errors.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <memory>

namespace {

constexpr auto Text = ColumnType::Text;
constexpr auto Number = ColumnType::Number;
constexpr auto Flag = ColumnType::Flag;

constexpr ColumnDefinition kNet[] = {
    {"COMPUTERNAME", Text, 20}, {"Logon User Name", Text, 20}, {"Logon Date", Text, 8},
    {"Logon Time", Text, 8},    {"MAC Address", Text, 15},     {"ORGFileDate", Text, 8},
    {"ORGFileTime", Text, 8},   {"INFFileDate", Text, 8},      {"INFFileTime", Text, 8},
    {"PNFFileDate", Text, 8},   {"PNFFileTime", Text, 8},
};

constexpr ColumnDefinition kPC[] = {
    {"COMPUTERNAME", Text, 50},
    {"ConfID", Number},
    {"CPU API Name", Text, 50},
    {"CPU API Number", Number},
    {"CPU API Active", Number},
    {"CPU REG Vendor", Text, 50},
    {"CPU REG Identifier", Text, 50},
    {"CPU REG MMX Identifier", Text, 50},
    {"CPU REG MHZ", Text, 50},
    {"CPU DLL Description", Text, 100},
    {"CPU DLL Speed", Text, 50},
    {"CPU DLL FPU", Flag},
    {"CPU DLL MMX", Flag},
    {"RAM", Number},
    {"RAM Free", Number},
    {"PAGE", Number},
    {"PAGE Free", Number},
    {"VIRTUAL", Number},
    {"VIRTUAL Free", Number},
    {"Screen Res", Text, 50},
    {"Screen Mode", Text, 50},
    {"Screen Count", Number},
    {"WAV", Number},
    {"MIDI", Number},
    {"JOY", Number},
    {"JOY Connected", Number},
};

constexpr ColumnDefinition kOS[] = {
    {"COMPUTERNAME", Text, 50},
    {"ConfID", Number},
    {"OS Version", Text, 10},
    {"OS Build", Text, 50},
    {"OS Booted", Text, 50},
    {"OS Debug", Flag},
    {"OS Slow PC", Flag},
    {"OS Name API", Text, 50},
    {"OS Time DaylightName", Text, 50},
    {"OS Time StandardName", Text, 50},
    {"OS Name Reg", Text, 50},
    {"OS ID", Text, 50},
    {"OS Key", Text, 50},
    {"OS Registered", Text, 50},
    {"OS Owner", Text, 50},
    {"OS Organization", Text, 50},
    {"OS Plus Version", Text, 50},
    {"OS Service Pack", Text, 50},
};

constexpr ColumnDefinition kMSOffice[] = {
    {"COMPUTERNAME", Text, 50}, {"ConfID", Number},           {"MS Access", Text, 50}, {"MS Excel", Text, 50},
    {"MS Outlook", Text, 50},   {"MS Power Point", Text, 50}, {"MS Word", Text, 50},
};

constexpr ColumnDefinition kInput[] = {
    {"COMPUTERNAME", Text, 50},  {"ConfID", Number},
    {"Keyboard Name", Text, 50}, {"Keyboard Delay", Number},
    {"Keyboard Speed", Number},  {"Function Keys", Number},
    {"Mouse Name", Text, 50},    {"Mouse Buttons", Number},
    {"Mouse Wheel", Flag},       {"Mouse Double-Click Speed", Number},
};

constexpr ColumnDefinition kDrives[] = {
    {"COMPUTERNAME", Text, 50}, {"ConfID", Number},   {"Removable", Number},    {"Fixed", Number},
    {"CDRom", Number},          {"RAMDrive", Number}, {"NetworkDrive", Number}, {"DriveLetters", Text, 50},
};

constexpr ColumnDefinition kDrivesData[] = {
    {"COMPUTERNAME", Text, 50},
    {"ConfID", Number},
    {"Drive Root", Text, 50},
    {"Drive Description", Text, 50},
    {"Drive FileSystem", Text, 50},
    {"Drive Size", Number},
    {"Drive Free", Number},
    {"Drive Label", Text, 50},
    {"Drive Serial Number", Text, 50},
    {"Drive Mapping", Text, 50},
    {"Drive User Logon", Text, 50},
};

constexpr ColumnDefinition kPrinterData[] = {
    {"COMPUTERNAME", Text, 50}, {"ConfID", Number},           {"LocalOrRemote", Text, 1},
    {"Printer Name", Text, 50}, {"Printer Driver", Text, 50}, {"Printer Port", Text, 50},
};

constexpr ColumnDefinition kODBCData[] = {
    {"COMPUTERNAME", Text, 50}, {"ConfID", Number},           {"Driver Name", Text, 50},
    {"Driver Path", Text, 255}, {"Driver Version", Text, 50},
};

constexpr ColumnDefinition kUninstallData[] = {
    {"COMPUTERNAME", Text, 50},
    {"ConfID", Number},
    {"Program Name", Text, 255},
    {"Uninstall String", Text, 255},
};

constexpr ColumnDefinition kDeviceData[] = {
    {"Device Auto ID", Text, 36},    {"COMPUTERNAME", Text, 50},   {"ConfID", Number},
    {"Device Catagory", Text, 50},   {"Device Problem", Text, 50}, {"Device Name", Text, 50},
    {"Device Driver Date", Text, 8}, {"Device IO", Text, 50},      {"Device IRQ", Text, 50},
    {"Device DMA", Text, 50},        {"Device Memory", Text, 50},  {"Device Extra Info", Text, 50},
};

constexpr ColumnDefinition kDeviceDisplay[] = {
    {"Device Auto ID", Text, 36},
    {"Video Memory", Text, 50},
    {"DAC Type", Text, 50},
};

constexpr ColumnDefinition kDeviceMotherBoard[] = {
    {"Device Auto ID", Text, 36}, {"BIOS Name", Text, 50}, {"BIOS Date", Text, 8},
    {"BIOS Version", Text, 50},   {"BUS Type", Text, 50},  {"CPU", Text, 50},
    {"Machine Type", Text, 50},   {"Model", Text, 50},
};

constexpr ColumnDefinition kDeviceNetwork[] = {
    {"Device Auto ID", Text, 36},   {"Protocol Number", Number},  {"Protocol Name", Text, 50},
    {"Protocol IP", Text, 20},      {"Protocol Mask", Text, 20},  {"Protocol Gateway", Text, 20},
    {"Protocol Wins1", Text, 20},   {"Protocol Wins2", Text, 20}, {"Protocol Client1", Text, 50},
    {"Protocol Client2", Text, 50},
};

constexpr ColumnDefinition kPersonal[] = {
    {"COMPUTERNAME", Text, 50},   {"Name", Text, 50},   {"Surname", Text, 50},      {"ID", Text, 50},
    {"EmployeeNumber", Text, 50}, {"PhoneH", Text, 50}, {"HomeAddress", Text, 255}, {"Building", Text, 50},
    {"Floor", Text, 50},          {"Office", Text, 50}, {"PhoneW", Text, 50},       {"AssetNumber", Text, 50},
};

constexpr ColumnDefinition kVersion[] = {
    {"VersionNumber", Text, 50},
    {"Compatibility", Text, 255},
    {"LastImportDate", Text, 8},
};

constexpr TableDefinition kTables[] = {
    {"Net", kNet, Parent::None},
    {"PC", kPC, Parent::Machine, true},
    {"OS", kOS, Parent::Machine, true},
    {"MSOffice", kMSOffice, Parent::Machine, true},
    {"Input", kInput, Parent::Machine, true},
    {"Drives", kDrives, Parent::Machine, true},
    {"DrivesData", kDrivesData, Parent::Machine},
    {"PrinterData", kPrinterData, Parent::Machine},
    {"ODBCData", kODBCData, Parent::Machine},
    {"UninstallData", kUninstallData, Parent::Machine},
    {"DeviceData", kDeviceData, Parent::Machine},
    {"DeviceDisplay", kDeviceDisplay, Parent::Device},
    {"DeviceMotherBoard", kDeviceMotherBoard, Parent::Device},
    {"DeviceNetwork", kDeviceNetwork, Parent::Device},
    {"Personal", kPersonal, Parent::Machine},
    {"Version", kVersion, Parent::None},
};

constexpr std::string_view kMachineKey = "COMPUTERNAME";
constexpr std::string_view kDeviceKey = "Device Auto ID";

std::string Quoted(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

bool IsPrimaryKey(const TableDefinition& table, const ColumnDefinition& column) {
    return (table.name == "Net" && column.name == kMachineKey) ||
           (table.name == "DeviceData" && column.name == kDeviceKey);
}

std::string ColumnClause(const TableDefinition& table, const ColumnDefinition& column) {
    std::string clause = Quoted(column.name);
    switch (column.type) {
        case ColumnType::Text:
            clause += " TEXT(" + std::to_string(column.width) + ") COLLATE NOCASE";
            break;
        case ColumnType::Number:
            clause += " NUMERIC";
            break;
        case ColumnType::Flag:
            clause += " BOOLEAN";
            break;
    }
    if (IsPrimaryKey(table, column))
        clause += " NOT NULL PRIMARY KEY CHECK (length(" + Quoted(column.name) + ") > 0)";
    else if (table.parent == Parent::Machine && column.name == kMachineKey)
        clause += " NOT NULL REFERENCES \"Net\" ON DELETE CASCADE";
    else if (table.parent == Parent::Device && column.name == kDeviceKey)
        clause += " NOT NULL REFERENCES \"DeviceData\" ON DELETE CASCADE";
    return clause;
}

std::string CreateTable(const TableDefinition& table) {
    std::string sql = "CREATE TABLE " + Quoted(table.name) + " (";
    for (const ColumnDefinition& column : table.columns)
        sql += (column.name == table.columns.front().name ? "" : ", ") + ColumnClause(table, column);
    if (table.isUniqueByConfiguration)
        sql += ", UNIQUE (\"COMPUTERNAME\", \"ConfID\")";
    return sql + ")";
}

/// The index by which a table's rows are found and deleted with their parent; empty where a key serves.
std::string CreateIndex(const TableDefinition& table) {
    if (table.parent == Parent::None || table.isUniqueByConfiguration)
        return {};
    std::string columns = Quoted(table.parent == Parent::Device ? kDeviceKey : kMachineKey);
    if (table.parent == Parent::Machine && table.name != "Personal")
        columns += ", \"ConfID\"";
    return "CREATE INDEX " + Quoted(std::string(table.name) + "Parent") + " ON " + Quoted(table.name) + " (" +
           columns + ")";
}

} // namespace

std::span<const TableDefinition> InventoryTables() {
    return kTables;
}

std::vector<std::string> SchemaStatements() {
    std::vector<std::string> statements;
    for (const TableDefinition& table : kTables)
        statements.push_back(CreateTable(table));
    for (const TableDefinition& table : kTables)
        if (std::string index = CreateIndex(table); !index.empty())
            statements.push_back(std::move(index));
    // A new database is one of this console's version.
    const std::string version = Admin::VersionText();
    statements.push_back("INSERT INTO \"Version\" VALUES ('" + version + "', '" + version + ";', NULL)");
    return statements;
}

void CreateDatabase(const std::string& path) {
    // The engine would create the file readable by everybody that the user's mask allows.
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0)
        RaiseSystem(errno, path);
    close(file);
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(opened, sqlite3_close);
    const auto run = [&](const std::string& sql) {
        if (sqlite3_exec(database.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
            throw RunTimeError(Errors::kDatabase, sqlite3_errmsg(database.get()));
    };
    if (result != SQLITE_OK)
        throw RunTimeError(Errors::kDatabase, sqlite3_errmsg(opened));
    // The mode is noted in the file, so every copy of it has a write-ahead log while it is open.
    run("PRAGMA journal_mode = WAL");
    run("BEGIN");
    for (const std::string& statement : SchemaStatements())
        run(statement);
    run("COMMIT");
}
