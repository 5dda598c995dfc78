#pragma once

// A table's statements.

#include <string_view>
#include <vector>

#include "Cellar/SqlText.h"
#include "Quarry/Row.h"
#include "Quarry/Table.h"

namespace Quarry::Detail
{

/// A column in statements.
struct ColumnText
{
    Cellar::SqlText name;  // [strName]
    Cellar::SqlText equal; // [strName] = %s
};

/// What every list of a table needs, worked out once.
struct TableText
{
    explicit TableText(const Table& table) : newRow(table) {}

    std::vector<std::size_t> key; // positions of the key columns
    std::vector<ColumnText> columns;
    Cellar::SqlText allColumns; // all names, then nVersion
    Cellar::SqlText from;       // " FROM [table]"
    Cellar::SqlText insert;     // "INSERT INTO [table] (all names) VALUES "
    Cellar::SqlText insertRow;  // all columns bound, version 0, in brackets
    Cellar::SqlText insertOne;  // both
    Cellar::SqlText update;     // "UPDATE [table] SET "
    Row newRow;                 // the columns' defaults

    // For a table whose key is one number: the counter moves up (by, by, table), starts (table, by).
    Cellar::SqlText countUp;
    Cellar::SqlText startCount;
};
/// Kept for as long as the process lives, and so must the declaration.
const TableText& TextOf(const Table& table);

} // namespace Quarry::Detail
