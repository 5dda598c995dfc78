#include "Brix/detail/TableBuilder.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Brix::Detail
{

TableBuilder::TableBuilder(const char* className, int number, const char* sqlName)
    : m_table{.className = className, .number = number, .sqlName = sqlName, .columns = {}, .parents = {}}
{
    m_table.versioned = number != 0;
    m_table.key = "";
}

TableBuilder& TableBuilder::Key(std::initializer_list<int> ordinals)
{
    m_keyOrdinals = ordinals;
    return *this;
}

TableBuilder& TableBuilder::NullableKey(std::initializer_list<int> ordinals)
{
    m_table.keyMayBeNull = true;
    return Key(ordinals);
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
    if (m_table.versioned && m_keyOrdinals.empty()) {
        Column(0, "lID", Cellar::ColumnType::Int);
        Key({0});
    }
    std::sort(m_columns.begin(), m_columns.end(), [](const auto& a, const auto& b) { return a.ordinal < b.ordinal; });
    TableBuilder& kept = *new TableBuilder(std::move(*this));
    Quarry::Table& table = kept.m_table;
    table.columns = kept.m_columns;
    table.parents = kept.m_parents;
    for (const Quarry::Column& column : table.columns) {
        if (table.Find(column.ordinal) != &column || table.Find(column.name) != &column)
            throw std::logic_error(std::string(table.sqlName) + " declares " + column.name + " twice");
    }
    for (const int ordinal : kept.m_keyOrdinals) {
        const Quarry::Column* const column = table.Find(ordinal);
        if (!column)
            throw std::logic_error(std::string(table.sqlName) + " has no column of its key " + std::to_string(ordinal));
        kept.m_key += (kept.m_key.empty() ? "" : ",") + std::string(column->name);
    }
    table.key = kept.m_key.c_str();
    return table;
}

} // namespace Brix::Detail
