#include "Lattice/GridCells.h"

#include <algorithm>
#include <utility>

namespace Lattice
{

RowSource::~RowSource() = default;

int GridCells::AddColumn(Column column)
{
    for (Row& row : m_rows)
        row.cells.push_back(Cell{{}, column.format});
    m_columns.push_back(std::move(column));
    return GetColumnCount() - 1;
}

const Column* GridCells::GetColumn(int column) const noexcept
{
    return column >= 0 && column < GetColumnCount() ? &m_columns[static_cast<std::size_t>(column)] : nullptr;
}

Column* GridCells::GetColumn(int column) noexcept
{
    return const_cast<Column*>(std::as_const(*this).GetColumn(column));
}

int GridCells::FindColumn(int id) const noexcept
{
    const auto found =
        std::find_if(m_columns.begin(), m_columns.end(), [id](const Column& one) { return one.id == id; });
    return found == m_columns.end() ? -1 : static_cast<int>(found - m_columns.begin());
}

int GridCells::GetRowCount() const noexcept
{
    return m_source ? m_source->GetRowCount() : static_cast<int>(m_rows.size());
}

void GridCells::InsertRow(int row, GridUndo& undo)
{
    row = std::clamp(row, 0, static_cast<int>(m_rows.size()));
    if (!undo.IsRecording() && row < static_cast<int>(m_rows.size()))
        undo.Clear();
    Row line;
    for (const Column& column : m_columns)
        line.cells.push_back(Cell{{}, column.format});
    m_rows.insert(m_rows.begin() + row, std::move(line));
    undo.Add({GridUndo::Step::Kind::Inserted, row, 0, {}, {}});
}

bool GridCells::DeleteRow(int row, GridUndo& undo)
{
    if (!GetRow(row))
        return false;
    if (!undo.IsRecording())
        undo.Clear();
    undo.Add({GridUndo::Step::Kind::Deleted, row, 0, {}, *GetRow(row)});
    m_rows.erase(m_rows.begin() + row);
    return true;
}

const Row* GridCells::GetRow(int row) const noexcept
{
    return !m_source && row >= 0 && static_cast<std::size_t>(row) < m_rows.size()
               ? &m_rows[static_cast<std::size_t>(row)]
               : nullptr;
}

Row* GridCells::GetRow(int row) noexcept { return const_cast<Row*>(std::as_const(*this).GetRow(row)); }

bool GridCells::IsCell(int row, int column) const noexcept
{
    return row >= 0 && row < GetRowCount() && column >= 0 && column < GetColumnCount();
}

const Cell* GridCells::Find(int row, int column) const noexcept
{
    return !m_source && IsCell(row, column)
               ? &m_rows[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(column)]
               : nullptr;
}

Cell GridCells::Get(int row, int column) const
{
    if (const Cell* const own = Find(row, column))
        return *own;
    return IsCell(row, column) ? m_source->Read(row, column) : Cell{{}, Format::Text, true};
}

bool GridCells::Set(int row, int column, Cell cell, GridUndo& undo)
{
    if (m_source || !IsCell(row, column))
        return false;
    Cell& there = m_rows[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(column)];
    if (undo.IsRecording())
        undo.Add({GridUndo::Step::Kind::Cell, row, column, there, {}});
    there = std::move(cell);
    return true;
}

bool GridCells::TakeBack(GridUndo& undo)
{
    std::optional<std::vector<GridUndo::Step>> steps = undo.TakeLast();
    if (!steps)
        return false;
    for (GridUndo::Step& step : *steps)
        switch (step.kind) {
        case GridUndo::Step::Kind::Cell:
            m_rows[static_cast<std::size_t>(step.row)].cells[static_cast<std::size_t>(step.column)] =
                std::move(step.cell);
            break;
        case GridUndo::Step::Kind::Inserted:
            m_rows.erase(m_rows.begin() + step.row);
            break;
        case GridUndo::Step::Kind::Deleted:
            m_rows.insert(m_rows.begin() + step.row, std::move(step.line));
            break;
        }
    return true;
}

} // namespace Lattice
