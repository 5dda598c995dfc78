#pragma once

// The grid that always offers a blank row for the next entry.

#include <map>
#include <memory>

#include "Kiln/controls/DoubleEdit.h"
#include "Kiln/controls/ExComboBox.h"
#include "Lattice/Grid.h"
#include "MorvUt/Export.h"
#include "MorvUt/ui/edits/DateEdits.h"
#include "MorvUt/ui/grids/NewRow.h"

/// A column of such a grid; a table of them ends with id 0.
struct InsertableColumn
{
    int id;
    unsigned flags; // kColumn... of NewRow.h
    const char* heading = "";
    Lattice::Format format = Lattice::Format::Amount;
    int width = 0; // dialog units; 0: what the format needs
};

/// A grid of a derived class's columns. After each edit it adds a row when the last one asks for it (IsNewRowDue), up
/// to its maximum. Rows are deleted by a button, which it enables, or by Ctrl+Delete.
class MORVUT_API CInsertableGrid : public Lattice::CGrid
{
    DECLARE_DYNAMIC(CInsertableGrid)
    CInsertableGrid() = default;

    // What a derived grid may override; the order of these is fixed.

    /// Appends a row: OnNewRowCreated, automatic cells, the Delete button, OnCalcRow.
    virtual void AddRow();
    /// Adds a row if one is due.
    virtual void CheckForNewRow();
    /// Enables the Delete button when the current row can be deleted.
    virtual void CheckDeleteButtonForEnable();
    virtual bool AllowDelete();
    /// Fills the grid, and saves it; false when that is refused.
    virtual void Load();
    virtual bool Save();
    virtual void OnNewRowCreated(int row);
    /// A row was added or edited: what it holds that follows from the rest.
    virtual void OnCalcRow(int row);
    /// The control that edits the column of this id is about to be used.
    virtual void OnControlCreated(int columnId, CWnd& control);
    /// Puts a cell's choice into the combo box of its column, and takes it back.
    virtual void GridItemToCombo(int row, int column);
    virtual void ComboToGridItem(int row, int column);

    /// Makes the columns.
    void SetupGrid();
    /// 0 or 1.
    int GridItemToCheckBox(int row, int column) const;
    void CheckBoxToGridItem(int row, int column, int checked);
    /// Ends the editing in a combo box, with what is chosen.
    void KillCombo();
    /// Deletes the current row, as its button and Ctrl+Delete do after asking.
    void DeleteCurrentRow();

    void SetInsertable(bool insertable);
    bool IsInsertable() const noexcept { return m_insertable; }
    void SetMaximumRows(unsigned long rows) noexcept { m_maximumRows = rows; }
    /// Not owned; null: there is none.
    void SetDeleteButton(CWnd* button);

    /// The control that edits the column of this id, which the grid owns. A combo box is filled with the column's
    /// choices, where there are any, each time a cell is edited.
    Kiln::CExComboBox& GetCombo(int columnId);
    Kiln::CDoubleEdit& GetDoubleEdit(int columnId);
    CUnderwritingDateEdit& GetUWEdit(int columnId);

protected:
    virtual const InsertableColumn* GetColumnDefinitions() const = 0;

    bool OnGridCellEdit(int row, int column) override;
    void OnGridCellEndEdit(int row, int column) override;
    void OnGridCellHasFocus(int row, int column) override;
    void OnGridLosingFocus() override;
    CWnd* LendEditor(int row, int column) override;
    void OnEditorCreated(int row, int column, CWnd& editor) override;
    void StoreEdit(int row, int column, Lattice::Value value, CWnd& editor) override;
    bool CanDeleteRow(int row) override;
    bool OnDeleteRow(int row) override;
    bool OnPasteRow() override;
    void OnUndone() override;

private:
    bool HasRoom() const noexcept;

    std::map<int, std::unique_ptr<Kiln::CExComboBox>> m_combos;
    std::map<int, std::unique_ptr<Kiln::CDoubleEdit>> m_doubles;
    std::map<int, std::unique_ptr<CUnderwritingDateEdit>> m_dates;
    CWnd* m_deleteButton = nullptr;
    unsigned long m_maximumRows = ~0ul;
    bool m_insertable = true;
};
