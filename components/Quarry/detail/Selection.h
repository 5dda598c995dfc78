#pragma once

// The statement that reads rows of a table.

#include <cstdint>
#include <span>
#include <vector>

#include "Cellar/Dialect.h"
#include "Cellar/SqlText.h"
#include "Quarry/Where.h"

namespace Quarry::Detail
{

/// The column of this ordinal. Throws std::logic_error when the table has none.
const Column& ColumnOf(const Table& table, int ordinal);
/// It tells the rows apart by one number, which is given to a row once.
bool IsRowId(const Table& table, const Column& column) noexcept;

/// A SELECT with its values.
class Selection
{
public:
    explicit Selection(const Table& table) : m_table(table) {}

    /// The chosen columns, with the key and the version of each row where `isWritable`; the conditions; the order.
    void Read(std::span<const Where> where, std::span<const Sort> sort, const Take& take, bool isWritable,
              const Cellar::Dialect& dialect);
    /// The number of rows.
    void Count(std::span<const Where> where);

    const Cellar::SqlText& GetStatement() const noexcept { return m_statement; }
    const std::vector<Cellar::Value>& GetValues() const noexcept { return m_values; }
    /// Which columns are read, as positions in the table; that of the version is behind them all.
    const std::vector<std::size_t>& GetPositions() const noexcept { return m_positions; }

private:
    void AppendColumns(const Take& take, bool isWritable);
    void AppendConditions(const Table& table, std::span<const Where> where);
    void AppendCondition(const Table& table, const Where& condition);
    void AppendOrder(std::span<const Sort> sort, const Cellar::Dialect& dialect);
    void Bind(const Column& column, const Cellar::Value& value);

    const Table& m_table;
    Cellar::SqlText m_statement;
    std::vector<Cellar::Value> m_values;
    std::vector<std::size_t> m_positions;
};

} // namespace Quarry::Detail
