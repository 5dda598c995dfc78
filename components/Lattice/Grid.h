#pragma once

// The grid control.

#include <memory>

#include "Afx/windows/Wnd.h"
#include "Lattice/GridCells.h"
#include "Lattice/TabbedText.h"

namespace Lattice
{

/// A grid of typed cells. Rows and columns count from 0. One cell is the current one; Shift extends the selection from
/// it to a block. A cell is edited in place by a control that fits its format (a field, a combo box, a date field);
/// read-only cells and those of heading rows are not. A text that means nothing in its cell is refused: the user is
/// told why, and the editor keeps it.
///
/// Keys: Enter edits, or takes the cell over and goes down; F2 edits; a character begins anew; Escape restores; Tab
/// goes to the next cell that can be edited, and out at the last; Delete empties the selection; Ctrl+Delete takes the
/// row away after asking; Ctrl+D copies from above; a blank turns a check box over; Alt+Down opens a combo box; Ctrl+C,
/// X and V; Ctrl+Z takes back; Ctrl+A selects all; F4 tells why a cell holds what it holds; Shift+F1 lists the keys.
class LATTICE_API CGrid : public CWnd
{
    DECLARE_DYNAMIC(CGrid)
    CGrid();
    ~CGrid() override;

    // Columns and rows.
    int AddColumn(int id, const char* heading, Format format, unsigned flags = 0, int width = 0);
    int GetColumnCount() const noexcept { return m_cells.GetColumnCount(); }
    int GetColumnId(int column) const noexcept;         // 0: no such column
    unsigned GetColumnFlags(int column) const noexcept; // 0: no such column
    int FindColumn(int id) const noexcept { return m_cells.FindColumn(id); }
    const Column* GetColumn(int column) const noexcept { return m_cells.GetColumn(column); }
    void SetColumnHeading(int column, const char* heading);
    void SetColumnChoices(int column, Choices choices);
    /// Dialog units; 0: what the format needs. The user can size columns, too.
    void SetColumnWidth(int column, int width);

    int GetRowCount() const noexcept { return m_cells.GetRowCount(); }
    /// Each gives the new row.
    int AppendRow() { return InsertRow(GetRowCount()); }
    int InsertRow(int row);
    bool DeleteRow(int row);
    void DeleteAllRows();
    void SetRowHeading(int row, const char* heading);
    CString GetRowHeading(int row) const;
    /// A line that only says what follows, coloured; a line of totals.
    void SetHeadingRow(int row, bool isHeading = true);
    void SetTotalRow(int row, bool isTotal = true);
    bool IsHeadingRow(int row) const noexcept;
    bool IsTotalRow(int row) const noexcept;
    /// The rows come from `source`, which outlives the grid, read when they are needed; null: the grid's own.
    void SetSource(const RowSource* source);

    // Cells.
    Cell GetCell(int row, int column) const { return m_cells.Get(row, column); }
    CString GetCellText(int row, int column) const;
    void SetCell(int row, int column, const Cell& cell);
    /// The value alone; an error that stood there is gone.
    void SetCellValue(int row, int column, Value value);
    void SetCellText(int row, int column, const char* text) { SetCellValue(row, column, CString(text)); }
    void SetCellAmount(int row, int column, const Kiln::CAmt& amount) { SetCellValue(row, column, amount); }
    void SetCellNumber(int row, int column, double number) { SetCellValue(row, column, number); }
    void SetCellError(int row, int column);
    /// What was worked out of others: an amount, nothing, or an error when it is none.
    void SetCellResult(int row, int column, const Kiln::CAmt& amount);
    void EmptyCell(int row, int column) { SetCellValue(row, column, {}); }
    void SetCellFormat(int row, int column, Format format);
    void SetCellReadOnly(int row, int column, bool readOnly = true);
    /// Whether the user can change it: not read-only, in no heading row, in a grid of its own rows.
    bool IsCellEditable(int row, int column) const;
    /// The amount of a cell; invalid when it holds none.
    Kiln::CAmt GetCellAmount(int row, int column) const;

    // The current cell and the selection.
    int GetCurrentRow() const noexcept { return m_row; } // -1: no cell
    int GetCurrentColumn() const noexcept { return m_column; }
    /// Takes over what is being edited and goes to a cell; with `extend` the selection reaches there. False when the
    /// editor keeps the focus, or there is no such cell.
    bool GoTo(int row, int column, bool extend = false);
    struct Block
    {
        int top, left, bottom, right; // included
    };
    Block GetSelection() const noexcept;
    /// How many rows are seen at once, for the page keys; a window system tells it.
    void SetPageRows(int rows) noexcept { m_pageRows = rows > 0 ? rows : 1; }
    int GetTopRow() const noexcept { return m_topRow; }
    int GetPageRows() const noexcept { return m_pageRows; }

