#include "MorvUt/ui/grids/InsertableGrid.h"

#include <vector>

using Lattice::CGrid;
using Lattice::Format;

IMPLEMENT_DYNAMIC(CInsertableGrid, CGrid)

namespace
{

/// The editor of a column, made when it is first asked for.
template<class Editor>
Editor& Owned(std::map<int, std::unique_ptr<Editor>>& editors, int columnId)
{
    std::unique_ptr<Editor>& editor = editors[columnId];
    if (!editor)
        editor = std::make_unique<Editor>();
    return *editor;
}

} // namespace

void CInsertableGrid::SetupGrid()
{
    for (const InsertableColumn* column = GetColumnDefinitions(); column->id != 0; ++column)
        AddColumn(column->id, column->heading, column->format, column->flags, column->width);
}

void CInsertableGrid::AddRow()
{
    const int row = AppendRow();
    OnNewRowCreated(row);
    for (int column = 0; column < GetColumnCount(); ++column)
        if (GetColumnFlags(column) & kColumnAutomatic) {
            Kiln::CAmt automatic;
            automatic.SetAuto(true);
            SetCellAmount(row, column, automatic);
        }
    CheckDeleteButtonForEnable();
    OnCalcRow(row);
}

bool CInsertableGrid::HasRoom() const noexcept
{
    return m_insertable && static_cast<unsigned long>(GetRowCount()) < m_maximumRows;
}

void CInsertableGrid::CheckForNewRow()
{
    const int last = GetRowCount() - 1;
    std::vector<CString> texts;
    std::vector<NewRowCell> cells;
    texts.reserve(static_cast<std::size_t>(GetColumnCount())); // the cells look into them
    for (int column = 0; last >= 0 && column < GetColumnCount(); ++column) {
        texts.push_back(GetCellText(last, column));
        cells.push_back({GetColumnFlags(column), !IsCellEditable(last, column),
                         GetCell(last, column).format == Format::Amount, texts.back().View()});
    }
    if (IsNewRowDue({IsWindowEnabled(), m_insertable, static_cast<unsigned long>(GetRowCount()), m_maximumRows}, cells))
        AddRow();
}

void CInsertableGrid::CheckDeleteButtonForEnable()
{
    if (m_deleteButton)
        m_deleteButton->EnableWindow(CanDeleteRow(GetCurrentRow()));
}

bool CInsertableGrid::AllowDelete() { return true; }
void CInsertableGrid::Load() {}
bool CInsertableGrid::Save() { return true; }
void CInsertableGrid::OnNewRowCreated(int) {}
void CInsertableGrid::OnCalcRow(int) {}
void CInsertableGrid::OnControlCreated(int, CWnd&) {}

void CInsertableGrid::GridItemToCombo(int row, int column)
{
    const Lattice::Cell cell = GetCell(row, column);
    const auto* const index = std::get_if<int>(&cell.value);
    GetCombo(GetColumnId(column)).SetCurSel(index ? *index : CComboBox::kNone);
}

void CInsertableGrid::ComboToGridItem(int row, int column)
{
    const int index = GetCombo(GetColumnId(column)).GetCurSel();
    SetCellValue(row, column, index == CComboBox::kNone ? Lattice::Value() : Lattice::Value(index));
}

int CInsertableGrid::GridItemToCheckBox(int row, int column) const
{
    const Lattice::Cell cell = GetCell(row, column);
    const auto* const checked = std::get_if<int>(&cell.value);
    return checked && *checked != 0;
}

void CInsertableGrid::CheckBoxToGridItem(int row, int column, int checked) { SetCellValue(row, column, checked != 0); }

void CInsertableGrid::KillCombo()
{
    if (dynamic_cast<CComboBox*>(GetEditor()))
        EndEdit();
}

void CInsertableGrid::DeleteCurrentRow()
{
    const OneChange change(*this);
    OnDeleteRow(GetCurrentRow());
}

void CInsertableGrid::SetInsertable(bool insertable)
{
    m_insertable = insertable;
    CheckForNewRow();
}

void CInsertableGrid::SetDeleteButton(CWnd* button)
{
    m_deleteButton = button;
    CheckDeleteButtonForEnable();
}

Kiln::CExComboBox& CInsertableGrid::GetCombo(int columnId) { return Owned(m_combos, columnId); }

Kiln::CDoubleEdit& CInsertableGrid::GetDoubleEdit(int columnId)
{
    constexpr int kDecimals = 8;
    Kiln::CDoubleEdit& edit = Owned(m_doubles, columnId);
    edit.SetDecimals(kDecimals);
    return edit;
}

CUnderwritingDateEdit& CInsertableGrid::GetUWEdit(int columnId) { return Owned(m_dates, columnId); }

bool CInsertableGrid::OnGridCellEdit(int row, int column) { return CGrid::OnGridCellEdit(row, column); }

void CInsertableGrid::OnGridCellEndEdit(int row, int column)
{
    CGrid::OnGridCellEndEdit(row, column);
    OnCalcRow(row);
    CheckForNewRow();
    CheckDeleteButtonForEnable();
}

void CInsertableGrid::OnGridCellHasFocus(int row, int column)
{
    CGrid::OnGridCellHasFocus(row, column);
    CheckDeleteButtonForEnable();
}

void CInsertableGrid::OnGridLosingFocus() { CGrid::OnGridLosingFocus(); }

CWnd* CInsertableGrid::LendEditor(int row, int column)
{
    const int id = GetColumnId(column);
    switch (GetCell(row, column).format) {
    case Format::Combo:
        return &GetCombo(id);
    case Format::Number:
    case Format::Percent:
        return &GetDoubleEdit(id);
    case Format::Date:
        return &GetUWEdit(id);
    default:
        return CGrid::LendEditor(row, column);
    }
}

void CInsertableGrid::OnEditorCreated(int row, int column, CWnd& editor)
{
    OnControlCreated(GetColumnId(column), editor);
    if (GetCell(row, column).format == Format::Combo)
        GridItemToCombo(row, column);
    CGrid::OnEditorCreated(row, column, editor);
}

/// A derived grid's combo may choose among other things than the cell holds.
void CInsertableGrid::StoreEdit(int row, int column, Lattice::Value value, CWnd& editor)
{
    const auto combo = m_combos.find(GetColumnId(column));
    if (combo != m_combos.end() && combo->second.get() == &editor)
        ComboToGridItem(row, column);
    else
        CGrid::StoreEdit(row, column, std::move(value), editor);
}

bool CInsertableGrid::CanDeleteRow(int row) { return AllowDelete() && IsWindowEnabled() && CGrid::CanDeleteRow(row); }

bool CInsertableGrid::OnDeleteRow(int row)
{
    if (!CanDeleteRow(row) || !CGrid::OnDeleteRow(row))
        return false;
    CheckForNewRow();
    CheckDeleteButtonForEnable();
    return true;
}

bool CInsertableGrid::OnPasteRow()
{
    if (!HasRoom())
        return false;
    AddRow();
    return true;
}

void CInsertableGrid::OnUndone()
{
    CGrid::OnUndone();
    CheckDeleteButtonForEnable();
}
