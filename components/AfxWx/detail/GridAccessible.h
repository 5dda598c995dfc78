#pragma once

// What screen readers find of a grid.

#include <compare>
#include <memory>

#include <wx/window.h>

#include "Afx/text/CString.h"
#include "Afx/windows/WindowPeer.h"

namespace AfxWx
{

class GridPeer;

/// Row and column count from 0; a row of -1 is that of the column headings, a column of -1 that of the row headings.
struct CellPlace
{
    int row = -1, column = -1;
    auto operator<=>(const CellPlace&) const = default;
};

/// What the desktop's readers are shown in the place of the grid's window, of which the toolkit tells nothing.
class GridObject
{
public:
    virtual ~GridObject();
    virtual void Name(const wxString& name) = 0;
    /// The cell is where the keyboard works now.
    virtual void CursorAt(CellPlace cell) = 0;
    virtual void Changed(Afx::Part parts) = 0;
    /// The editor's window stands in the current cell.
    virtual void EditorStands(wxWindow& editor) = 0;
};

/// A table, whose cells are made when a reader asks for them. A cell is named by the model's sentence, the current one
/// by what is new in it since the cell before: some readers say the name and nothing else.
class GridAccessible
{
public:
    explicit GridAccessible(GridPeer& peer);
    ~GridAccessible();

    void Name(const CString& name);
    void Mirror(Afx::Part parts);
    /// `before`: what had the focus, null when that was no window of the program's.
    void FocusCame(const wxWindow* before);
    void EditorStands(wxWindow& editor) { m_object->EditorStands(editor); }

    // What the object is made of.
    GridPeer& Peer() const noexcept { return m_peer; }
    bool Has(CellPlace cell) const; // headings too
    CString Sentence(CellPlace cell) const;
    bool IsCurrent(CellPlace cell) const noexcept { return cell == m_current; }
    bool IsSelected(CellPlace cell) const;
    bool HasKeyboard() const; // and not its editor
    /// In pixels of the grid's window, of which it may be outside.
    wxRect AreaOf(CellPlace cell) const;
    CellPlace At(const wxPoint& point) const;

private:
    void Tell();

    GridPeer& m_peer;
    CellPlace m_current, m_before, m_told;
    std::unique_ptr<GridObject> m_object;
};

std::unique_ptr<GridObject> MakeGridObject(const GridAccessible& grid);

} // namespace AfxWx
