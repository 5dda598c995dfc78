#pragma once

// A grid with every format, for the tests of grids and of their windows.

#include "Lattice/Grid.h"

namespace Sample
{

enum Place
{
    kName,
    kAmount,
    kShare,
    kDate,
    kTicked,
    kChoice
};

/// Rows of every format, of which the last is a total, and at most five can be pasted into.
class CSampleGrid : public Lattice::CGrid
{
public:
    CSampleGrid()
    {
        AddColumn(1, "Name", Lattice::Format::Text);
        AddColumn(2, "Amount", Lattice::Format::Amount);
        AddColumn(3, "Share", Lattice::Format::Percent);
        AddColumn(4, "Date", Lattice::Format::Date);
        AddColumn(5, "Ticked", Lattice::Format::CheckBox);
        SetColumnChoices(AddColumn(6, "Kind", Lattice::Format::Combo), {"red", "green"});
        for (const char* const heading : {"First", "Second"})
            SetRowHeading(AppendRow(), heading);
        SetTotalRow(AppendRow());
        SetRowHeading(2, "Total");
        for (int column = 0; column < GetColumnCount(); ++column)
            SetCellReadOnly(2, column);
        Total();
        ClearUndo();
    }
    /// Empty, automatic, a share, an error, one of a list, a total, and what cannot be changed.
    void FillWithEveryKind()
    {
        Kiln::CAmt automatic(-12'5000);
        automatic.SetAuto(true);
        SetCellAmount(0, kAmount, automatic);
        SetCellNumber(0, kShare, 50);
        SetCellError(1, kShare);
        SetCellValue(0, kChoice, 1);
        SetCellAmount(2, kAmount, Kiln::CAmt(1234'0000));
    }
    CString WhyCell(int row, int) const override { return row == 2 ? "First and Second" : ""; }

protected:
    void OnGridCellEndEdit(int, int) override { Total(); }
    bool OnPasteRow() override { return GetRowCount() < 5 && InsertRow(2) == 2; }

private:
    void Total()
    {
        Kiln::CAmt sum = Kiln::CAmt::kZero;
        for (int row = 0; row + 1 < GetRowCount(); ++row)
            if (const Kiln::CAmt amount = GetCellAmount(row, kAmount); amount.IsValid())
                sum = sum + amount;
        SetCellAmount(GetRowCount() - 1, kAmount, sum);
    }
};

} // namespace Sample
