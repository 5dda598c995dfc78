#include "AfxWx/detail/GridPeer.h"

#include <wx/settings.h>

#include <algorithm>

namespace AfxWx
{
namespace
{

using Afx::Has;
using Afx::Part;

constexpr int kGridWidth = 240, kGridLines = 8, kCellRoom = 4, kLineRoom = 4; // dialog units, but for the lines
constexpr int kMeasured = 200; // rows, from the top: a long list is not read for its widths

/// Dialog units of a column that says nothing about its width.
int PlainWidth(Lattice::Format format)
{
    switch (format) {
    case Lattice::Format::Text:
        return 90;
    case Lattice::Format::CheckBox:
        return 30;
    default:
        return 60;
    }
}

} // namespace

GridPeer::GridPeer(System& system, Lattice::CGrid& model, wxWindow& parent)
    : NativePeer(system, model), m_grid(model),
      m_view(new wxGrid(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_THEME)),
      m_table(new GridTable(model)), m_accessible(*this)
{
    m_view->AssignTable(m_table);
    m_view->EnableEditing(false);
    m_view->DisableDragRowSize();
    m_view->SetRowLabelAlignment(wxALIGN_LEFT, wxALIGN_CENTER);
    m_view->SetDefaultRowSize(m_view->GetCharHeight() + PixelsOf(*m_view, 0, kLineRoom).y);
    Take(m_view);
    TakeCharacters(*m_view->GetGridWindow());
    TakeMouse();
    TakeWidths();
    On(*m_view->GetGridWindow(), wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_SPACE && !event.HasAnyModifiers()) // the view would go to the next cell
            Act([this] { Afx::UserActs::Char(m_grid, VK_SPACE); });
        else
            event.Skip();
    });
    On(*m_view->GetGridWindow(), wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        m_accessible.FocusCame(event.GetWindow());
    });
    On(*m_view->GetGridWindow(), wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        m_grid.SetPageRows(event.GetSize().y / m_view->GetDefaultRowSize());
    });
}

/// The mouse chooses cells, blocks and editors as the keyboard does; the view's own selection only mirrors the model's.
void GridPeer::TakeMouse()
{
    On(*m_view, wxEVT_GRID_CELL_LEFT_CLICK, [this](wxGridEvent& event) {
        const int row = event.GetRow(), column = event.GetCol();
        const bool isHere = row == m_grid.GetCurrentRow() && column == m_grid.GetCurrentColumn();
        const bool turnsOver = isHere && !event.ShiftDown() && m_grid.HasFocusWithin() &&
                               m_grid.GetCell(row, column).format == Lattice::Format::CheckBox;
        Act([this, row, column, turnsOver, extends = event.ShiftDown()] {
            if (turnsOver)
                Afx::UserActs::Char(m_grid, ' ');
            else
                GoTo(row, column, extends);
        });
    });
    On(*m_view, wxEVT_GRID_CELL_LEFT_DCLICK, [this](wxGridEvent& event) {
        const int row = event.GetRow(), column = event.GetCol();
        Act([this, row, column] {
            if (m_grid.IsCellEditable(row, column) && m_grid.GetCell(row, column).format != Lattice::Format::CheckBox &&
                m_grid.GoTo(row, column))
                m_grid.BeginEdit();
        });
    });
    On(*m_view, wxEVT_GRID_LABEL_LEFT_CLICK, [](wxGridEvent&) {}); // no whole rows and columns
    On(*m_view->GetGridWindow(), wxEVT_MOTION, [this](wxMouseEvent& event) {
        if (!event.LeftIsDown() || m_grid.IsEditing()) {
            event.Skip();
            return;
        }
        const wxPoint place = m_view->CalcUnscrolledPosition(event.GetPosition());
        const wxGridCellCoords cell = m_view->XYToCell(place);
        const bool isOther = cell.GetRow() != m_grid.GetCurrentRow() || cell.GetCol() != m_grid.GetCurrentColumn();
        if (cell.GetRow() >= 0 && cell.GetCol() >= 0 && isOther)
            Act([this, cell] { m_grid.GoTo(cell.GetRow(), cell.GetCol(), true); });
    });
}

/// A heading's edge is dragged, or double-clicked: the view has sized the column, the model learns of it.
void GridPeer::TakeWidths()
{
    On(*m_view, wxEVT_GRID_COL_AUTO_SIZE, [this](wxGridSizeEvent& event) { FitColumn(event.GetRowOrCol()); });
    On(*m_view, wxEVT_GRID_COL_SIZE, [this](wxGridSizeEvent& event) {
        const int column = event.GetRowOrCol();
        const auto place = static_cast<std::size_t>(column);
        if (column < 0 || place >= m_headings.size())
            return;
        const int width = UnitsOf(*m_view, m_view->GetColSize(column));
        m_headings[place].second = width; // it is that already, to the pixel
        Act([this, column, width] { m_grid.SetColumnWidth(column, width); });
    });
}

void GridPeer::FitColumn(int column)
{
    int widest = WidthOfText(m_grid.GetColumn(column)->heading);
    for (int row = 0; row < std::min(m_grid.GetRowCount(), kMeasured); ++row)
        widest = std::max(widest, WidthOfText(m_grid.GetCellText(row, column)));
    m_view->SetColSize(column, widest);
}

int GridPeer::WidthOfText(const CString& text) const
{
    const wxFont bold = m_view->GetLabelFont(); // which totals have, too
    int width = 0;
    m_view->GetTextExtent(ToWx(text), &width, nullptr, nullptr, nullptr, &bold);
    return width + 2 * PixelsOf(*m_view, kCellRoom, 0).x;
}

