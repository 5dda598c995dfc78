#pragma once

// A Quarry::Table from a line-by-line declaration.

#include <initializer_list>
#include <string>
#include <vector>

#include "Quarry/Table.h"

namespace Brix::Detail
{

class TableBuilder
{
public:
    TableBuilder(const char* className, int number, const char* sqlName);

    TableBuilder& Key(std::initializer_list<int> ordinals);
    TableBuilder& NullableKey(std::initializer_list<int> ordinals);
    TableBuilder& Unique(const char* column);
    TableBuilder& Parent(const char* column, const char* sqlTable, const char* parentColumn = "lID");
    TableBuilder& Column(int ordinal, const char* name, Cellar::ColumnType type, const char* initial = nullptr,
                         int length = 0, bool identity = false);
    /// A column that gets the next free ordinal.
    TableBuilder& Next(const char* name, Cellar::ColumnType type, const char* initial = nullptr, int length = 0,
                       bool identity = false);

    /// Adds lID to a record class that has no other key, and puts the columns into the order of their ordinals. What
    /// it returns lives as long as the process. Throws std::logic_error for an ordinal or a name that stands twice, and
    /// for a key of columns that are not there.
    const Quarry::Table& Done();

private:
    Quarry::Table m_table;
    std::vector<int> m_keyOrdinals;
    std::string m_key; // their names, comma separated
    std::vector<Quarry::Column> m_columns;
    std::vector<Quarry::Table::Parent> m_parents;
};

} // namespace Brix::Detail
