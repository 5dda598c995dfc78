#include "Quarry/Row.h"

#include <utility>

#include "Cellar/ValueTypes.h"
#include "Quarry/detail/Selection.h"

namespace Quarry
{

using Cellar::Value;

Row::Row(const Table& table) : m_table(&table), m_values(table.columns.size() + (table.versioned ? 1 : 0)) {}

const Value& Row::Get(int ordinal) const noexcept
{
    static const Value null;
    const Column* const column = m_table->Find(ordinal);
    return column ? m_values[static_cast<std::size_t>(column - m_table->columns.data())] : null;
}

void Row::Set(int ordinal, Value value)
{
    const Column& column = Detail::ColumnOf(*m_table, ordinal);
    Cellar::MakeCanonical(column.type, value);
    m_values[static_cast<std::size_t>(&column - m_table->columns.data())] = std::move(value);
}

} // namespace Quarry
