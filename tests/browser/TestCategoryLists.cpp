// SPDX-License-Identifier: GPL-3.0-or-later
// What the lists of the categories show of two machines, worked out by hand.
#include "browser/ListFiller.h"
#include "browser/ListModel.h"
#include "import/Schema.h"
#include "tests/browser/InventorySample.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using Strings = std::vector<std::string>;
constexpr std::int16_t kOriginal = 0;
constexpr std::int16_t kCurrent = 1;

/// Keeps what it is given as text.
class RecordingSink final : public ListSink {
public:
    void AddColumn(std::string_view caption, int /*width*/) override { columns.emplace_back(caption); }
    void AddRow(std::string_view key, std::string_view text, Image icon) override {
        keys.emplace_back(key);
        rows.emplace_back(text);
        icons.push_back(icon);
    }
    void AddCountedRow(std::string_view machine, std::string_view keyEnd, std::string_view text,
                       Image icon) override {
        AddRow(std::string(machine) + std::string(keyEnd) + std::to_string(rows.size()), text, icon);
    }
    void SetSubItem(int column, std::string_view text) override {
        EXPECT_EQ(column, std::count(rows.back().begin(), rows.back().end(), ';') + 1) << "cells in order";
        rows.back() += ";" + std::string(text);
    }

    Strings columns;
    Strings keys;
    Strings rows;
    std::vector<Image> icons;
};

class CategoryListsTest : public testing::Test {
protected:
    CategoryListsTest() {
        CreateDatabase(folder.Path("a.mdb"));
        connection = OpenDatabase(folder.Path("a.mdb"));
        RunSQL(*connection, kInventorySample);
    }

    template <class Definition>
    RecordingSink Filled(const Definition& list, const std::string& machine = {},
                         std::int16_t confID = kCurrent) {
        RecordingSink sink;
        ListFiller(sink, connection, recordset).Fill(list, machine, confID);
        EXPECT_FALSE(recordset->IsOpen());
        return sink;
    }

    /// Fills `sink` and returns the number of the error that stops it.
    template <class Definition>
    int FailureOf(RecordingSink& sink, const Definition& list, const std::string& machine = {}) {
        return ErrorOf([&] { ListFiller(sink, connection, recordset).Fill(list, machine, kCurrent); });
    }

    TemporaryFolder folder;
    std::shared_ptr<ADODB::Connection> connection;
    std::shared_ptr<ADODB::Recordset> recordset;
};

std::string Joined(const Strings& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (&text == &texts.front() ? "" : " / ") + text;
    return joined;
}

struct ColumnsCase {
    const ColumnList& list;
    const char* machine;
    Image icon;
    const char* rows;
    /// Of the one row of the original configuration.
    const char* originalBegins;
    const char* keys;
};

