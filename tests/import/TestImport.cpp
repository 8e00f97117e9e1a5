// SPDX-License-Identifier: GPL-3.0-or-later
// Stories of whole imports: which files are read, in what order, and what stands in the database after.
#include "import/Schema.h"
#include "platform/files.h"
#include "platform/text.h"
#include "tests/import/ImportTest.h"

#include <sys/wait.h>
#include <unistd.h>

#include <random>

namespace {

const Question kNoData =
    Box("No data to import",
        "There are no files to import! Please make sure you have selected the proper directory.");

class Events final : public ImportEvents {
public:
    void DoneSoFarUsers(const std::string& name, double percent) override {
        told += name + " " + std::to_string(percent).substr(0, 4) + "\n";
    }
    void DoneSoFarUser(const std::string& name, double percent) override {
        sections += name + " " + NumberText(percent) + "\n";
    }
    std::string told;
    std::string sections;
};

TEST_F(ImportTest, AMachineFillsEveryTable) {
    Write("PC1.ORG", SmallFile("PC1", "old"), "2001-11-02 08:00:00");
    Write("PC1.INF", SmallFile("PC1", "new"), "2001-11-05 09:30:00");
    Write("PC1.PNF", Lines({"[DETAIL]", "TXTINPUT0=Ann", "TXTINPUT1=Bell"}), "2001-11-06 10:00:00");
    ASSERT_TRUE(Import());
    EXPECT_FALSE(noData);
    EXPECT_EQ(Rows("SELECT * FROM Net"),
              "PC1|new|20011102|08:15:00|00A0C9000001|20011102|08:00:00|20011105|09:30:00|20011106|10:00:00")
        << "the current file has the last word on the user, and each pass leaves its own stamp";
    EXPECT_EQ(Rows("SELECT * FROM OS WHERE ConfID = 0"),
              "PC1|0|4.10|2222|Normal|0|-1|Windows 98|Summer|Winter|Win98|ID|KEY|No|Ann|Ltd||SP1");
    EXPECT_EQ(
        Rows("SELECT RAM, \"CPU DLL FPU\", \"CPU DLL MMX\", \"JOY Connected\" FROM PC WHERE ConfID = 1"),
        "131072|-1|0|5");
    EXPECT_EQ(Rows("SELECT * FROM Input WHERE ConfID = 0"), "PC1|0|Keyboard|1|31|12|Mouse|3|-1|500");
    EXPECT_EQ(Rows("SELECT * FROM Drives WHERE ConfID = 1"), "PC1|1|1|1|1|0|0|ACD");
    EXPECT_EQ(Rows("SELECT \"Drive Root\", \"Drive Size\" FROM DrivesData WHERE ConfID = 1"),
              "C:\\|4000000000\nD:\\|0")
        << "removable drives are counted, and not listed; sizes pass 32 bits";
    EXPECT_EQ(Rows("SELECT * FROM UninstallData WHERE ConfID = 0"),
              "PC1|0|Ledger|remove ledger\nPC1|0|Quill|remove quill");
    EXPECT_EQ(Rows("SELECT * FROM ODBCData WHERE ConfID = 1"), "PC1|1|Driver|C:\\odbc.dll|3.5");
    EXPECT_EQ(Rows("SELECT * FROM PrinterData WHERE ConfID = 1"), "PC1|1|L|Laser|LaserDriver|LPT1");
    EXPECT_EQ(
        Rows("SELECT \"Device Catagory\", \"Device Problem\", \"Device Driver Date\", \"Device Extra Info\" "
             "FROM DeviceData WHERE ConfID = 1"),
        "Display adapters|00 00 00 00 |19990615|<Null>\n"
        "Network adapters|00 00 00 00 ||<Null>\n"
        "System devices|16 00 00 00 ||<Null>\n"
        "Modem|00 00 00 00 |19981113|COM2");
    EXPECT_EQ(Rows("SELECT \"Video Memory\", \"DAC Type\" FROM DeviceDisplay"),
              "8 MB|Internal\n8 MB|Internal");
    EXPECT_EQ(Rows("SELECT N.* FROM DeviceNetwork AS N JOIN DeviceData AS D ON N.\"Device Auto ID\" = "
                   "D.\"Device Auto ID\" WHERE ConfID = 1")
                  .substr(36),
              "|0|TCP/IP|127.0.0.7|255.0.0.0||w||Net|" +
                  ("\n" + Rows("SELECT \"Device Auto ID\" FROM DeviceNetwork LIMIT 1 OFFSET 3")) +
                  "|1|NetBEUI||||||" + "|Two");
    EXPECT_EQ(Rows("SELECT \"BIOS Name\", \"BIOS Date\", CPU, Model FROM DeviceMotherBoard LIMIT 1"),
              "BIOS|19990314|450|M1");
    EXPECT_EQ(Rows("SELECT Name, Surname, ID, AssetNumber FROM Personal"), "Ann|Bell|N/A|N/A");
    EXPECT_EQ(Rows("SELECT LastImportDate FROM Version"), "20011120");
    EXPECT_EQ(IntegrityCheck(), "ok");
}

TEST_F(ImportTest, OnlyAnOriginalStartsAMachine) {
    Write("PC1.inf", SmallFile("PC1"));
    Write("PC1.pnf", Lines({"[DETAIL]"}));
    prompts.Expect(kNoData);
    EXPECT_TRUE(Import());
    EXPECT_TRUE(noData);
    EXPECT_EQ(Rows("SELECT LastImportDate FROM Version"), "<Null>");
}

TEST_F(ImportTest, FilesPairWithoutRegardToCase) {
    Write("pc1.Org", SmallFile("PC1", "old"));
    Write("PC1.iNf", SmallFile("PC1", "new"));
    Write("Pc1.PNF", Lines({"[DETAIL]", "TXTINPUT0=Ann"}));
    ASSERT_TRUE(Import());
    EXPECT_EQ(Rows("SELECT \"Logon User Name\" FROM Net"), "new");
    EXPECT_EQ(Rows("SELECT Name FROM Personal"), "Ann");
}

TEST_F(ImportTest, PassesFollowEachOtherAndTellTheirFiles) {
    Write("b.ORG", SmallFile("B"));
    Write("A.ORG", SmallFile("A"));
    Write("A.INF", SmallFile("A"));
    Write("b.PNF", "");
    Events events;
    ASSERT_TRUE(Import({}, {}, &events));
    EXPECT_EQ(events.told, "A.ORG 0.50\nb.ORG 1.00\nA.inf 0.50\nb.org 1.00\n");
    const std::string oneFile =
        "Global Values 0\nOperating System 0.09\nMS Office 0.18\nInput Devices 0.27\nPC Settings 0.36\n"
        "Drives Info 0.45\nUninstall Data 0.53\nODBC Data 0.62\nPrinter Data 0.71\nDrives Data 0.8\n"
        "Devices Data 0.89\nFinished.. 1\n";
    EXPECT_EQ(events.sections, oneFile + oneFile + oneFile + oneFile + "Finished.. 1\n")
        << "an empty file of personal details changes nothing, and is still told as finished";
}

TEST_F(ImportTest, OneMachineAloneCanBeImported) {
    Write("PC1.ORG", SmallFile("PC1"));
    Write("PC2.ORG", SmallFile("PC2"));
    ASSERT_TRUE(Import("pc2"));
    EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), "PC2");
    EXPECT_EQ(Rows("SELECT ConfID FROM OS"), "0\n1") << "the original stands in for the missing current file";
    EXPECT_NE(Rows("SELECT INFFileDate FROM Net"), "<Null>");
    prompts.Expect(kNoData);
    EXPECT_TRUE(Import("PC3"));
}

