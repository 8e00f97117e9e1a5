// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/Guid.h"
#include "import/Schema.h"
#include "tests/import/ImportTest.h"
#include "tests/support/ErrorOf.h"

#include <regex>

namespace {

TEST_F(ImportTest, KeysAreUniqueWithoutRegardToCase) {
    connection->Execute("INSERT INTO Net (COMPUTERNAME) VALUES ('PC1')");
    const auto fails = [this](const char* sql) { return ErrorOf([&] { connection->Execute(sql); }) != 0; };
    EXPECT_TRUE(fails("INSERT INTO Net (COMPUTERNAME) VALUES ('pc1')"));
    EXPECT_TRUE(fails("INSERT INTO Net (COMPUTERNAME) VALUES ('')")) << "a machine has a name";
    EXPECT_FALSE(fails("INSERT INTO OS (COMPUTERNAME, ConfID) VALUES ('Pc1', 1)"))
        << "the parent is found by its key";
    EXPECT_TRUE(fails("INSERT INTO OS (COMPUTERNAME, ConfID) VALUES ('PC1', 1)"));
    EXPECT_TRUE(fails("INSERT INTO ODBCData (COMPUTERNAME, ConfID) VALUES ('PC2', 1)")) << "no such machine";
}

TEST_F(ImportTest, ANewDatabaseBelongsToItsOwner) {
    EXPECT_EQ(folder.Rights("test.mdb"), 0600U);
    EXPECT_EQ(Rows("SELECT * FROM Version"), "1.20|1.20;|<Null>");
    EXPECT_THROW(CreateDatabase(database), RunTimeError) << "one that stands is never written over";
}

TEST(Guid, WritesFourPartsInUpperCaseHexadecimal) {
    const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}");
    EXPECT_TRUE(std::regex_match(Guid::Create(1), form));
    const std::string three = Guid::Create(3);
    ASSERT_EQ(three.size(), 3 * 36 + 2U);
    EXPECT_EQ(three[36], ';');
    EXPECT_LT(three.substr(0, 36), three.substr(37, 36)) << "later ones append to their index";
}

} // namespace
