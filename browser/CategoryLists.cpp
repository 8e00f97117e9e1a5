// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/CategoryLists.h"

#include "platform/accesssql.h"

#include <array>

std::string StatementText(const ListQuery& query, const std::string& machine, std::int16_t confID) {
    std::string text(query.select);
    if (!query.machine.empty()) {
        text += query.machine;
        text += SQLText(machine);
    }
    if (!query.configuration.empty()) {
        text += query.configuration;
        text += std::to_string(confID);
    }
    text += query.end;
    return text;
}

namespace {

constexpr ListQuery OfAll(std::string_view select, std::string_view end = {}) {
    return {select, {}, "WHERE ConfID=", end};
}

constexpr ListQuery OfOne(std::string_view select, std::string_view end = {}) {
    return {select, "WHERE COMPUTERNAME=", " AND ConfID=", end};
}

constexpr ListQuery DevicesOfAll(std::string_view select) {
    return {select, {}, "WHERE DeviceData.ConfID=", {}};
}

constexpr ListQuery DevicesOfOne(std::string_view select) {
    return {select, "WHERE DeviceData.COMPUTERNAME=", " AND DeviceData.ConfID=", {}};
}

/// The columns of one machine's list: those of all machines without the machine.
template <std::size_t count>
constexpr std::span<const ListColumn> WithoutMachine(const ListColumn (&columns)[count]) {
    return std::span(columns).subspan(1);
}

constexpr std::string_view kByPrinterKind = " Order By LocalOrRemote";

constexpr std::string_view kSelectProcessors = "SELECT * FROM PC ";
constexpr std::string_view kSelectDevices = "SELECT * FROM DeviceData ";
constexpr std::string_view kSelectDisplays =
    "SELECT DeviceData.COMPUTERNAME, DeviceData.ConfID, DeviceData.[Device Name], "
    "DeviceDisplay.[Video Memory], DeviceDisplay.[DAC Type] "
    "FROM DeviceData INNER JOIN DeviceDisplay "
    "ON DeviceData.[Device Auto ID] = DeviceDisplay.[Device Auto ID] ";
constexpr std::string_view kSelectMotherboards =
    "SELECT DeviceData.COMPUTERNAME, DeviceData.ConfID, DeviceMotherBoard.[BIOS Name], "
    "DeviceMotherBoard.[BIOS Date], DeviceMotherBoard.[BIOS Version], DeviceMotherBoard.[BUS Type], "
    "DeviceMotherBoard.CPU, DeviceMotherBoard.[Machine Type], DeviceMotherBoard.Model "
    "FROM DeviceData INNER JOIN DeviceMotherBoard "
    "ON DeviceData.[Device Auto ID] = DeviceMotherBoard.[Device Auto ID] ";
constexpr std::string_view kSelectNetwork =
    "SELECT DeviceData.COMPUTERNAME, DeviceData.ConfID, DeviceData.[Device Name], "
    "DeviceNetwork.[Protocol Name], DeviceNetwork.[Protocol IP], DeviceNetwork.[Protocol Mask], "
    "DeviceNetwork.[Protocol Gateway], DeviceNetwork.[Protocol Wins1], DeviceNetwork.[Protocol Wins2] , "
    "DeviceNetwork.[Protocol Client1], DeviceNetwork.[Protocol Client2]"
    "FROM DeviceData INNER JOIN DeviceNetwork "
    "ON DeviceData.[Device Auto ID] = DeviceNetwork.[Device Auto ID] ";
constexpr std::string_view kSelectDrives = "SELECT * FROM DRIVES ";
constexpr std::string_view kSelectDriveDetail = "SELECT * FROM DRIVESDATA ";
constexpr std::string_view kSelectInput = "SELECT * FROM INPUT ";
constexpr std::string_view kSelectOffice = "SELECT * FROM MSOffice ";
constexpr std::string_view kSelectOfficeWithSuite =
    "SELECT MSOffice.*,(SELECT TOP 1 [Program Name] FROM UninstallData "
    "WHERE UninstallData.COMPUTERNAME = MSOffice.COMPUTERNAME AND "
    "(([Program Name] like '%MICROSOFT OFFICE%') OR ([Program Name] Like '%MS OFFICE%'))) AS OfficeVersion "
    "FROM MSOffice ";
constexpr std::string_view kSelectODBC = "SELECT * FROM ODBCData ";
constexpr std::string_view kSelectSystems = "SELECT * FROM OS ";
constexpr std::string_view kSelectPrinters = "SELECT * FROM PrinterData ";
constexpr std::string_view kSelectSoftware = "SELECT * FROM UninstallData ";

constexpr ListColumn kProcessorColumns[] = {
    {"Computer name", 1500, 0, Rule::Plain},
    {"CPU Name(API)", 1500, 2, Rule::FlagOrText},
    {"CPU's", 750, 3, Rule::FlagOrText},
    {"Active CPU", 750, 4, Rule::FlagOrText},
    {"CPU Vendor", 1500, 5, Rule::FlagOrText},
    {"CPU Name(Reg)", 1500, 6, Rule::FlagOrText},
    {"CPU MMX(Reg)", 1500, 7, Rule::FlagOrText},
    {"CPU Speed (Reg/NT)", 750, 8, Rule::FlagOrText},
    {"CPU Name(DLL)", 1500, 9, Rule::FlagOrText},
    {"CPU Speed(DLL)", 750, 10, Rule::FlagOrText},
    {"CPU FPU", 750, 11, Rule::FlagOrText},
    {"CPU MMX", 750, 12, Rule::FlagOrText},
    {"RAM", 750, 13, Rule::FlagOrKilobytes},
    {"Free RAM", 750, 14, Rule::FlagOrKilobytes},
    {"Page Memory", 750, 15, Rule::FlagOrKilobytes},
    {"Free Page Memory", 750, 16, Rule::FlagOrKilobytes},
    {"Virtual Memory", 750, 17, Rule::FlagOrKilobytes},
    {"Free Virtual Memory", 750, 18, Rule::FlagOrKilobytes},
    {"Screen Res.", 750, 19, Rule::FlagOrText},
    {"Screen Mode", 1500, 20, Rule::FlagOrText},
    {"Screens", 750, 21, Rule::FlagOrText},
    {"WAV Devices", 750, 22, Rule::FlagOrText},
    {"MIDI Devices", 750, 23, Rule::FlagOrText},
    {"Joysticks Drivers", 750, 24, Rule::FlagOrText},
    {"Joysticks Connected", 750, 25, Rule::FlagOrText},
};

constexpr auto DeviceColumns(Rule problem) {
    return std::array<ListColumn, 10>{{
        {"Computer Name", 1500, 1, Rule::Text},
        {"Category", 1500, 3, Rule::Text},
        {"Problem", 750, 4, problem},
        {"Name", 1500, 5, Rule::Text},
        {"Driver Date", 750, 6, Rule::Date},
        {"I/O", 750, 7, Rule::Text},
        {"IRQ", 750, 8, Rule::Text},
        {"DMA", 750, 9, Rule::Text},
        {"Memory", 750, 10, Rule::Text},
        {"Extra Info", 750, 11, Rule::Text},
    }};
}
constexpr auto kDeviceColumnsOfAll = DeviceColumns(Rule::ProblemOfAll);
constexpr auto kDeviceColumnsOfOne = DeviceColumns(Rule::ProblemOfOne);

constexpr ListColumn kDisplayColumns[] = {
    {"Computer Name", 2500, 0, Rule::Text},
    {"Device Name", 2500, 2, Rule::Text},
    {"Video Memory", 1500, 3, Rule::Text},
    {"DAC Type", 1500, 4, Rule::Text},
};

constexpr ListColumn kMotherboardColumns[] = {
    {"Computer Name", 1500, 0, Rule::Text}, {"BIOS Name", 1500, 2, Rule::Text},
    {"BIOS Date", 750, 3, Rule::Date},      {"BIOS Version", 1500, 4, Rule::Text},
    {"BUS Type", 1500, 5, Rule::Text},      {"Motherboard CPU Type", 1500, 6, Rule::Text},
    {"Machine Type", 1500, 7, Rule::Text},  {"Model Number", 1500, 8, Rule::Text},
};

constexpr ListColumn kNetworkColumns[] = {
    {"Computer Name", 1500, 0, Rule::Text}, {"Device Name", 1500, 2, Rule::Text},
    {"Protocol Name", 1500, 3, Rule::Text}, {"IP Address", 1500, 4, Rule::Text},
    {"Subnet Mask", 1500, 5, Rule::Text},   {"Default Gateway", 1500, 6, Rule::Text},
    {"WINS Server 1", 1500, 7, Rule::Text}, {"WINS Server 2", 1500, 8, Rule::Text},
    {"Client 1", 1500, 9, Rule::Text},      {"Client 2", 1500, 10, Rule::Text},
};

constexpr ListColumn kDriveColumns[] = {
    {"Computer Name", 1500, 0, Rule::Plain},  {"Removable Drives", 750, 2, Rule::Text},
    {"Fixed/Partitions", 750, 3, Rule::Text}, {"CD-ROM Drives", 750, 4, Rule::Text},
    {"RAM Drives", 750, 5, Rule::Text},       {"Network Drives", 750, 6, Rule::Text},
    {"Drive letters", 1500, 7, Rule::Text},
};

constexpr ListColumn kDriveDetailColumns[] = {
    {"Computer Name", 1500, 0, Rule::Plain}, {"Root Letter", 1500, 2, Rule::Text},
    {"Description", 1500, 3, Rule::Text},    {"File System", 750, 4, Rule::Text},
    {"Total Size", 750, 5, Rule::SizeBytes}, {"Free Space", 750, 6, Rule::SizeBytes},
    {"Drive Label", 750, 7, Rule::Text},     {"Serial Number", 750, 8, Rule::Text},
    {"Drive mapping", 1500, 9, Rule::Text},  {"Connected As", 1500, 10, Rule::Text},
};

constexpr ListColumn kInputColumns[] = {
    {"Computer Name", 1500, 0, Rule::Plain}, {"Keyboard", 1500, 2, Rule::Text},
    {"Keyb Delay", 750, 3, Rule::Text},      {"Keyb Repeat", 750, 4, Rule::Text},
    {"Function Keys", 750, 5, Rule::Text},   {"Mouse", 1500, 6, Rule::Text},
    {"Mouse Buttons", 750, 7, Rule::Text},   {"Wheel?", 750, 8, Rule::YesNo},
    {"Double-Click", 750, 9, Rule::Text},
};

constexpr ListColumn kOfficeColumns[] = {
    {"Computer Name", 1500, 0, Rule::Plain},
    {"Microsoft Office Version", 1500, 7, Rule::OfficeNotAvailable},
    {"Microsoft Access", 1500, 2, Rule::OfficeNotAvailable},
    {"Microsoft Excel", 1500, 3, Rule::OfficeNotAvailable},
    {"Microsoft Outlook", 1500, 4, Rule::OfficeNotAvailable},
    {"Microsoft Power Point", 1500, 5, Rule::OfficeNotAvailable},
    {"Microsoft Word", 1500, 6, Rule::OfficeNotAvailable},
};

constexpr ListColumn kODBCColumns[] = {
    {"Computer Name", 1500, 0, Rule::Text},
    {"Driver Name", 2500, 2, Rule::Text},
    {"Driver Path", 2500, 3, Rule::Text},
    {"Driver Version", 1500, 4, Rule::Text},
};

constexpr ListColumn kSystemColumns[] = {
    {"Computer Name", 1500, 0, Rule::Text}, {"OS Version", 750, 2, Rule::Text},
    {"OS Build", 750, 3, Rule::Text},       {"OS Booted", 1500, 4, Rule::Text},
    {"Debug?", 750, 5, Rule::NullYes},      {"Slow PC?", 750, 6, Rule::NullYes},
    {"OS Name(API)", 1500, 7, Rule::Text},  {"Daylight Time", 1500, 8, Rule::Text},
    {"Standard Time", 1500, 9, Rule::Text}, {"OS Name(Reg)", 1500, 10, Rule::Text},
    {"OS ID", 1500, 11, Rule::Text},        {"OS Key", 1500, 12, Rule::Text},
    {"Registered?", 750, 13, Rule::Text},   {"Owner", 1500, 14, Rule::Text},
    {"Company", 1500, 15, Rule::Text},      {"Plus features", 1500, 16, Rule::Text},
    {"Service Pack", 1500, 17, Rule::Text},
};

constexpr ListColumn kPrinterColumns[] = {
    {"Computer Name", 1500, 0, Rule::Text}, {"Local/Remote", 750, 2, Rule::LocalRemote},
    {"Printer Name", 1500, 3, Rule::Text},  {"Printer Driver Name", 1500, 4, Rule::Text},
    {"Printer Port", 1500, 5, Rule::Text},
};

constexpr ListColumn kSoftwareColumns[] = {
    {"Computer Name", 1500, 0, Rule::Text},
    {"Program Name", 2500, 2, Rule::Text},
    {"Uninstall String", 5000, 3, Rule::Text},
};

constexpr ListLine kNetLines[] = {
    {"Computer Name", 0, Rule::Text},
    {"Logon User Name", 1, Rule::Text},
    {"Last Logon Date", 2, Rule::Date},
    {"Last Logon Time", 3, Rule::Text},
    {"Network Card Mac Address", 4, Rule::Text},
    {"Original Config Date", 5, Rule::Date},
    {"Original Config Time", 6, Rule::Text},
    {"Current Information File Date", 7, Rule::Date},
    {"Current Information File Time", 8, Rule::Text},
    {"Personal Information File Date", 9, Rule::Date},
    {"Personal Information File Time", 10, Rule::Text},
};

constexpr ListLine kPersonalLines[] = {
    {"User Name", 1, Rule::Text},
    {"User Surname", 2, Rule::Text},
    {"User ID Number", 3, Rule::Text},
    {"User Employee Number", 4, Rule::Text},
    {"User Home Telephone", 5, Rule::Text},
    {"User Home Address", 6, Rule::Text},
    {"User Work Building Name", 7, Rule::Text},
    {"User Work Floor", 8, Rule::Text},
    {"User Office", 9, Rule::Text},
    {"User Work Telephone", 10, Rule::Text},
    {"Computer Asset Number", 11, Rule::Text},
};

constexpr ListLine kProcessorLines[] = {
    {"CPU Name from Windows API", 2, Rule::Text},
    {"Number of CPU's on System", 3, Rule::Text},
    {"Current Active CPU", 4, Rule::Text},
    {"CPU Vendor from Registry", 5, Rule::Text},
    {"CPU Name from Registry", 6, Rule::Text},
    {"CPU MMX Identifier from Registry", 7, Rule::Text},
    {"CPU Speed from Registry", 8, Rule::ZeroNotAvailable},
    {"CPU Name from DLL", 9, Rule::Text},
    {"CPU Speed from DLL", 10, Rule::ZeroNotAvailable},
    {"CPU FPU From DLL", 11, Rule::YesNoNotAvailable},
    {"CPU MMX From DLL", 12, Rule::YesNoNotAvailable},
    {"Total RAM", 13, Rule::SizeKilobytes},
    {"Total Free RAM", 14, Rule::SizeKilobytes},
    {"Total Page Memory", 15, Rule::SizeKilobytes},
    {"Total Free Page Memory", 16, Rule::SizeKilobytes},
    {"Total Virtual Memory", 17, Rule::SizeKilobytes},
    {"Total Free Virtual Memory", 18, Rule::SizeKilobytes},
    {"Screen Resolution", 19, Rule::Text},
    {"Screen Mode", 20, Rule::Text},
    {"Number of Screens", 21, Rule::Text},
    {"Number of WAV Devices", 22, Rule::Text},
    {"Number of MIDI Devices", 23, Rule::Text},
    {"Number of Joysticks Drivers", 24, Rule::Text},
    {"Number of Joysticks Connected", 25, Rule::Text},
};

constexpr ListLine kMotherboardLines[] = {
    {"BIOS Name", 2, Rule::Text},
    {"BIOS Date", 3, Rule::Date},
    {"BIOS Version", 4, Rule::Text},
    {"BUS Type", 5, Rule::Text},
    {"Motherboard CPU Type", 6, Rule::Text},
    {"Machine Type", 7, Rule::Text},
    {"Model Number", 8, Rule::Text},
};

constexpr ListLine kDriveLines[] = {
    {"Number of Removable Drives", 2, Rule::Text},
    {"Number of Fixed Drives or Partitions", 3, Rule::Text},
    {"Number of CD-ROM Drives", 4, Rule::Text},
    {"Number of RAM Drives", 5, Rule::Text},
    {"Number of Mapped Network Drives", 6, Rule::Text},
    {"Drive letters", 7, Rule::Text},
};

constexpr ListLine kInputLines[] = {
    {"Keyboard Description", 2, Rule::Text},      {"Keyboard Delay Speed", 3, Rule::Text},
    {"Keyboard Repeat Speed", 4, Rule::Text},     {"Number of Function Keys", 5, Rule::Text},
    {"Mouse Description", 6, Rule::Text},         {"Number of Mouse Buttons", 7, Rule::Text},
    {"Does Mouse have a Wheel?", 8, Rule::YesNo}, {"Mouse Double-Click speed", 9, Rule::Text},
};

constexpr ListLine kSuiteLines[] = {{"Microsoft Office Version", 0, Rule::OfficeNotAvailable}};

constexpr ListLine kOfficeLines[] = {
    {"Microsoft Access", 2, Rule::OfficeNotInstalled},
    {"Microsoft Excel", 3, Rule::OfficeNotInstalled},
    {"Microsoft Outlook", 4, Rule::OfficeNotInstalled},
    {"Microsoft Power Point", 5, Rule::OfficeNotInstalled},
    {"Microsoft Word", 6, Rule::OfficeNotInstalled},
};

constexpr ListLine kSystemLines[] = {
    {"Operating System Version", 2, Rule::Text},
    {"Operating System Build", 3, Rule::Text},
    {"Operating System Booted", 4, Rule::Text},
    {"Debug Version", 5, Rule::NullYes},
    {"Slow PC?", 6, Rule::NullYes},
    {"OS Name from API", 7, Rule::Text},
    {"Daylight Time", 8, Rule::Text},
    {"Standard Time", 9, Rule::Text},
    {"OS Name from Registry", 10, Rule::Text},
    {"OS ID", 11, Rule::Text},
    {"OS Key", 12, Rule::Text},
    {"Registered at Microsoft?", 13, Rule::Text},
    {"Registered Owner", 14, Rule::Text},
    {"Registered Company", 15, Rule::Text},
    {"Plus features", 16, Rule::Text},
    {"Service Pack", 17, Rule::Text},
};

constexpr ListQuery AnyConfiguration(std::string_view select) {
    return {select, "WHERE COMPUTERNAME=", {}, {}};
}

constexpr ValueGroup kMachineGroups[] = {
    {AnyConfiguration("SELECT * FROM NET "), kNetLines},
    {AnyConfiguration("SELECT * FROM Personal "), kPersonalLines},
};
constexpr ValueGroup kProcessorGroups[] = {{OfOne(kSelectProcessors), kProcessorLines}};
constexpr ValueGroup kMotherboardGroups[] = {{DevicesOfOne(kSelectMotherboards), kMotherboardLines}};
constexpr ValueGroup kDriveGroups[] = {{OfOne(kSelectDrives), kDriveLines}};
constexpr ValueGroup kInputGroups[] = {{OfOne(kSelectInput), kInputLines}};
constexpr ValueGroup kSystemGroups[] = {{OfOne(kSelectSystems), kSystemLines}};
/// The suite's name is that of whichever configuration names one first.
constexpr ValueGroup kOfficeGroups[] = {
    {{"SELECT [Program Name] From UninstallData where "
      "(([Program Name] like '%MICROSOFT OFFICE%') OR ([Program Name] Like '%MS OFFICE%')) ",
      "and ComputerName = ",
      {},
      ";"},
     kSuiteLines,
     WithoutRecord::EmptyValues},
    {OfOne(kSelectOffice), kOfficeLines},
};

} // namespace

