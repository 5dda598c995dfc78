#pragma once

// The native window of a grid.

#include <wx/grid.h>

#include "AfxWx/detail/GridAccessible.h"
#include "AfxWx/detail/Peer.h"
#include "Lattice/Grid.h"

namespace AfxWx
{

/// Reads the cells that are seen, and no others.
class GridTable : public wxGridTableBase
{
public:
    explicit GridTable(const Lattice::CGrid& grid) : m_grid(grid) {}

    int GetNumberRows() override { return m_rows; }
    int GetNumberCols() override { return m_columns; }
    wxString GetValue(int row, int column) override;
    void SetValue(int, int, const wxString&) override {} // the model's own editors do
    bool IsEmptyCell(int row, int column) override { return GetValue(row, column).empty(); }
    wxString GetRowLabelValue(int row) override;
    wxString GetColLabelValue(int column) override;
    bool CanHaveAttributes() override { return true; }
    wxGridCellAttr* GetAttr(int row, int column, wxGridCellAttr::wxAttrKind kind) override;

    /// Brings the toolkit's counts to the model's. Whether they were others.
    bool Match();

private:
    void Tell(wxGridTableRequest deleted, wxGridTableRequest appended, int& count, int wanted);

    const Lattice::CGrid& m_grid;
    int m_rows = 0, m_columns = 0;
};

class GridPeer : public NativePeer
{
public:
    GridPeer(System& system, Lattice::CGrid& model, wxWindow& parent);

    void ShowCells(int firstRow, int firstColumn, int lastRow, int lastColumn) override;
    wxWindow* FocusTarget() const override { return m_view->GetGridWindow(); }
    wxWindow* Client() const override { return m_view->GetGridWindow(); }
    void ChildChanged(NativePeer& child) override;
    void Arrange() override;
    wxSize LeastSize(const Afx::LayoutRow* row) const override;
    bool GrowsDown() const override { return true; }

    Lattice::CGrid& Grid() const noexcept { return m_grid; }
    wxGrid& View() const noexcept { return *m_view; }
    /// A screen reader wants to go to a cell, and to edit it.
    void Visit(CellPlace cell, bool edit);

protected:
    void Mirror(Afx::Part parts) override;
    void SpeakNameAs(const CString& name) override;

private:
    void TakeMouse();
    void TakeWidths();
    /// The column is as wide as its heading and the texts that are measured need.
    void FitColumn(int column);
    int WidthOfText(const CString& text) const; // pixels, in bold, with the room beside it
    void GoTo(int row, int column, bool extend);
    void SizeColumns();
    void ShowSelection();

    Lattice::CGrid& m_grid;
    wxGrid* m_view;
    GridTable* m_table; // the view's
    GridAccessible m_accessible;
    std::vector<std::pair<CString, int>> m_headings; // and widths in dialog units
};

} // namespace AfxWx
