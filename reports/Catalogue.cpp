// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/Catalogue.h"

#include "platform/errors.h"

#include <algorithm>
#include <array>

namespace {

// The statements are a contract with the administrators who read them in traces of the database: case,
// spacing and spelling stay as they are.
constexpr auto kCatalogue = std::to_array<CatalogueRow>({
    {"mnuRepBasicUser", "CRPBasicUser", false, false, "SELECT * FROM NET ORDER BY COMPUTERNAME"},
    {"mnuRepUserDetailed", "CRPDetailUser", false, false, "SELECT * FROM PERSONAL ORDER BY Surname, Name"},
    {"mnuRepUserLogon", "CRPLogon", true, false,
     "SELECT * FROM NET ORDER BY [Logon Date] DESC, [Logon Time] DESC, COMPUTERNAME"},
    {"mnuRepRAM", "CRPRAM", true, true,
     "SELECT PC.COMPUTERNAME, NET.[Logon User Name], PC.RAM, PC.[RAM Free] FROM NET INNER JOIN PC ON "
     "NET.COMPUTERNAME = PC.COMPUTERNAME Where PC.ConfID = ",
     " ORDER BY PC.RAM DESC , NET.COMPUTERNAME"},
    {"mnuRepFixedDrive", "CRPFixedDrive", true, true,
     "SELECT DrivesData.COMPUTERNAME, DrivesData.[Drive Root], DrivesData.[Drive Label],DrivesData.[Drive "
     "FileSystem], DrivesData.[Drive Size], DrivesData.[Drive Free] FROM NET INNER JOIN DrivesData ON "
     "NET.COMPUTERNAME = DrivesData.COMPUTERNAME Where (((DrivesData.[Drive Description]) = 'Fixed drive') "
     "And ((DrivesData.ConfID) = ",
     ")) ORDER BY DrivesData.COMPUTERNAME, DrivesData.[Drive Root]"},
    {"mnuRepCPU", "CRPCPU", true, true,
     "SELECT * FROM PC WHERE ConfID=", " ORDER BY [CPU DLL Description],[COMPUTERNAME]"},
    // The version's text comes from either configuration: one that was removed still names what there was.
    {"mnuRepOffice", "CRPOffice", true, true,
     "SELECT MSOffice.*,(SELECT TOP 1 [Program Name] FROM UninstallData WHERE UninstallData.COMPUTERNAME = "
     "MSOffice.COMPUTERNAME AND (([Program Name] like '%MICROSOFT OFFICE%') OR ([Program Name] Like '%MS "
     "OFFICE%'))) AS OfficeVersion FROM MSOffice WHERE ConfID = ",
     " ORDER BY COMPUTERNAME"},
    {"mnuRepOS", "CRPOS", true, true,
     "SELECT * FROM OS WHERE ConfID=", " ORDER BY [OS Name Reg],[COMPUTERNAME]"},
    {"mnuRepUninstall", "CRPUninstall", true, true,
     "SELECT * FROM UninstallData WHERE ConfID = ", " ORDER BY [Program Name], COMPUTERNAME"},
    {"mnuRepODBC", "CRPODBC", true, true,
     "SELECT * FROM ODBCData WHERE ConfID=", " ORDER BY [Driver Name],COMPUTERNAME"},
    // Collectors write the state of a stopped device in two spellings, each padded to twelve characters.
    {"mnuRepDeviceConf", "CRPDeviceConflict", false, true,
     "SELECT DeviceData.COMPUTERNAME, DeviceData.ConfID, DeviceData.[Device Problem], DeviceData.[Device "
     "Name], Count(DeviceData.[Device Name]) AS [CountOfDevice Name] From DeviceData GROUP BY "
     "DeviceData.COMPUTERNAME, DeviceData.ConfID, DeviceData.[Device Problem], DeviceData.[Device Name] "
     "HAVING (((DeviceData.ConfID)=",
     ") AND ((DeviceData.[Device Problem])<>'00 00 00 00 ') AND ((DeviceData.[Device Problem])<>'')) AND "
     "((DeviceData.[Device Problem])<>'STOPED      ') AND ((DeviceData.[Device Problem])<>'STOPPED     ')"},
    {"mnuRepUserAgainsOS", "CRPChartUserOS", false, true,
     "SELECT OS.COMPUTERNAME, OS.[OS Name API] From OS WHERE OS.ConfID="},
    {"mnuRepNetPrinters", "CRPNetPrinter", true, true,
     "SELECT * FROM PrinterData WHERE ConfID=", " AND LocalOrRemote = 'R'"},
    {"mnuRepNetDrives", "CRPNetDrive", true, true,
     "SELECT * FROM DrivesData WHERE ConfID=", " AND [Drive Description] = 'Network drive'"},
    {"mnuRepNetProtocol", "CRPNetProtocol", true, true,
     "SELECT DeviceNetwork.[Protocol Name], DeviceData.COMPUTERNAME, DeviceData.[Device Name], "
     "DeviceNetwork.[Protocol IP], DeviceNetwork.[Protocol Mask], DeviceNetwork.[Protocol Gateway], "
     "DeviceNetwork.[Protocol Wins1], DeviceNetwork.[Protocol Wins2], DeviceNetwork.[Protocol Client1], "
     "DeviceNetwork.[Protocol Client2] "
     "FROM DeviceData INNER JOIN DeviceNetwork ON DeviceData.[Device Auto ID] = DeviceNetwork.[Device Auto "
     "ID] "
     "GROUP BY DeviceNetwork.[Protocol Name], DeviceData.COMPUTERNAME, DeviceData.[Device Name], "
     "DeviceNetwork.[Protocol IP], DeviceNetwork.[Protocol Mask], DeviceNetwork.[Protocol Gateway], "
     "DeviceNetwork.[Protocol Wins1], DeviceNetwork.[Protocol Wins2], DeviceNetwork.[Protocol Client1], "
     "DeviceNetwork.[Protocol Client2], DeviceData.ConfID "
     "Having DeviceData.ConfID = ",
     " ORDER BY DeviceNetwork.[Protocol Name], DeviceData.COMPUTERNAME, DeviceData.[Device Name]"},
});

} // namespace

std::span<const CatalogueRow> Catalogue() {
    return kCatalogue;
}

const CatalogueRow& CatalogueReport(std::string_view menuItem) {
    const auto* const row =
        std::find_if(kCatalogue.begin(), kCatalogue.end(),
                     [&](const CatalogueRow& entry) { return entry.menuItem == menuItem; });
    if (row == kCatalogue.end())
        Raise(Errors::kInvalidCall, std::string(menuItem));
    return *row;
}

std::string ConfigurationName(int confID) {
    return confID == 0 ? "Original configuration" : "Current configuration";
}

std::string Statement(const CatalogueRow& row, int confID) {
    std::string text(row.before);
    if (row.usesConfID)
        text += std::to_string(confID);
    return text.append(row.after);
}