namespace Lists {

constexpr ColumnList kProcessorsOfAll = {OfAll(kSelectProcessors), kProcessorColumns, RowKey::Machine, "?CPU",
                                         Image::PC_CPU};
constexpr ColumnList kDevicesOfAll = {OfAll(kSelectDevices), kDeviceColumnsOfAll, RowKey::Counted,
                                      "?MULTI?DEV?",         Image::PC_DEVICE,    1};
constexpr ColumnList kDisplaysOfAll = {DevicesOfAll(kSelectDisplays), kDisplayColumns, RowKey::Counted,
                                       "?MULTI?DEVDISP?", Image::PC_DEVICE};
constexpr ColumnList kMotherboardsOfAll = {DevicesOfAll(kSelectMotherboards), kMotherboardColumns,
                                           RowKey::Counted, "?MULTI?DEVMB?", Image::PC_DEVICE};
constexpr ColumnList kNetworkOfAll = {DevicesOfAll(kSelectNetwork), kNetworkColumns, RowKey::Counted,
                                      "?MULTI?DEVNET?", Image::PC_DEVICE};
constexpr ColumnList kDrivesOfAll = {OfAll(kSelectDrives), kDriveColumns, RowKey::Machine, "?DRV",
                                     Image::PC_DRIVE};
constexpr ColumnList kDriveDetailOfAll = {OfAll(kSelectDriveDetail), kDriveDetailColumns, RowKey::Counted,
                                          "?MULTI?DRVDETAIL?", Image::PC_DRIVE};
constexpr ColumnList kInputOfAll = {OfAll(kSelectInput), kInputColumns, RowKey::Machine, "?IO", Image::PC_IO};
constexpr ColumnList kOfficeOfAll = {OfAll(kSelectOfficeWithSuite), kOfficeColumns, RowKey::Machine, "?MSO",
                                     Image::PC_OFFICE};
constexpr ColumnList kODBCOfAll = {OfAll(kSelectODBC), kODBCColumns, RowKey::Counted, "?MULTI?ODB?",
                                   Image::PC_ODBC};
constexpr ColumnList kSystemsOfAll = {OfAll(kSelectSystems), kSystemColumns, RowKey::Machine, "?OS",
                                      Image::PC_OS};
constexpr ColumnList kPrintersOfAll = {OfAll(kSelectPrinters, kByPrinterKind), kPrinterColumns,
                                       RowKey::Counted, "?MULTI?PRN?", Image::PC_PRINTER};
constexpr ColumnList kSoftwareOfAll = {OfAll(kSelectSoftware), kSoftwareColumns, RowKey::Counted,
                                       "?MULTI?UNI?", Image::PC_UNINSTALL};

constexpr ValueList kMachine = {kMachineGroups, Image::None};
constexpr ValueList kProcessor = {kProcessorGroups, Image::PC_CPU};
constexpr ColumnList kDevices = {OfOne(kSelectDevices), std::span(kDeviceColumnsOfOne).subspan(1),
                                 RowKey::Device,        {},
                                 Image::PC_DEVICE,      1};
constexpr ColumnList kDisplays = {
    DevicesOfOne(kSelectDisplays), WithoutMachine(kDisplayColumns), RowKey::None, {}, Image::PC_DEVICE};
constexpr ValueList kMotherboard = {kMotherboardGroups, Image::PC_DEVICE};
constexpr ColumnList kNetwork = {
    DevicesOfOne(kSelectNetwork), WithoutMachine(kNetworkColumns), RowKey::None, {}, Image::PC_DEVICE};
constexpr ValueList kDrives = {kDriveGroups, Image::PC_DRIVE};
constexpr ColumnList kDriveDetail = {
    OfOne(kSelectDriveDetail), WithoutMachine(kDriveDetailColumns), RowKey::None, {}, Image::PC_DRIVE};
constexpr ValueList kInput = {kInputGroups, Image::PC_IO};
constexpr ValueList kOffice = {kOfficeGroups, Image::PC_OFFICE};
constexpr ColumnList kODBC = {
    OfOne(kSelectODBC), WithoutMachine(kODBCColumns), RowKey::None, {}, Image::PC_ODBC};
constexpr ValueList kSystem = {kSystemGroups, Image::PC_OS};
constexpr ColumnList kPrinters = {OfOne(kSelectPrinters, kByPrinterKind),
                                  WithoutMachine(kPrinterColumns),
                                  RowKey::None,
                                  {},
                                  Image::PC_PRINTER};
constexpr ColumnList kSoftware = {
    OfOne(kSelectSoftware), WithoutMachine(kSoftwareColumns), RowKey::None, {}, Image::PC_UNINSTALL};

} // namespace Lists