TEST_F(CategoryListsTest, ListMachinesAndItems) {
    const ColumnsCase cases[] = {
        {Lists::kProcessorsOfAll, "", Image::PC_CPU,
         "PC1;pc2;2;1;pc5;pc6;pc7;0;pc9;0.0;;Yes;1024Mb;;2Mb;2Mb;4Mb;0Mb;pc19;pc20;1;22;23;24;25 / "
         "PC2;n/a;n/a;n/a;n/a;n/a;n/a;450;;451;No;;;;;;;;n/a;n/a;n/a;n/a;n/a;n/a;n/a",
         "PC1;old;1;1;old;", "PC1?CPU / PC2?CPU"},
        {Lists::kDevicesOfAll, "", Image::PC_DEVICE,
         "PC1;Ports;Yes;Serial;2000-03-14;io;irq;dma;mem;more / PC2;Net;Yes;Card;n/a;n/a;n/a;n/a;n/a;n/a / "
         "PC1;n/a;No;n/a;soon;;;;;",
         "PC1;old;", "PC1?MULTI?DEV?0 / PC2?MULTI?DEV?1 / PC1?MULTI?DEV?2"},
        {Lists::kDevices, "PC1", Image::PC_DEVICE,
         "Ports;No;Serial;2000-03-14;io;irq;dma;mem;more / n/a;No;n/a;soon;;;;;", "old;No;old;",
         "DEV_id1_PC1 / DEV_id3_PC1"},
        // The join follows the devices, not the order in which the adapters were written.
        {Lists::kDisplaysOfAll, "", Image::PC_DEVICE, "PC1;Serial;8 MB;n/a / PC1;n/a;n/a;dac",
         "PC1;old;old;old", "PC1?MULTI?DEVDISP?0 / PC1?MULTI?DEVDISP?1"},
        {Lists::kDisplays, "PC1", Image::PC_DEVICE, "Serial;8 MB;n/a / n/a;n/a;dac", "old;old;old", " / "},
        {Lists::kMotherboardsOfAll, "", Image::PC_DEVICE,
         "PC1;b1;1999-03-14;b3;b4;b5;b6;b7 / PC2;n/a;n/a;n/a;n/a;n/a;n/a;n/a / PC1;second;x;;;;;", "PC1;old;",
         "PC1?MULTI?DEVMB?0 / PC2?MULTI?DEVMB?1 / PC1?MULTI?DEVMB?2"},
        {Lists::kNetworkOfAll, "", Image::PC_DEVICE,
         "PC1;Serial;n/a;n/a;n/a;n/a;n/a;n/a;n/a;n/a / PC2;Card;n2;n3;n4;n5;n6;n7;n8;n9", "PC1;old;old;",
         "PC1?MULTI?DEVNET?0 / PC2?MULTI?DEVNET?1"},
        {Lists::kNetwork, "PC1", Image::PC_DEVICE, "Serial;n/a;n/a;n/a;n/a;n/a;n/a;n/a;n/a", "old;old;", ""},
        {Lists::kDrivesOfAll, "", Image::PC_DRIVE, "PC1;2;3;4;5;6;ACD / PC2;n/a;n/a;n/a;n/a;n/a;n/a",
         "PC1;99;", "PC1?DRV / PC2?DRV"},
        {Lists::kDriveDetailOfAll, "", Image::PC_DRIVE,
         "PC1;C:;Fixed;FAT;1536Mb;0Mb;lab;ser;map;user / PC1;A:;n/a;n/a;;;n/a;n/a;n/a;n/a / "
         "PC2;D:;CD;;0Mb;2Mb;;;;",
         "PC1;old;", "PC1?MULTI?DRVDETAIL?0 / PC1?MULTI?DRVDETAIL?1 / PC2?MULTI?DRVDETAIL?2"},
        {Lists::kDriveDetail, "PC1", Image::PC_DRIVE,
         "C:;Fixed;FAT;1536Mb;0Mb;lab;ser;map;user / A:;n/a;n/a;;;n/a;n/a;n/a;n/a", "old;", " / "},
        {Lists::kInputOfAll, "", Image::PC_IO,
         "PC1;in2;3;4;5;in6;7;Yes;9 / PC2;n/a;n/a;n/a;n/a;n/a;n/a;No;n/a", "PC1;old;", "PC1?IO / PC2?IO"},
        // The suite comes from any configuration, here from the original one.
        {Lists::kOfficeOfAll, "", Image::PC_OFFICE,
         "PC1;Microsoft Office 97x;ab;;ms4;;ms6 / PC2;n/a;n/a;n/a;n/a;n/a;n/a",
         "PC1;Microsoft Office 97x;old;", "PC1?MSO / PC2?MSO"},
        {Lists::kODBCOfAll, "", Image::PC_ODBC, "PC1;od2;od3;od4 / PC2;n/a;n/a;n/a / PC1;od5;od6;od7",
         "PC1;old;", "PC1?MULTI?ODB?0 / PC2?MULTI?ODB?1 / PC1?MULTI?ODB?2"},
        {Lists::kODBC, "PC1", Image::PC_ODBC, "od2;od3;od4 / od5;od6;od7", "old;", " / "},
        {Lists::kSystemsOfAll, "", Image::PC_OS,
         "PC1;os2;os3;os4;No;Yes;os7;os8;os9;os10;os11;os12;os13;os14;os15;os16;os17 / "
         "PC2;n/a;n/a;n/a;Yes;No;n/a;n/a;n/a;n/a;n/a;n/a;n/a;n/a;n/a;n/a;n/a",
         "PC1;old;", "PC1?OS / PC2?OS"},
        // All local printers of all machines first.
        {Lists::kPrintersOfAll, "", Image::PC_PRINTER,
         "PC1;Local;near;drv;lpt / PC2;Local;n/a;n/a;n/a / PC1;Remote;far;drv;lpt", "PC1;Local;old;",
         "PC1?MULTI?PRN?0 / PC2?MULTI?PRN?1 / PC1?MULTI?PRN?2"},
        {Lists::kPrinters, "PC1", Image::PC_PRINTER, "Local;near;drv;lpt / Remote;far;drv;lpt", "Local;old;",
         " / "},
        {Lists::kSoftwareOfAll, "", Image::PC_UNINSTALL,
         "PC1;Paint;paint.exe / PC2;n/a;n/a / PC1;New MS Office;", "PC1;Microsoft Office 97|x;",
         "PC1?MULTI?UNI?0 / PC2?MULTI?UNI?1 / PC1?MULTI?UNI?2"},
        // Names compare without regard to case.
        {Lists::kSoftware, "pc1", Image::PC_UNINSTALL, "Paint;paint.exe / New MS Office;",
         "Microsoft Office 97|x;", " / "},
    };
    Strings columnsBefore;
    for (const ColumnsCase& c : cases) {
        const RecordingSink list = Filled(c.list, c.machine);
        EXPECT_EQ(Joined(list.rows), c.rows);
        EXPECT_EQ(std::count(list.rows.front().begin(), list.rows.front().end(), ';') + 1,
                  std::ssize(list.columns))
            << "a caption for each cell: " << c.rows;
        Strings columns = list.columns;
        if (*c.machine != '\0') {
            columns.insert(columns.begin(), columnsBefore.at(0));
            EXPECT_EQ(columns, columnsBefore) << "those of all, but for the machine's name: " << c.rows;
        }
        columnsBefore = columns;
        EXPECT_EQ(Joined(list.keys), c.keys) << c.rows;
        EXPECT_THAT(list.icons, testing::Each(c.icon)) << c.rows;
        const RecordingSink original = Filled(c.list, c.machine, kOriginal);
        ASSERT_EQ(original.rows.size(), 1U) << c.rows;
        EXPECT_THAT(original.rows.front(), testing::StartsWith(c.originalBegins));
    }
}

