#pragma once

// The columns, rows and cells of a grid.

#include <vector>

#include "Afx/text/CString.h"
#include "Lattice/Cell.h"
#include "Lattice/GridUndo.h"

namespace Lattice
{

struct Column
{
    int id;
    CString heading;
    Format format;
    unsigned flags; // the derived grid's
    int width;      // dialog units; 0: what the format needs
    Choices choices;
};

/// Rows that are read when they are shown, for lists too long to hold.
class LATTICE_API RowSource
{
public:
    virtual ~RowSource();
    virtual int GetRowCount() const = 0;
    virtual Cell Read(int row, int column) const = 0;
};

/// Rows and columns count from 0. What is outside is empty, read-only, and not changed.
class LATTICE_API GridCells
{
public:
    int AddColumn(Column column);
    int GetColumnCount() const noexcept { return static_cast<int>(m_columns.size()); }
    const Column* GetColumn(int column) const noexcept;
    Column* GetColumn(int column) noexcept;
    int FindColumn(int id) const noexcept; // -1: none

    void SetSource(const RowSource* source) noexcept { m_source = source; }
    int GetRowCount() const noexcept;
    /// Rows that the program puts before others, or takes away, while nothing is recorded clear `undo`: the rows that
    /// it speaks of are others now.
    void InsertRow(int row, GridUndo& undo);
    bool DeleteRow(int row, GridUndo& undo);
    void Clear() noexcept { m_rows.clear(); }
    /// Null outside the grid, and where rows come from a source.
    const Row* GetRow(int row) const noexcept;
    Row* GetRow(int row) noexcept;

    Cell Get(int row, int column) const;
    /// A cell of the grid's own rows, as long as no row or column comes or goes; null for any other.
    const Cell* Find(int row, int column) const noexcept;
    bool Set(int row, int column, Cell cell, GridUndo& undo);
    /// Takes back the last change of the user's. False when there is none.
    bool TakeBack(GridUndo& undo);

private:
    bool IsCell(int row, int column) const noexcept;

    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
    const RowSource* m_source = nullptr;
};

} // namespace Lattice
