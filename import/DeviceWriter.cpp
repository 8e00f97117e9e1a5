// SPDX-License-Identifier: GPL-3.0-or-later
// The part of SectionWriters that spreads devices over their table and its three subtables.
#include "import/Guid.h"
#include "import/SectionWriters.h"
#include "platform/errors.h"

#include <algorithm>
#include <array>

namespace {

/// The category of an event log has a description that its column need not hold whole.
constexpr std::size_t kDescriptionLength = 50;

struct TaggedColumn {
    std::size_t position;
    std::string_view tag;
};

constexpr TaggedColumn kDeviceText[] = {{3, "Cat"}, {4, "Prob"}, {5, "DevName"}};
constexpr TaggedColumn kDeviceResources[] = {{7, "IO"}, {8, "IRQ"}, {9, "DMA"}, {10, "MEM"}};
constexpr TaggedColumn kDisplay[] = {{1, "VidMem"}, {2, "DACType"}};
constexpr TaggedColumn kBoard[] = {{3, "BVer"}, {4, "BUSType"}, {5, "CPU"}, {6, "MachType"}, {7, "Model"}};
constexpr TaggedColumn kProtocol[] = {{2, "PR"}, {3, "IP"}, {4, "Mk"}, {5, "Gw"}, {6, "WS1"}, {7, "WS2"}};

/// The bytes of "PR0=x;".
constexpr std::size_t kShortestProtocol = 6;

constexpr std::size_t kCategory = 3;
constexpr std::size_t kName = 5;
constexpr std::size_t kDriverDate = 6;
constexpr std::size_t kExtraInfo = 11;
constexpr std::size_t kBIOSName = 1;
constexpr std::size_t kBIOSDate = 2;
constexpr std::size_t kClient1 = 8;
constexpr std::size_t kClient2 = 9;

} // namespace

void SectionWriters::InsertDevices(const std::string& machine, ImportType type, int count) {
    mProtocolRows = 0;
    const std::array<ADODB::Recordset*, 4> all = {&mRows, &mDisplays, &mBoards, &mProtocols};
    try {
        mRows.Source("DEVICEDATA");
        mRows.Open();
        mDisplays.Open("DEVICEDISPLAY", mConnection, ADODB::Cursor::Keyset, ADODB::Lock::Optimistic);
        mBoards.Open("DEVICEMOTHERBOARD", mConnection, ADODB::Cursor::Keyset, ADODB::Lock::Optimistic);
        mProtocols.Open("DEVICENETWORK", mConnection, ADODB::Cursor::Keyset, ADODB::Lock::Optimistic);
        for (int i = 0; i < count; ++i) {
            const std::string_view value = mReader.GetValue("DEVICEDATA", "INFO" + std::to_string(i), "");
            if (!value.empty())
                InsertDevice(machine, type, Record(mReader.Search(), value));
        }
        for (ADODB::Recordset* rows : all)
            rows->Close();
    } catch (const RunTimeError&) {
        const bool areOpen =
            std::all_of(all.begin(), all.end(), [](const ADODB::Recordset* rows) { return rows->IsOpen(); });
        for (ADODB::Recordset* rows : all)
            if (rows->IsOpen()) {
                rows->CancelUpdate();
                rows->Close();
            }
        if (!areOpen)
            throw;
    }
}

void SectionWriters::InsertDevice(const std::string& machine, ImportType type, const Record& record) {
    ADODB::FieldList& fields = mRows.Fields();
    const std::string identifier = Guid::Create(1);
    mRows.AddNew();
    fields.Item(0).SetText(identifier);
    fields.Item(1).SetText(machine);
    fields.Item(2).SetNumber(static_cast<int>(type));
    for (const TaggedColumn& column : kDeviceText)
        StoreText(fields.Item(column.position), record.GetTagged(column.tag, "|"));
    StoreDate(fields.Item(kDriverDate), record.GetTagged("DvrDate", "|"));
    for (const TaggedColumn& column : kDeviceResources)
        StoreText(fields.Item(column.position), record.GetTagged(column.tag, "|"));
    const std::string category = UpperCase(fields.Item(kCategory).Text());
    if (category == "MODEM")
        StoreText(fields.Item(kExtraInfo), record.GetTagged("AttTo", "|"));
    else if (category == "NT EVENTLOG")
        StoreText(fields.Item(kExtraInfo),
                  record.GetTagged("Description", "|").substr(0, kDescriptionLength));
    mRows.Update();
    InsertSubtables(identifier, record);
}

void SectionWriters::InsertSubtables(std::string_view identifier, const Record& record) {
    const std::string category = UpperCase(mRows.Fields().Item(kCategory).Text());
    if (category == "DISPLAY ADAPTERS") {
        ADODB::FieldList& fields = mDisplays.Fields();
        mDisplays.AddNew();
        fields.Item(0).SetText(identifier);
        for (const TaggedColumn& column : kDisplay)
            StoreText(fields.Item(column.position), record.GetTagged(column.tag, ";"));
        mDisplays.Update();
    } else if (category == "NETWORK ADAPTERS") {
        InsertProtocols(identifier, record);
    } else if (category == "SYSTEM DEVICES" &&
               UpperCase(mRows.Fields().Item(kName).Text()) == "SYSTEM BOARD") {
        ADODB::FieldList& fields = mBoards.Fields();
        mBoards.AddNew();
        fields.Item(0).SetText(identifier);
        StoreText(fields.Item(kBIOSName), record.GetTagged("BName", ";"));
        StoreDate(fields.Item(kBIOSDate), record.GetTagged("BDate", ";"));
        for (const TaggedColumn& column : kBoard)
            StoreText(fields.Item(column.position), record.GetTagged(column.tag, ";"));
        mBoards.Update();
    }
}

void SectionWriters::InsertProtocols(std::string_view identifier, const Record& record) {
    const std::string_view highest = record.GetTagged("PCount", ";");
    if (highest.empty())
        return;
    ADODB::FieldList& fields = mProtocols.Fields();
    record.ForEachProtocol(Val(highest), [&](long long number) {
        // A file has room for this many tags with a value. Only one whose records run into each other can
        // have more rows, and it could fill the disk.
        if (++mProtocolRows > mReader.Search().Text().size() / kShortestProtocol)
            throw RunTimeError(Errors::kDatabase, "There are more protocols than the file can hold");
        const std::string suffix = std::to_string(number);
        mProtocols.AddNew();
        fields.Item(0).SetText(identifier);
        fields.Item(1).SetNumber(static_cast<double>(number));
        for (const TaggedColumn& column : kProtocol)
            StoreText(fields.Item(column.position), record.GetTagged(std::string(column.tag) + suffix, ";"));
        StoreText(fields.Item(kClient1), record.GetTagged("Client" + suffix + "0", ";"));
        StoreText(fields.Item(kClient2), record.GetTagged("Client" + suffix + "1", ";"));
        mProtocols.Update();
    });
}
