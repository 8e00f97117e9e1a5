// SPDX-License-Identifier: GPL-3.0-or-later
// The tables that the system's statements read, without their keys, and those statements as the system writes
// them: their spacing and their upper and lower case are its own.
#pragma once

namespace Samples {

constexpr const char* kSchema = R"(
create table Net(COMPUTERNAME text(20) collate nocase primary key, [Logon User Name] text(20) collate nocase,
    [Logon Date] text(8), [Logon Time] text(8), [MAC Address] text(15), ORGFileDate text(8), ORGFileTime text(8),
    INFFileDate text(8), INFFileTime text(8), PNFFileDate text(8), PNFFileTime text(8));
create table PC(COMPUTERNAME text(50) collate nocase, ConfID numeric, [CPU API Name] text(50),
    [CPU API Number] numeric, [CPU DLL Description] text(100) collate nocase, [CPU DLL FPU] numeric, RAM numeric,
    [RAM Free] numeric);
create table OS(COMPUTERNAME text(50) collate nocase, ConfID numeric, [OS Version] text(10), [OS Debug] numeric,
    [OS Name API] text(50) collate nocase, [OS Name Reg] text(50) collate nocase);
create table MSOffice(COMPUTERNAME text(50) collate nocase, ConfID numeric, [MS Access] text(50),
    [MS Excel] text(50), [MS Outlook] text(50), [MS Power Point] text(50), [MS Word] text(50));
create table Input(COMPUTERNAME text(50) collate nocase, ConfID numeric, [Mouse Wheel] numeric);
create table Drives(COMPUTERNAME text(50) collate nocase, ConfID numeric, Removable numeric, Fixed numeric,
    CDRom numeric, RAMDrive numeric, NetworkDrive numeric, DriveLetters text(50) collate nocase);
create table DrivesData(COMPUTERNAME text(50) collate nocase, ConfID numeric,
    [Drive Root] text(50) collate nocase, [Drive Description] text(50) collate nocase,
    [Drive FileSystem] text(50) collate nocase, [Drive Size] numeric, [Drive Free] numeric,
    [Drive Label] text(50) collate nocase);
create table PrinterData(COMPUTERNAME text(50) collate nocase, ConfID numeric,
    LocalOrRemote text(1) collate nocase, [Printer Name] text(50));
create table ODBCData(COMPUTERNAME text(50) collate nocase, ConfID numeric,
    [Driver Name] text(50) collate nocase, [Driver Path] text(255), [Driver Version] text(50));
create table UninstallData(COMPUTERNAME text(50) collate nocase, ConfID numeric,
    [Program Name] text(255) collate nocase, [Uninstall String] text(255));
create table DeviceData([Device Auto ID] text(36) collate nocase primary key,
    COMPUTERNAME text(50) collate nocase, ConfID numeric, [Device Catagory] text(50) collate nocase,
    [Device Problem] text(50) collate nocase, [Device Name] text(50) collate nocase, [Device Driver Date] text(8));
create table DeviceDisplay([Device Auto ID] text(36) collate nocase, [Video Memory] text(50),
    [DAC Type] text(50));
create table DeviceMotherBoard([Device Auto ID] text(36) collate nocase, [BIOS Name] text(50),
    [BIOS Date] text(8), [BIOS Version] text(50), [BUS Type] text(50), CPU text(50), [Machine Type] text(50),
    Model text(50));
create table DeviceNetwork([Device Auto ID] text(36) collate nocase, [Protocol Number] numeric,
    [Protocol Name] text(50), [Protocol IP] text(20), [Protocol Mask] text(20), [Protocol Gateway] text(20),
    [Protocol Wins1] text(20), [Protocol Wins2] text(20), [Protocol Client1] text(50), [Protocol Client2] text(50));
create table Personal(COMPUTERNAME text(50) collate nocase, Name text(50) collate nocase,
    Surname text(50) collate nocase, Building text(50) collate nocase);
create table Version(VersionNumber text(50), Compatibility text(255), LastImportDate text(8));
)";

