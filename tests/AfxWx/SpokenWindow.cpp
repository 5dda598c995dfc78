// A window with controls of every kind and a grid with cells of every kind, to be read by another program (reader). On
// its output stands what the model says of each, and of each cell that the keyboard comes to.

#include <iostream>

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/MessageBox.h"
#include "AfxWx/WxWindowSystem.h"
#include "Lattice/SampleGrid.h"

namespace
{

using Afx::ControlKind;

constexpr unsigned kField = 101, kNotes = 102, kCombo = 103, kAnyText = 104, kTick = 105, kRadio = 106, kList = 107,
                   kGrid = 108;

constexpr Afx::LayoutRow kRows[] = {
    {ControlKind::Label, 0, "&Amounts:", 0, 0},       {ControlKind::Custom, kGrid, "", 0, 1},
    {ControlKind::Label, 0, "&Name:", 1, 0},          {ControlKind::Field, kField, "", 1, 1},
    {ControlKind::Label, 0, "No&tes:", 2, 0},         {ControlKind::Notes, kNotes, "", 2, 1},
    {ControlKind::Label, 0, "&Colour:", 3, 0},        {ControlKind::Combo, kCombo, "", 3, 1},
    {ControlKind::Label, 0, "&Town:", 4, 0},          {ControlKind::EditCombo, kAnyText, "", 4, 1},
    {ControlKind::CheckBox, kTick, "&Married", 5, 1}, {ControlKind::Radio, kRadio, "&Weekly", 6, 1},
    {ControlKind::Label, 0, "&Sources:", 7, 0},       {ControlKind::List, kList, "", 7, 1},
    {ControlKind::Default, IDOK, "OK", 8, 1},
};
constexpr Afx::DialogLayout kLayout = Afx::LayoutOf("Everything", kRows);

template<class... Parts>
void Say(const char* kind, const Parts&... parts)
{
    std::cout << kind;
    ((std::cout << '\t' << parts), ...);
    std::cout << std::endl;
}

class CTellingGrid : public Sample::CSampleGrid
{
public:
    CTellingGrid() { FillWithEveryKind(); }

protected:
    void OnGridCellHasFocus(int row, int column) override
    {
        Say("at", Describe(row, column, m_row, m_column).Str());
        m_row = row;
        m_column = column;
    }
    void OnGridCellEndEdit(int row, int column) override
    {
        CSampleGrid::OnGridCellEndEdit(row, column);
        Say("holds", Describe(row, column, row, column).Str());
    }

private:
    int m_row = -1, m_column = -1;
};

class CEverything : public CDialog
{
public:
    CEverything() : CDialog(kLayout) {}

protected:
    bool OnInitDialog() override
    {
        static_cast<CListCtrl*>(GetDlgItem(kList))->InsertColumn(0, "Source", 60);
        return CDialog::OnInitDialog();
    }
    void DoDataExchange(CDataExchange* exchange) override { DDX_Control(exchange, kGrid, m_grid); }

private:
    CTellingGrid m_grid;
};

class Teller : public AfxWx::Observer
{
public:
    void DialogRuns(CDialog& dialog) override
    {
        for (const CWnd* const child : dialog.Children()) {
            if (const auto* const grid = dynamic_cast<const Lattice::CGrid*>(child))
                Tell(*grid);
            else if (child->GetDlgCtrlID() != 0)
                Say("control", child->GetAccessibleName().Str());
        }
        Say("ready", dialog.Text().Str());
    }

private:
    static void Tell(const Lattice::CGrid& grid)
    {
        Say("grid", grid.GetAccessibleName().Str(), grid.GetRowCount(), grid.GetColumnCount());
        for (int row = 0; row < grid.GetRowCount(); ++row)
            for (int column = 0; column < grid.GetColumnCount(); ++column)
                Say("cell", row, column, grid.GetRowHeading(row).Str(), grid.GetColumn(column)->heading.Str(),
                    grid.IsCellEditable(row, column), grid.Describe(row, column).Str());
    }
};

} // namespace

int main()
{
    return AfxWx::RunApplication("Spoken window", [] {
        Teller teller;
        const auto before = Afx::WindowSystem::Install(AfxWx::MakeWindowSystem(&teller));
        CEverything().DoModal();
        return 0;
    });
}
