// SPDX-License-Identifier: GPL-3.0-or-later
// Everything of a machine or of all, in fifteen sections.
#include "archive/MachineDump.h"
#include "platform/codepage.h"
#include "platform/files.h"
#include "tests/archive/ExportTest.h"
#include "tests/support/SmallFiles.h"

#include <algorithm>

namespace {

constexpr const char* kNet =
    "COMPUTERNAME,Logon User Name,Logon Date,Logon Time,MAC Address,ORGFileDate,"
    "ORGFileTime,INFFileDate,INFFileTime,PNFFileDate,PNFFileTime";

/// The names of a table's columns, joined as a section has them.
std::string Names(std::string_view table) {
    const auto tables = InventoryTables();
    const auto found = std::find_if(tables.begin(), tables.end(),
                                    [table](const TableDefinition& each) { return each.name == table; });
    std::string names;
    for (const ColumnDefinition& column : found->columns)
        names += (names.empty() ? "" : ",") + std::string(column.name);
    return names;
}

std::string Blanks(std::size_t count) {
    std::string blanks(count, ' ');
    return blanks;
}

class MachineDumpTest : public ExportTest {
protected:
    MachineDumpTest() { form.node = "PC1?MAIN"; }

    /// Two machines, of which the one of the test has awkward values in its current configuration.
    static void TwoMachines() {
        Run("INSERT INTO Net VALUES ('PC1','anna','20011102','08:15:00','00A0C9000001','20010931','07:00',"
            "NULL,'','2001','x'), ('PC2','bob',NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL);"
            "INSERT INTO Personal VALUES ('PC1','Ren\u00e9 \"R\"','M\u00fcller, jr.','\u65e5','12-31-99',"
            "'31/12/1999','a\nb',NULL,'1-2','1/2/3','20011102 ','2001-11-2');"
            "INSERT INTO Personal (COMPUTERNAME, Name) VALUES ('PC2','other');"
            "INSERT INTO Drives VALUES ('PC1',0,9,9,9,9,9,'old'), ('PC1',1,1,20011102,1.5,NULL,0,'ACD'),"
            "('PC2',1,7,7,7,7,7,'other');"
            "INSERT INTO Input VALUES ('PC1',1,NULL,1,31,12,'Mouse',3,-1,500);"
            "INSERT INTO OS (COMPUTERNAME, ConfID, [OS Debug], [OS Slow PC]) VALUES ('PC1',1,0,-1);"
            "INSERT INTO DeviceData VALUES ('id1','PC1',1,'Display','','Card','20000229','','','','',''),"
            "('id2','PC1',0,'old','','old','','','','','',''), "
            "('id3','PC2',1,'other','','','','','','','','');"
            "INSERT INTO DeviceDisplay VALUES ('id2','old','old'), ('id1','8 MB',NULL), "
            "('id3','other','x');");
    }

    void ExpectDone(const std::string& name, const std::string& message) {
        ExpectPath(name);
        prompts.Expect(Box("Export", message, 32), [this] {
            EXPECT_EQ(form.progress.back(), 100) << "the bar stands full until the message is answered";
        });
    }
    std::string FullExport() {
        ExpectDone("dump.csv", "Export done to " + folder.Path("dump.csv"));
        dump.mnuPopFullExport();
        std::string bytes = folder.ReadFile("dump.csv");
        DeleteFile(folder.Path("dump.csv"));
        return bytes;
    }