TEST_F(ImportTest, TheNameInTheFileCounts) {
    Write("PC1.ORG", SmallFile("OTHER"));
    Write("PC1.PNF", Lines({"[DETAIL]", "TXTINPUT0=Ann"}));
    ASSERT_TRUE(Import());
    EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), "OTHER");
    EXPECT_EQ(Rows("SELECT * FROM Personal"), "")
        << "personal details go by the file's name, which has no row";
}

TEST_F(ImportTest, ReimportReplacesRowsAndLeavesOtherMachinesAlone) {
    Write("PC1.ORG", SmallFile("PC1"));
    Write("PC2.ORG", SmallFile("PC2"));
    ASSERT_TRUE(Import());
    const std::string others = Rows("SELECT * FROM DeviceData WHERE COMPUTERNAME = 'PC2'");
    const std::string before = Rows("SELECT \"Device Auto ID\" FROM DeviceData WHERE COMPUTERNAME = 'PC1'");
    std::string changed = SmallFile("PC1");
    changed.replace(changed.find("[UNINSTALL]\r\nINFO0=2|"), 21, "[UNINSTALL]\r\nINFO0=|");
    Write("PC1.ORG", changed);
    ASSERT_TRUE(Import("PC1"));
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM UninstallData WHERE COMPUTERNAME = 'PC1'"), "0")
        << "an empty count: the rows go, and none come back";
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM DeviceData WHERE COMPUTERNAME = 'PC1'"), "8");
    EXPECT_NE(Rows("SELECT \"Device Auto ID\" FROM DeviceData WHERE COMPUTERNAME = 'PC1'"), before);
    EXPECT_EQ(Rows("SELECT * FROM DeviceData WHERE COMPUTERNAME = 'PC2'"), others);
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM DeviceNetwork"), "8")
        << "the old subtable rows went with their devices";
    EXPECT_EQ(IntegrityCheck(), "ok");
}

