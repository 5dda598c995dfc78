// Where the controls of a dialog stand: in the rows and columns of its layout, each as large as the desktop's fonts
// make it.

#include <wx/gbsizer.h>
#include <wx/window.h>

#include <algorithm>
#include <set>

#include "Afx/windows/Button.h"
#include "Afx/windows/PropertySheet.h"
#include "Afx/windows/Static.h"
#include "AfxWx/detail/Peer.h"

namespace AfxWx
{
namespace
{

constexpr int kGap = 6, kEdge = 10; // device-independent pixels

struct Cell
{
    NativePeer* peer;
    const Afx::LayoutRow* row; // null: it stands in no layout
    int line, column, span;
};

bool IsPush(const CWnd* window)
{
    const auto* const button = dynamic_cast<const CButton*>(window);
    return button && (button->GetKind() == CButton::Kind::Push || button->GetKind() == CButton::Kind::Default);
}

/// What no layout names: below the rest, a label before its field, buttons beside each other.
void PlaceOthers(const CWnd& model, std::vector<Cell>& cells)
{
    int line = 0, column = 0;
    for (const Cell& cell : cells)
        line = std::max(line, cell.line + 1);
    const CWnd* before = nullptr;
    for (CWnd* const child : model.Children()) {
        NativePeer* const peer = PeerOf(child);
        if (!peer || std::any_of(cells.begin(), cells.end(), [peer](const Cell& cell) { return cell.peer == peer; }))
            continue;
        const bool joins = (before && dynamic_cast<const CStatic*>(before) && !dynamic_cast<CStatic*>(child)) ||
                           (IsPush(before) && IsPush(child));
        if (before && !joins) {
            ++line;
            column = 0;
        } else if (before) {
            ++column;
        }
        cells.push_back({peer, nullptr, line, column, 1});
        before = child;
    }
}

std::vector<Cell> CellsOf(const CDialog& dialog)
{
    std::vector<Cell> cells;
    if (const Afx::DialogLayout* const layout = dialog.GetLayout())
        for (const auto& [row, control] : Afx::ControlsOf(dialog, *layout))
            if (NativePeer* const peer = PeerOf(control))
                cells.push_back({peer, row, row->row, row->column, row->span});
    PlaceOthers(dialog, cells);
    return cells;
}

int FlagsOf(const NativePeer& peer)
{
    if (peer.GrowsDown())
        return wxEXPAND;
    return peer.FillsCell() ? wxALIGN_CENTER_VERTICAL | wxEXPAND : wxALIGN_CENTER_VERTICAL;
}

/// One control, or several that share a cell.
void AddCell(wxGridBagSizer& grid, const Cell& cell, int gap)
{
    wxWindow* const window = cell.peer->Native();
    window->SetMinSize(cell.peer->LeastSize(cell.row));
    const wxGBPosition place(cell.line, cell.column);
    if (wxGBSizerItem* const there = grid.FindItemAtPosition(place)) {
        if (auto* const shared = dynamic_cast<wxBoxSizer*>(there->GetSizer())) {
            shared->Add(window, 0, wxLEFT | wxALIGN_CENTER_VERTICAL, gap);
            return;
        }
        wxWindow* const first = there->GetWindow();
        const wxGBSpan span = there->GetSpan();
        grid.Detach(first);
        auto* const shared = new wxBoxSizer(wxHORIZONTAL);
        shared->Add(first, 0, wxALIGN_CENTER_VERTICAL);
        shared->Add(window, 0, wxLEFT | wxALIGN_CENTER_VERTICAL, gap);
        grid.Add(shared, place, span);
        return;
    }
    wxGBSpan span(1, std::max(1, cell.span));
    while (span.GetColspan() > 1 && grid.CheckForIntersection(place, span))
        span.SetColspan(span.GetColspan() - 1);
    grid.Add(window, place, span, FlagsOf(*cell.peer));
}

wxSizer* GridOf(const CDialog& dialog, const wxWindow& window)
{
    const int gap = window.FromDIP(kGap);
    auto* const grid = new wxGridBagSizer(gap, gap);
    std::set<int> lines, columns;
    for (const Cell& cell : CellsOf(dialog)) {
        AddCell(*grid, cell, gap);
        const int last = cell.column + std::max(1, cell.span) - 1;
        if (cell.peer->GrowsDown())
            lines.insert(cell.line);
        if (cell.peer->GrowsAcross())
            columns.insert(last);
    }
    for (const int line : lines)
        grid->AddGrowableRow(static_cast<std::size_t>(line));
    for (const int column : columns)
        grid->AddGrowableCol(static_cast<std::size_t>(column));
    return grid;
}

/// Tabs, the furniture below them from top to bottom, then the buttons at the right.
wxSizer* RowsOf(CPropertySheet& sheet, const wxWindow& window)
{
    const int gap = window.FromDIP(kGap);
    auto* const rows = new wxBoxSizer(wxVERTICAL);
    auto* const buttons = new wxBoxSizer(wxHORIZONTAL);
    std::vector<CWnd*> furniture;
    for (CWnd* const child : sheet.Children()) {
        NativePeer* const peer = PeerOf(child);
        if (!peer || dynamic_cast<CPropertyPage*>(child))
            continue;
        peer->Native()->SetMinSize(peer->LeastSize(nullptr));
        if (child == &sheet.GetTabControl())
            rows->Add(peer->Native(), 1, wxEXPAND);
        else if (IsPush(child))
            buttons->Add(peer->Native(), 0, wxLEFT, gap);
        else
            furniture.push_back(child);
    }
    std::stable_sort(furniture.begin(), furniture.end(),
                     [](const CWnd* a, const CWnd* b) { return a->GetRect().top < b->GetRect().top; });
    for (CWnd* const piece : furniture) // a line that another page shows keeps its room
        rows->Add(PeerOf(piece)->Native(), 0, wxEXPAND | wxTOP | wxRESERVE_SPACE_EVEN_IF_HIDDEN, gap);
    rows->Add(buttons, 0, wxALIGN_RIGHT | wxTOP, gap);
    return rows;
}

} // namespace

void ContainerPeer::Arrange()
{
    auto& dialog = dynamic_cast<CDialog&>(Model());
    wxWindow& window = *Client();
    auto* const sheet = dynamic_cast<CPropertySheet*>(&dialog);
    window.SetSizer(nullptr); // first: a window stands in one sizer at a time
    wxSizer* const inside = sheet ? RowsOf(*sheet, window) : GridOf(dialog, window);
    const bool isPage = dynamic_cast<CPropertyPage*>(&dialog) != nullptr;
    auto* const whole = new wxBoxSizer(wxVERTICAL);
    const int edge = !dialog.GetParent() || isPage ? window.FromDIP(kEdge) : 0;
    whole->Add(inside, 1, wxEXPAND | wxALL, edge);
    window.SetSizer(whole);
    window.InvalidateBestSize();
    window.Layout(); // whose size may stay as it is
    for (CWnd* const child : dialog.Children())
        if (NativePeer* const peer = PeerOf(child))
            peer->SpeakName(); // its label may be another
    if (CWnd* const around = dialog.GetParent())
        if (NativePeer* const peer = PeerOf(around))
            peer->ChildChanged(*this);
}

} // namespace AfxWx