    MachineDump dump{context};
};

TEST_F(MachineDumpTest, FullExportWritesTheMachinesRowsInFifteenSections) {
    TwoMachines();
    const auto section = [](const char* heading, std::size_t dashes, const std::string& names,
                            const std::string& rows = "") {
        return heading + std::string("\r\n") + std::string(dashes, '-') + "\r\n" + names + "\r\n" + rows +
               "\r\n";
    };
    const std::string expected =
        section("Global Info", 11, kNet,
                "PC1,anna,2001-11-02,08:15:00,00A0C9000001,20010931,07:00,,,2001,x\r\n") +
        section("Personal INFO", 13, Names("Personal"),
                "PC1,Ren\u00e9 \"R\",M\u00fcller, jr.,\u65e5,1999-12-31,1999-12-31,a\nb,,1-2,2003-01-02,"
                "20011102 ,2001-11-02\r\n") +
        section("CPU INFO", 8, Names("PC")) +
        section("Device INFO", 11, Names("DeviceData"), "id1,PC1,1,Display,,Card,2000-02-29,,,,,\r\n") +
        section("Display INFO", 12, "Device Auto ID,Video Memory,DAC Type", "id1,8 MB,\r\n") +
        section("Motherboard INFO", 16, Names("DeviceMotherBoard")) +
        section("Network INFO", 12, Names("DeviceNetwork")) +
        section("Drives INFO", 11, Names("Drives"), "PC1,1,1,20011102,1.5,,0,ACD\r\n") +
        section("Drives Detailed INFO", 20, Names("DrivesData")) +
        section("I/O Devices INFO", 16, Names("Input"), "PC1,1,,1,31,12,Mouse,3,True,500\r\n") +
        section("MS Office INFO", 14, Names("MSOffice")) +
        section("ODBC Drivers INFO", 17, Names("ODBCData")) +
        section("Operating System INFO", 21, Names("OS"), "PC1,1,,,,False,True,,,,,,,,,,,\r\n") +
        section("Printers INFO", 13, Names("PrinterData")) +
        section("Installed Software INFO", 23, Names("UninstallData"));
    EXPECT_EQ(FullExport(), CodePage::System().Encode(expected));
    EXPECT_EQ(form.progressMaximum, 100);
    EXPECT_EQ(form.progress,
              (std::vector<int>{0, 7, 13, 20, 26, 33, 40, 46, 53, 59, 66, 73, 79, 86, 92, 100, 0}));
    EXPECT_TRUE(form.told.starts_with("Enter a export filename name ...\n\nExport in progress ...\n"));
    EXPECT_TRUE(form.told.ends_with("\nExport completed ...\n"));
}

TEST_F(MachineDumpTest, ExportToTextPadsByTheAbsoluteDifference) {
    TwoMachines();
    // Wider than its column, as a database of another version may have it; the accent is one character.
    Run("INSERT INTO PrinterData VALUES ('PC1',1,'L','" + std::string(52, 'p') +
        "','20011102','\u00e9'), ('PC1',1,NULL,'a','b','c')");
    ExpectDone("dump.txt", "Exported Ok!");
    dump.mnuPopTxtlExport();
    EXPECT_EQ(prompts.FileDialogs().at(0).filter, "Export File (*.txt)|*.txt");
    EXPECT_EQ(prompts.FileDialogs().at(0).defaultExtension, "csv");
    const std::string bytes = folder.ReadFile("dump.txt");
    const auto cut = [&bytes](const std::string& from, const std::string& to) {
        const std::size_t start = bytes.find(from);
        return bytes.substr(start, bytes.find(to, start) - start);
    };
    // Sizes 50, 8, 1, 50, 50, 50; names of 12, 6, 13, 12, 14 and 12 characters.
    EXPECT_EQ(cut("Printers INFO", "Installed"),
              "Printers INFO\r\n-------------\r\nCOMPUTERNAME" + Blanks(41) + "ConfID" + Blanks(5) +
                  "LocalOrRemote" + Blanks(15) + "Printer Name" + Blanks(41) + "Printer Driver" + Blanks(39) +
                  "Printer Port" + Blanks(41) + "\r\nPC1" + Blanks(50) + "1" + Blanks(10) + "L" + Blanks(15) +
                  std::string(52, 'p') + Blanks(5) + "2001-11-02" + Blanks(45) +
                  CodePage::System().Encode("\u00e9") + Blanks(51) + "\r\nPC1" + Blanks(50) + "1" +
                  Blanks(10) + Blanks(16) + "a" + Blanks(52) + "b" + Blanks(52) + "c" + Blanks(51) +
                  "\r\n\r\n");
    EXPECT_EQ(cut("Opperating", "COMPUTERNAME"), "Opperating System INFO\r\n----------------------\r\n");
    // A flag has a size of 2, its name 11 characters.
    EXPECT_NE(cut("I/O", "MS Office").find("True" + Blanks(10) + "500" + Blanks(23) + "\r\n"),
              std::string::npos);
    EXPECT_EQ(folder.Rights("dump.txt"), 0600U) << "it holds personal details";
}

TEST_F(MachineDumpTest, TheNodeTellsWhichMachines) {
    Run("INSERT INTO Net (COMPUTERNAME) VALUES ('PC1'), ('PC2')");
    const struct {
        const char* node;
        const char* rows;
        const char* why;
    } cases[] = {
        {"MAIN", "PC1 PC2 ", "the root stands for all"},
        {"ALL", "PC1 PC2 ", "the branch of all"},
        {"ALL?CPU", "PC1 PC2 ", "a category of all"},
        {"ALL?MAIN", "PC1 PC2 ", "a machine of that name behaves as the branch"},
        {"PC2?MAIN", "PC2 ", "a machine"},
        {"pc2?DEVNET", "PC2 ", "a machine's category"},
        {"PC3?MAIN", "", "a machine that has gone since"},
    };
    for (const auto& c : cases) {
        form.node = c.node;
        const std::string bytes = FullExport();
        std::size_t start = bytes.find("\r\n", bytes.find(kNet)) + 2;
        std::string rows;
        for (std::size_t end = 0; (end = bytes.find("\r\n", start)) != start; start = end + 2)
            rows += bytes.substr(start, bytes.find(',', start) - start) + " ";
        EXPECT_EQ(rows, c.rows) << c.why;
    }
}

TEST_F(MachineDumpTest, ASectionThatFailsIsToldOfAndLeavesTheOthersWhole) {
    TwoMachines();
    Run("DROP TABLE Drives");
    ExpectPath("dump.csv");
    prompts.Expect(Box("Error#-1", "no such table: Drives", 16));
    prompts.Expect(Box("Export", "Export done to " + folder.Path("dump.csv")));
    dump.mnuPopFullExport();
    const std::string bytes = folder.ReadFile("dump.csv");
    EXPECT_NE(bytes.find("Drives INFO\r\n-----------\r\nDrives Detailed INFO\r\n"), std::string::npos);
    EXPECT_NE(bytes.find("PC1,1,,1,31,12,Mouse,3,True,500\r\n"), std::string::npos);
    EXPECT_FALSE(gRecordset && gRecordset->IsOpen()) << "what is left open would hold up a backup";
}

TEST_F(MachineDumpTest, AnApostropheBreaksEveryStatementAndNothingElse) {
    Run("INSERT INTO Net (COMPUTERNAME) VALUES ('PC1')");
    form.node = "x' OR 'x'='x?MAIN";
    ExpectPath("dump.csv");
    for (int section = 0; section < 15; ++section)
        prompts.Expect(Box("Error#-1",
                           "Syntax error in query: an apostrophe or a NUL in the name \"x' OR "
                           "'x'='x\""));
    prompts.Expect(Box("Export", "Export done to " + folder.Path("dump.csv")));
    dump.mnuPopFullExport();
    const std::string bytes = folder.ReadFile("dump.csv");
    EXPECT_TRUE(
        bytes.starts_with("Global Info\r\n-----------\r\nPersonal INFO\r\n-------------\r\nCPU INFO"));
    EXPECT_EQ(bytes.find("COMPUTERNAME"), std::string::npos);
}

TEST_F(MachineDumpTest, AFullDiskEndsItWithOneBox) {
    TwoMachines();
    Run("INSERT INTO DrivesData (COMPUTERNAME, ConfID, [Drive Label]) VALUES ('PC1',1,'" +
        std::string(200000, 'x') + "')");
    folder.WriteFile("dump.csv", "old");
    ExpectPath("dump.csv");
    prompts.Expect(Box("Overwrite?", "Overwrite '" + folder.Path("dump.csv") + "' this file?", 276),
                   MsgBoxAnswer::Yes);
    prompts.Expect(Box("Error #75", "File too large: " + folder.Path("dump.csv"), 16));
    {
        const SmallFiles full(100000);
        dump.mnuPopFullExport();
    }
    EXPECT_EQ(folder.ReadFile("dump.csv"), "old");
    EXPECT_EQ(form.progress.back(), 53) << "the bar stays where it stood";
    EXPECT_TRUE(form.told.ends_with("hourglass\narrow\n")) << form.told;
    ExpectNoOtherFile("dump.csv");
}

TEST_F(MachineDumpTest, EndsInSilenceWithoutANodeOrAPath) {
    form.node.reset();
    dump.mnuPopFullExport();
    EXPECT_EQ(form.told, "");
    form.node = "ALL";
    prompts.Expect(SaveFile("Please enter export filename"));
    dump.mnuPopTxtlExport();
    EXPECT_TRUE(form.progress.empty());
}

} // namespace
