// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/ReportsTest.h"

#include "import/Schema.h"
#include "platform/report/Layout.h"
#include "platform/text.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Windows.h"

#include <chrono>

namespace {

// Machines of two configurations; PC3 has never sent a current one.
constexpr const char* kInventory = R"(
INSERT INTO Net VALUES ('PC2','bob','20240301','08:00:00','m2',NULL,NULL,NULL,NULL,NULL,NULL),
    ('PC1','ann','20240314','09:00:00','m1',NULL,NULL,NULL,NULL,NULL,NULL),
    ('PC3','cid','20240314','10:00:00','m3',NULL,NULL,NULL,NULL,NULL,NULL);
INSERT INTO Personal (COMPUTERNAME, Name, Surname) VALUES ('PC1','Zoe','Adams'), ('PC2','Amy','Adams');
INSERT INTO PC (COMPUTERNAME, ConfID, "CPU DLL Description", RAM) VALUES
    ('PC1',0,'Pentium II',1000), ('PC2',0,'Pentium  II',1000), ('PC3',0,'Pentium',1000),
    ('PC1',1,'Pentium II',2000), ('PC2',1,'Pentium II',4000);
INSERT INTO Drives (COMPUTERNAME, ConfID, Removable, CDRom) VALUES ('PC1',0,1,1), ('PC1',1,1,1);
INSERT INTO DrivesData (COMPUTERNAME, ConfID, "Drive Root", "Drive Description", "Drive FileSystem", "Drive Size")
    VALUES ('PC1',0,'C:','Fixed drive','FAT',100), ('PC1',1,'D:','Fixed drive','NTFS',50),
    ('PC1',1,'C:','Fixed drive','FAT',50), ('PC1',1,'N:','Network drive','',7),
    ('PC2',1,'C:','Fixed drive','EXT',9);
INSERT INTO Input (COMPUTERNAME, ConfID, "Mouse Name") VALUES ('PC1',1,'Wheel');
INSERT INTO MSOffice (COMPUTERNAME, ConfID, "MS Word") VALUES ('PC2',1,'10'), ('PC1',1,'9');
INSERT INTO UninstallData VALUES ('PC2',0,'MS Office 97','x'), ('PC1',1,'Paint','x'), ('PC2',1,'Atlas','x');
INSERT INTO ODBCData (COMPUTERNAME, ConfID, "Driver Name") VALUES ('PC1',1,'Text'), ('PC1',1,'Access');
INSERT INTO OS (COMPUTERNAME, ConfID, "OS Name API", "OS Name Reg") VALUES
    ('PC1',1,'NT','Windows NT'), ('PC2',1,'98','Windows 98'), ('PC3',0,'95','Windows 95');
INSERT INTO DeviceData ("Device Auto ID", COMPUTERNAME, ConfID, "Device Problem", "Device Name") VALUES
    ('1','PC1',1,'00 00 00 00 ','fine'), ('2','PC1',1,'00 00 00 00','short'), ('3','PC1',1,'','none'),
    ('4','PC1',1,'STOPED      ','stopped'), ('5','PC1',1,'STOPPED     ','stopped'),
    ('6','PC2',1,'16 00 00 00 ','card'), ('7','PC2',1,'16 00 00 00 ','card'), ('8','PC2',0,'old','card');
INSERT INTO DeviceNetwork ("Device Auto ID", "Protocol Name", "Protocol IP") VALUES
    ('6','TCP/IP','10.0.0.2'), ('1','IPX',NULL), ('8','old','10.0.0.9');
INSERT INTO PrinterData VALUES ('PC1',1,'R','far','drv','lpt'), ('PC1',1,'L','near','drv','lpt'),
    ('PC1',1,'RX','odd','drv','lpt');
)";

} // namespace

ReportsTest::ReportsTest() {
    const std::string path = folder.Path("Demodb.mdb");
    CreateDatabase(path);
    gConnection = OpenDatabase(path);
    Run(kInventory);
    gImportDir = folder.Path();
}

ReportsTest::~ReportsTest() {
    FormRegistry::Instance().UnloadOthers(nullptr);
    QTest::qWait(1);
    gRecordset.reset();
    gConnection.reset();
    gImportDir.clear();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "the pointer is left an hourglass";
}

void ReportsTest::Settle() {
    QTest::qWait(1);
    ASSERT_TRUE(Eventually([] { return !FormRegistry::Instance().IsLoaded("frmCompiling"); }));
}

std::string ReportsTest::Values(const report::Report& report, const char* field) {
    const std::vector<report::FieldDefinition>& fields = report.Definition().fields;
    std::size_t position = 0;
    while (fields.at(position).name != field)
        ++position;
    std::string values;
    report::Row row;
    for (std::size_t i = 0; i < report.RowCount(); ++i) {
        report.ReadRow(i, row);
        const ADODB::Value& value = row.at(position);
        const double* const number = std::get_if<double>(&value);
        values += (i == 0 ? "" : "/") + (ADODB::IsNull(value) ? "-"
                                         : number != nullptr  ? NumberText(*number)
                                                              : std::get<std::string>(value));
    }
    return values;
}

std::string ReportsTest::Unlike(const report::Report& report, ADODB::Recordset& rows) {
    constexpr int kTypes[] = {ADODB::kTypeText, ADODB::kTypeNumber, ADODB::kTypeFlag};
    const ADODB::FieldList& columns = rows.Fields();
    std::string unlike;
    std::size_t place = 0;
    for (const report::FieldDefinition& field : report.Definition().fields) {
        const bool isNamed = ErrorOf([&] { columns.Item(field.name); }) == 0;
        const ADODB::Field& column = isNamed ? columns.Item(field.name) : columns.Item(place);
        if (!isNamed)
            unlike += field.name + "=" + column.Name() + " ";
        if (column.Type() != kTypes[static_cast<int>(field.type)])
            unlike += field.name + "! ";
        ++place;
    }
    return unlike;
}

std::string ReportsTest::FirstPage(const report::Report& report) {
    const report::FixedMeasure measure;
    report::Layout layout(report, {}, measure);
    while (!layout.IsComplete())
        layout.Work(std::chrono::milliseconds(100));
    std::string page = "\n";
    for (const report::PlacedText& text : layout.BuildPage(0).texts)
        page += text.text + "\n";
    return page;
}
