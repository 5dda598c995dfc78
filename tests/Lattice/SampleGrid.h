#pragma once

// A grid with every format, for the tests of grids and of their windows.

#include "Lattice/Grid.h"

namespace Sample
{

inline constexpr int kName = 0, kAmount = 1, kShare = 2, kDate = 3, kTicked = 4, kChoice = 5; // columns

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
        for (const char* const heading : {"First", "Second", "Total"})
            SetRowHeading(AppendRow(), heading);
        SetTotalRow(2);
        for (int column = 0; column < GetColumnCount(); ++column)
            SetCellReadOnly(2, column);
        Total();
        ClearUndo();
    }
    /// Empty, automatic, a share, a date, ticked, one of a list, an error, a line that says what follows, and a total.
    void FillWithEveryKind()
    {
        Kiln::CAmt automatic(-12'5000);
        automatic.SetAuto(true);
        SetCellAmount(0, kAmount, automatic);
        SetCellNumber(0, kShare, 50);
        SetCellValue(0, kDate, Kiln::CDate(2024, 4, 5));
        SetCellValue(0, kTicked, 1);
        SetCellValue(0, kChoice, 1);
        SetHeadingRow(InsertRow(1));
        SetCellText(1, kName, "What follows");
        SetCellError(2, kShare);
        SetCellAmount(3, kAmount, Kiln::CAmt(1234'0000));
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
