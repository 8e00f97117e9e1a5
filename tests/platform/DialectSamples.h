// SPDX-License-Identifier: GPL-3.0-or-later
// A small inventory, and the hardest of the system's statements: their spacing and their upper and lower case
// are the system's own.
#pragma once

namespace Samples {

constexpr const char* kSchema = R"(
create table Net(COMPUTERNAME text(20) collate nocase primary key, [Logon User Name] text(20) collate nocase,
    [Logon Date] text(8), ORGFileDate text(8));
create table Personal(COMPUTERNAME text(50) collate nocase, Name text(50) collate nocase, Surname text(50),
    Building text(50) collate nocase);
create table PC(COMPUTERNAME text(50) collate nocase, ConfID numeric, [CPU DLL Description] text(100),
    [CPU DLL FPU] numeric, RAM numeric);
create table MSOffice(COMPUTERNAME text(50) collate nocase, ConfID numeric, [MS Word] text(50));
create table Input(COMPUTERNAME text(50) collate nocase, ConfID numeric);
create table Drives(COMPUTERNAME text(50) collate nocase, ConfID numeric, Removable numeric, CDRom numeric);
create table DrivesData(COMPUTERNAME text(50) collate nocase, ConfID numeric, [Drive Root] text(50),
    [Drive Description] text(50) collate nocase, [Drive Size] numeric);
create table UninstallData(COMPUTERNAME text(50) collate nocase, ConfID numeric, [Program Name] text(255));
create table DeviceData([Device Auto ID] text(36) collate nocase primary key,
    COMPUTERNAME text(50) collate nocase, ConfID numeric, [Device Problem] text(50), [Device Name] text(50));
create table DeviceDisplay([Device Auto ID] text(36) collate nocase, [DAC Type] text(50));
create table DeviceNetwork([Device Auto ID] text(36) collate nocase, [Protocol Name] text(50));
)";

constexpr const char* kOfficeOfAll =
    R"(SELECT MSOffice.*,(SELECT TOP 1 [Program Name] FROM UninstallData WHERE UninstallData.COMPUTERNAME =
    MSOffice.COMPUTERNAME AND (([Program Name] like '%MICROSOFT OFFICE%') OR ([Program Name] Like '%MS OFFICE%')))
    AS OfficeVersion FROM MSOffice WHERE ConfID = 0 ORDER BY COMPUTERNAME)";

constexpr const char* kDeviceConflicts =
    R"(SELECT DeviceData.COMPUTERNAME, DeviceData.ConfID, DeviceData.[Device Problem], DeviceData.[Device Name],
    Count(DeviceData.[Device Name]) AS [CountOfDevice Name] From DeviceData GROUP BY DeviceData.COMPUTERNAME,
    DeviceData.ConfID, DeviceData.[Device Problem], DeviceData.[Device Name] HAVING (((DeviceData.ConfID)=0)
    AND ((DeviceData.[Device Problem])<>'00 00 00 00 ') AND ((DeviceData.[Device Problem])<>'')) AND
    ((DeviceData.[Device Problem])<>'STOPED      ') AND ((DeviceData.[Device Problem])<>'STOPPED     '))";

constexpr const char* kComparison =
    R"(SELECT Drives.COMPUTERNAME, 'CD Rom' AS Type, Drives.CDRom AS Org, (SELECT CDRom FROM Drives as DRV1
    WHERE DRV1.COMPUTERNAME=Drives.COMPUTERNAME AND ConfID=1) AS Cur From Drives Where (((Drives.ConfID) = 0))
    Union SELECT PC.COMPUTERNAME, 'CPU' AS Type, PC.[CPU DLL Description] AS Org, (SELECT [CPU DLL Description]
    FROM PC as PC_1 WHERE PC_1.COMPUTERNAME = PC.COMPUTERNAME AND PC_1.ConfID=1) AS Cur From PC Where
    (((PC.ConfID) = 0)) UNION SELECT DrivesData.COMPUTERNAME, 'Hard Disk Size' AS Type, Sum(DrivesData.[Drive Size])
    AS Org, (SELECT Sum([Drive Size]) FROM DrivesData as DRV1 WHERE DRV1.COMPUTERNAME = DrivesData.COMPUTERNAME
    AND ConfID=1) AS Cur From DrivesData GROUP BY DrivesData.COMPUTERNAME, 'Hard Disk Size',
    DrivesData.[Drive Description], DrivesData.ConfID HAVING (((DrivesData.[Drive Description])='Fixed drive')
    AND ((DrivesData.ConfID)=0)))";

constexpr const char* kStatements[] = {
    kOfficeOfAll,
    kDeviceConflicts,
    kComparison,
    R"(SELECT DeviceNetwork.[Protocol Name], DeviceData.COMPUTERNAME FROM DeviceData INNER JOIN DeviceNetwork ON
    DeviceData.[Device Auto ID] = DeviceNetwork.[Device Auto ID] GROUP BY DeviceNetwork.[Protocol Name],
    DeviceData.COMPUTERNAME, DeviceData.ConfID Having DeviceData.ConfID = 0 ORDER BY DeviceNetwork.[Protocol Name])",
    R"(SELECT [Program Name] From UninstallData where (([Program Name] like '%MICROSOFT OFFICE%') OR
    ([Program Name] Like '%MS OFFICE%')) and ComputerName = 'PC0001';)",
    "SELECT * FROM NET ORDER BY [Logon Date] DESC, COMPUTERNAME",
    "UPDATE Net SET ORGFileDate = '20011102'",
    "DELETE * FROM DEVICEDATA WHERE COMPUTERNAME='PC0009' AND ConfID=1",
};

} // namespace Samples
