#include "MorvUt/ui/grids/GridTotals.h"

#include "MorvUt/ui/grids/TotallingGrid.h"

CGridTotalInfoABC::~CGridTotalInfoABC() = default;

std::vector<Kiln::CAmt> CGridTotalInfoABC::GetAmounts() const
{
    const std::vector<std::pair<int, int>> cells = GetCells();
    std::vector<Kiln::CAmt> amounts;
    amounts.reserve(cells.size());
    for (const auto& [row, column] : cells)
        amounts.push_back(m_grid.GetCellAmt(row, column));
    return amounts;
}

std::vector<std::pair<int, int>> CGridTotalInfoColumn::GetCells() const
{
    std::vector<std::pair<int, int>> cells;
    for (int row = m_first; row <= m_last; ++row)
        cells.emplace_back(row, m_summed);
    return cells;
}

std::vector<std::pair<int, int>> CGridTotalInfoRow::GetCells() const
{
    std::vector<std::pair<int, int>> cells;
    for (int column = m_first; column <= m_last; ++column)
        cells.emplace_back(m_summed, column);
    return cells;
}
