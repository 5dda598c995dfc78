#pragma once

// The list of rows with columns, and its images.

#include <cstdint>
#include <vector>

#include "Afx/windows/Wnd.h"

namespace Afx
{

/// A picture: 0xAARRGGBB a pixel, from the top left, line by line.
struct Bitmap
{
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;
};

} // namespace Afx

/// Pictures of one size, by index from 0.
class AFX_API CImageList
{
public:
    /// Pictures of this size in pixels.
    void Create(int width, int height) noexcept;
    /// Adds a picture whose pixels of the colour `mask` (0x00RRGGBB) are see-through. Its index; -1 for another size.
    int Add(Afx::Bitmap picture, std::uint32_t mask);
    int GetImageCount() const noexcept { return static_cast<int>(m_pictures.size()); }
    const Afx::Bitmap* GetImage(int index) const noexcept; // null: none

private:
    int m_width = 0, m_height = 0;
    std::vector<Afx::Bitmap> m_pictures;
};

/// Rows of texts under headings, each row with an image and a number of the program's own; any number of rows can be
/// selected, and one has the focus. The parent is notified of a double-click, of keys, of a click on a heading and when
/// the selection changes (Afx::kNotify...). Rows and columns count from 0.
class AFX_API CListCtrl : public CWnd
{
    DECLARE_DYNCREATE(CListCtrl)

    struct Column
    {
        CString heading;
        int width; // dialog units
    };

    int InsertColumn(int index, const char* heading, int width);
    const std::vector<Column>& GetColumns() const noexcept { return m_columns; }
    void DeleteAllColumns();
    /// Dialog units. The user can size columns, too.
    void SetColumnWidth(int column, int width);
    /// Not owned. Null: no images.
    void SetImageList(const CImageList* images) noexcept { m_images = images; }
    const CImageList* GetImageList() const noexcept { return m_images; }

    /// The index of the new row, whose first column shows `text`.
    int InsertItem(int row, const char* text, int image = -1);
    bool SetItemText(int row, int column, const char* text);
    CString GetItemText(int row, int column) const; // empty outside the list
    int GetItemImage(int row) const noexcept;       // -1: none
    void SetItemData(int row, std::uintptr_t data) noexcept;
    std::uintptr_t GetItemData(int row) const noexcept; // 0 outside the list
    void DeleteAllItems();
    bool DeleteItem(int row);
    int GetItemCount() const noexcept { return static_cast<int>(m_rows.size()); }

    /// One row can be selected, or many, which is the default.
    void SetSingleSelection(bool single) noexcept { m_single = single; }
    bool IsSingleSelection() const noexcept { return m_single; }
    bool IsSelected(int row) const noexcept;
    void Select(int row, bool select = true);
    std::vector<int> GetSelectedRows() const;
    /// The row that the keyboard works on; -1: none.
    int GetFocusedRow() const noexcept { return m_focused; }
    void SetFocusedRow(int row);

    /// What is shown while the mouse rests on a row; the default is nothing.
    virtual CString GetTip(int row) const;
    /// The heading that was clicked last, for kNotifyColumnClick; the key that was pressed, for kNotifyKeyDown.
    int GetClickedColumn() const noexcept { return m_clickedColumn; }
    unsigned GetPressedKey() const noexcept { return m_pressedKey; }
    /// For window systems: a heading was clicked.
    void ClickColumn(int column);
    /// While it is quiet, nobody is told of the selection: the list is being filled.
    void SetQuiet(bool quiet) noexcept { m_quiet = quiet; }

protected:
    friend struct Afx::UserActs;

    /// Arrows, Home, End and page keys move, with Shift they select, Ctrl+A selects all, a blank turns a row over with
    /// Ctrl; the parent hears of every key.
    bool OnKey(unsigned key, unsigned modifiers) override;
    unsigned OnGetDlgCode() override;
    void TakeStyle(const CWnd& control) override;
    /// A heading was clicked; the parent is told after it.
    virtual void HeadingClicked(int column);

private:
    struct Row
    {
        std::vector<CString> texts;
        int image;
        std::uintptr_t data;
        bool selected;
    };

    const Row* At(int row) const noexcept;
    Row* At(int row) noexcept { return const_cast<Row*>(std::as_const(*this).At(row)); }
    void ChooseOnly(int row);
    void SelectionChanged();

    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
    const CImageList* m_images = nullptr;
    int m_focused = -1;
    int m_clickedColumn = -1;
    unsigned m_pressedKey = 0;
    bool m_single = false;
    bool m_quiet = false;
};
