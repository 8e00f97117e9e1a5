// SPDX-License-Identifier: GPL-3.0-or-later
// Writes any bytes as a machine's sections into a database; whatever they hold, another machine's row stays.
#include "import/Schema.h"
#include "import/SectionWriters.h"
#include "platform/errors.h"

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

std::shared_ptr<ADODB::Connection> Database() {
    const std::string path =
        std::filesystem::temp_directory_path() / ("fuzz-import-" + std::to_string(getpid()) + ".mdb");
    std::filesystem::remove(path);
    CreateDatabase(path);
    auto connection = std::make_shared<ADODB::Connection>();
    connection->ConnectionString("DBQ=" + path + ";USR=Admin;");
    connection->Open();
    connection->Execute("INSERT INTO Net (COMPUTERNAME) VALUES ('GOOD')");
    return connection;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::shared_ptr<ADODB::Connection> connection = Database();
    static const CodePage page(1252);
    connection->BeginTrans();
    connection->Execute("INSERT INTO Net (COMPUTERNAME) VALUES ('BAD')");
    SectionWriters writers(connection, {}, page);
    writers.Reader().Contents(std::string(reinterpret_cast<const char*>(data), size));
    for (const char* section : {"OS", "MSOFFICE", "INPUT", "PC", "DRIVES"})
        writers.Insert_Update(
            "BAD", std::string("SELECT * FROM ") + section + " WHERE COMPUTERNAME='BAD' AND ConfID=1",
            writers.Reader().GetValue(section, "INFO0", ""), -1, ImportType::Current, {});
    for (const char* section : {"UNINSTALLDATA", "ODBCDATA", "PRINTERDATA", "DRIVESDATA"})
        writers.Insert_Multi("BAD", section, ImportType::Current, 20);
    writers.InsertDevices("BAD", ImportType::Current, 20);
    writers.InsertPersonal("BAD");
    connection->Execute("DELETE * FROM Net WHERE COMPUTERNAME='BAD'");
    ADODB::Recordset rows;
    rows.Open("SELECT COUNT(*) FROM Net WHERE COMPUTERNAME = 'GOOD' AND NOT EXISTS (SELECT * FROM OS)",
              connection);
    if (rows.Fields().Item(0).Number() != 1)
        std::abort();
    rows.Close();
    connection->RollbackTrans();
    return 0;
}