TEST_F(ImportTest, TheTimeFrameGatesAWholeFile) {
    Write("PC1.ORG", SmallFile("PC1", "first"), "2001-11-02 08:00:00");
    ASSERT_TRUE(Import());
    Write("PC1.ORG", SmallFile("PC1", "second"), "2001-11-02 08:10:00");
    ASSERT_TRUE(Import({}, {1, 30}));
    EXPECT_EQ(Rows("SELECT \"Logon User Name\", ORGFileTime FROM Net"), "first|08:00:00")
        << "younger than the frame";
    ASSERT_TRUE(Import({}, {1, 10}));
    EXPECT_EQ(Rows("SELECT \"Logon User Name\", ORGFileTime FROM Net"), "second|08:10:00")
        << "just old enough";
    ASSERT_TRUE(Import({}, {0, 0}));
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM OS"), "2") << "an unchanged file passes a frame of nothing";
}

TEST_F(ImportTest, PersonalDetailsAreReplacedWhole) {
    Write("PC1.ORG", SmallFile("PC1"), "2001-11-02 08:00:00");
    Write("PC1.PNF", Lines({"[DETAIL]", "TXTINPUT0=Ann", "TXTINPUT5=" + std::string(200, 'x')}),
          "2001-11-02 08:00:00");
    ASSERT_TRUE(Import());
    EXPECT_EQ(Rows("SELECT Name FROM Personal"), "Ann");
    Write("PC1.PNF", Lines({"[OTHER]", "TXTINPUT0=Ben"}), "2001-11-02 08:10:00");
    ASSERT_TRUE(Import({}, {1, 30}));
    EXPECT_EQ(Rows("SELECT Name FROM Personal"), "Ann") << "inside the frame";
    ASSERT_TRUE(Import());
    EXPECT_EQ(Rows("SELECT Name, AssetNumber FROM Personal"), "N/A|N/A") << "a file without the section";
    Write("PC1.PNF", Lines({"[DETAIL]", "TXTINPUT0=" + std::string(51, 'x')}), "2001-11-03 08:00:00");
    ASSERT_TRUE(Import());
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM Personal"), "0") << "a value too long for its column loses the row";
    EXPECT_EQ(Rows("SELECT PNFFileDate FROM Net"), "20011103") << "but its stamp is stored";
}

TEST_F(ImportTest, TextIsDecodedFromTheCodePageAndCutBefore) {
    Write("PC1.ORG", SmallFile("PC1", "J\xFCrgen" + std::string(30, '\xE9')));
    ASSERT_TRUE(Import());
    EXPECT_EQ(Rows("SELECT \"Logon User Name\" FROM Net"), "Jürgenéééééééééééééé")
        << "twenty characters, not bytes";
}

