#pragma once

// The list that sorts itself by its columns.

#include <variant>
#include <vector>

#include "Afx/windows/ListCtrl.h"
#include "Kiln/CDate.h"
#include "Kiln/Export.h"

namespace Kiln
{

/// What one column of a row holds: a text, sorted without regard to case; a date, shown as 05/04/2024 and sorted by
/// day, empty ones first; or the index of an image, for the first column only.
using ListValue = std::variant<CString, CDate, int>;

/// A list whose rows are sorted by one column, again after each filling. Rows that are equal stay in the order in which
/// they were added. A click on a heading sorts by that column, a second one the other way round.
class KILN_API CSortListCtrl : public CListCtrl
{
    DECLARE_DYNCREATE(CSortListCtrl)

    /// "name,width;name,width ...": the columns with their headings and widths in dialog units, at least the heading's.
    void SetHeadings(const char* headings);
    /// Adds a row behind the others; `data` is the program's own number for it, other than those of other rows. It is
    /// shown by the next Sort.
    void AddRow(std::vector<ListValue> values, std::uintptr_t data);
    void RemoveAllRows();
    /// Sorts by the column and direction that were set last, the first column upwards at first.
    void Sort();
    void SetSort(int column, bool ascending) noexcept;
    int GetSortColumn() const noexcept { return m_sortColumn; }
    bool IsSortAscending() const noexcept { return m_ascending; }
    /// What row and column hold; null outside the list.
    const ListValue* GetValue(int row, int column) const noexcept;

protected:
    void HeadingClicked(int column) override;

private:
    struct Row
    {
        std::vector<ListValue> values;
        std::uintptr_t data;
    };

    void Show();

    std::vector<Row> m_rows; // as they are shown
    int m_sortColumn = 0;
    bool m_ascending = true;
};

} // namespace Kiln
