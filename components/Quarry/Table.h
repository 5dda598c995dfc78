#pragma once

// The declaration of a table: what a record class says of itself, and what the schema is made from.

#include <span>

#include "Cellar/Value.h"
#include "Quarry/Export.h"

namespace Quarry
{

/// One column. The ordinal is its identifier, not its position: gaps are allowed and a number is never reused.
struct Column
{
    int ordinal;
    const char* name;
    Cellar::ColumnType type;
    const char* defaultValue = nullptr; // as SQL, such as "0"; null: NULL
};

/// One table. Ordinal 0 is the row id `lID`, except where `key` names other columns; every table has `nVersion`.
struct Table
{
    const char* className;
    int number; // tells listeners which table changed
    const char* sqlName;
    std::span<const Column> columns;
    /// Columns that hold a parent's id: column and the parent's SQL table. A null or 0 means that parent is not meant.
    struct Parent
    {
        const char* column;
        const char* sqlTable;
        const char* parentColumn = "lID";
    };
    std::span<const Parent> parents;
    const char* key = "lID"; // primary key columns, comma separated

    /// Null when there is no such column; names ignore case.
    const Column* Find(int ordinal) const noexcept;
    const Column* Find(std::string_view name) const noexcept;
};

} // namespace Quarry
