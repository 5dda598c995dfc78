// A grid with totals, worked by a script without a display: an amount that is a sum, a text that is none, a block from
// a spreadsheet, and taking back. usage: grids

#include <iostream>
#include <memory>
#include <string_view>

#include "Example.h"
#include "MorvUt/ui/grids/TotallingGrid.h"

namespace
{

using Afx::HeadlessWindowSystem;
using Lattice::Format;

constexpr int kPay = 0, kTax = 1, kRows = 2, kTotals = kRows;

/// Pay and tax of two employments, and the totals under them.
class CEmployments : public CDialog
{
public:
    CEmployments()
    {
        grid.AddColumn(1, "Pay", Format::Amount);
        grid.AddColumn(2, "Tax", Format::Amount);
        for (const char* const employer : {"Company XYZ", "Company ABC", "Total"})
            grid.SetRowHeading(grid.AppendRow(), employer);
        grid.SetTotalRow(kTotals);
        for (const int column : {kPay, kTax}) {
            grid.SetColumnTotalling(kTotals, column, column, 0, kRows - 1);
            grid.SetCellReadOnly(kTotals, column);
        }
        grid.Create(this, 1001);
    }
    CTotallingGrid grid;
};

void Show(const char* what, const CTotallingGrid& grid)
{
    std::cout << what << ':';
    for (int row = 0; row <= kTotals; ++row)
        std::cout << (row > 0 ? " |" : "") << ' ' << grid.GetCellText(row, kPay) << ' ' << grid.GetCellText(row, kTax);
    std::cout << '\n';
}

void Write(std::string_view text)
{
    for (const char c : text)
        Afx::UserActs::Char(*CWnd::GetFocus(), static_cast<unsigned char>(c));
}

/// What the user does.
void Work(CTotallingGrid& grid, HeadlessWindowSystem& windows)
{
    Afx::UserActs::Focus(grid);
    grid.GoTo(0, kPay);
    Write("22551.05+8650.20"); // a sum is worked out
    windows.Key(VK_RETURN);
    Show("typed", grid);
    windows.SetClipboard("900.38\n1,224.99\n");
    grid.GoTo(0, kTax);
    windows.Key('V', Afx::kControl);
    Show("pasted", grid);
    windows.SetClipboard("1\nnone\n"); // all of a block or nothing
    windows.Key('V', Afx::kControl);
    std::cout << windows.Messages().back().text << '\n';
    windows.Key('Z', Afx::kControl); // with the total that followed from it
    Show("taken back", grid);
    std::cout << grid.Describe(kTotals, kPay) << '\n' << grid.WhyCell(kTotals, kPay) << '\n';
}

int Run()
{
    auto owned = std::make_unique<HeadlessWindowSystem>();
    HeadlessWindowSystem& windows = *owned;
    const auto before = Afx::WindowSystem::Install(std::move(owned));
    CEmployments dialog;
    windows.Script([&](CDialog& open) {
        Work(dialog.grid, windows);
        open.EndDialog(IDOK);
    });
    return dialog.DoModal() == IDOK ? 0 : 1;
}

} // namespace

int main() { return RunExample(Run); }
