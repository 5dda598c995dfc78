#include "AfxWx/detail/GridAccessible.h"

#include <algorithm>

#include "AfxWx/detail/GridPeer.h"

#ifndef __WXGTK__
#include <wx/access.h>
#endif

namespace AfxWx
{

GridObject::~GridObject() = default;

GridAccessible::GridAccessible(GridPeer& peer) : m_peer(peer), m_object(MakeGridObject(*this)) {}
GridAccessible::~GridAccessible() = default;

void GridAccessible::Name(const CString& name) { m_object->Name(ToWx(name)); }

void GridAccessible::Mirror(Afx::Part parts)
{
    const Lattice::CGrid& grid = m_peer.Grid();
    const CellPlace now{grid.GetCurrentRow(), grid.GetCurrentColumn()};
    const bool moved = now != m_current;
    if (moved) {
        m_before = grid.HasFocusWithin() ? m_current : CellPlace();
        m_current = now;
    }
    m_object->Changed(parts);
    if (moved && HasKeyboard())
        Tell();
}

/// Who comes from outside hears the headings; who has edited, only what stands there now.
void GridAccessible::FocusCame(const wxWindow* before)
{
    const wxWindow* const inside = m_peer.View().GetGridWindow();
    while (before && before != inside)
        before = before->GetParent();
    if (!before)
        m_before = {};
    else if (m_told == m_current)
        m_before = m_current;
    Tell();
}

void GridAccessible::Tell()
{
    m_told = m_current;
    if (Has(m_current))
        m_object->CursorAt(m_current);
}

bool GridAccessible::Has(CellPlace cell) const
{
    const Lattice::CGrid& grid = m_peer.Grid();
    return cell.row >= -1 && cell.row < grid.GetRowCount() && cell.column >= -1 &&
           cell.column < grid.GetColumnCount() && (cell.row >= 0 || cell.column >= 0);
}

CString GridAccessible::Sentence(CellPlace cell) const
{
    const Lattice::CGrid& grid = m_peer.Grid();
    if (!Has(cell))
        return {};
    if (cell.row < 0)
        return grid.GetColumn(cell.column)->heading;
    if (cell.column < 0)
        return grid.GetRowHeading(cell.row);
    const CellPlace before = IsCurrent(cell) ? m_before : CellPlace();
    return grid.Describe(cell.row, cell.column, before.row, before.column);
}

bool GridAccessible::IsSelected(CellPlace cell) const
{
    const Lattice::CGrid::Block block = m_peer.Grid().GetSelection();
    return m_current.row >= 0 && cell.row >= block.top && cell.row <= block.bottom && cell.column >= block.left &&
           cell.column <= block.right;
}

bool GridAccessible::HasKeyboard() const { return m_peer.View().GetGridWindow()->HasFocus(); }

wxRect GridAccessible::AreaOf(CellPlace cell) const
{
    const wxGrid& view = m_peer.View();
    wxRect area = view.CellToRect(std::max(cell.row, 0), std::max(cell.column, 0));
    area.SetPosition(view.CalcScrolledPosition(area.GetPosition()));
    if (cell.row < 0) { // beside the window, where the headings stand
        area.height = view.GetColLabelSize();
        area.y = -area.height;
    }
    if (cell.column < 0) {
        area.width = view.GetRowLabelSize();
        area.x = -area.width;
    }
    return area;
}

CellPlace GridAccessible::At(const wxPoint& point) const
{
    const wxGridCellCoords cell = m_peer.View().XYToCell(m_peer.View().CalcUnscrolledPosition(point));
    return {cell.GetRow(), cell.GetCol()};
}

#ifndef __WXGTK__
namespace
{

/// Cells are numbered from 1, row by row.
class SpokenWindow : public wxAccessible
{
public:
    explicit SpokenWindow(const GridAccessible& grid) : wxAccessible(grid.Peer().View().GetGridWindow()), m_grid(&grid)
    {}
    void Name(const wxString& name) { m_name = name; }
    void Leave() { m_grid = nullptr; } // the window, which owns this, stays a while
    int IdOf(CellPlace cell) const { return cell.row * Model().GetColumnCount() + cell.column + 1; }

