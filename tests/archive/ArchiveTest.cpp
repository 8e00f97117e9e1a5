// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/archive/ArchiveTest.h"

#include "core/Globals.h"
#include "import/Schema.h"
#include "import/cSinImport.h"
#include "tests/support/Database.h"

#include <sqlite3.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <utility>

std::string Contents(const std::string& path) {
    sqlite3* database = nullptr;
    sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
    std::string contents =
        RowsOf(database, "PRAGMA integrity_check") + "\n" + RowsOf(database, "PRAGMA foreign_key_check");
    for (const TableDefinition& table : InventoryTables())
        contents += "\n" + RowsOf(database, "SELECT * FROM [" + std::string(table.name) + "]");
    sqlite3_close(database);
    return contents;
}

ArchiveTest::ArchiveTest()
    : session(form, prompts, clock, program, [] {}), command(form, prompts, clock, program) {
    std::filesystem::create_directory(program);
    form.session = &session;
    gBackupDir = folder.Path("backups");
    gImportDir = folder.Path("INF");
}

ArchiveTest::~ArchiveTest() {
    gRecordset.reset();
    gConnection.reset();
    gDatabasePath.clear();
    gBackupDir.clear();
    gImportDir.clear();
}

std::string ArchiveTest::MakeDatabase(const std::string& name, const std::vector<std::string>& machines) {
    std::string path = folder.Path(name);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    CreateDatabase(path);
    const auto connection = OpenDatabase(path);
    for (const std::string& machine : machines)
        connection->Execute("INSERT INTO Net (COMPUTERNAME) VALUES ('" + machine + "')");
    connection->Close();
    return path;
}

void ArchiveTest::Import() {
    bool noData = false;
    cSinImport import(gConnection, prompts, clock, TimeFrame{}, nullptr);
    EXPECT_TRUE(import.ImportInfData(gImportDir, "", noData));
    EXPECT_FALSE(noData);
}

void ArchiveTest::Open(const std::string& database) {
    gDatabasePath = database;
    ASSERT_TRUE(session.ConnectSinDatabase(database));
    Told();
}

std::string ArchiveTest::Told() {
    return std::exchange(form.told, "");
}

std::string ArchiveTest::Files(const std::string& subfolder) const {
    std::string all;
    for (const std::string& name : folder.Names(subfolder))
        all += name + " ";
    return all;
}

std::string ArchiveTest::Shell(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen((command + " 2>&1").c_str(), "r"), pclose);
    std::string text;
    std::array<char, 4096> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), output.get()))
        text.append(block.data(), count);
    while (text.ends_with('\n'))
        text.pop_back();
    return text;
}
