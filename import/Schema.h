// SPDX-License-Identifier: GPL-3.0-or-later
// The one definition of the inventory database. The build makes Template.sdb from it, and every database
// is a copy of that file: the program itself creates no table.
// The order of the columns is a contract. The importer writes the Nth field of a record into the Nth data
// column, and the lists read by position, so a column that moves moves data without any error.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

enum class ColumnType { Text, Number, Flag };

struct ColumnDefinition {
    std::string_view name;
    ColumnType type;
    /// Characters, for text.
    int width = 0;
};

/// What a table's rows hang on, and so what deletes them.
enum class Parent { None, Machine, Device };

struct TableDefinition {
    std::string_view name;
    std::span<const ColumnDefinition> columns;
    Parent parent;
    /// One row for each machine and configuration.
    bool isUniqueByConfiguration = false;
};

/// All tables, parents first.
std::span<const TableDefinition> InventoryTables();

/// The statements that make an empty inventory database, in order: tables, indexes, the row of Version.
std::vector<std::string> SchemaStatements();

/// Makes the database file `path`, which must not exist, readable by its owner alone. Raises the engine's
/// failures.
void CreateDatabase(const std::string& path);
