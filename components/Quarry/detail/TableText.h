#pragma once

// A table's statements, and the form in which its values are held.

#include <span>

#include "Cellar/SqlText.h"
#include "Quarry/Table.h"

namespace Quarry::Detail
{

/// What every list of a table needs, worked out once.
struct TableText
{
    std::vector<std::size_t> key; // positions of the key columns
    Cellar::SqlText select;       // all columns, then nVersion
    Cellar::SqlText insert;       // all columns bound, version 0
    Cellar::SqlText update;       // "UPDATE [table] SET "
    Cellar::SqlText remove;       // "DELETE FROM [table]"

    // For a table whose key is one number: the counter moves up (by, by, table), starts (table, by).
    Cellar::SqlText countUp;
    Cellar::SqlText startCount;
};
/// Kept for as long as the process lives, and so must the declaration.
const TableText& TextOf(const Table& table);

/// [name]
Cellar::SqlText Bracketed(std::string_view name);
/// The placeholder that binds a value of this type.
Cellar::SqlText PlaceholderOf(Cellar::ColumnType type);

/// The value in the one form that its column's type has (money as money, dates as ISO text), so that equal values
/// compare equal whatever the driver or the caller gave. What cannot be read as the type stays as it is.
Cellar::Value Canonical(Cellar::ColumnType type, Cellar::Value value);

/// The column names of a comma separated list.
std::vector<std::string_view> SplitNames(std::string_view names);

} // namespace Quarry::Detail
