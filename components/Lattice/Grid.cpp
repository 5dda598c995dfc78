#include "Lattice/Grid.h"

#include <algorithm>
#include <utility>

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/MessageBox.h"
#include "Afx/windows/WindowSystem.h"
#include "Kiln/controls/AmtEdit.h"
#include "Kiln/controls/DateEdit.h"
#include "Kiln/controls/DoubleEdit.h"
#include "Kiln/controls/ExComboBox.h"

namespace Lattice
{
namespace
{

constexpr unsigned kEditorId = 0xE000;
constexpr int kEditedDecimals = 8;
constexpr const char* kKeys =
    "Enter: edit, or take over and go down\nF2: edit\nEscape: as it was\n"
    "Tab: next cell that can be changed\nDelete: empty\nCtrl+Delete: delete the row\n"
    "Ctrl+D: copy from above\nAlt+Down: open the list\nCtrl+C, Ctrl+X, Ctrl+V: copy, cut, paste\n"
    "Ctrl+Z: take back\nF4: why this figure";

bool IsOneText(const TextBlock& block) noexcept { return block.size() == 1 && block[0].size() == 1; }

/// What a pasted block has for a place, which counts from its own corner: a single text serves all places. Null where a
/// line of the block is shorter.
const CString* TextFor(const TextBlock& block, int row, int column)
{
    if (IsOneText(block))
        return &block[0][0];
    const auto& texts = block[static_cast<std::size_t>(row)];
    const auto index = static_cast<std::size_t>(column);
    return index < texts.size() ? &texts[index] : nullptr;
}

/// The date of a field, with the year that the field means: read as a text it might be another.
Typed DateIn(const Kiln::CDateEdit& edit)
{
    const Kiln::CDate date = edit.GetDate();
    if (date.IsValid() || date.IsNull())
        return {date.IsValid() ? Value(date) : Value(), {}};
    return {{}, edit.WhyNot()};
}

} // namespace

IMPLEMENT_DYNAMIC(CGrid, CWnd)

CGrid::CGrid() = default;
CGrid::~CGrid() = default;

// Columns and rows.

int CGrid::AddColumn(int id, const char* heading, Format format, unsigned flags, int width)
{
    const int column = m_cells.AddColumn({id, heading, format, flags, width, {}});
    ClearUndo(); // rows that were deleted have no such cell
    Changed(Afx::Part::All);
    return column;
}

int CGrid::GetColumnId(int column) const noexcept
{
    const Column* const there = m_cells.GetColumn(column);
    return there ? there->id : 0;
}

unsigned CGrid::GetColumnFlags(int column) const noexcept
{
    const Column* const there = m_cells.GetColumn(column);
    return there ? there->flags : 0;
}

void CGrid::SetColumnHeading(int column, const char* heading)
{
    if (Column* const there = m_cells.GetColumn(column))
        there->heading = heading;
    Changed(Afx::Part::All);
}

void CGrid::SetColumnWidth(int column, int width)
{
    Column* const at = m_cells.GetColumn(column);
    if (!at || width < 0 || at->width == width)
        return;
    at->width = width;
    Changed(Afx::Part::Widths);
}

void CGrid::SetColumnChoices(int column, Choices choices)
{
    if (Column* const there = m_cells.GetColumn(column))
        there->choices = std::move(choices);
    Changed(Afx::Part::Cells);
}

int CGrid::InsertRow(int row)
{
    row = std::clamp(row, 0, GetRowCount());
    m_cells.InsertRow(row, m_undo);
    if (m_row >= row)
        ++m_row;
    if (m_anchorRow >= row)
        ++m_anchorRow;
    Changed(Afx::Part::Items);
    return row;
}

bool CGrid::DeleteRow(int row)
{
    if (m_editor)
        DropEditor();
    if (!m_cells.DeleteRow(row, m_undo))
        return false;
    if (m_row > row || m_row >= GetRowCount())
        --m_row;
    Current(m_row, m_row < 0 ? -1 : m_column);
    Changed(Afx::Part::Items);
    return true;
}

void CGrid::DeleteAllRows()
{
    if (m_editor)
        DropEditor();
    m_cells.Clear();
    Current(-1, -1);
    ClearUndo();
    Changed(Afx::Part::Items);
}

void CGrid::SetRowHeading(int row, const char* heading)
{
    if (Row* const there = m_cells.GetRow(row))
        there->heading = heading;
    Changed(Afx::Part::Cells);
}

CString CGrid::GetRowHeading(int row) const
{
    const Row* const there = m_cells.GetRow(row);
    return there ? there->heading : CString();
}

void CGrid::SetHeadingRow(int row, bool isHeading)
{
    if (Row* const there = m_cells.GetRow(row))
        there->isHeading = isHeading;
    Changed(Afx::Part::Cells);
}

void CGrid::SetTotalRow(int row, bool isTotal)
{
    Row* const there = m_cells.GetRow(row);
    if (!there)
        return;
    there->isTotal = isTotal;
    for (Cell& cell : there->cells)
        cell.isTotal = isTotal;
    Changed(Afx::Part::Cells);
}

bool CGrid::IsHeadingRow(int row) const noexcept
{
    const Row* const there = m_cells.GetRow(row);
    return there && there->isHeading;
}

bool CGrid::IsTotalRow(int row) const noexcept
{
    const Row* const there = m_cells.GetRow(row);
    return there && there->isTotal;
}

void CGrid::SetSource(const RowSource* source)
{
    if (m_editor)
        DropEditor();
    m_cells.SetSource(source);
    m_topRow = 0;
    const bool isEmpty = GetRowCount() == 0 || GetColumnCount() == 0;
    Current(isEmpty ? -1 : 0, isEmpty ? -1 : 0);
    Changed(Afx::Part::Items);
}

// Cells.

CString CGrid::GetCellText(int row, int column) const
{
    const Column* const there = m_cells.GetColumn(column);
    return there ? Shown(GetCell(row, column), there->choices) : CString();
}

void CGrid::SetCell(int row, int column, const Cell& cell)
{
    if (m_cells.Set(row, column, cell, m_undo))
        ShowCells(row, column, row, column);
}

void CGrid::SetCellValue(int row, int column, Value value)
{
    Cell cell = GetCell(row, column);
    cell.value = std::move(value);
    cell.error = false;
    SetCell(row, column, cell);
}

void CGrid::SetCellError(int row, int column)
{
    Cell cell = GetCell(row, column);
    cell.value = {};
    cell.error = true;
    SetCell(row, column, cell);
}

void CGrid::SetCellResult(int row, int column, const Kiln::CAmt& amount)
{
    if (amount.IsValid() || amount.IsNull())
        SetCellAmount(row, column, amount);
    else
        SetCellError(row, column);
}

void CGrid::SetCellFormat(int row, int column, Format format)
{
    Cell cell = GetCell(row, column);
    cell.format = format;
    SetCell(row, column, cell);
}

void CGrid::SetCellReadOnly(int row, int column, bool readOnly)
{
    Cell cell = GetCell(row, column);
    cell.readOnly = readOnly;
    SetCell(row, column, cell);
}

bool CGrid::IsCellEditable(int row, int column) const
{
    return m_cells.GetRow(row) && !IsHeadingRow(row) && !GetCell(row, column).readOnly;
}

Kiln::CAmt CGrid::GetCellAmount(int row, int column) const
{
    const auto amountOf = [](const Cell& cell) {
        const auto* const amount = std::get_if<Kiln::CAmt>(&cell.value);
        return amount && !cell.error ? *amount : Kiln::CAmt::Invalid();
    };
    const Cell* const own = m_cells.Find(row, column); // totals read thousands, which need not be copied
    return own ? amountOf(*own) : amountOf(GetCell(row, column));
}

void CGrid::ShowCells(int top, int left, int bottom, int right)
{
    if (Afx::WindowPeer* const peer = GetPeer(); peer && IsDrawing())
        peer->ShowCells(top, left, bottom, right);
}

// The current cell and the selection.

void CGrid::Current(int row, int column)
{
    m_row = m_anchorRow = row;
    m_column = m_anchorColumn = column;
    Changed(Afx::Part::Selection);
}

/// Rows may have come after the focus.
void CGrid::StandSomewhere()
{
    if (m_row < 0 && GetRowCount() > 0 && GetColumnCount() > 0)
        Current(0, 0);
}

bool CGrid::GoTo(int row, int column, bool extend)
{
    if (row < 0 || row >= GetRowCount() || column < 0 || column >= GetColumnCount() || (m_editor && !EndEdit()))
        return false;
    if (row >= GetRowCount()) // the end of the editing took rows away
        return false;
    m_row = row;
    m_column = column;
    if (!extend) {
        m_anchorRow = row;
        m_anchorColumn = column;
    }
    m_topRow = std::clamp(m_topRow, std::max(0, row - m_pageRows + 1), row);
    Changed(Afx::Part::Selection);
    OnGridCellHasFocus(row, column);
    return true;
}

CGrid::Block CGrid::GetSelection() const noexcept
{
    return {std::min(m_row, m_anchorRow), std::min(m_column, m_anchorColumn), std::max(m_row, m_anchorRow),
            std::max(m_column, m_anchorColumn)};
}

// Editing.

bool CGrid::BeginEdit(bool keepText)
{
    if (m_editor)
        return true;
    const Afx::RunningEvent event;
    if (!IsCellEditable(m_row, m_column) || !OnGridCellEdit(m_row, m_column))
        return false;
    const Cell cell = GetCell(m_row, m_column);
    if (cell.format == Format::CheckBox) {
        const auto* const checked = std::get_if<int>(&cell.value);
        ChangeCell(m_row, m_column, checked && *checked ? 0 : 1);
        return false;
    }
    m_editor = LendEditor(m_row, m_column);
    if (m_editor)
        m_editor->Create(this, kEditorId);
    else
        m_editor = &Adopt(MakeEditor(m_row, m_column), kEditorId);
    m_editor->SetAccessibleName(Describe(m_row, m_column));
    FillEditor(cell, keepText);
    const WindowRef here(this);
    OnEditorCreated(m_row, m_column, *m_editor);
    if (here && m_editor)
        CDialog::GotoDlgCtrl(m_editor);
    return here && m_editor;
}

void CGrid::FillEditor(const Cell& cell, bool keepText)
{
    if (auto* const combo = dynamic_cast<CComboBox*>(m_editor)) {
        const Choices& choices = m_cells.GetColumn(m_column)->choices;
        if (!choices.empty())
            combo->ResetContent(); // one that is lent may hold those of before
        for (const CString& choice : choices)
            combo->AddString(choice);
        const auto* const index = std::get_if<int>(&cell.value);
        combo->SetCurSel(index ? *index : CComboBox::kNone);
    } else {
        const auto* const number = std::get_if<double>(&cell.value);
        m_editor->SetWindowText(!keepText ? CString() // one that is lent holds the text of another cell
                                : number  ? Kiln::FormatNumber(*number, kEditedDecimals)
                                          : Shown(cell, m_cells.GetColumn(m_column)->choices));
    }
}

Typed CGrid::ReadEditor() const
{
    const auto* const combo = dynamic_cast<const CComboBox*>(m_editor);
    if (combo && combo->GetCurSel() != CComboBox::kNone)
        return {combo->GetCurSel(), {}};
    const Format format = GetCell(m_row, m_column).format;
    if (const auto* const edit = dynamic_cast<const Kiln::CDateEdit*>(m_editor); edit && format == Format::Date)
        return DateIn(*edit);
    return Read(format, m_editor->Text(), m_cells.GetColumn(m_column)->choices);
}

bool CGrid::EndEdit(bool takeOver)
{
    if (!m_editor || m_ending)
        return !m_editor;
    const Afx::RunningEvent event;
    const bool hadFocus = m_editor->HasFocusWithin();
    m_ending = true; // what follows from the focus is done here
    if (hadFocus)
        SetFocus(); // the field rewrites what it holds
    Typed typed;
    if (takeOver)
        typed = ReadEditor();
    if (!typed.whyNot.IsEmpty()) {
        const WindowRef here(this);
        AfxMessageBox(typed.whyNot);
        if (here && m_editor) // the row, or the window, may have ended meanwhile
            CDialog::GotoDlgCtrl(m_editor);
        if (here)
            m_ending = false;
        return false;
    }
    CWnd& editor = *m_editor;
    DropEditor();
    m_ending = false;
    if (!takeOver) {
        ShowCells(m_row, m_column, m_row, m_column);
        return true;
    }
    const OneChange change(*this);
    StoreEdit(m_row, m_column, std::move(typed.value), editor);
    OnGridCellEndEdit(m_row, m_column);
    return true;
}

/// The grid has the focus then, if the editor had it.
void CGrid::DropEditor()
{
    const bool wasEnding = std::exchange(m_ending, true); // leaving it takes nothing over
    if (m_editor->HasFocusWithin())
        SetFocus();
    m_ending = wasEnding;
    if (CWnd* const editor = std::exchange(m_editor, nullptr))
        editor->DestroyWindow();
}

/// The user's change of one cell, with all that follows from it.
void CGrid::ChangeCell(int row, int column, Value value)
{
    const OneChange change(*this);
    SetCellValue(row, column, std::move(value));
    OnGridCellEndEdit(row, column);
}

bool CGrid::Undo()
{
    if (m_editor)
        EndEdit(false);
    if (!m_cells.TakeBack(m_undo))
        return false;
    const int row = std::min(m_row, GetRowCount() - 1);
    Current(row, row < 0 ? -1 : std::max(m_column, 0));
    OnUndone();
    Changed(Afx::Part::Items);
    return true;
}

/// Calls `change` for each cell of a block, all as one change.
template<class Change>
void CGrid::ChangeMany(const Block& block, Change change)
{
    struct Many
    {
        bool& isOn;
        ~Many() { isOn = false; }
    };
    const OneChange one(*this);
    {
        const Many many{m_changingMany = true};
        for (int row = block.top; row <= std::min(block.bottom, GetRowCount() - 1); ++row)
            for (int column = block.left; column <= block.right; ++column)
                change(row, column);
    }
    OnManyChanged();
}

void CGrid::EmptySelection()
{
    ChangeMany(GetSelection(), [this](int row, int column) {
        if (IsCellEditable(row, column) && !IsEmpty(GetCell(row, column)) && OnGridCellEdit(row, column))
            ChangeCell(row, column, {});
    });
}

void CGrid::CopyFromAbove()
{
    const Cell above = GetCell(m_row - 1, m_column);
    const bool isOfItsKind =
        m_row > 0 && !IsHeadingRow(m_row - 1) && above.format == GetCell(m_row, m_column).format && !above.error;
    if (isOfItsKind && IsCellEditable(m_row, m_column) && OnGridCellEdit(m_row, m_column))
        ChangeCell(m_row, m_column, above.value);
}

void CGrid::AskToDeleteRow()
{
    if (!CanDeleteRow(m_row))
        return;
    const WindowRef here(this);
    const int rows = GetRowCount();
    const bool isWanted = AfxMessageBox("Delete this row?", MB_YESNO | MB_DEFBUTTON2) == IDYES;
    if (!isWanted || !here || GetRowCount() != rows) // the program has changed them meanwhile: no longer "this row"
        return;
    const OneChange change(*this);
    OnDeleteRow(m_row);
}

// The clipboard.

void CGrid::Copy()
{
    Afx::WindowSystem* const system = Afx::WindowSystem::Current();
    if (!system || m_row < 0)
        return;
    const Block selection = GetSelection();
    TextBlock block;
    for (int row = selection.top; row <= selection.bottom; ++row) {
        block.emplace_back();
        for (int column = selection.left; column <= selection.right; ++column)
            block.back().push_back(GetCellText(row, column));
    }
    system->SetClipboard(ToTabbedText(block));
}

void CGrid::Cut()
{
    Copy();
    EmptySelection();
}

/// What a text would mean if it were typed into the cell; `row` may be one that is not there yet.
Typed CGrid::ReadPasted(int row, int column, const CString& text)
{
    const bool isNew = row >= GetRowCount();
    const Format format = isNew ? m_cells.GetColumn(column)->format : GetCell(row, column).format;
    if (format == Format::Date && !isNew) {
        CWnd* const lent = LendEditor(row, column);
        const std::unique_ptr<CWnd> made = lent ? nullptr : MakeEditor(row, column);
        if (auto* const edit = dynamic_cast<Kiln::CDateEdit*>(lent ? lent : made.get())) {
            edit->SetWindowText(text);
            edit->TakeAsLeft();
            return DateIn(*edit);
        }
    }
    return Read(format, text, m_cells.GetColumn(column)->choices);
}

/// What the user is told of the first cell that cannot take what the block has for it; empty when all can.
CString CGrid::WhyNotPaste(const TextBlock& block, const Block& place)
{
    for (int row = place.top; row <= place.bottom; ++row) {
        for (int column = place.left; column <= place.right; ++column) {
            const CString* const text = TextFor(block, row - place.top, column - place.left);
            if (!text)
                continue;
            const Column* const there = m_cells.GetColumn(column);
            const bool isNew = row >= GetRowCount();
            CString why;
            if (!there || (!isNew && !(IsCellEditable(row, column) && OnGridCellEdit(row, column))))
                why = "this cell cannot be changed.";
            else
                why = ReadPasted(row, column, *text).whyNot;
            if (why.IsEmpty())
                continue;
            CString message;
            message.Format("Nothing was pasted. Row %d, %s: %s", row + 1,
                           there && !there->heading.IsEmpty() ? there->heading : CString("last column"), why);
            return message;
        }
    }
    return {};
}

bool CGrid::Paste()
{
    Afx::WindowSystem* const system = Afx::WindowSystem::Current();
    const TextBlock block = system ? FromTabbedText(system->GetClipboard()) : TextBlock();
    if (block.empty() || m_row < 0 || (m_editor && !EndEdit()))
        return false;
    Block place = GetSelection();
    if (!IsOneText(block)) { // one text fills the selection, a block has its own size
        std::size_t widest = 0;
        for (const auto& row : block)
            widest = std::max(widest, row.size());
        place.bottom = place.top + static_cast<int>(block.size()) - 1;
        place.right = place.left + static_cast<int>(widest) - 1;
    }
    const int rows = GetRowCount();
    CString why = WhyNotPaste(block, place);
    if (why.IsEmpty()) {
        const OneChange change(*this);
        bool hasRoom = true;
        while (hasRoom && GetRowCount() <= place.bottom)
            hasRoom = OnPasteRow();
        if (!hasRoom)
            why = "Nothing was pasted: there is no room for so many rows.";
        else if (GetRowCount() > rows)
            why = WhyNotPaste(block, place); // now that the new cells are there
        if (why.IsEmpty())
            ChangeMany(place, [&](int row, int column) {
                if (const CString* const text = TextFor(block, row - place.top, column - place.left))
                    ChangeCell(row, column, ReadPasted(row, column, *text).value);
            });
    }
    if (why.IsEmpty())
        return true;
    if (GetRowCount() > rows)
        Undo(); // the rows that were added for it
    AfxMessageBox(why);
    return false;
}

void CGrid::DDX(CDataExchange* exchange)
{
    if (exchange->m_bSaveAndValidate && m_editor && !EndEdit())
        exchange->Fail();
}

// Speech.

CString CGrid::Describe(int row, int column, int fromRow, int fromColumn) const
{
    const Cell cell = GetCell(row, column);
    const Column* const there = m_cells.GetColumn(column);
    CString spoken;
    const auto add = [&spoken](const CString& part) {
        if (!part.IsEmpty())
            spoken += (spoken.IsEmpty() ? "" : ", ") + part;
    };
    if (there && column != fromColumn)
        add(there->heading);
    if (row != fromRow)
        add(GetRowHeading(row));
    const auto* const amount = std::get_if<Kiln::CAmt>(&cell.value);
    if (cell.error || IsEmpty(cell)) {
        add(cell.error ? "error" : "blank");
    } else if (amount) {
        Kiln::CAmt plain = *amount;
        plain.SetAuto(false);
        if (amount->IsAuto())
            add("automatic");
        const CString text = Kiln::FormatAmountShown(plain);
        add(text.IsEmpty() ? text : text[0] == '-' ? "minus £" + text.Mid(1) : "£" + text);
    } else {
        add(GetCellText(row, column) + (cell.format == Format::Percent ? " per cent" : ""));
    }
    if (IsHeadingRow(row))
        add("heading");
    else if (cell.readOnly)
        add("read-only");
    if (cell.isTotal)
        add("total");
    if (const auto* const index = std::get_if<int>(&cell.value); index && there && cell.format == Format::Combo) {
        CString position;
        position.Format("%d of %d", *index + 1, static_cast<int>(there->choices.size()));
        add(position);
    }
    return spoken;
}

CString CGrid::WhyCell(int, int) const { return {}; }

// What derived grids decide.

bool CGrid::OnGridCellEdit(int, int) { return true; }
void CGrid::OnGridCellEndEdit(int, int) {}
void CGrid::OnManyChanged() {}
void CGrid::OnGridCellHasFocus(int, int) {}
void CGrid::OnGridLosingFocus() {}
void CGrid::OnEditorCreated(int, int, CWnd&) {}
void CGrid::StoreEdit(int row, int column, Value value, CWnd&) { SetCellValue(row, column, std::move(value)); }
bool CGrid::CanDeleteRow(int row)
{
    int column = GetColumnCount() - 1;
    while (column >= 0 && !IsCellEditable(row, column))
        --column;
    return column >= 0 && !IsTotalRow(row);
}

bool CGrid::OnDeleteRow(int row) { return DeleteRow(row); }
bool CGrid::OnPasteRow() { return false; }
void CGrid::OnUndone() {}
CWnd* CGrid::LendEditor(int, int) { return nullptr; }

std::unique_ptr<CWnd> CGrid::MakeEditor(int row, int column)
{
    switch (GetCell(row, column).format) {
    case Format::Amount:
        return std::make_unique<Kiln::CAmtEdit>();
    case Format::Number:
    case Format::Percent: {
        auto edit = std::make_unique<Kiln::CDoubleEdit>();
        edit->SetDecimals(kEditedDecimals);
        return edit;
    }
    case Format::Date:
        return std::make_unique<Kiln::CDateEdit>();
    case Format::Combo:
        return std::make_unique<Kiln::CExComboBox>();
    default:
        return std::make_unique<CEdit>();
    }
}

// Keys.

unsigned CGrid::OnGetDlgCode() { return DLGC_WANTARROWS | DLGC_WANTCHARS; }

bool CGrid::PreTranslateMessage(MSG* message)
{
    if (m_editor && message->message == WM_KEYDOWN && m_editor->HasFocusWithin())
        return OnEditingKey(static_cast<unsigned>(message->wParam), static_cast<unsigned>(message->lParam));
    return CWnd::PreTranslateMessage(message);
}

bool CGrid::OnEditingKey(unsigned key, unsigned modifiers)
{
    auto* const combo = dynamic_cast<CComboBox*>(m_editor);
    if (combo && combo->GetDroppedState())
        return false; // its list takes Enter and Escape
    switch (key) {
    case VK_RETURN:
        if (EndEdit() && m_row + 1 < GetRowCount())
            GoTo(m_row + 1, m_column);
        return true;
    case VK_ESCAPE:
        EndEdit(false);
        return true;
    case VK_TAB:
        if (EndEdit() && !GoToNextEditable((modifiers & Afx::kShift) != 0))
            Afx::UserActs::Key(*this, key, modifiers); // out of the grid
        return true;
    default:
        return modifiers == Afx::kControl && key == 'Z' && EndEdit(false); // the last change is what is being typed
    }
}

void CGrid::OnChar(unsigned character, unsigned repeat, unsigned flags)
{
    const WindowRef here(this);
    StandSomewhere();
    if (GetCell(m_row, m_column).format == Format::CheckBox) {
        if (character == ' ')
            BeginEdit();
    } else if (character > ' ' && BeginEdit(false) && here && m_editor) {
        if (auto* const edit = dynamic_cast<CEdit*>(m_editor))
            edit->SetSel(0, -1);
        m_editor->DeliverChar(character, repeat);
    }
    CWnd::OnChar(character, repeat, flags);
}

bool CGrid::OnKey(unsigned key, unsigned modifiers)
{
    StandSomewhere();
    if (modifiers == Afx::kControl && OnControlKey(key))
        return true;
    return OnFunctionKey(key, modifiers) || OnMoveKey(key, modifiers);
}

bool CGrid::OnControlKey(unsigned key)
{
    switch (key) {
    case 'C':
        Copy();
        return true;
    case 'X':
        Cut();
        return true;
    case 'V':
        Paste();
        return true;
    case 'Z':
        Undo();
        return true;
    case 'D':
        CopyFromAbove();
        return true;
    case 'A':
        if (m_row >= 0) {
            m_anchorRow = m_anchorColumn = 0;
            m_row = GetRowCount() - 1;
            m_column = GetColumnCount() - 1;
            Changed(Afx::Part::Selection);
        }
        return true;
    case VK_DELETE:
        AskToDeleteRow();
        return true;
    default:
        return false;
    }
}

bool CGrid::OnFunctionKey(unsigned key, unsigned modifiers)
{
    if (key == VK_DOWN && modifiers == Afx::kAlt) {
        if (BeginEdit())
            if (auto* const combo = dynamic_cast<CComboBox*>(m_editor))
                combo->ShowDropDown();
        return true;
    }
    if (key == VK_F1 && modifiers == Afx::kShift) {
        AfxMessageBox(kKeys);
        return true;
    }
    if (modifiers != 0)
        return false;
    switch (key) {
    case VK_F2:
        BeginEdit();
        return true;
    case VK_F4:
        if (const CString why = WhyCell(m_row, m_column); !why.IsEmpty())
            AfxMessageBox(why);
        return true;
    case VK_DELETE:
        EmptySelection();
        return true;
    case VK_RETURN:
        if (IsCellEditable(m_row, m_column))
            BeginEdit();
        else
            GoTo(m_row + 1, m_column);
        return true;
    default:
        return false;
    }
}

bool CGrid::OnMoveKey(unsigned key, unsigned modifiers)
{
    if (key == VK_TAB && !(modifiers & Afx::kControl))
        return GoToNextEditable((modifiers & Afx::kShift) != 0);
    const int lastRow = GetRowCount() - 1, lastColumn = GetColumnCount() - 1;
    const bool whole = (modifiers & Afx::kControl) != 0; // to the end of the grid
    int row = m_row, column = m_column;
    switch (key) {
    case VK_UP:
        row = whole ? 0 : row - 1;
        break;
    case VK_DOWN:
        row = whole ? lastRow : row + 1;
        break;
    case VK_LEFT:
        column = whole ? 0 : column - 1;
        break;
    case VK_RIGHT:
        column = whole ? lastColumn : column + 1;
        break;
    case VK_PRIOR:
        row -= m_pageRows;
        break;
    case VK_NEXT:
        row += m_pageRows;
        break;
    case VK_HOME:
        column = 0;
        row = whole ? 0 : row;
        break;
    case VK_END:
        column = lastColumn;
        row = whole ? lastRow : row;
        break;
    default:
        return false;
    }
    if (lastRow >= 0 && lastColumn >= 0)
        GoTo(std::clamp(row, 0, lastRow), std::clamp(column, 0, lastColumn), (modifiers & Afx::kShift) != 0);
    return true;
}

/// In reading order; false when there is none further on.
bool CGrid::GoToNextEditable(bool back)
{
    const int columns = GetColumnCount();
    const long long count = static_cast<long long>(GetRowCount()) * columns;
    for (long long at = static_cast<long long>(m_row) * columns + m_column + (back ? -1 : 1); at >= 0 && at < count;
         at += back ? -1 : 1) {
        const auto row = static_cast<int>(at / columns), column = static_cast<int>(at % columns);
        if (IsCellEditable(row, column))
            return GoTo(row, column);
        if (!m_cells.GetRow(row))
            return false; // rows of a source are not edited
    }
    return false;
}

void CGrid::OnSetFocus(CWnd* oldFocus)
{
    CWnd::OnSetFocus(oldFocus);
    if (m_ending)
        return;
    StandSomewhere();
    if (m_row >= 0)
        OnGridCellHasFocus(m_row, m_column);
}

void CGrid::OnKillFocus(CWnd* newFocus)
{
    CWnd::OnKillFocus(newFocus);
    if (!m_editor)
        OnGridLosingFocus();
}

bool CGrid::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const bool fromEditor = m_editor && lParam == reinterpret_cast<LPARAM>(m_editor);
    const auto code = static_cast<unsigned>(wParam >> Afx::kCommandIdBits & Afx::kCommandIdMask);
    const bool loses = dynamic_cast<CComboBox*>(m_editor) ? code == CBN_KILLFOCUS : code == EN_KILLFOCUS;
    if (fromEditor && loses && !m_ending) {
        const CWnd* const next = GetFocus();
        const bool cancels = next && next->GetDlgCtrlID() == IDCANCEL;
        // What cannot be taken is no reason to stay where all is given up.
        if (EndEdit(!cancels || ReadEditor().whyNot.IsEmpty()))
            OnGridLosingFocus();
        return true;
    }
    return CWnd::OnCommand(wParam, lParam);
}

void CGrid::OnDestroy()
{
    m_editor = nullptr; // it ends with the grid
    CWnd::OnDestroy();
}

} // namespace Lattice