    wxAccStatus GetChildCount(int* count) override
    {
        *count = m_grid ? Model().GetRowCount() * Model().GetColumnCount() : 0;
        return wxACC_OK;
    }
    wxAccStatus GetChild(int id, wxAccessible** child) override
    {
        *child = id == 0 ? this : nullptr; // cells are parts of the table
        return wxACC_OK;
    }
    wxAccStatus GetName(int id, wxString* name) override
    {
        *name = id == 0 || !m_grid ? m_name : ToWx(m_grid->Sentence(PlaceOf(id)));
        return wxACC_OK;
    }
    wxAccStatus GetRole(int id, wxAccRole* role) override
    {
        *role = id == 0 ? wxROLE_SYSTEM_TABLE : wxROLE_SYSTEM_CELL;
        return wxACC_OK;
    }
    wxAccStatus GetState(int id, long* state) override
    {
        *state = wxACC_STATE_SYSTEM_FOCUSABLE;
        if (id == 0 || !m_grid)
            return wxACC_OK;
        const CellPlace cell = PlaceOf(id);
        *state |= wxACC_STATE_SYSTEM_SELECTABLE;
        *state |= m_grid->IsSelected(cell) ? wxACC_STATE_SYSTEM_SELECTED : 0;
        *state |= m_grid->IsCurrent(cell) && m_grid->HasKeyboard() ? wxACC_STATE_SYSTEM_FOCUSED : 0;
        *state |= Model().IsCellEditable(cell.row, cell.column) ? 0 : wxACC_STATE_SYSTEM_READONLY;
        return wxACC_OK;
    }
    wxAccStatus GetLocation(wxRect& place, int id) override
    {
        const wxWindow& window = *GetWindow();
        place = id == 0 || !m_grid ? wxRect(window.GetSize()) : m_grid->AreaOf(PlaceOf(id));
        place.SetPosition(window.ClientToScreen(place.GetPosition()));
        return wxACC_OK;
    }
    wxAccStatus HitTest(const wxPoint& point, int* id, wxAccessible** child) override
    {
        const CellPlace cell = m_grid ? m_grid->At(GetWindow()->ScreenToClient(point)) : CellPlace();
        const bool isCell = cell.row >= 0 && cell.column >= 0;
        *id = isCell ? IdOf(cell) : 0;
        *child = isCell ? nullptr : this;
        return wxACC_OK;
    }
    wxAccStatus GetFocus(int* id, wxAccessible** child) override
    {
        const CellPlace cell = m_grid ? CellPlace{Model().GetCurrentRow(), Model().GetCurrentColumn()} : CellPlace();
        const bool hasKeyboard = m_grid && m_grid->HasKeyboard();
        *id = hasKeyboard && cell.row >= 0 ? IdOf(cell) : 0;
        *child = hasKeyboard && cell.row < 0 ? this : nullptr;
        return wxACC_OK;
    }

private:
    const Lattice::CGrid& Model() const { return m_grid->Peer().Grid(); }
    CellPlace PlaceOf(int id) const
    {
        const int columns = Model().GetColumnCount();
        return columns > 0 ? CellPlace{(id - 1) / columns, (id - 1) % columns} : CellPlace();
    }

    const GridAccessible* m_grid;
    wxString m_name;
};

class SpokenObject : public GridObject
{
public:
    explicit SpokenObject(const GridAccessible& grid) : m_window(new SpokenWindow(grid))
    {
        m_window->GetWindow()->SetAccessible(m_window);
    }
    SpokenObject(const SpokenObject&) = delete;
    SpokenObject& operator=(const SpokenObject&) = delete;
    ~SpokenObject() override { m_window->Leave(); }

    void Name(const wxString& name) override { m_window->Name(name); }
    void CursorAt(CellPlace cell) override { Notify(wxACC_EVENT_OBJECT_FOCUS, m_window->IdOf(cell)); }
    void Changed(Afx::Part parts) override
    {
        int id = 0;
        wxAccessible* child = nullptr;
        m_window->GetFocus(&id, &child);
        if (Afx::Has(parts, Afx::Part::Items))
            Notify(wxACC_EVENT_OBJECT_REORDER, 0);
        else if (Afx::Has(parts, Afx::Part::Cells) && id > 0)
            Notify(wxACC_EVENT_OBJECT_NAMECHANGE, id);
    }
    void EditorStands(wxWindow&) override {} // it is a window of the grid's by itself

private:
    void Notify(int event, int id) { wxAccessible::NotifyEvent(event, m_window->GetWindow(), wxOBJID_CLIENT, id); }

    SpokenWindow* m_window; // the grid window's
};

} // namespace

std::unique_ptr<GridObject> MakeGridObject(const GridAccessible& grid) { return std::make_unique<SpokenObject>(grid); }
#endif

} // namespace AfxWx