struct ValuesCase {
    const ValueList& list;
    const char* machine;
    Image icon;
    const char* rows;
    /// One of the rows that PC1's original configuration has.
    const char* original;
};

TEST_F(CategoryListsTest, DescribeOneMachine) {
    const ValuesCase cases[] = {
        // Without a record of personal details the machine's own rows stand alone. No configuration is asked
        // for.
        {Lists::kMachine, "PC1", Image::None,
         "Computer Name;PC1 / Logon User Name;anna / Last Logon Date;2001-11-02 / Last Logon Time;08:15:00 / "
         "Network Card Mac Address;net4 / Original Config Date;2001-10-01 / Original Config Time;07:00:00 / "
         "Current Information File Date;n/a / Current Information File Time;n/a / "
         "Personal Information File Date;0000-20-01 / Personal Information File Time;",
         "Computer Name;PC1"},
        {Lists::kProcessor, "PC1", Image::PC_CPU,
         "CPU Name from Windows API;pc2 / Number of CPU's on System;2 / Current Active CPU;1 / "
         "CPU Vendor from Registry;pc5 / CPU Name from Registry;pc6 / CPU MMX Identifier from Registry;pc7 / "
         "CPU Speed from Registry;n/a / CPU Name from DLL;pc9 / CPU Speed from DLL;n/a / CPU FPU From "
         "DLL;n/a / "
         "CPU MMX From DLL;Yes / Total RAM;1024Mb / Total Free RAM; / Total Page Memory;2Mb / "
         "Total Free Page Memory;2Mb / Total Virtual Memory;4Mb / Total Free Virtual Memory;0Mb / "
         "Screen Resolution;pc19 / Screen Mode;pc20 / Number of Screens;1 / Number of WAV Devices;22 / "
         "Number of MIDI Devices;23 / Number of Joysticks Drivers;24 / Number of Joysticks Connected;25",
         "CPU Name from Windows API;old"},
        // Of several records the first.
        {Lists::kMotherboard, "PC1", Image::PC_DEVICE,
         "BIOS Name;b1 / BIOS Date;1999-03-14 / BIOS Version;b3 / BUS Type;b4 / Motherboard CPU Type;b5 / "
         "Machine Type;b6 / Model Number;b7",
         "BIOS Name;old"},
        {Lists::kDrives, "PC1", Image::PC_DRIVE,
         "Number of Removable Drives;2 / Number of Fixed Drives or Partitions;3 / Number of CD-ROM Drives;4 "
         "/ "
         "Number of RAM Drives;5 / Number of Mapped Network Drives;6 / Drive letters;ACD",
         "Number of Removable Drives;99"},
        {Lists::kInput, "PC1", Image::PC_IO,
         "Keyboard Description;in2 / Keyboard Delay Speed;3 / Keyboard Repeat Speed;4 / "
         "Number of Function Keys;5 / Mouse Description;in6 / Number of Mouse Buttons;7 / "
         "Does Mouse have a Wheel?;Yes / Mouse Double-Click speed;9",
         "Keyboard Description;old"},
        {Lists::kOffice, "PC1", Image::PC_OFFICE,
         "Microsoft Office Version;Microsoft Office 97x / Microsoft Access;ab / Microsoft Excel; / "
         "Microsoft Outlook;ms4 / Microsoft Power Point; / Microsoft Word;ms6",
         "Microsoft Access;old"},
        {Lists::kSystem, "PC1", Image::PC_OS,
         "Operating System Version;os2 / Operating System Build;os3 / Operating System Booted;os4 / "
         "Debug Version;No / Slow PC?;Yes / OS Name from API;os7 / Daylight Time;os8 / Standard Time;os9 / "
         "OS Name from Registry;os10 / OS ID;os11 / OS Key;os12 / Registered at Microsoft?;os13 / "
         "Registered Owner;os14 / Registered Company;os15 / Plus features;os16 / Service Pack;os17",
         "Operating System Version;old"},
    };
    for (const ValuesCase& c : cases) {
        const RecordingSink list = Filled(c.list, c.machine);
        EXPECT_EQ(Joined(list.rows), c.rows);
        EXPECT_THAT(list.icons, testing::Each(c.icon)) << c.rows;
        EXPECT_THAT(list.keys, testing::Each("")) << "a value leads nowhere";
        EXPECT_EQ(list.columns, (Strings{"Description", "Value"}));
        const RecordingSink original = Filled(c.list, c.machine, kOriginal);
        EXPECT_EQ(original.rows.size(), list.rows.size()) << c.original;
        EXPECT_THAT(original.rows, testing::Contains(c.original));
    }
    EXPECT_THAT(Joined(Filled(Lists::kMachine, "PC2").rows),
                testing::EndsWith("Personal Information File Time;n/a / User Name;p1 / User Surname;p2 / "
                                  "User ID Number;p3 / User Employee Number;p4 / User Home Telephone;p5 / "
                                  "User Home Address;p6 / User Work Building Name;p7 / User Work Floor;p8 / "
                                  "User Office;p9 / User Work Telephone;p10 / Computer Asset Number;n/a"));
    EXPECT_THAT(Joined(Filled(Lists::kOffice, "PC2").rows),
                testing::StartsWith("Microsoft Office Version; / Microsoft Access;Not Installed / "));
}

