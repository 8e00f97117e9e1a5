// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/PropertyPages.h"

namespace {

constexpr ListQuery OfOne(std::string_view select, std::string_view end = {}) {
    return {select, "WHERE COMPUTERNAME=", " AND ConfID=", end};
}

constexpr ListQuery AnyConfiguration(std::string_view select) {
    return {select, "WHERE COMPUTERNAME=", {}, {}};
}

constexpr PropertyBox kPersonal[] = {
    {"Computer Name :", 0, Rule::Text},
    {"Logon User Name :", 1, Rule::Text},
    {"Last Logon Date :", 2, Rule::Text},
    {"Last Logon Time :", 3, Rule::Text},
    {"Network Card Mac Address :", 4, Rule::Text},
    {"Origanal Config Date :", 5, Rule::Text},
    {"Origanal Config Time :", 6, Rule::Text},
    {"Current Info File Date :", 7, Rule::Text},
    {"Current Info File Time :", 8, Rule::Text},
    {"Personal Info File Date :", 9, Rule::Text},
    {"Personal Info File Time :", 10, Rule::Text},
    {"Name :", 1, Rule::Text},
    {"Surname :", 2, Rule::Text},
    {"ID Number :", 3, Rule::Text},
    {"Employee Number :", 4, Rule::Text},
    {"Home Telephone :", 5, Rule::Text},
    {"Home Address :", 6, Rule::Text},
    {"Work Building Name :", 7, Rule::Text},
    {"Work Floor :", 8, Rule::Text},
    {"Office Number :", 9, Rule::Text},
    {"Work Telephone :", 10, Rule::Text},
    {"Computer Asset Number :", 11, Rule::Text},
};

constexpr PropertyBox kProcessor[] = {
    {"Win API CPU Name :", 2, Rule::FlagOrText},
    {"Number of CPU's :", 3, Rule::FlagOrText},
    {"Current Active CPU :", 4, Rule::FlagOrText},
    {"Win Regs CPU Vendor :", 5, Rule::FlagOrText},
    {"Win Regs CPU Name :", 6, Rule::FlagOrText},
    {"Win Regs CPU MMX :", 7, Rule::FlagOrText},
    {"Win Regs CPU Speed (NT) :", 8, Rule::FlagOrText},
    {"Intel DLL CPU Name :", 9, Rule::FlagOrText},
    {"Intel DLL CPU Speed :", 10, Rule::FlagOrText},
    {"Intel DLL CPU FPU :", 11, Rule::FlagOrText},
    {"Intel DLL CPU MMX :", 12, Rule::FlagOrText},
    {"Total RAM :", 13, Rule::FlagOrKilobytes},
    {"Total Free RAM :", 14, Rule::FlagOrKilobytes},
    {"Total Page Memory :", 15, Rule::FlagOrKilobytes},
    {"Total Free Page Memory :", 16, Rule::FlagOrKilobytes},
    {"Total Virtual Memory :", 17, Rule::FlagOrKilobytes},
    {"Total Free Virtual Memory :", 18, Rule::FlagOrKilobytes},
    {"Screen Resolution :", 19, Rule::FlagOrText},
    {"Screen Mode :", 20, Rule::FlagOrText},
    {"Number of Screens :", 21, Rule::FlagOrText},
    {"Number of WAV Devices :", 22, Rule::FlagOrText},
    {"Number of MIDI Devices :", 23, Rule::FlagOrText},
    {"Number of Joystick Drivers :", 24, Rule::FlagOrText},
    {"Number of Joystick(s) connected :", 25, Rule::FlagOrText},
};

constexpr PropertyBox kDeviceBoxes[] = {
    {"Problems :", 4, Rule::ProblemCode},    {"Device Driver Date :", 6, Rule::Text},
    {"Device I/O :", 7, Rule::Text},         {"Device IRQ :", 8, Rule::Text},
    {"Device DMA :", 9, Rule::Text},         {"Device Memory :", 10, Rule::Text},
    {"Other Information :", 11, Rule::Text},
};

constexpr PropertyBox kInput[] = {
    {"Keyboard Description according to OS :", 2, Rule::FlagOrText},
    {"Keyboard Key Delay Speed :", 3, Rule::FlagOrText},
    {"Keyboard Key Repeat Speed :", 4, Rule::FlagOrText},
    {"Number of Function Keys :", 5, Rule::FlagOrText},
    {"Mouse Description according to OS :", 6, Rule::FlagOrText},
    {"Number of Mouse Buttons :", 7, Rule::FlagOrText},
    {"Does the Mouse have a Wheel ?", 8, Rule::FlagOrText},
    {"Mouse Double-Click Speed :", 9, Rule::FlagOrText},
};

constexpr PropertyBox kOffice[] = {
    {"Microsoft Access ?", 2, Rule::OfficeInstalled},  {"Microsoft Excel ?", 3, Rule::OfficeInstalled},
    {"Microsoft Outlook ?", 4, Rule::OfficeInstalled}, {"Microsoft Power Point ?", 5, Rule::OfficeInstalled},
    {"Microsoft Word ?", 6, Rule::OfficeInstalled},    {"Office Verion ?", 0, Rule::Plain},
};

constexpr PropertyBox kSystem[] = {
    {"OS Version :", 2, Rule::FlagOrText},
    {"OS Build :", 3, Rule::FlagOrText},
    {"OS Booted :", 4, Rule::FlagOrText},
    {"Debug Version ?", 5, Rule::FlagOrText},
    {"Slow PC ?", 6, Rule::FlagOrText},
    {"OS Name from Win API :", 7, Rule::FlagOrText},
    {"Daylight Time :", 8, Rule::FlagOrText},
    {"Standard Time :", 9, Rule::FlagOrText},
    {"OS Name from Regs :", 10, Rule::FlagOrText},
    {"Registration Number :", 11, Rule::FlagOrText},
    {"Registration Key :", 12, Rule::FlagOrText},
    {"Is OS Registered ?", 13, Rule::FlagOrText},
    {"Registered Owner :", 14, Rule::FlagOrText},
    {"Registered Company :", 15, Rule::FlagOrText},
    {"Microsoft Plus Features Installed :", 16, Rule::FlagOrText},
    {"Service Pack Installed (NT) :", 17, Rule::FlagOrText},
};

constexpr PropertyFrame kPersonalFrames[] = {{"Frame13", "PC Related Info", 11, 0},
                                             {"Frame12", "Personal Info", 11, 1}};
constexpr PropertyFrame kProcessorFrames[] = {
    {"Frame1", "CPU", 11, 0}, {"Frame2", "Memory", 6, 1}, {"Frame3", "Audio", 7, 1}};
constexpr PropertyFrame kDeviceFrames[] = {{"Frame4", "Device Information", 7, 1}};
constexpr PropertyFrame kInputFrames[] = {{"Frame5", "Keyboard", 4, 0}, {"Frame6", "Mouse", 4, 0}};
constexpr PropertyFrame kOfficeFrames[] = {{"Frame7", "Microsoft Office", 6, 0}};
constexpr PropertyFrame kSystemFrames[] = {{"Frame8", "OS Bootup Info", 5, 0},
                                           {"Frame9", "OS Setup Info", 4, 0},
                                           {"Frame10", "OS Registration Info", 5, 1},
                                           {"Frame11", "Additional OS Info", 2, 1}};

constexpr PropertyQuery kPersonalQueries[] = {{AnyConfiguration("SELECT * FROM NET "), 11},
                                              {AnyConfiguration("SELECT * FROM Personal "), 11}};
constexpr PropertyQuery kProcessorQueries[] = {{OfOne("SELECT * FROM PC "), 24}};
constexpr PropertyQuery kInputQueries[] = {{OfOne("SELECT * FROM INPUT "), 8}};
/// The suite is sought among the software of both configurations.
constexpr PropertyQuery kOfficeQueries[] = {
    {OfOne("SELECT * FROM MSOffice "), 5},
    {{"SELECT [Program Name] From UninstallData where (([Program Name] like '%MICROSOFT OFFICE%') OR "
      "([Program Name] Like '%MS OFFICE%')) ",
      "and ComputerName = ",
      {},
      ";"},
     1}};
constexpr PropertyQuery kSystemQueries[] = {{OfOne("SELECT * FROM OS "), 16}};

constexpr ListColumn kDriveColumns[] = {
    {"Root Letter", 1000, 2, Rule::Text},         {"Description", 1000, 3, Rule::Text},
    {"File system", 1000, 4, Rule::Text},         {"Total Size", 1000, 5, Rule::SizeBytes},
    {"Free Space", 1000, 6, Rule::SizeBytes},     {"Drive Label", 1000, 7, Rule::Text},
    {"Drive Serial Number", 1000, 8, Rule::Text}, {"Drive mapping", 3000, 9, Rule::Text},
    {"Connected As", 3000, 10, Rule::Text},
};
constexpr ListColumn kODBCColumns[] = {
    {"Driver Name", 3300, 2, Rule::Text},
    {"Driver Path", 3000, 3, Rule::Text},
    {"Driver Version", 1000, 4, Rule::Text},
};
constexpr ListColumn kPrinterColumns[] = {
    {"Local/Remote", 1000, 2, Rule::LocalRemote},
    {"Printer Name", 2000, 3, Rule::Text},
    {"Printer Driver Name", 2000, 4, Rule::Text},
    {"Printer Port", 2000, 5, Rule::Text},
};
constexpr ListColumn kSoftwareColumns[] = {
    {"Program Name", 3000, 2, Rule::Text},
    {"Uninstall String", 5000, 3, Rule::Text},
};

constexpr ColumnList kDrives = {
    OfOne("SELECT * FROM DRIVESDATA "), kDriveColumns, RowKey::None, {}, Image::DRIVE};
constexpr ColumnList kODBC = {OfOne("SELECT * FROM ODBCData "), kODBCColumns, RowKey::None, {}, Image::ODBC};
constexpr ColumnList kPrinters = {OfOne("SELECT * FROM PrinterData ", " Order By LocalOrRemote"),
                                  kPrinterColumns,
                                  RowKey::None,
                                  {},
                                  Image::PRINTER};
constexpr ColumnList kSoftware = {
    OfOne("SELECT * FROM UninstallData "), kSoftwareColumns, RowKey::None, {}, Image::UNINSTALL};

constexpr const char* kNotAvailable = "n/a";

constexpr PropertyPage ListPage(const char* caption, const char* label, const char* listName,
                                const ColumnList& list) {
    return {caption, OnFailure::EndProgram, nullptr, nullptr, {}, {}, {}, {}, label, listName, &list};
}

constexpr std::array<PropertyPage, 10> kAll = {{
    {"Personal", OnFailure::LeaveTab, "txtPers", kNotAvailable, kPersonal, kPersonalFrames, kPersonalQueries},
    {"CPU/RAM Etc.", OnFailure::LeaveTab, "txtCpu", kNotAvailable, kProcessor, kProcessorFrames,
     kProcessorQueries},
    {"Devices",
     OnFailure::LeaveTab,
     "txtDevice",
     kNotAvailable,
     kDeviceBoxes,
     kDeviceFrames,
     {},
     {},
     "Devices :"},
    ListPage("Drives", "Non Networked and Networked drives on System :", "lvDrives", kDrives),
    {"I/O Devices", OnFailure::EndProgram, "txtIO", kNotAvailable, kInput, kInputFrames, kInputQueries},
    {"MS Office",
     OnFailure::EndProgram,
     "txtOffice",
     "-- Not Installed --",
     kOffice,
     kOfficeFrames,
     kOfficeQueries,
     {"Office Application :", "Installed? (Which version)"}},
    ListPage("ODBC Drivers", "Open-Database-Connectivity (ODBC) Drivers installed :", "lvODBC", kODBC),
    {"OS", OnFailure::EndProgram, "txtOS", kNotAvailable, kSystem, kSystemFrames, kSystemQueries},
    ListPage("Printers", "Local and Remote Printer Drivers installed :", "lvPrinter", kPrinters),
    ListPage("Installed Software", "Programs installed on system which can be uninstalled", "lvUn",
             kSoftware),
}};

} // namespace

namespace Properties {

constexpr std::array<PropertyPage, 10> kPages = kAll;
constexpr ListQuery kDevices =
    OfOne("SELECT * FROM DeviceData ", " ORDER BY [Device Catagory],[Device Name]");
constexpr ListQuery kDevice = {"SELECT * FROM DeviceData ", "WHERE [Device Auto ID]=", " AND ConfID=", {}};

} // namespace Properties
