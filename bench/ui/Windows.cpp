// A totalling grid in a real window, against the toolkit's own grid with texts in its cells and sums by hand.

#include <exception>

#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/grid.h>
#include <wx/settings.h>
#include <wx/textctrl.h>

#include "Afx/windows/MessageBox.h"
#include "AfxWx/detail/Peer.h"
#include "AfxWx/WxWindowSystem.h"
#include "Timing.h"
#include "ui/Ui.h"

namespace Ui
{
namespace
{

constexpr int kLineRoom = 4;       // dialog units, as in ours
const wxSize kGridSize(1150, 600); // pixels

int g_paints = 0; // of the grids that are watched

/// Deals with all events and draws what has changed, of which there must be something.
void Draw(wxGrid& grid)
{
    const int before = g_paints;
    wxTheApp->Yield(true);
    grid.GetGridWindow()->Update();
    Require(g_paints > before, "nothing was drawn");
}

/// Returns when the grid is drawn, has its size and the keyboard. Its paints are counted from now on.
void Await(wxGrid& grid)
{
    auto& window = dynamic_cast<wxTopLevelWindow&>(*wxGetTopLevelParent(&grid));
    grid.GetGridWindow()->Bind(wxEVT_PAINT, [](wxPaintEvent& event) {
        ++g_paints;
        event.Skip();
    });
    const auto await = [start = Bench::Clock::now()](const auto& isReady) {
        constexpr double kPatience = 10; // seconds
        for (const int before = g_paints; g_paints == before || !isReady(); wxTheApp->Yield(true))
            Require(Bench::SecondsSince(start) < kPatience, "the window is not shown: is there a window manager?");
    };
    grid.Refresh();
    await([&] { return window.IsActive(); });
    window.SetClientSize(window.GetClientSize() + kGridSize - grid.GetSize());
    grid.Refresh();
    await([&] { return grid.GetSize() == kGridSize; });
}

/// Works in the dialog that is shown.
class Worker : public AfxWx::Observer
{
public:
    explicit Worker(std::function<void()> work) : m_work(std::move(work)) {}
    void DialogRuns(CDialog& dialog) override
    {
        m_work();
        dialog.EndDialog(IDCANCEL);
    }

private:
    std::function<void()> m_work;
};

wxGrid& ViewOf(const OurGrid& ours) { return dynamic_cast<wxGrid&>(*AfxWx::PeerOf(&ours.grid)->Native()); }

void OpenOurs(const std::function<void(Summing&)>& work)
{
    OurGrid ours([&ours] {
        AfxWx::System::Current()->Flush(); // as after each act of the user's
        Draw(ViewOf(ours));
    });
    Worker worker([&] {
        Await(ViewOf(ours));
        work(ours);
    });
    RunIn(AfxWx::MakeWindowSystem(&worker), ours);
}

/// Figures stand at the right; totals are bold, on the ground of what cannot be edited.
wxGridCellAttr* MakeLook(bool isTotal)
{
    auto* const look = new wxGridCellAttr; // whose count the grid takes
    look->SetAlignment(wxALIGN_RIGHT, wxALIGN_CENTER);
    if (!isTotal)
        return look;
    look->SetReadOnly();
    look->SetFont(wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT).Bold());
    look->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
    return look;
}

class PlainGrid : public wxDialog, public Summing
{
public:
    PlainGrid() : wxDialog(nullptr, wxID_ANY, "Amounts")
    {
        grid.CreateGrid(0, kColumns + 1);
        grid.SetRowLabelSize(0);
        grid.SetDefaultRowSize(grid.GetCharHeight() + grid.ConvertDialogToPixels(wxSize(0, kLineRoom)).y);
        grid.SetDefaultColSize(grid.ConvertDialogToPixels(wxSize(kColumnWidth, 0)).x, true);
        for (int column = 0; column <= kColumns; ++column) {
            grid.SetColLabelValue(column, column < kColumns ? "Month" : "Year");
            grid.SetColAttr(column, MakeLook(column == kColumns));
        }
        grid.Bind(wxEVT_GRID_CELL_CHANGED, [this](wxGridEvent& event) { SumUp(event.GetRow(), event.GetCol()); });
    }
    void Fill() override
    {
        grid.BeginBatch();
        if (grid.GetNumberRows() > 0)
            grid.DeleteRows(0, grid.GetNumberRows());
        grid.AppendRows(kRows + 1);
        grid.SetRowAttr(kRows, MakeLook(true));
        m_ledger.Fill();
        for (int row = 0; row <= kRows; ++row)
            for (int column = 0; column <= kColumns; ++column)
                ShowCell(row, column);
        grid.EndBatch();
        Draw(grid);
    }
    void Edit(int row, int column, const char* text) override
    {
        grid.GoToCell(row, column);
        grid.EnableCellEditControl();
        Draw(grid);
        const wxGridCellEditorPtr editor(grid.GetCellEditor(row, column));
        dynamic_cast<wxTextCtrl&>(*editor->GetControl()).SetValue(text);
        grid.DisableCellEditControl();
        Draw(grid);
    }
    std::int64_t At(int row, int column) const override
    {
        return PenceOf(grid.GetCellValue(row, column).utf8_string());
    }

    wxGrid& grid = *new wxGrid(this, wxID_ANY); // the dialog's

private:
    void ShowCell(int row, int column) { grid.SetCellValue(row, column, TextOf(m_ledger.At(row, column))); }
    void SumUp(int row, int column)
    {
        m_ledger.Edit(row, column, grid.GetCellValue(row, column).utf8_str());
        for (const int changed : {row, kRows})
            for (const int place : {column, kColumns})
                ShowCell(changed, place);
    }

    Ledger m_ledger;
};

/// No exception passes through the toolkit.
void OpenPlain(const std::function<void(Summing&)>& work)
{
    PlainGrid window;
    std::exception_ptr failure;
    window.CallAfter([&] {
        try {
            Await(window.grid);
            work(window);
        } catch (...) {
            failure = std::current_exception();
        }
        window.EndModal(0);
    });
    window.ShowModal();
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace

int RunWithWindows(const std::function<int()>& run, int noDisplay)
{
    return AfxWx::RunApplication("ui", run, noDisplay);
}

void RegisterWindows(Bench::Reasons& reasons)
{
    RegisterGrids("real window", OpenOurs, "wxGrid", OpenPlain);
    reasons["one of 12,000 amounts edited, real window"] =
        "nine tenths of both are the toolkit's drawing, of the whole grid when a field comes over the cell and when it "
        "goes; ours makes a field for each edit, the peer keeps one";
}

} // namespace Ui
