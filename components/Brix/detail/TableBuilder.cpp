#include "Brix/detail/TableBuilder.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace Brix::Detail
{

TableBuilder::TableBuilder(const char* className, int number, const char* sqlName)
    : m_table{.className = className, .number = number, .sqlName = sqlName, .columns = {}, .parents = {}}
{
    const bool isRecord = number != 0;
    m_table.versioned = isRecord;
    m_table.key = isRecord ? "lID" : "";
}

TableBuilder& TableBuilder::Key(const char* columns)
{
    m_table.key = columns;
    return *this;
}

TableBuilder& TableBuilder::NullableKey(const char* columns)
{
    m_table.keyMayBeNull = true;
    return Key(columns);
}

TableBuilder& TableBuilder::Unique(const char* column)
{
    m_table.unique = column;
    return *this;
}

TableBuilder& TableBuilder::Parent(const char* column, const char* sqlTable, const char* parentColumn)
{
    m_parents.push_back({column, sqlTable, parentColumn});
    return *this;
}

TableBuilder& TableBuilder::Column(int ordinal, const char* name, Cellar::ColumnType type, const char* initial,
                                   int length, bool identity)
{
    m_columns.push_back({ordinal, name, type, initial, length, identity});
    return *this;
}

TableBuilder& TableBuilder::Next(const char* name, Cellar::ColumnType type, const char* initial, int length,
                                 bool identity)
{
    return Column(static_cast<int>(m_columns.size()), name, type, initial, length, identity);
}

const Quarry::Table& TableBuilder::Done()
{
    if (m_table.versioned && std::string_view(m_table.key) == "lID")
        Column(0, "lID", Cellar::ColumnType::Int);
    std::sort(m_columns.begin(), m_columns.end(), [](const auto& a, const auto& b) { return a.ordinal < b.ordinal; });
    TableBuilder& kept = *new TableBuilder(std::move(*this));
    Quarry::Table& table = kept.m_table;
    table.columns = kept.m_columns;
    table.parents = kept.m_parents;
    for (const Quarry::Column& column : table.columns) {
        if (table.Find(column.ordinal) != &column || table.Find(column.name) != &column)
            throw std::logic_error(std::string(table.sqlName) + " declares " + column.name + " twice");
    }
    return table;
}

} // namespace Brix::Detail
