// SPDX-License-Identifier: GPL-3.0-or-later
// The examples that stand beside the program: their settings are read, their queries run, and their documents
// show what the help says of them.
#include "platform/files.h"
#include "platform/report/Exports.h"
#include "reports/CustomReports.h"
#include "tests/reports/ReportsTest.h"

namespace {

class CustomExamplesTest : public ReportsTest {
protected:
    /// An example as comma-separated values, without the line of captions.
    std::string Exported(const std::string& name) const {
        const std::string document = JoinPath(MOVA_EXAMPLES, name);
        std::string title;
        std::string statement;
        std::int16_t hasTree = 0;
        EXPECT_TRUE(CustomReports::GetReportSet(CustomReports::ChangeFileExtension(document, ".RNI"), title,
                                                statement, hasTree));
        EXPECT_FALSE(title.empty());
        EXPECT_EQ(hasTree, 1);
        const auto made = report::Report::OpenFile(document);
        auto rows = std::make_shared<ADODB::Recordset>();
        rows->Open(statement, gConnection);
        made->DatabaseTable(1).SetDataSource(rows);
        Export(*made, report::ExportFormat::CSV, folder.Path("out"), {});
        const std::string text = folder.ReadFile("out");
        return text.substr(text.find('\n') + 1);
    }
};

TEST_F(CustomExamplesTest, StaffListNamesPeopleByBuilding) {
    Run("DELETE FROM Personal;"
        "INSERT INTO Personal (COMPUTERNAME, Name, Surname, Building, Floor, Office, PhoneW, PhoneH) VALUES "
        "('PC1','Zoë','Young','North','2','2.14','101','555'), "
        "('PC2','','Brown','north',NULL,'1','102',NULL), "
        "('PC3','Al',NULL,NULL,'3','','103',NULL);"
        "INSERT INTO Net (COMPUTERNAME) VALUES ('PC4');"
        "INSERT INTO Personal (COMPUTERNAME, Building) VALUES ('PC4','');");
    EXPECT_EQ(Exported("StaffList.RPT"),
              "No building given,,,PC4,(no name given),\r\n"
              "No building given,103,,PC3,Al,floor 3\r\n"
              "north,102,,PC2,Brown,1\r\n"
              "North,101,555,PC1,\"Young, Zoë\",\"floor 2, 2.14\"\r\n");
}

TEST_F(CustomExamplesTest, LargeDisksPointsToThoseThatFillUp) {
    Run("INSERT INTO DrivesData (COMPUTERNAME, ConfID, \"Drive Root\", \"Drive Description\", \"Drive "
        "Size\", "
        "\"Drive Free\") VALUES ('PC2',1,'d:','Fixed drive',40000000000,10000000000), "
        "('PC1',1,'e:','Fixed drive',20000000000,1000000000), ('PC1',1,'n:','Network drive',90000000000,1), "
        "('PC1',0,'f:','Fixed drive',90000000000,1), ('PC2',1,'e:','Fixed drive',80000000000,NULL);");
    EXPECT_EQ(Exported("LargeDisks.RPT"),
              "PC1,ann,14 March 2024,E:,20000000000,1000000000,5%,Nearly full,19000000000\r\n"
              "PC2,bob,1 March 2024,D:,40000000000,10000000000,25%,,30000000000\r\n"
              "PC2,bob,1 March 2024,E:,80000000000,,,,\r\n");
}

} // namespace