// Plain categories differ in the table's name alone, so one stands for all.
constexpr const char* kStatements[] = {
    "SELECT * FROM NET ORDER BY COMPUTERNAME",
    "SELECT * FROM PERSONAL ORDER BY Surname, Name",
    "SELECT * FROM NET ORDER BY [Logon Date] DESC, [Logon Time] DESC, COMPUTERNAME",
    "SELECT PC.COMPUTERNAME, NET.[Logon User Name], PC.RAM, PC.[RAM Free] FROM NET INNER JOIN PC ON "
    "NET.COMPUTERNAME = PC.COMPUTERNAME Where PC.ConfID = 0 ORDER BY PC.RAM DESC , NET.COMPUTERNAME",
    "SELECT DrivesData.COMPUTERNAME, DrivesData.[Drive Root], DrivesData.[Drive Label],DrivesData.[Drive "
    "FileSystem], DrivesData.[Drive Size], DrivesData.[Drive Free] FROM NET INNER JOIN DrivesData ON "
    "NET.COMPUTERNAME = DrivesData.COMPUTERNAME Where (((DrivesData.[Drive Description]) = 'Fixed drive') "
    "And "
    "((DrivesData.ConfID) = 0)) ORDER BY DrivesData.COMPUTERNAME, DrivesData.[Drive Root]",
    "SELECT * FROM PC WHERE ConfID=0 ORDER BY [CPU DLL Description],[COMPUTERNAME]",
    "SELECT MSOffice.*,(SELECT TOP 1 [Program Name] FROM UninstallData WHERE UninstallData.COMPUTERNAME = "
    "MSOffice.COMPUTERNAME AND (([Program Name] like '%MICROSOFT OFFICE%') OR ([Program Name] Like '%MS "
    "OFFICE%'))) AS OfficeVersion FROM MSOffice WHERE ConfID = 0 ORDER BY COMPUTERNAME",
    "SELECT * FROM OS WHERE ConfID=0 ORDER BY [OS Name Reg],[COMPUTERNAME]",
    "SELECT * FROM UninstallData WHERE ConfID = 0 ORDER BY [Program Name], COMPUTERNAME",
    "SELECT * FROM ODBCData WHERE ConfID=1 ORDER BY [Driver Name],COMPUTERNAME",
    "SELECT DeviceData.COMPUTERNAME, DeviceData.ConfID, DeviceData.[Device Problem], DeviceData.[Device "
    "Name], "
    "Count(DeviceData.[Device Name]) AS [CountOfDevice Name] From DeviceData GROUP BY "
    "DeviceData.COMPUTERNAME, "
    "DeviceData.ConfID, DeviceData.[Device Problem], DeviceData.[Device Name] HAVING "
    "(((DeviceData.ConfID)=0) "
    "AND ((DeviceData.[Device Problem])<>'00 00 00 00 ') AND ((DeviceData.[Device Problem])<>'')) AND "
    "((DeviceData.[Device Problem])<>'STOPED      ') AND ((DeviceData.[Device Problem])<>'STOPPED     ')",
    "SELECT OS.COMPUTERNAME, OS.[OS Name API] From OS WHERE OS.ConfID=0",
    "SELECT * FROM PrinterData WHERE ConfID=0 AND LocalOrRemote = 'R'",
    "SELECT * FROM DrivesData WHERE ConfID=0 AND [Drive Description] = 'Network drive'",
    "SELECT DeviceNetwork.[Protocol Name], DeviceData.COMPUTERNAME, DeviceData.[Device Name], "
    "DeviceNetwork.[Protocol IP], DeviceNetwork.[Protocol Mask], DeviceNetwork.[Protocol Gateway], "
    "DeviceNetwork.[Protocol Wins1], DeviceNetwork.[Protocol Wins2], DeviceNetwork.[Protocol Client1], "
    "DeviceNetwork.[Protocol Client2] FROM DeviceData INNER JOIN DeviceNetwork ON DeviceData.[Device Auto "
    "ID] = "
    "DeviceNetwork.[Device Auto ID] GROUP BY DeviceNetwork.[Protocol Name], DeviceData.COMPUTERNAME, "
    "DeviceData.[Device Name], DeviceNetwork.[Protocol IP], DeviceNetwork.[Protocol Mask], "
    "DeviceNetwork.[Protocol Gateway], DeviceNetwork.[Protocol Wins1], DeviceNetwork.[Protocol Wins2], "
    "DeviceNetwork.[Protocol Client1], DeviceNetwork.[Protocol Client2], DeviceData.ConfID Having "
    "DeviceData.ConfID = 0 ORDER BY DeviceNetwork.[Protocol Name], DeviceData.COMPUTERNAME, "
    "DeviceData.[Device "
    "Name]",
    "SELECT * FROM DrivesData WHERE ConfID=0 ORDER BY COMPUTERNAME, [Drive Root]",
    "SELECT * FROM PrinterData WHERE ConfID=1 Order By LocalOrRemote",
    "SELECT Drives.COMPUTERNAME, 'CD Rom' AS Type, Drives.CDRom AS Org, (SELECT CDRom FROM Drives as DRV1 "
    "WHERE "
    "DRV1.COMPUTERNAME=Drives.COMPUTERNAME AND ConfID=1) AS Cur From Drives Where (((Drives.ConfID) = 0)) "
    "Union "
    "SELECT PC.COMPUTERNAME, 'CPU' AS Type, PC.[CPU DLL Description] AS Org, (SELECT [CPU DLL Description] "
    "FROM "
    "PC as PC_1 WHERE PC_1.COMPUTERNAME = PC.COMPUTERNAME AND PC_1.ConfID=1) AS Cur From PC Where "
    "(((PC.ConfID) "
    "= 0)) Union SELECT Drives.COMPUTERNAME, 'Removable Drive' AS Type, Drives.Removable AS Org, (SELECT "
    "Removable FROM Drives as DRV1 WHERE DRV1.COMPUTERNAME=Drives.COMPUTERNAME AND ConfID=1) AS Cur From "
    "Drives "
    "Where (((Drives.ConfID) = 0)) Union SELECT PC.COMPUTERNAME, 'RAM Size' AS Type, PC.RAM AS Org, (SELECT "
    "[RAM] FROM PC as PC_1 WHERE PC_1.COMPUTERNAME = PC.COMPUTERNAME AND PC_1.ConfID=1) AS Cur From PC Where "
    "(((PC.ConfID) = 0)) UNION SELECT DrivesData.COMPUTERNAME, 'Hard Disk Size' AS Type, "
    "Sum(DrivesData.[Drive "
    "Size]) AS Org, (SELECT Sum([Drive Size]) FROM DrivesData as DRV1 WHERE DRV1.COMPUTERNAME = "
    "DrivesData.COMPUTERNAME AND ConfID=1) AS Cur From DrivesData GROUP BY DrivesData.COMPUTERNAME, 'Hard "
    "Disk "
    "Size', DrivesData.[Drive Description], DrivesData.ConfID HAVING (((DrivesData.[Drive "
    "Description])='Fixed drive') AND ((DrivesData.ConfID)=0))",
    "SELECT DeviceData.COMPUTERNAME, DeviceData.ConfID, DeviceData.[Device Name], DeviceDisplay.[Video "
    "Memory], "
    "DeviceDisplay.[DAC Type] FROM DeviceData INNER JOIN DeviceDisplay ON DeviceData.[Device Auto ID] = "
    "DeviceDisplay.[Device Auto ID] WHERE DeviceData.ConfID=0",
    "SELECT DeviceData.COMPUTERNAME, DeviceData.ConfID, DeviceMotherBoard.[BIOS Name], "
    "DeviceMotherBoard.[BIOS "
    "Date], DeviceMotherBoard.[BIOS Version], DeviceMotherBoard.[BUS Type], DeviceMotherBoard.CPU, "
    "DeviceMotherBoard.[Machine Type], DeviceMotherBoard.Model FROM DeviceData INNER JOIN DeviceMotherBoard "
    "ON "
    "DeviceData.[Device Auto ID] = DeviceMotherBoard.[Device Auto ID] WHERE DeviceData.COMPUTERNAME='PC0001' "
    "AND DeviceData.ConfID=0",
    "SELECT [Program Name] From UninstallData where (([Program Name] like '%MICROSOFT OFFICE%') OR ([Program "
    "Name] Like '%MS OFFICE%')) and ComputerName = 'PC0001';",
    "SELECT DeviceDisplay.* FROM DeviceData INNER JOIN DeviceDisplay ON DeviceData.[Device Auto ID] = "
    "DeviceDisplay.[Device Auto ID] WHERE COMPUTERNAME <> '' AND ConfID=0",
    "SELECT DeviceMotherBoard.* FROM DeviceData INNER JOIN DeviceMotherBoard ON DeviceData.[Device Auto ID] "
    "= "
    "DeviceMotherBoard.[Device Auto ID] WHERE COMPUTERNAME = 'PC0001' AND ConfID=0",
    "SELECT * FROM DeviceData WHERE COMPUTERNAME='PC0001' AND ConfID=0 ORDER BY [Device Catagory],[Device "
    "Name]",
    "SELECT * FROM DRIVESDATA WHERE COMPUTERNAME='PC0001' AND ConfID=0",
    "SELECT * FROM Version",
    "UPDATE Version SET LastImportDate = '20011102'",
    "DELETE * FROM Net WHERE COMPUTERNAME = 'PC0009'",
    "DELETE * FROM DEVICEDATA WHERE COMPUTERNAME='PC0009' AND ConfID=1",
    "DELETE * FROM Personal WHERE COMPUTERNAME='PC0009'",
};

} // namespace Samples
