#pragma once

// The grid whose total rows and columns keep themselves up to date.

#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

#include "Lattice/Grid.h"
#include "MorvUt/Export.h"
#include "MorvUt/ui/grids/GridTotals.h"

/// A grid with totals, which may sum other totals. After an edit those totals that it changes are computed anew, and no
/// others. F4 on a total names the cells that it sums.
class MORVUT_API CTotallingGrid : public Lattice::CGrid
{
    DECLARE_DYNAMIC(CTotallingGrid)
    CTotallingGrid() = default;

    /// The cell `row`, `column` holds the sum of rows `first` to `last` of column `summed`. 1.
    int SetColumnTotalling(int row, int column, int summed, int first, int last);
    /// The cell `row`, `column` holds the sum of columns `first` to `last` of row `summed`. 1.
    int SetRowTotalling(int row, int column, int summed, int first, int last);
    /// Computes all totals. `redraw`: and shows the grid anew.
    void UpdateTotals(bool redraw);
    /// Forgets the totals, not what their cells show.
    void Reset();
    /// A cell has been edited: computes the totals that follow from it.
    void OnCellEndEdit(int row, int column);
    CString WhyCell(int row, int column) const override;
    /// How many totals have been computed since the grid was made.
    std::size_t GetComputedCount() const noexcept { return m_computed; }

    // What a derived grid may override; the order of these is fixed.

    /// The amount of a cell; null when it is empty, invalid when it holds none or an error.
    virtual Kiln::CAmt GetCellAmt(int row, int column);
    /// Shows a total: nothing for zero, "Error" for one that could not be computed. `redraw`: at once.
    virtual void SetTotal(int row, int column, const Kiln::CAmt& total, bool redraw);

protected:
    void OnGridCellEndEdit(int row, int column) override;
    void OnManyChanged() override;
    /// The program may have changed what is summed since: computes all totals.
    void OnUndone() override;
    /// No: the totals name their rows.
    bool CanDeleteRow(int) override { return false; }

private:
    int Add(std::unique_ptr<CGridTotalInfoABC> total, int summed, bool isColumn);
    void Compute(std::size_t index, bool redraw);
    void NoteDue(int row, int column);
    void ComputeDue();
    std::vector<std::size_t> TotalsOver(int row, int column) const;
    const std::vector<std::size_t>& Order();

    std::vector<std::unique_ptr<CGridTotalInfoABC>> m_totals;
    std::unordered_map<int, std::vector<std::size_t>> m_overColumn, m_overRow; // totals that sum some of it
    std::vector<std::size_t> m_places;                                         // of each in the order
    std::vector<std::size_t> m_order; // each behind those that it sums; empty: not worked out
    std::set<std::size_t> m_due;      // places in the order, so that each is computed once, behind what it sums
    std::size_t m_computed = 0;
};
