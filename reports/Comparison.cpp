// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/Comparison.h"

#include "platform/InventoryFiles.h"
#include "platform/files.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace {

// The first four end in a blank, and the last brings its own "UNION".
constexpr std::array kSelects = {
    "SELECT Drives.COMPUTERNAME, 'CD Rom' AS Type, Drives.CDRom AS Org, (SELECT CDRom FROM Drives as DRV1 "
    "WHERE DRV1.COMPUTERNAME=Drives.COMPUTERNAME AND ConfID=1) AS Cur From Drives Where (((Drives.ConfID) = "
    "0)) ",
    "SELECT PC.COMPUTERNAME, 'CPU' AS Type, PC.[CPU DLL Description] AS Org, (SELECT [CPU DLL Description] "
    "FROM PC as PC_1 WHERE PC_1.COMPUTERNAME = PC.COMPUTERNAME AND PC_1.ConfID=1) AS Cur From PC Where "
    "(((PC.ConfID) = 0)) ",
    "SELECT Drives.COMPUTERNAME, 'Removable Drive' AS Type, Drives.Removable AS Org, (SELECT Removable FROM "
    "Drives as DRV1 WHERE DRV1.COMPUTERNAME=Drives.COMPUTERNAME AND ConfID=1) AS Cur From Drives Where "
    "(((Drives.ConfID) = 0)) ",
    "SELECT PC.COMPUTERNAME, 'RAM Size' AS Type, PC.RAM AS Org, (SELECT [RAM] FROM PC as PC_1 WHERE "
    "PC_1.COMPUTERNAME = PC.COMPUTERNAME AND PC_1.ConfID=1) AS Cur From PC Where (((PC.ConfID) = 0)) ",
};
constexpr const char* kHardDiskSelect =
    "UNION SELECT DrivesData.COMPUTERNAME, 'Hard Disk Size' AS Type, Sum(DrivesData.[Drive Size]) AS Org, "
    "(SELECT Sum([Drive Size]) FROM DrivesData as DRV1 WHERE DRV1.COMPUTERNAME = DrivesData.COMPUTERNAME AND "
    "ConfID=1) AS Cur From DrivesData GROUP BY DrivesData.COMPUTERNAME, 'Hard Disk Size', DrivesData.[Drive "
    "Description], DrivesData.ConfID HAVING (((DrivesData.[Drive Description])='Fixed drive') AND "
    "((DrivesData.ConfID)=0))";

struct LabelLook {
    std::string_view label;
    std::uint32_t color;
    bool isBold;
};

constexpr std::uint32_t kBlack = 0;
constexpr std::uint32_t kRed = 255;
constexpr std::uint32_t kGreen = 32768;
constexpr auto kLooks = std::to_array<LabelLook>({{"", kBlack, false},
                                                  {"Insignificant", kBlack, false},
                                                  {"Changed", kRed, true},
                                                  {"Upgraded", kGreen, true}});

bool Differ(const ADODB::Value& original, const ADODB::Value& current) {
    return !ADODB::IsNull(original) && !ADODB::IsNull(current) && original != current;
}

bool IsLink(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_symlink(path, ignored);
}

void MakeOriginal(const std::string& machine, const std::string& folder, const DirectoryListing& files) {
    if (!IsFileName(machine))
        return;
    const std::optional<std::string> name = files.Find(machine + ".inf");
    if (!name)
        return;
    const std::string current = JoinPath(folder, *name);
    if (IsLink(current))
        return;
    std::vector<std::string> originals = files.Spellings(machine + ".org");
    if (originals.empty())
        originals.push_back(machine + ".org");
    for (const std::string& original : originals)
        CopyInventoryFile(current, JoinPath(folder, original));
}

} // namespace

std::string ComparisonStatement() {
    std::string text;
    for (const char* const select : kSelects)
        text.append(text.empty() ? "" : "Union ").append(select);
    return text + kHardDiskSelect;
}

void CRPCompare::Section3_Format(std::vector<report::ObjectFormat>& fields) {
    constexpr std::size_t kLabel = 3;
    if (fields.size() <= kLabel)
        return;
    for (const LabelLook& look : kLooks) {
        if (fields[kLabel].Value() != look.label)
            continue;
        for (std::size_t i = 0; i <= kLabel; ++i) {
            fields[i].TextColor(look.color);
            if (i != kLabel)
                fields[i].Bold(look.isBold);
        }
    }
}

void FixChanges(ADODB::Recordset& comparison, const std::string& folder) {
    const DirectoryListing files(folder);
    std::string lastMachine;
    for (comparison.MoveFirst(); !comparison.EndOfFile(); comparison.MoveNext()) {
        const ADODB::FieldList& fields = comparison.Fields();
        const ADODB::Value original = fields.Item("Org").Value();
        if (!Differ(original, fields.Item("Cur").Value()))
            continue;
        const std::string machine(fields.Item("COMPUTERNAME").Text());
        if (machine == lastMachine)
            continue;
        lastMachine = machine;
        MakeOriginal(machine, folder, files);
    }
}
