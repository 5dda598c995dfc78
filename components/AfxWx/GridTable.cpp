#include <wx/settings.h>

#include "AfxWx/detail/GridPeer.h"

namespace AfxWx
{

using Lattice::Format;

wxString GridTable::GetValue(int row, int column)
{
    const Lattice::Cell cell = m_grid.GetCell(row, column);
    if (cell.format == Format::CheckBox && !m_grid.IsHeadingRow(row)) {
        const auto* const checked = std::get_if<int>(&cell.value);
        return checked && *checked ? "1" : "";
    }
    return ToWx(m_grid.GetCellText(row, column));
}

wxString GridTable::GetRowLabelValue(int row) { return ToWx(m_grid.GetRowHeading(row)); }

wxString GridTable::GetColLabelValue(int column)
{
    const Lattice::Column* const there = m_grid.GetColumn(column);
    return there ? ToWx(there->heading) : wxString();
}

/// Figures stand at the right, headings and totals are told from the rest by their ground and by bold letters.
wxGridCellAttr* GridTable::GetAttr(int row, int column, wxGridCellAttr::wxAttrKind)
{
    const Lattice::Cell cell = m_grid.GetCell(row, column);
    auto* const attributes = new wxGridCellAttr; // whose count the caller takes
    const bool isFigure =
        cell.format == Format::Amount || cell.format == Format::Number || cell.format == Format::Percent;
    const bool isBox = cell.format == Format::CheckBox;
    attributes->SetAlignment(isFigure ? wxALIGN_RIGHT : isBox ? wxALIGN_CENTER : wxALIGN_LEFT, wxALIGN_CENTER);
    if (isBox && !m_grid.IsHeadingRow(row))
        attributes->SetRenderer(new wxGridCellBoolRenderer);
    const bool isHeading = m_grid.IsHeadingRow(row), isTotal = cell.isTotal || m_grid.IsTotalRow(row);
    if (isHeading || isTotal)
        attributes->SetFont(wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT).Bold());
    if (isHeading || cell.readOnly) {
        attributes->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
        attributes->SetTextColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT));
    }
    return attributes;
}

void GridTable::Tell(wxGridTableRequest deleted, wxGridTableRequest appended, int& count, int wanted)
{
    const int before = count;
    count = wanted;
    if (wanted < before) {
        wxGridTableMessage message(this, deleted, wanted, before - wanted);
        GetView()->ProcessTableMessage(message);
    } else if (wanted > before) {
        wxGridTableMessage message(this, appended, wanted - before);
        GetView()->ProcessTableMessage(message);
    }
}

bool GridTable::Match()
{
    const bool differs = m_rows != m_grid.GetRowCount() || m_columns != m_grid.GetColumnCount();
    Tell(wxGRIDTABLE_NOTIFY_ROWS_DELETED, wxGRIDTABLE_NOTIFY_ROWS_APPENDED, m_rows, m_grid.GetRowCount());
    Tell(wxGRIDTABLE_NOTIFY_COLS_DELETED, wxGRIDTABLE_NOTIFY_COLS_APPENDED, m_columns, m_grid.GetColumnCount());
    return differs;
}

} // namespace AfxWx
