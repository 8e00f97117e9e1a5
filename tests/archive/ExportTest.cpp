// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/archive/ExportTest.h"

#include "core/Globals.h"
#include "import/Schema.h"

#include <sqlite3.h>

#include <filesystem>

ExportTest::ExportTest() : context{form, prompts, "/opt/velmora"} {
    const std::string path = folder.Path("Demodb.mdb");
    CreateDatabase(path);
    gConnection = std::make_shared<ADODB::Connection>();
    gConnection->ConnectionString("DBQ=" + path + ";USR=Admin;");
    gConnection->Open();
}

ExportTest::~ExportTest() {
    gRecordset.reset();
    gConnection.reset();
}

void ExportTest::Run(const std::string& statements) {
    ASSERT_EQ(sqlite3_exec(gConnection->Handle(), statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(gConnection->Handle());
}

void ExportTest::ExpectPath(const std::string& name) {
    prompts.Expect(SaveFile("Please enter export filename"), folder.Path(name));
}

void ExportTest::ExpectNoOtherFile(const std::string& name) const {
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        const std::string found = entry.path().filename();
        EXPECT_TRUE(found == name || found.starts_with("Demodb.mdb")) << found;
    }
}