TEST_F(ImportTest, AFullFolderLoadsInBulkAndGetsItsIndexesBack) {
    const std::string indexes = Indexes();
    for (int i = 0; i < 130; ++i) {
        const std::string name = "PC" + std::to_string(1000 + i);
        Write(name + ".ORG", SmallFile(name));
        Write(name + ".PNF", Lines({"[DETAIL]", "TXTINPUT0=" + name}));
    }
    // A name that Net cuts: its rows would have no machine.
    Write("PC1199.INF", SmallFile("A-NAME-OF-MORE-THAN-TWENTY"));
    Write("PC1199.ORG", SmallFile("A-NAME-OF-MORE-THAN-TWENTY"));
    // Two that need the indexes in the midst of the load: a machine for the second time, and one whose name
    // is written in another case.
    Write("PC1200.ORG", SmallFile("PC1000", "twice"));
    Write("PC1001.INF", SmallFile("pc1001"));
    class LoadEvents final : public ImportEvents {
    public:
        explicit LoadEvents(ADODB::Connection& opened) : database(opened) {}
        void DoneSoFarUsers(const std::string&, double) override {
            filesInBulk += database.IsBulkLoading() ? 1 : 0;
        }
        void DoneSoFarUser(const std::string&, double) override {}
        ADODB::Connection& database;
        int filesInBulk = 0;
    } events(*connection);
    ASSERT_TRUE(Import({}, {}, &events));
    EXPECT_EQ(events.filesInBulk, 131) << "all, up to the name that Net cuts";
    EXPECT_EQ(Indexes(), indexes);
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM Net"), "131");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM DeviceData"), "1040");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM Personal WHERE Name = COMPUTERNAME"), "130");
    EXPECT_EQ(IntegrityCheck(), "ok");
}

/// Ends the process some microseconds behind a file's turn, as abruptly as a kill: wherever the import is by
/// then, however slow the machine.
class Killer final : public ImportEvents {
public:
    Killer(int file, useconds_t later) : mFile(file), mLater(later) {}
    void DoneSoFarUsers(const std::string& /*name*/, double /*percent*/) override {
        if (mFile-- == 0)
            ualarm(mLater, 0);
    }
    void DoneSoFarUser(const std::string& /*name*/, double /*percent*/) override {}

private:
    int mFile;
    useconds_t mLater;
};

TEST_F(ImportTest, AKilledImportLeavesASoundDatabaseWithItsIndexes) {
    constexpr int kRounds = 25;
    constexpr int kMachines = 150;
    for (int i = 0; i < kMachines; ++i)
        Write("PC" + std::to_string(1000 + i) + ".ORG", SmallFile("PC" + std::to_string(1000 + i)));
    const std::string indexes = Indexes();
    connection->Close();
    std::mt19937 random(5);
    int partial = 0;
    for (int round = 0; round < kRounds; ++round) {
        DeleteDatabase(database);
        CreateDatabase(database);
        Killer killer(static_cast<int>(random() % kMachines), static_cast<useconds_t>(1 + random() % 20000));
        const pid_t child = fork();
        if (child == 0) {
            connection->Open();
            Import({}, {}, &killer);
            _exit(0);
        }
        waitpid(child, nullptr, 0);
        connection->Open();
        EXPECT_EQ(IntegrityCheck(), "ok");
        EXPECT_EQ(Indexes(), indexes);
        const int machines = std::stoi(Rows("SELECT COUNT(*) FROM Net"));
        partial += machines > 0 && machines < kMachines ? 1 : 0;
        connection->Close();
    }
    EXPECT_GT(partial, 0) << "no kill fell into an import";
    connection->Open();
}

/// Limits the database's size, which to the engine is a full disk.
class FullDiskTest : public ImportTest {
protected:
    FullDiskTest() {
        for (int i = 0; i < 100; ++i)
            Write("PC" + std::to_string(1000 + i) + ".ORG", SmallFile("PC" + std::to_string(1000 + i)));
    }
    void LimitPages(int pages) { Rows("PRAGMA max_page_count = " + std::to_string(pages)); }
};

TEST_F(FullDiskTest, EndsTheImportWithItsBoxAndLosesNothingThatWasCommitted) {
    int failures = 0;
    for (int pages = std::stoi(Rows("PRAGMA page_count")) + 5;; pages += 5) {
        LimitPages(pages);
        AnyBox box;
        noData = false;
        if (cSinImport(connection, box, clock, {}, nullptr).ImportInfData(inventory, "", noData))
            break;
        ++failures;
        EXPECT_EQ(box.lastTitle, "Error# 61") << pages;
        EXPECT_TRUE(noData);
        EXPECT_EQ(Rows("SELECT LastImportDate FROM Version"), "<Null>") << "the import did not end";
        connection->Close();
        connection->Open();
        EXPECT_EQ(IntegrityCheck(), "ok");
        EXPECT_EQ(Rows("SELECT COUNT(*) FROM Net WHERE COMPUTERNAME NOT IN (SELECT COMPUTERNAME FROM OS)"),
                  "0")
            << "no machine counts as imported without its sections";
        EXPECT_FALSE(connection->IsBulkLoading());
    }
    EXPECT_GT(failures, 5);
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM Net"), "100");
}

} // namespace
