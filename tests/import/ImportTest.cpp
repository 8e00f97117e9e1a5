// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/import/ImportTest.h"

#include "import/Schema.h"

#include <sys/stat.h>
#include <utime.h>

#include <ctime>
#include <filesystem>

std::string Lines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

std::string SmallFile(const std::string& machine, const std::string& user) {
    return Lines({
        "[NET]\r\nINFO0=" + machine + "|" + user + "|20011102|08:15:00|00A0C9000001|",
        "[OS]\r\nINFO0=4.10|2222|Normal|0|1|Windows 98|Summer|Winter|Win98|ID|KEY|No|Ann|Ltd||SP1|",
        "[MSOFFICE]\r\nINFO0=9.0|8.0||7.0|9.0|",
        "[INPUT]\r\nINFO0=Keyboard|1|31|12|Mouse|3|1|500|",
        "[PC]\r\nINFO0=x86|2|1|Vendor|Family|MMX|450|CPU "
        "450|450|1|0|131072|5000|6|7|8|9|800x600|16|1|2|3|4|5|",
        "[DRIVES]\r\nINFO0=1|1|1|0|0|ACD|",
        "[UNINSTALL]\r\nINFO0=2|",
        "[UNINSTALLDATA]\r\nINFO0=Ledger|remove ledger|\r\nINFO1=Quill|remove quill|",
        "[ODBC]\r\nINFO0=1|\r\n[ODBCDATA]\r\nINFO0=Driver|C:\\odbc.dll|3.5|",
        "[PRINTER]\r\nINFO0=1|\r\n[PRINTERDATA]\r\nINFO0=L|Laser|LaserDriver|LPT1|",
        "[DRIVESDATA]\r\nINFO0=C:\\|Fixed "
        "drive|FAT32|4000000000|1000|SYS|123|||\r\nINFO1=D:\\|CD-ROM|CDFS|0|0|||||",
        "[DEVICE]\r\nINFO0=4|\r\n[DEVICEDATA]",
        "INFO0=Cat=Display adapters|Prob=00 00 00 00 |DevName=Graphics|DvrDate=6-15-1999|IO=|IRQ=|DMA=|MEM=|"
        "VidMem=8 MB;DACType=Internal;",
        "INFO1=Cat=Network adapters|Prob=00 00 00 00 |DevName=Ethernet|DvrDate=|IO=300|IRQ=10|DMA=|MEM=|"
        "PCount=1;PR0=TCP/IP;IP0=127.0.0.7;Mk0=255.0.0.0;Gw0=;WS10=w;WS20=;Client00=Net;Client01=;"
        "PR1=NetBEUI;IP1=;Mk1=;Gw1=;WS11=;WS21=;Client10=;Client11=Two;",
        "INFO2=Cat=System devices|Prob=16 00 00 00 |DevName=System Board|DvrDate=|IO=|IRQ=|DMA=|MEM=|"
        "BName=BIOS;BDate=3-14-1999;BVer=4.5;BUSType=PCI;CPU=450;MachType=Desktop;Model=M1;",
        "INFO3=Cat=Modem|Prob=00 00 00 00 |DevName=56k|DvrDate=11-13-1998|IO=|IRQ=|DMA=|MEM=|AttTo=COM2|",
    });
}

ImportTest::ImportTest() : inventory(folder.Path() + "/INF"), database(folder.Path() + "/test.mdb") {
    std::filesystem::create_directory(inventory);
    CreateDatabase(database);
    connection = OpenDatabase(database);
}

ImportTest::~ImportTest() {
    connection->Close();
}

void ImportTest::Write(const std::string& name, const std::string& bytes, const std::string& stamp) {
    folder.WriteFile("INF/" + name, bytes);
    if (stamp.empty())
        return;
    std::tm parts{};
    strptime(stamp.c_str(), "%Y-%m-%d %H:%M:%S", &parts);
    parts.tm_isdst = -1;
    const std::time_t moment = std::mktime(&parts);
    const utimbuf times{moment, moment};
    utime((inventory + "/" + name).c_str(), &times);
}

bool ImportTest::Import(const std::string& machine, TimeFrame frame, ImportEvents* events) {
    noData = false;
    static const CodePage western(1252);
    cSinImport import(connection, prompts, clock, frame, events, western);
    return import.ImportInfData(inventory, machine, noData);
}

std::string ImportTest::IntegrityCheck() const {
    const std::string orphans = Rows("PRAGMA foreign_key_check");
    return orphans.empty() ? Rows("PRAGMA integrity_check") : orphans;
}
