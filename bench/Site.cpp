// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Site.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <random>
#include <stdexcept>

namespace {

using Random = std::mt19937;

constexpr std::array kProducts = {"Ledger",   "Sketch",  "Courier", "Atlas",   "Beacon", "Harbour", "Quill",
                                  "Meridian", "Compass", "Lantern", "Orchard", "Summit", "Thistle", "Willow"};
constexpr std::array kKinds = {"Office Suite", "Viewer", "Runtime", "Driver Pack", "Updater", "Client"};
constexpr std::array kCategories = {"System devices",  "Ports",    "Disk drives", "Monitors",
                                    "USB controllers", "Keyboard", "Mouse",       "Sound controllers"};

std::size_t Below(Random& random, std::size_t limit) {
    return random() % limit;
}

template <std::size_t N>
const char* Pick(Random& random, const std::array<const char*, N>& choices) {
    return choices[Below(random, N)];
}

std::string Text(Random& random, std::size_t below) {
    return std::to_string(Below(random, below));
}

std::string Loopback(int number, std::size_t adapter) {
    const auto n = static_cast<unsigned>(number);
    return "127." + std::to_string(1 + adapter) + "." + std::to_string(n / 250 % 250) + "." +
           std::to_string(1 + n % 250);
}

class FileText {
public:
    void Section(const std::string& name) { mText += "[" + name + "]\r\n"; }
    void Line(int key, const std::string& value) {
        mText += "INFO" + std::to_string(key) + "=" + value + "\r\n";
    }
    std::string Take() { return std::move(mText); }

private:
    std::string mText;
};

std::string Device(Random& random, int machine, int index, int configuration) {
    std::string record;
    const auto head = [&](const std::string& category, const std::string& name) {
        record = "Cat=" + category + "|Prob=" + (Below(random, 50) == 0 ? "16 00 00 00 " : "00 00 00 00 ") +
                 "|DevName=" + name + "|DvrDate=" + std::to_string(1 + Below(random, 12)) + "-" +
                 std::to_string(1 + Below(random, 28)) + "-" + std::to_string(1998 + Below(random, 6)) +
                 "|IO=0" + Text(random, 9) + "F8-0" + Text(random, 9) + "FF|IRQ=" + Text(random, 16) +
                 "|DMA=|MEM=F" + Text(random, 1000) + "000|";
    };
    if (index == 0) {
        head("System devices", "System Board");
        record += "BName=Harbour BIOS;BDate=3-14-1999;BVer=4.5" + Text(random, 10) +
                  ";BUSType=PCI;CPU=Quill 450;MachType=Desktop;Model=M" + Text(random, 900) + ";";
    } else if (index == 1) {
        head("Display adapters", std::string(Pick(random, kProducts)) + " Graphics");
        record += "VidMem=" + std::to_string(1U << Below(random, 7)) + " MB;DACType=Internal;";
    } else if (index == 2 || index == 3) {
        head("Network adapters", std::string(Pick(random, kProducts)) + " Ethernet");
        record +=
            "PCount=1;PR0=TCP/IP;IP0=" + Loopback(machine, static_cast<std::size_t>(index - 2)) +
            ";Mk0=255.0.0.0;Gw0=127.0.0.1;WS10=;WS20=;Client00=Client for Networks;Client01=;PR1=NetBEUI;"
            "IP1=;Mk1=;Gw1=;WS11=;WS21=;Client10=;Client11=;";
    } else {
        head(Pick(random, kCategories), std::string(Pick(random, kProducts)) + " Controller " +
                                            std::to_string(index) + (configuration == 1 ? "" : " "));
    }
    return record;
}

} // namespace

std::string MachineName(int number) {
    std::array<char, 16> name{};
    std::snprintf(name.data(), name.size(), "PC%06d", number);
    return name.data();
}