    // Editing.
    bool BeginEdit(bool keepText = true);
    /// Takes over what was typed, or drops it. False, and still editing, when it means nothing in this cell.
    bool EndEdit(bool takeOver = true);
    bool IsEditing() const noexcept { return m_editor != nullptr; }
    CWnd* GetEditor() const noexcept { return m_editor; }
    bool Undo();
    /// Nothing before this can be taken back: the grid was loaded or saved.
    void ClearUndo() noexcept { m_undo.Clear(); }
    std::size_t GetUndoCount() const noexcept { return m_undo.GetCount(); }

    /// While saving, takes over what is being edited; the exchange fails when that is refused.
    void DDX(CDataExchange* exchange);
    /// Copies the selection, empties it after that, or puts the clipboard's block there: all cells as if typed, or none
    /// of them, and the first that is refused is named. Rows are added as OnPasteRow allows.
    void Copy();
    void Cut();
    bool Paste();

    /// What a screen reader says of a cell: the column's heading when it is another than `fromColumn`'s, the row's when
    /// it is another row, the value, and what there is to know of it.
    CString Describe(int row, int column, int fromRow = -1, int fromColumn = -1) const;
    /// Where a cell that holds a sum takes it from, for the user; empty when it is none.
    virtual CString WhyCell(int row, int column) const;

    bool PreTranslateMessage(MSG* message) override;
    unsigned OnGetDlgCode() override;

protected:
    /// A cell is about to be edited. False: it is not.
    virtual bool OnGridCellEdit(int row, int column);
    /// A cell has been edited, emptied or pasted into; what follows from it is part of the same undo.
    virtual void OnGridCellEndEdit(int row, int column);
    /// A block of cells is being pasted or emptied: OnGridCellEndEdit comes for each of them, and then OnManyChanged
    /// once, for what needs to be done once only.
    bool IsChangingMany() const noexcept { return m_changingMany; }
    virtual void OnManyChanged();
    virtual void OnGridCellHasFocus(int row, int column);
    virtual void OnGridLosingFocus();
    /// The control that edits a cell, and into which the cell's text is put then. By default a field, a date field, or
    /// a combo box with the column's choices.
    virtual std::unique_ptr<CWnd> MakeEditor(int row, int column);
    /// A control that the derived grid keeps and lends for this; null: MakeEditor makes one.
    virtual CWnd* LendEditor(int row, int column);
    virtual void OnEditorCreated(int row, int column, CWnd& editor);
    /// `value`, which was typed in `editor`, becomes the cell's; the editor has ended.
    virtual void StoreEdit(int row, int column, Value value, CWnd& editor);
    /// Whether the user may take a row away: by default one in which a cell can be changed.
    virtual bool CanDeleteRow(int row);
    /// Ctrl+Delete on a row. False: it stays.
    virtual bool OnDeleteRow(int row);
    /// A pasted block needs a row more. False: there is none.
    virtual bool OnPasteRow();
    /// A change has been taken back.
    virtual void OnUndone();

    void OnChar(unsigned character, unsigned repeat, unsigned flags) override;
    bool OnKey(unsigned key, unsigned modifiers) override;
    void OnSetFocus(CWnd* oldFocus) override;
    void OnKillFocus(CWnd* newFocus) override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnDestroy() override;

    /// What is changed while it lives is one undo.
    class LATTICE_API OneChange
    {
    public:
        explicit OneChange(CGrid& grid) noexcept : m_undo(grid.m_undo) { m_undo.Begin(); }
        OneChange(const OneChange&) = delete;
        OneChange& operator=(const OneChange&) = delete;
        ~OneChange() { m_undo.End(); }

    private:
        GridUndo& m_undo;
    };

    void ShowCells(int top, int left, int bottom, int right);

private:
    friend class OneChange;

    bool OnEditingKey(unsigned key, unsigned modifiers);
    bool OnMoveKey(unsigned key, unsigned modifiers);
    bool OnControlKey(unsigned key);
    bool OnFunctionKey(unsigned key, unsigned modifiers);
    bool GoToNextEditable(bool back);
    void ChangeCell(int row, int column, Value value);
    template<class Change>
    void ChangeMany(const Block& block, Change change);
    void EmptySelection();
    void CopyFromAbove();
    void AskToDeleteRow();
    void FillEditor(const Cell& cell, bool keepText);
    Typed ReadEditor() const;
    Typed ReadPasted(int row, int column, const CString& text);
    void DropEditor();
    void Current(int row, int column);
    void StandSomewhere();
    CString WhyNotPaste(const TextBlock& block, const Block& place);

    GridCells m_cells;
    GridUndo m_undo;
    CWnd* m_editor = nullptr; // owned as a control
    int m_row = -1, m_column = -1;
    int m_anchorRow = -1, m_anchorColumn = -1;
    int m_topRow = 0, m_pageRows = 20;
    bool m_ending = false; // the editor is being taken over
    bool m_changingMany = false;
};

} // namespace Lattice
