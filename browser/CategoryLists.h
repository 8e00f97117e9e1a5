// SPDX-License-Identifier: GPL-3.0-or-later
// The lists of the categories, as data: for each what it asks the database, what it shows of a row and by
// which rule, and the key by which a row leads on. Columns are taken from a query by position, so the order
// of the columns in the tables is part of them. ListFiller reads them.
#pragma once

#include "browser/ImageKeys.h"
#include "browser/ValueRules.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// A query in the pieces between its values: `select`, then behind `machine` the machine's name in quotes,
/// then behind `configuration` its number, then `end`. An empty piece has no value behind it.
struct ListQuery {
    std::string_view select;
    std::string_view machine;
    std::string_view configuration;
    std::string_view end;
};

/// The statement. Raises error -1 for a machine whose name would break out of its quotes.
std::string StatementText(const ListQuery& query, const std::string& machine, std::int16_t confID);

struct ListColumn {
    std::string_view caption;
    /// Twips.
    int width;
    /// Of the value in the query's row, from 0.
    unsigned position;
    Rule rule;
};

enum class RowKey : std::uint8_t {
    None,
    /// The machine's name and the category, for a list of one row a machine: the key of the machine's node.
    Machine,
    /// The same with the row's number behind, from 0: a machine has many rows, and a key may stand but once.
    Counted,
    /// "DEV_", the device's identifier, which stands at position 0, "_" and the machine's name.
    Device,
};

/// A list of one row for each row of its query.
struct ColumnList {
    ListQuery query;
    std::span<const ListColumn> columns;
    RowKey key;
    /// Behind the machine's name in the row's key.
    std::string_view keyEnd;
    Image icon;
    /// Where the machine's name stands in the query's row.
    std::size_t machinePosition = 0;
};

struct ListLine {
    std::string_view description;
    std::size_t position;
    Rule rule;
};

enum class WithoutRecord : std::uint8_t { NoLines, EmptyValues };

/// What one query's first record tells of a machine, a line for each value.
struct ValueGroup {
    ListQuery query;
    std::span<const ListLine> lines;
    WithoutRecord withoutRecord = WithoutRecord::NoLines;
};

/// A list of one machine's values, each beside its description.
struct ValueList {
    std::span<const ValueGroup> groups;
    Image icon;
};

namespace Lists {

extern const ColumnList kProcessorsOfAll;
extern const ColumnList kDevicesOfAll;
extern const ColumnList kDisplaysOfAll;
extern const ColumnList kMotherboardsOfAll;
extern const ColumnList kNetworkOfAll;
extern const ColumnList kDrivesOfAll;
extern const ColumnList kDriveDetailOfAll;
extern const ColumnList kInputOfAll;
extern const ColumnList kOfficeOfAll;
extern const ColumnList kODBCOfAll;
extern const ColumnList kSystemsOfAll;
extern const ColumnList kPrintersOfAll;
extern const ColumnList kSoftwareOfAll;

extern const ValueList kMachine;
extern const ValueList kProcessor;
extern const ColumnList kDevices;
extern const ColumnList kDisplays;
extern const ValueList kMotherboard;
extern const ColumnList kNetwork;
extern const ValueList kDrives;
extern const ColumnList kDriveDetail;
extern const ValueList kInput;
extern const ValueList kOffice;
extern const ColumnList kODBC;
extern const ValueList kSystem;
extern const ColumnList kPrinters;
extern const ColumnList kSoftware;

} // namespace Lists