std::string InventoryFile(const SiteSize& size, int number, int configuration) {
    // Both configurations begin from the same numbers, so that they differ in little.
    Random random(size.seed * 1000003U + static_cast<std::uint32_t>(number));
    FileText file;
    file.Section("NET");
    file.Line(0, MachineName(number) + "|user" + std::to_string(number) + "|200111" +
                     std::to_string(10 + Below(random, 20)) + "|0" + std::to_string(7 + Below(random, 3)) +
                     ":15:00|" + std::to_string(100000000000 + number) + "|");
    file.Section("OS");
    file.Line(0, "4.10|2222|Normal|0|0|Windows 98|GMT Summer|GMT|Windows 98|" + Text(random, 99999) +
                     "|KEY-" + Text(random, 99999) + "|No|Owner " + std::to_string(number) +
                     "|Harbour Ltd||SP" + Text(random, 4) + "|");
    file.Section("MSOFFICE");
    file.Line(0, "9.0|9.0|9.0|9.0|9.0|");
    file.Section("INPUT");
    file.Line(0, "Standard 101-Key|1|31|12|PS/2 Mouse|3|1|500|");
    file.Section("PC");
    const std::string memory = std::to_string(65536U << (static_cast<unsigned>(configuration) & 1U));
    file.Line(0, "Quill|1|1|Quill Works|Family 6|MMX|450|Quill 450 MHz|450|1|1|" + memory +
                     "|12000|250000|200000|"
                     "2097024|2000000|1024x768|32 bit|1|1|1|0|0|");
    file.Section("DRIVES");
    file.Line(0, "1|" + std::to_string(size.drives - 2) + "|1|0|1|ACDEF|");
    file.Section("UNINSTALL");
    file.Line(0, std::to_string(size.programs) + "|");
    file.Section("UNINSTALLDATA");
    for (int i = 0; i < size.programs; ++i) {
        const std::string product = Pick(random, kProducts);
        file.Line(i, product + " " + Pick(random, kKinds) + " " + std::to_string(i) + "." +
                         std::to_string(configuration == 1 && i % 17 == 0 ? 2 : 1) + "|C:\\Program Files\\" +
                         product + "\\setup.exe /remove " + Text(random, 100000) + "|");
    }
    file.Section("ODBC");
    file.Line(0, std::to_string(size.drivers) + "|");
    file.Section("ODBCDATA");
    for (int i = 0; i < size.drivers; ++i)
        file.Line(i, std::string(Pick(random, kProducts)) + " Driver " + std::to_string(i) +
                         "|C:\\WINDOWS\\SYSTEM\\odbc" + std::to_string(i) + ".dll|3.51." +
                         Text(random, 3000) + "|");
    file.Section("PRINTER");
    file.Line(0, std::to_string(size.printers) + "|");
    file.Section("PRINTERDATA");
    for (int i = 0; i < size.printers; ++i)
        file.Line(i, std::string(i % 2 == 0 ? "L" : "R") + "|Printer " + std::to_string(i) + "|" +
                         Pick(random, kProducts) + " Laser|LPT" + std::to_string(i + 1) + "|");
    file.Section("DRIVESDATA");
    for (int i = 0; i < size.drives; ++i) {
        const char* kind = i < size.drives - 2    ? "Fixed drive"
                           : i == size.drives - 2 ? "CD-ROM"
                                                  : "Network drive";
        file.Line(i, std::string(1, static_cast<char>('C' + i)) + ":\\|" + kind + "|FAT32|" +
                         std::to_string(2000000000ULL + Below(random, 2000000000)) + "|" +
                         std::to_string(Below(random, 1900000000)) + "|DISK" + std::to_string(i) + "|" +
                         Text(random, 1000000000) + "||user" + std::to_string(number) + "|");
    }
    file.Section("DEVICE");
    file.Line(0, std::to_string(size.devices) + "|");
    file.Section("DEVICEDATA");
    for (int i = 0; i < size.devices; ++i)
        file.Line(i, Device(random, number, i, configuration));
    return file.Take();
}

namespace {

void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    file.close();
    if (!file)
        throw std::runtime_error("can not write " + path);
}

std::string PersonalFile(int number) {
    std::string text = "[DETAIL]\r\n";
    for (int i = 0; i < 11; ++i)
        text += "TXTINPUT" + std::to_string(i) + "=Value " + std::to_string(i) + " of " +
                std::to_string(number) + "\r\n";
    return text;
}

} // namespace

void WriteSite(const std::string& folder, const SiteSize& size) {
    for (int number = 0; number < size.machines; ++number) {
        const std::string stem = folder + "/" + MachineName(number);
        WriteFile(stem + ".ORG", InventoryFile(size, number, 0));
        WriteFile(stem + ".INF", InventoryFile(size, number, 1));
        if (number % 100 < size.personalPercent)
            WriteFile(stem + ".PNF", PersonalFile(number));
    }
}
