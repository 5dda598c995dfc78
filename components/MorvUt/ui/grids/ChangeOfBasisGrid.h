#pragma once

// The grid of amounts across a change of accounting basis.

#include <vector>

#include "Kiln/controls/AmtEdit.h"
#include "MorvUt/Export.h"
#include "MorvUt/ui/grids/ChangeOfBasis.h"
#include "MorvUt/ui/grids/TotallingGrid.h"

/// Four rows: before, adjustment, after, result. Column 0 names them, the amounts begin at column 1.
class MORVUT_API CChangeOfBasisGrid : public CTotallingGrid
{
    DECLARE_DYNAMIC(CChangeOfBasisGrid)
    CChangeOfBasisGrid() = default;

    /// Makes the grid, with an amount column for each heading (string ids; 0: none). The two fields, which outlive it,
    /// show the sums of the first row and of the last.
    void Init(Kiln::CAmtEdit& before, Kiln::CAmtEdit& result, unsigned heading1, unsigned heading2 = 0,
              unsigned heading3 = 0, unsigned heading4 = 0);
    /// The four amounts of an amount column (from 1).
    void Get(Kiln::CAmt& before, Kiln::CAmt& adjustment, Kiln::CAmt& after, Kiln::CAmt& result, int column = 1) const;
    /// The same, as they were loaded: changes are changes of these.
    void Set(const Kiln::CAmt& before, const Kiln::CAmt& adjustment, const Kiln::CAmt& after, const Kiln::CAmt& result,
             int column = 1);
    /// Whether the columns may be kept. `checkNegative` not 0: a result below zero is refused, and its cell becomes the
    /// current one. `checkChange` not 0, from the real tax year 2004 on: a column that is no longer what was loaded is
    /// asked about with string `messageId`, and No refuses.
    bool Validate(unsigned checkNegative, unsigned messageId, int checkChange);

protected:
    void OnGridCellEndEdit(int row, int column) override;
    void OnUndone() override;

private:
    void ShowSums();
    Kiln::CAmt SumOfRow(int row);

    std::vector<BasisColumn> m_loaded; // from amount column 1 on
    Kiln::CAmtEdit* m_before = nullptr;
    Kiln::CAmtEdit* m_result = nullptr;
};