TEST_F(CategoryListsTest, AreEmptyForAMachineThatIsNot) {
    EXPECT_TRUE(Filled(Lists::kProcessor, "PC9").rows.empty());
    EXPECT_TRUE(Filled(Lists::kMachine, "PC9").rows.empty());
    const RecordingSink devices = Filled(Lists::kDevices, "PC9");
    EXPECT_TRUE(devices.rows.empty());
    EXPECT_EQ(devices.columns.size(), 9U) << "the headers tell what is missing";
    EXPECT_EQ(Filled(Lists::kOffice, "PC9").rows, (Strings{"Microsoft Office Version;"}))
        << "this row does not wait for a record";
}

/// The sample's drives of the current configuration, `copies` times.
std::string ManyDrives(int copies) {
    return "WITH RECURSIVE Copy(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM Copy WHERE n < " +
           std::to_string(copies) +
           ") INSERT INTO DrivesData SELECT DrivesData.* FROM Copy CROSS JOIN DrivesData WHERE ConfID = 1 "
           "ORDER BY n, DrivesData.rowid";
}

// A long list is the short one over and over, but for the numbers in its keys.
TEST_F(CategoryListsTest, AHundredThousandRowsAreNoneTheWorse) {
    const RecordingSink few = Filled(Lists::kDriveDetailOfAll);
    ASSERT_EQ(few.rows.size(), 3U);
    constexpr std::size_t kCopies = 33333;
    RunSQL(*connection, ManyDrives(kCopies));
    ListModel many;
    ListFiller(many, connection, recordset).Fill(Lists::kDriveDetailOfAll, {}, kCurrent);
    many.Publish();
    const std::size_t rows = few.rows.size() * (kCopies + 1);
    ASSERT_EQ(many.Rows(), rows);
    for (std::size_t row = 0; row < rows; ++row) {
        const std::string& key = few.keys[row % 3];
        ASSERT_EQ(many.Key(row), key.substr(0, key.rfind('?') + 1) + std::to_string(row));
    }
    for (std::size_t row = 0; row < rows; row += 997) {
        std::string cells(many.Text(row, 0));
        for (int column = 1; column < many.columnCount(); ++column)
            cells += ";" + std::string(many.Text(row, column));
        ASSERT_EQ(cells, few.rows[row % 3]) << row;
        ASSERT_EQ(many.Icon(row), Image::PC_DRIVE);
    }
}

