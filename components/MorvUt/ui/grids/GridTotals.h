#pragma once

// The totals of a grid: which cell holds the sum of which others.

#include <memory>
#include <vector>

#include "Kiln/CAmt.h"
#include "MorvUt/Export.h"

class CTotallingGrid;

/// A cell that holds the sum of a range of others. Rows and columns count from 0.
class MORVUT_API CGridTotalInfoABC
{
public:
    virtual ~CGridTotalInfoABC();

    int GetRow() const noexcept { return m_row; }
    int GetColumn() const noexcept { return m_column; }
    virtual bool Sums(int row, int column) const noexcept = 0;
    /// The amounts of the range, in its order.
    std::vector<Kiln::CAmt> GetAmounts() const;
    /// The cells of the range, in its order: row and column.
    virtual std::vector<std::pair<int, int>> GetCells() const = 0;

protected:
    CGridTotalInfoABC(CTotallingGrid& grid, int row, int column) noexcept : m_grid(grid), m_row(row), m_column(column)
    {}

private:
    CTotallingGrid& m_grid;
    int m_row, m_column;
};

/// The sum of rows `first` to `last` of a column.
class MORVUT_API CGridTotalInfoColumn : public CGridTotalInfoABC
{
public:
    CGridTotalInfoColumn(CTotallingGrid& grid, int row, int column, int summed, int first, int last) noexcept
        : CGridTotalInfoABC(grid, row, column), m_summed(summed), m_first(first), m_last(last)
    {}
    bool Sums(int row, int column) const noexcept override
    {
        return column == m_summed && row >= m_first && row <= m_last;
    }
    std::vector<std::pair<int, int>> GetCells() const override;

private:
    int m_summed, m_first, m_last;
};

/// The sum of columns `first` to `last` of a row.
class MORVUT_API CGridTotalInfoRow : public CGridTotalInfoABC
{
public:
    CGridTotalInfoRow(CTotallingGrid& grid, int row, int column, int summed, int first, int last) noexcept
        : CGridTotalInfoABC(grid, row, column), m_summed(summed), m_first(first), m_last(last)
    {}
    bool Sums(int row, int column) const noexcept override
    {
        return row == m_summed && column >= m_first && column <= m_last;
    }
    std::vector<std::pair<int, int>> GetCells() const override;

private:
    int m_summed, m_first, m_last;
};
