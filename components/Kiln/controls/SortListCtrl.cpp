#include "Kiln/controls/SortListCtrl.h"

#include <algorithm>

#include "Afx/text/Numbers.h"
#include "Afx/text/TextFold.h"
#include "Kiln/controls/DateEdit.h"

namespace Kiln
{
namespace
{

constexpr int kCharacterWidth = 4, kHeadingRoom = 8; // dialog units

CString Shown(const ListValue& value)
{
    if (const auto* const text = std::get_if<CString>(&value))
        return *text;
    const auto* const date = std::get_if<CDate>(&value);
    return date ? FormatDateShown(*date) : CString();
}

/// Below 0, 0 or above 0, as the two sort. Values of different kinds do not meet in a column.
int CompareValues(const ListValue& a, const ListValue& b)
{
    if (a.index() != b.index())
        return a.index() < b.index() ? -1 : 1;
    if (const auto* const text = std::get_if<CString>(&a))
        return text->CompareNoCase(std::get<CString>(b));
    if (const auto* const image = std::get_if<int>(&a))
        return *image - std::get<int>(b);
    const CDate &first = std::get<CDate>(a), &second = std::get<CDate>(b);
    if (!first.IsValid() || !second.IsValid())
        return static_cast<int>(first.IsValid()) - static_cast<int>(second.IsValid());
    return first.IsSameDay(second) ? 0 : first < second ? -1 : 1;
}

} // namespace

IMPLEMENT_DYNCREATE(CSortListCtrl, CListCtrl)

void CSortListCtrl::SetHeadings(const char* headings)
{
    DeleteAllColumns();
    const CString all = headings;
    for (int at = 0; at >= 0 && at < all.GetLength();) {
        const int end = all.Find(';', at) < 0 ? all.GetLength() : all.Find(';', at);
        const CString one = all.Mid(at, end - at);
        const int comma = one.ReverseFind(',');
        const CString name = comma < 0 ? one : one.Left(comma);
        const int width = comma < 0 ? 0 : Afx::ParseWhole<int>(one.Mid(comma + 1).View()).value_or(0);
        const int least = name.IsEmpty() ? 0 : name.GetLength() * kCharacterWidth + kHeadingRoom;
        InsertColumn(static_cast<int>(GetColumns().size()), name, std::max(width, least));
        at = end + 1;
    }
}

void CSortListCtrl::AddRow(std::vector<ListValue> values, std::uintptr_t data)
{
    m_rows.push_back({std::move(values), data});
}

void CSortListCtrl::RemoveAllRows()
{
    m_rows.clear();
    DeleteAllItems();
}

const ListValue* CSortListCtrl::GetValue(int row, int column) const noexcept
{
    if (row < 0 || static_cast<std::size_t>(row) >= m_rows.size() || column < 0)
        return nullptr;
    const auto& values = m_rows[static_cast<std::size_t>(row)].values;
    return static_cast<std::size_t>(column) < values.size() ? &values[static_cast<std::size_t>(column)] : nullptr;
}

void CSortListCtrl::SetSort(int column, bool ascending) noexcept
{
    m_sortColumn = column;
    m_ascending = ascending;
}

void CSortListCtrl::Sort()
{
    const auto column = static_cast<std::size_t>(std::max(m_sortColumn, 0));
    std::stable_sort(m_rows.begin(), m_rows.end(), [&](const Row& a, const Row& b) {
        if (column >= a.values.size() || column >= b.values.size())
            return a.values.size() < b.values.size();
        const int order = CompareValues(a.values[column], b.values[column]);
        return m_ascending ? order < 0 : order > 0;
    });
    Show();
}

/// Fills the list from the rows; what was selected, and the row with the focus, stay so by their numbers.
void CSortListCtrl::Show()
{
    std::vector<std::uintptr_t> selected;
    for (const int row : GetSelectedRows())
        selected.push_back(GetItemData(row));
    const std::uintptr_t focused = GetItemData(GetFocusedRow());
    const bool hadFocus = GetFocusedRow() >= 0;
    SetRedraw(false);
    SetQuiet(true);
    DeleteAllItems();
    for (const Row& row : m_rows) {
        const auto* const image = row.values.empty() ? nullptr : std::get_if<int>(&row.values.front());
        const int at = InsertItem(GetItemCount(), "", image ? *image : -1);
        for (std::size_t i = 0; i < row.values.size(); ++i)
            SetItemText(at, static_cast<int>(i), Shown(row.values[i]));
        SetItemData(at, row.data);
        if (std::find(selected.begin(), selected.end(), row.data) != selected.end())
            Select(at);
        if (hadFocus && row.data == focused)
            SetFocusedRow(at);
    }
    SetQuiet(false);
    SetRedraw(true);
}

void CSortListCtrl::HeadingClicked(int column)
{
    SetSort(column, column == m_sortColumn ? !m_ascending : true);
    Sort();
}

} // namespace Kiln
