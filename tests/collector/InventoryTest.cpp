// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Inventory.h"
#include "collector/Machine.h"
#include "collector/Text.h"
#include "tests/collector/FakeMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace collector {

namespace {

// As the console finds a value: by search, from the section's header to the next line that ends in "]".
std::string ValueOf(const std::string& file, const std::string& section, const std::string& key) {
    const std::string header = "[" + section + "]\r\n";
    const auto start = file.find(header);
    if (start == std::string::npos)
        return "no section " + section;
    const auto end = std::min(file.find("]\r\n", start + header.size()), file.size());
    const auto place = file.find(key + "=", start);
    if (place > end)
        return {};
    const auto valueStart = place + key.size() + 1;
    return file.substr(valueStart, file.find("\r\n", valueStart) - valueStart);
}

long Fields(const std::string& record) {
    return std::count(record.begin(), record.end(), '|');
}

Surroundings SomeSurroundings() {
    Surroundings surroundings;
    surroundings.user = "anna";
    surroundings.now.tm_year = 101;
    surroundings.now.tm_mon = 10;
    surroundings.now.tm_mday = 2;
    surroundings.now.tm_hour = 8;
    surroundings.now.tm_sec = 5;
    surroundings.standardZone = "CET";
    surroundings.daylightZone = "CEST";
    return surroundings;
}

// Whatever machine it is, its file must be one that the console reads to the end.
void ExpectReadable(const std::string& file) {
    const std::map<std::string, long> oneRow = {
        {"NET", 5},    {"OS", 16},  {"MSOFFICE", 5}, {"INPUT", 8},     {"PC", 24},
        {"DRIVES", 6}, {"ODBC", 1}, {"PRINTER", 1},  {"UNINSTALL", 1}, {"DEVICE", 1}};
    for (const auto& [section, fields] : oneRow) {
        const std::string record = ValueOf(file, section, "INFO0");
        EXPECT_EQ(Fields(record), fields) << section << ": " << record;
        EXPECT_NE(record.front(), '|') << section << " begins with a bar";
    }
    for (const std::string counted : {"UNINSTALL", "ODBC", "PRINTER", "DEVICE"}) {
        const auto count = std::stoul(ValueOf(file, counted, "INFO0"));
        EXPECT_LE(count, 32767U);
        EXPECT_EQ(ValueOf(file, counted + "DATA", "INFO" + std::to_string(count)), "") << counted;
        const std::string last = "INFO" + std::to_string(count - std::min(count, 1UL));
        EXPECT_EQ(ValueOf(file, counted + "DATA", last).empty(), count == 0) << counted;
    }
    ASSERT_TRUE(file.ends_with("\r\n"));
    for (const std::string_view line : Split(file, '\n')) {
        if (line.empty())
            continue;
        EXPECT_TRUE(line.ends_with('\r')) << line;
        EXPECT_TRUE(line.starts_with('[') || !line.ends_with("]\r")) << "ends its section: " << line;
        EXPECT_EQ(line.find('\0'), std::string_view::npos);
    }
}

} // namespace

TEST(InventoryText, OfAMachineThatTellsNothingIsStillWhole) {
    const FakeMachine machine;
    const std::string file = InventoryText("LOCALHOST", machine.Facts(), {});
    ExpectReadable(file);
    EXPECT_EQ(ValueOf(file, "DRIVES", "INFO0"), "0|0|0|0|0||");
    EXPECT_EQ(ValueOf(file, "MSOFFICE", "INFO0"), " |||||") << "five empty fields, and no bar in front";
}