void GridPeer::GoTo(int row, int column, bool extend)
{
    if (Afx::UserActs::Focus(m_grid))
        m_grid.GoTo(row, column, extend);
}

void GridPeer::ShowCells(int, int, int, int) { Show(Part::Cells); }

void GridPeer::Mirror(Part parts)
{
    if (Has(parts, Part::Items)) {
        m_table->Match();
        SizeColumns();
    } else if (Has(parts, Part::Widths)) {
        SizeColumns();
        m_system.Unarranged(*this); // the editor
    }
    if (Has(parts, Part::Items | Part::Cells))
        m_view->ForceRefresh();
    if (Has(parts, Part::Items | Part::Selection))
        ShowSelection();
    NativePeer::Mirror(parts);
    m_accessible.Mirror(parts);
}

void GridPeer::SizeColumns()
{
    std::vector<std::pair<CString, int>> headings;
    headings.reserve(static_cast<std::size_t>(m_grid.GetColumnCount()));
    for (int i = 0; i < m_grid.GetColumnCount(); ++i)
        headings.emplace_back(m_grid.GetColumn(i)->heading, m_grid.GetColumn(i)->width);
    if (headings != m_headings) {
        m_headings = std::move(headings);
        for (int i = 0; i < m_grid.GetColumnCount(); ++i) {
            const Lattice::Column& column = *m_grid.GetColumn(i);
            const int least = WidthOfText(column.heading),
                      width = column.width > 0 ? column.width : PlainWidth(column.format);
            m_view->SetColMinimalWidth(i, least);
            m_view->SetColSize(i, std::max(PixelsOf(*m_view, width, 0).x, least));
        }
        m_view->SetColLabelSize(m_view->GetDefaultRowSize());
    }
    int widest = 0;
    bool saysMore = false; // than the first column does
    for (int row = 0; row < std::min(m_grid.GetRowCount(), kMeasured); ++row)
        if (const CString heading = m_grid.GetRowHeading(row); !heading.IsEmpty()) {
            widest = std::max(widest, m_view->GetTextExtent(ToWx(heading)).x);
            saysMore = saysMore || heading != m_grid.GetCellText(row, 0);
        }
    const int labels = saysMore ? widest + 3 * PixelsOf(*m_view, kCellRoom, 0).x : 0;
    if (m_view->GetRowLabelSize() != labels)
        m_view->SetRowLabelSize(labels);
}

void GridPeer::ShowSelection()
{
    const int row = m_grid.GetCurrentRow(), column = m_grid.GetCurrentColumn();
    m_view->ClearSelection();
    if (row < 0 || column < 0 || row >= m_table->GetNumberRows() || column >= m_table->GetNumberCols())
        return;
    m_view->SetGridCursor(row, column);
    const Lattice::CGrid::Block block = m_grid.GetSelection();
    if (block.top != block.bottom || block.left != block.right)
        m_view->SelectBlock(block.top, block.left, block.bottom, block.right);
    m_view->MakeCellVisible(row, column);
}

void GridPeer::SpeakNameAs(const CString& name)
{
    SpeakAs(*m_view, ToWx(name));
    m_accessible.Name(name);
}

void GridPeer::Visit(CellPlace cell, bool edit)
{
    m_system.PerformLater(*this, [this, cell, edit] {
        if (Afx::UserActs::Focus(m_grid) && m_grid.GoTo(cell.row, cell.column) && edit)
            m_grid.BeginEdit();
    });
}

void GridPeer::ChildChanged(NativePeer&) { m_system.Unarranged(*this); }

/// The editor covers its cell.
void GridPeer::Arrange()
{
    const NativePeer* const editor = AfxWx::PeerOf(m_grid.GetEditor());
    if (!editor)
        return;
    m_view->MakeCellVisible(m_grid.GetCurrentRow(), m_grid.GetCurrentColumn());
    wxRect place = m_view->CellToRect(m_grid.GetCurrentRow(), m_grid.GetCurrentColumn());
    place.SetPosition(m_view->CalcScrolledPosition(place.GetPosition()));
    const int least = editor->LeastSize(nullptr).y;
    if (place.height < least)
        place.Inflate(0, (least - place.height + 1) / 2);
    editor->Native()->SetMinSize({1, 1});
    editor->Native()->SetSize(place);
    editor->Native()->Raise();
    m_accessible.EditorStands(*editor->Native());
}

wxSize GridPeer::LeastSize(const Afx::LayoutRow* row) const
{
    const int lines = row && row->lines > 1 ? row->lines : std::clamp(m_grid.GetRowCount() + 1, 2, kGridLines);
    int width = m_view->GetRowLabelSize() + PixelsOf(*m_view, kCellRoom, 0).x;
    for (int i = 0; i < m_table->GetNumberCols(); ++i)
        width += m_view->GetColSize(i);
    const int most = PixelsOf(*m_view, row && row->width > 0 ? row->width : 2 * kGridWidth, 0).x;
    const int height = m_view->GetColLabelSize() + lines * m_view->GetDefaultRowSize();
    return {std::min(width + wxSystemSettings::GetMetric(wxSYS_VSCROLL_X), most), height};
}

std::unique_ptr<NativePeer> MakeGrid(System& system, CWnd& model, wxWindow& parent)
{
    return std::make_unique<GridPeer>(system, dynamic_cast<Lattice::CGrid&>(model), parent);
}

} // namespace AfxWx
