// A window with controls of every kind and a grid with cells of every kind, to be read by another program (reader, and
// SpokenReader on Windows). On its output stands what the model says of each, and of each cell that the keyboard comes
// to.

#include <iostream>

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/MessageBox.h"
#include "AfxWx/WxWindowSystem.h"
#include "Lattice/SampleGrid.h"

namespace
{

using Afx::ControlKind;

constexpr unsigned kGrid = 108;
constexpr Afx::LayoutRow kRows[] = {
    {ControlKind::Label, 0, "&Amounts:", 0, 0},     {ControlKind::Custom, kGrid, "", 0, 1},
    {ControlKind::Label, 0, "&Name:", 1, 0},        {ControlKind::Field, 101, "", 1, 1},
    {ControlKind::Label, 0, "No&tes:", 2, 0},       {ControlKind::Notes, 102, "", 2, 1},
    {ControlKind::Label, 0, "&Colour:", 3, 0},      {ControlKind::Combo, 103, "", 3, 1},
    {ControlKind::Label, 0, "&Town:", 4, 0},        {ControlKind::EditCombo, 104, "", 4, 1},
    {ControlKind::CheckBox, 105, "&Married", 5, 1}, {ControlKind::Radio, 106, "&Weekly", 6, 1},
    {ControlKind::Label, 0, "&Sources:", 7, 0},     {ControlKind::List, 107, "", 7, 1},
    {ControlKind::Default, IDOK, "OK", 8, 1},
};
constexpr Afx::DialogLayout kLayout = Afx::LayoutOf("Everything", kRows);

/// Counts its cells from 1, row by row.
class CTellingGrid : public Sample::CSampleGrid
{
public:
    CTellingGrid() { FillWithEveryKind(); }
    void Tell() const
    {
        std::cout << "table\t" << GetAccessibleName() << '\t' << GetRowCount() * GetColumnCount() << std::endl;
        for (int column = 0; column < GetColumnCount(); ++column)
            std::cout << "column\t" << GetColumn(column)->heading << std::endl;
        for (int row = 0; row < GetRowCount(); ++row) {
            std::cout << "row\t" << GetRowHeading(row) << std::endl;
            for (int column = 0; column < GetColumnCount(); ++column)
                std::cout << "cell\t" << CellAt(row, column) << '\t' << Describe(row, column) << '\t'
                          << (IsCellEditable(row, column) ? "editable" : "read-only") << std::endl;
        }
    }

protected:
    void OnGridCellHasFocus(int row, int column) override
    {
        std::cout << "at\t" << CellAt(row, column) << '\t' << Describe(row, column, m_row, m_column) << std::endl;
        m_row = row;
        m_column = column;
    }
    /// The keyboard has come to it along its row.
    void OnGridCellEndEdit(int row, int column) override
    {
        CSampleGrid::OnGridCellEndEdit(row, column);
        std::cout << "renamed\t" << CellAt(row, column) << '\t' << Describe(row, column, row) << std::endl;
    }

private:
    int CellAt(int row, int column) const { return row * GetColumnCount() + column + 1; }

    int m_row = -1, m_column = -1;
};

class CEverything : public CDialog
{
public:
    CEverything() : CDialog(kLayout) {}

protected:
    bool OnInitDialog() override
    {
        const bool movesFocus = CDialog::OnInitDialog();
        for (const CWnd* const child : Children())
            if (child->GetDlgCtrlID() != 0)
                std::cout << "control\t" << child->GetAccessibleName() << std::endl;
        m_grid.Tell();
        return movesFocus;
    }
    void DoDataExchange(CDataExchange* exchange) override { DDX_Control(exchange, kGrid, m_grid); }

private:
    CTellingGrid m_grid;
};

} // namespace

int main()
{
    return AfxWx::RunApplication("Spoken window", [] {
        CEverything().DoModal();
        return 0;
    });
}
