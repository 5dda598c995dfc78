#pragma once

// The declaration of a table: what a record class says of itself, and what the schema is made from.

#include <span>
#include <string_view>
#include <vector>

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
    const char* defaultValue = nullptr; // as T-SQL, such as "0" or "GETDATE()"; null: NULL
    int length = 0;                     // greatest number of characters of a text on servers; 0: any
    bool identity = false;              // counted up by the database when left out

    /// The session that wrote the row, unless the statement says otherwise.
    bool IsSession() const noexcept { return defaultValue && std::string_view(defaultValue) == "@@SPID"; }
};

/// One table. Ordinal 0 is the row id `lID`, except where `key` names other columns.
struct QUARRY_API Table
{
    /// A column that holds a parent's id. A null or 0 (an empty text) there means that this parent is not meant.
    struct Parent
    {
        const char* column;
        const char* sqlTable;
        const char* parentColumn = "lID";
    };

    const char* className; // empty: reached by statements only
    int number;            // tells listeners which table changed
    const char* sqlName;
    std::span<const Column> columns;
    std::span<const Parent> parents;
    const char* key = "lID";      // what tells rows apart: columns, comma separated; empty: nothing does
    bool keyMayBeNull = false;    // so the key is a unique index instead of the primary key
    const char* unique = nullptr; // a column without duplicates besides the key
    bool versioned = true;        // has `nVersion`, by which a change by another user is noticed
    const char* database = "BRIX";

    /// Null when there is no such column; names ignore case.
    const Column* Find(int ordinal) const noexcept;
    const Column* Find(std::string_view name) const noexcept;
    /// The column that new ids are counted for; null when rows are not told apart by one number, and for tables that
    /// statements reach only.
    const Column* GetCounted() const noexcept;
};

/// The column names of a comma separated list.
QUARRY_API std::vector<std::string_view> SplitNames(std::string_view names);

} // namespace Quarry