TEST_F(CategoryListsTest, AFailureLeavesWhatCameBeforeIt) {
    RunSQL(*connection, "UPDATE DrivesData SET \"Drive Free\" = NULL WHERE \"Drive Root\" = 'A:'");
    RecordingSink drives;
    EXPECT_EQ(FailureOf(drives, Lists::kDriveDetailOfAll), Errors::kInvalidNull);
    EXPECT_EQ(drives.rows, (Strings{"PC1;C:;Fixed;FAT;1536Mb;0Mb;lab;ser;map;user", "PC1;A:;n/a;n/a;"}));
    EXPECT_TRUE(recordset->IsOpen()) << "until the next list";

    RunSQL(*connection, "UPDATE PC SET PAGE = NULL");
    RecordingSink processor;
    EXPECT_EQ(FailureOf(processor, Lists::kProcessor, "PC1"), Errors::kInvalidNull);
    EXPECT_EQ(processor.rows.size(), 14U);
    EXPECT_EQ(processor.rows.back(), "Total Page Memory") << "described before it is looked at";
    EXPECT_EQ(Filled(Lists::kSoftwareOfAll).rows.size(), 3U) << "the next list is whole";
}

TEST_F(CategoryListsTest, ANameThatBreaksItsStatementShowsNothing) {
    const std::string name = "x' OR '1'='1";
    RecordingSink devices;
    EXPECT_LT(FailureOf(devices, Lists::kDevices, name), 0);
    EXPECT_TRUE(devices.rows.empty());
    EXPECT_FALSE(devices.columns.empty());
    RecordingSink office;
    EXPECT_LT(FailureOf(office, Lists::kOffice, name), 0);
    EXPECT_TRUE(office.rows.empty());
}

// Such as another program has written: the positions stand for the same values, whatever their columns are
// called and declared as.
TEST_F(CategoryListsTest, ADatabaseOfOtherTypesDecidesOnItsOwnRules) {
    RunSQL(*connection,
           "ALTER TABLE PC RENAME TO Former;"
           "CREATE TABLE PC AS SELECT * FROM Former WHERE ConfID = 1 AND COMPUTERNAME = 'PC1';"
           "ALTER TABLE PC RENAME COLUMN RAM TO Was; ALTER TABLE PC DROP COLUMN \"JOY Connected\";"
           "ALTER TABLE PC ADD COLUMN Extra BOOLEAN");
    EXPECT_EQ(
        Filled(Lists::kProcessorsOfAll).rows,
        (Strings{"PC1;pc2;2;1;pc5;pc6;pc7;0;pc9;0.0;n/a;-1;1024Mb;;2Mb;2Mb;4Mb;0Mb;pc19;pc20;1;22;23;24;"}))
        << "flags that are numbers show as numbers, a size is one by its place, an unknown flag is empty";
}

TEST_F(CategoryListsTest, TellHowManyMachinesTheyHaveReached) {
    std::vector<std::int32_t> machines;
    RecordingSink sink;
    ListFiller(sink, connection, recordset, [&](std::int32_t count) {
        machines.push_back(count);
    }).Fill(Lists::kDriveDetailOfAll, {}, kCurrent);
    EXPECT_EQ(machines, (std::vector<std::int32_t>{1, 1, 2}));
}

} // namespace
