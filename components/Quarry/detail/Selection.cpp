#include "Quarry/detail/Selection.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "Cellar/ValueTypes.h"
#include "Quarry/detail/TableText.h"

namespace Quarry::Detail
{

using Cellar::SqlText;
using Cellar::Value;

namespace
{

std::size_t PositionOf(const Table& table, const Column& column) noexcept
{
    return static_cast<std::size_t>(&column - table.columns.data());
}

bool Contains(const std::vector<std::size_t>& positions, std::size_t position) noexcept
{
    return std::find(positions.begin(), positions.end(), position) != positions.end();
}

} // namespace

const Column& ColumnOf(const Table& table, int ordinal)
{
    const Column* const column = table.Find(ordinal);
    if (!column)
        throw std::logic_error(std::string(table.sqlName) + " has no column of ordinal " + std::to_string(ordinal));
    return *column;
}

bool IsRowId(const Table& table, const Column& column) noexcept
{
    return column.ordinal == 0 && std::string_view(table.key) == "lID";
}

void Selection::Read(std::span<const Where> where, std::span<const Sort> sort, const Take& take, bool isWritable,
                     const Cellar::Dialect& dialect)
{
    m_statement = "SELECT ";
    if (take.first > 0)
        m_statement += SqlText("TOP (") + SqlText::Number(take.first) + ") ";
    AppendColumns(take, isWritable);
    m_statement += TextOf(m_table).from;
    AppendConditions(m_table, where);
    AppendOrder(sort, dialect);
}

void Selection::Count(std::span<const Where> where)
{
    m_statement = "SELECT COUNT(*)";
    m_statement += TextOf(m_table).from;
    AppendConditions(m_table, where);
}

void Selection::AppendColumns(const Take& take, bool isWritable)
{
    const TableText& text = TextOf(m_table);
    const std::size_t count = m_table.columns.size();
    if (take.columns.empty()) {
        m_statement += text.allColumns;
        for (std::size_t position = 0; position < count + (m_table.versioned ? 1 : 0); ++position)
            m_positions.push_back(position);
        return;
    }
    if (isWritable)
        m_positions = text.key;
    for (const int ordinal : take.columns)
        if (const std::size_t position = PositionOf(m_table, ColumnOf(m_table, ordinal));
            !Contains(m_positions, position))
            m_positions.push_back(position);
    for (std::size_t i = 0; i < m_positions.size(); ++i) {
        if (i > 0)
            m_statement += ", ";
        m_statement += text.columns[m_positions[i]].name;
    }
    if (isWritable && m_table.versioned) {
        m_statement += ", [nVersion]";
        m_positions.push_back(count);
    }
}

void Selection::AppendConditions(const Table& table, std::span<const Where> where)
{
    for (std::size_t i = 0; i < where.size(); ++i) {
        m_statement += i == 0 ? SqlText(" WHERE ") : SqlText(" AND ");
        AppendCondition(table, where[i]);
    }
}

void Selection::Bind(const Column& column, const Value& value)
{
    m_values.push_back(value);
    Cellar::MakeCanonical(column.type, m_values.back());
}

void Selection::AppendCondition(const Table& table, const Where& condition)
{
    using Kind = Where::Kind;
    const Column& column = ColumnOf(table, condition.m_ordinal);
    const ColumnText& text = TextOf(table).columns[PositionOf(table, column)];
    const SqlText& placeholder = Cellar::PlaceholderOf(column.type);
    const auto compare = [&](SqlText comparison) {
        m_statement += text.name;
        m_statement += comparison;
        m_statement += placeholder;
        Bind(column, condition.m_value);
    };
    switch (condition.m_kind) {
    case Kind::Equal:
        if (condition.m_value.IsNull()) {
            m_statement += text.name;
            m_statement += " IS NULL";
        } else {
            m_statement += text.equal;
            Bind(column, condition.m_value);
        }
        break;
    case Kind::NotNull:
        m_statement += text.name;
        m_statement += " IS NOT NULL";
        break;
    case Kind::Less:
        return compare(" < ");
    case Kind::AtMost:
        return compare(" <= ");
    case Kind::Greater:
        return compare(" > ");
    case Kind::AtLeast:
        return compare(" >= ");
    case Kind::Between:
        compare(" BETWEEN ");
        m_statement += SqlText(" AND ") + placeholder;
        Bind(column, condition.m_more->values.front());
        break;
    case Kind::In: {
        const std::vector<Value>& values = condition.m_more->values;
        if (values.empty()) {
            m_statement += "1 = 0";
            break;
        }
        m_statement += text.name;
        for (std::size_t i = 0; i < values.size(); ++i) {
            m_statement += i == 0 ? SqlText(" IN (") : SqlText(", ");
            m_statement += placeholder;
            Bind(column, values[i]);
        }
        m_statement += ")";
        break;
    }
    case Kind::Under:
    case Kind::UnderFirst:
        m_statement += text.name;
        m_statement +=
            condition.m_kind == Kind::Under ? SqlText(" IN (SELECT [lID]") : SqlText(" = (SELECT MIN([lID])");
        m_statement += TextOf(*condition.m_more->parent).from;
        AppendConditions(*condition.m_more->parent, condition.m_more->conditions);
        m_statement += ")";
    }
}

/// What was asked for, then the key.
void Selection::AppendOrder(std::span<const Sort> sort, const Cellar::Dialect& dialect)
{
    const TableText& text = TextOf(m_table);
    std::vector<std::size_t> named;
    const auto append = [&](std::size_t position, bool descending) {
        if (Contains(named, position))
            return;
        m_statement += named.empty() ? SqlText(" ORDER BY ") : SqlText(", ");
        m_statement += text.columns[position].name;
        if (descending)
            m_statement += " DESC";
        if (m_table.keyMayBeNull || !Contains(text.key, position))
            m_statement += dialect.NullsFirst(descending);
        named.push_back(position);
    };
    for (const Sort& by : sort)
        append(PositionOf(m_table, ColumnOf(m_table, by.ordinal)), by.descending);
    for (const std::size_t position : text.key)
        append(position, false);
}

} // namespace Quarry::Detail
