#include "Afx/windows/ListCtrl.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr int kRowsOfAPage = 10;
constexpr std::uint32_t kColour = 0x00FFFFFF, kOpaque = 0xFF000000;

} // namespace

void CImageList::Create(int width, int height) noexcept
{
    m_width = width;
    m_height = height;
    m_pictures.clear();
}

int CImageList::Add(Afx::Bitmap picture, std::uint32_t mask)
{
    if (picture.width != m_width || picture.height != m_height ||
        picture.pixels.size() != static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height))
        return -1;
    for (std::uint32_t& pixel : picture.pixels)
        pixel = (pixel & kColour) == (mask & kColour) ? 0 : pixel | kOpaque;
    m_pictures.push_back(std::move(picture));
    return GetImageCount() - 1;
}

const Afx::Bitmap* CImageList::GetImage(int index) const noexcept
{
    return index >= 0 && index < GetImageCount() ? &m_pictures[static_cast<std::size_t>(index)] : nullptr;
}

IMPLEMENT_DYNCREATE(CListCtrl, CWnd)

const CListCtrl::Row* CListCtrl::At(int row) const noexcept
{
    return row >= 0 && row < GetItemCount() ? &m_rows[static_cast<std::size_t>(row)] : nullptr;
}

int CListCtrl::InsertColumn(int index, const char* heading, int width)
{
    const int count = static_cast<int>(m_columns.size());
    index = std::clamp(index, 0, count);
    m_columns.insert(m_columns.begin() + index, {heading, width});
    Changed(Afx::Part::All);
    return index;
}

void CListCtrl::DeleteAllColumns()
{
    m_columns.clear();
    Changed(Afx::Part::All);
}

void CListCtrl::SetColumnWidth(int column, int width)
{
    const auto place = static_cast<std::size_t>(column);
    if (column < 0 || place >= m_columns.size() || width < 0 || m_columns[place].width == width)
        return;
    m_columns[place].width = width;
    Changed(Afx::Part::Widths);
}

int CListCtrl::InsertItem(int row, const char* text, int image)
{
    row = std::clamp(row, 0, GetItemCount());
    m_rows.insert(m_rows.begin() + row, Row{{CString(text)}, image, 0, false});
    if (m_focused >= row)
        ++m_focused;
    Changed(Afx::Part::Items);
    return row;
}

bool CListCtrl::SetItemText(int row, int column, const char* text)
{
    Row* const there = At(row);
    if (!there || column < 0)
        return false;
    const auto place = static_cast<std::size_t>(column);
    if (there->texts.size() <= place)
        there->texts.resize(place + 1);
    there->texts[place] = text;
    Changed(Afx::Part::Items);
    return true;
}

CString CListCtrl::GetItemText(int row, int column) const
{
    const Row* const there = At(row);
    const auto place = static_cast<std::size_t>(column);
    return there && column >= 0 && place < there->texts.size() ? there->texts[place] : CString();
}

int CListCtrl::GetItemImage(int row) const noexcept
{
    const Row* const there = At(row);
    return there ? there->image : -1;
}

void CListCtrl::SetItemData(int row, std::uintptr_t data) noexcept
{
    if (Row* const there = At(row))
        there->data = data;
}

std::uintptr_t CListCtrl::GetItemData(int row) const noexcept
{
    const Row* const there = At(row);
    return there ? there->data : 0;
}

void CListCtrl::DeleteAllItems()
{
    const bool hadSelection = !GetSelectedRows().empty();
    m_rows.clear();
    m_focused = -1;
    Changed(Afx::Part::Items);
    if (hadSelection)
        SelectionChanged();
}

bool CListCtrl::DeleteItem(int row)
{
    if (!At(row))
        return false;
    const bool wasSelected = IsSelected(row);
    m_rows.erase(m_rows.begin() + row);
    if (m_focused > row || m_focused >= GetItemCount())
        --m_focused;
    Changed(Afx::Part::Items);
    if (wasSelected)
        SelectionChanged();
    return true;
}

bool CListCtrl::IsSelected(int row) const noexcept
{
    const Row* const there = At(row);
    return there && there->selected;
}

void CListCtrl::Select(int row, bool select)
{
    Row* const there = At(row);
    if (!there || there->selected == select)
        return;
    if (select && m_single)
        for (Row& other : m_rows)
            other.selected = false;
    there->selected = select;
    SelectionChanged();
}

std::vector<int> CListCtrl::GetSelectedRows() const
{
    std::vector<int> rows;
    for (int row = 0; row < GetItemCount(); ++row)
        if (IsSelected(row))
            rows.push_back(row);
    return rows;
}

void CListCtrl::SetFocusedRow(int row)
{
    m_focused = At(row) ? row : -1;
    Changed(Afx::Part::Selection);
}

CString CListCtrl::GetTip(int) const { return {}; }
void CListCtrl::HeadingClicked(int) {}

void CListCtrl::ClickColumn(int column)
{
    const Afx::RunningEvent event;
    m_clickedColumn = column;
    HeadingClicked(column);
    DeliverNotify(Afx::kNotifyColumnClick);
}

void CListCtrl::ChooseOnly(int row)
{
    if (!At(row))
        return;
    bool changed = false;
    for (int i = 0; i < GetItemCount(); ++i)
        changed |= std::exchange(m_rows[static_cast<std::size_t>(i)].selected, i == row) != (i == row);
    m_focused = row;
    if (changed)
        SelectionChanged();
    else
        Changed(Afx::Part::Selection);
}

void CListCtrl::SelectionChanged()
{
    Changed(Afx::Part::Selection);
    if (!m_quiet)
        DeliverNotify(Afx::kNotifyItemChanged);
}

bool CListCtrl::OnKey(unsigned key, unsigned modifiers)
{
    m_pressedKey = key;
    const WindowRef here(this);
    DeliverNotify(Afx::kNotifyKeyDown);
    if (!here || !TakesInput())
        return true;
    if (key == 'A' && modifiers == Afx::kControl && !m_single) {
        for (Row& row : m_rows)
            row.selected = true;
        SelectionChanged();
        return true;
    }
    if (key == VK_SPACE && modifiers == Afx::kControl && m_focused >= 0) {
        Select(m_focused, !IsSelected(m_focused));
        return true;
    }
    const int last = GetItemCount() - 1;
    int to = m_focused;
    switch (key) {
    case VK_UP:
        to = m_focused - 1;
        break;
    case VK_DOWN:
        to = m_focused + 1;
        break;
    case VK_PRIOR:
        to = m_focused - kRowsOfAPage;
        break;
    case VK_NEXT:
        to = m_focused + kRowsOfAPage;
        break;
    case VK_HOME:
        to = 0;
        break;
    case VK_END:
        to = last;
        break;
    default:
        return false;
    }
    if (last < 0)
        return true;
    to = std::clamp(to, 0, last);
    if (modifiers == Afx::kShift && !m_single) {
        for (int row = std::min(std::max(m_focused, 0), to); row <= std::max(m_focused, to); ++row)
            m_rows[static_cast<std::size_t>(row)].selected = true;
        m_focused = to;
        SelectionChanged();
    } else if (modifiers == Afx::kControl) {
        SetFocusedRow(to);
    } else {
        ChooseOnly(to);
    }
    return true;
}

unsigned CListCtrl::OnGetDlgCode() { return DLGC_WANTARROWS; }

void CListCtrl::TakeStyle(const CWnd& control)
{
    if (const auto* const list = dynamic_cast<const CListCtrl*>(&control)) {
        m_single = m_single || list->m_single;
        if (m_columns.empty())
            m_columns = list->m_columns;
    }
}