TEST(InventoryText, PutsFactsWhereTheConsoleLooksForThem) {
    const FakeMachine machine;
    machine.File("/proc/self/mountinfo",
                 "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n2 1 0:9 / /mnt/nas rw - nfs4 nas:/a rw\n");
    machine.File("/sys/class/net/eth0/address", "02:00:5e:10:00:01\n");
    machine.File("/proc/meminfo", "MemTotal: 8000 kB\n");
    machine.File("/etc/cups/printers.conf", "<Printer label>\nDeviceURI usb://Zebra/ZD\n</Printer>\n");
    Surroundings surroundings = SomeSurroundings();
    surroundings.addresses = {{"eth0", "10.0.0.7", "255.0.0.0"}};
    const std::string file = InventoryText("PC7", machine.Facts(), surroundings);
    ExpectReadable(file);
    EXPECT_EQ(ValueOf(file, "NET", "INFO0"), "PC7|anna|20011102|08:00:05|02005E100001|");
    EXPECT_THAT(ValueOf(file, "OS", "INFO0"), testing::HasSubstr("|CEST|CET|"));
    EXPECT_EQ(Split(ValueOf(file, "PC", "INFO0"), '|')[11], "8000");
    EXPECT_EQ(ValueOf(file, "DRIVES", "INFO0"), "0|1|0|0|1|/ /mnt/nas|");
    EXPECT_THAT(ValueOf(file, "DRIVESDATA", "INFO0"), testing::StartsWith("/|Fixed drive|ext4|"));
    EXPECT_THAT(ValueOf(file, "DRIVESDATA", "INFO1"), testing::StartsWith("/mnt/nas|Network drive|nfs4|"));
    EXPECT_EQ(ValueOf(file, "PRINTERDATA", "INFO0"), "L|label||usb://Zebra/ZD|");
}

TEST(InventoryText, WithstandsNamesMadeToBreakIt) {
    const FakeMachine machine;
    const std::string evil = "a|b;INFO1=c]\x01\xFF[NET]" + std::string(400, 'x') + "]";
    machine.File("/etc/os-release", "PRETTY_NAME=" + evil + "\nVERSION_ID=" + evil + "\n");
    machine.File("/var/lib/dpkg/status", "Package: " + evil +
                                             "\nStatus: install ok installed\n\nPackage: b\n"
                                             "Status: install ok installed\nDescription: " +
                                             evil + "\n");
    machine.File("/etc/odbcinst.ini", "[" + evil + "]\nDriver=" + evil + "\n");
    machine.File("/etc/cups/printers.conf", "<Printer " + evil + ">\nDeviceURI " + evil + "\n");
    machine.File("/sys/block/sda/device/model", evil);
    machine.File("/sys/class/dmi/id/bios_vendor", evil);
    machine.File("/proc/self/mountinfo", R"(1 0 8:1 / /mnt/\012\174\1 rw - ext4 /dev/)" + evil + " rw\n");
    const std::string file = InventoryText("PC7", machine.Facts(), SomeSurroundings());
    ExpectReadable(file);
    EXPECT_EQ(Split(ValueOf(file, "OS", "INFO0"), '|')[0].size(), 10U);
    EXPECT_EQ(ValueOf(file, "UNINSTALL", "INFO0"), "2|");
    const std::string board = ValueOf(file, "DEVICEDATA", "INFO0");
    EXPECT_EQ(std::count(board.begin(), board.end(), ';'), 7) << board;
}

TEST(InventoryText, NeverCountsMoreRowsThanTheConsoleTakes) {
    const FakeMachine machine;
    std::string status;
    for (int i = 0; i < 40000; ++i)
        status += "Package: p" + std::to_string(i) + "\nStatus: install ok installed\n\n";
    machine.File("/var/lib/dpkg/status", status);
    const std::string file = InventoryText("PC7", machine.Facts(), SomeSurroundings());
    ASSERT_EQ(ValueOf(file, "UNINSTALL", "INFO0"), "32767|");
    EXPECT_NE(ValueOf(file, "UNINSTALLDATA", "INFO32766"), "");
    EXPECT_EQ(ValueOf(file, "UNINSTALLDATA", "INFO32767"), "");
}

TEST(InventoryText, IsReadableForThisVeryMachine) {
    const Sources sources;
    const Surroundings surroundings = CurrentSurroundings();
    const std::string file = InventoryText(MachineName(sources), sources, surroundings);
    ExpectReadable(file);
    EXPECT_THAT(ValueOf(file, "NET", "INFO0"), testing::StartsWith(MachineName(sources) + "|"));
    EXPECT_GT(std::stoull(std::string(Split(ValueOf(file, "PC", "INFO0"), '|')[11])), 0U);
}

} // namespace collector
