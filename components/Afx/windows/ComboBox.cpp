#include "Afx/windows/ComboBox.h"

#include <algorithm>
#include <utility>

#include "Afx/text/TextFold.h"
#include "Afx/text/Utf8.h"

namespace
{

constexpr int kChoicesOfAPage = 10;

} // namespace

IMPLEMENT_DYNCREATE(CComboBox, CWnd)

const CComboBox::Item* CComboBox::At(int index) const noexcept
{
    return index >= 0 && index < GetCount() ? &m_items[static_cast<std::size_t>(index)] : nullptr;
}

int CComboBox::AddString(const char* text, std::uintptr_t data) { return InsertString(GetCount(), text, data); }

int CComboBox::InsertString(int index, const char* text, std::uintptr_t data)
{
    index = index < 0 || index > GetCount() ? GetCount() : index;
    m_items.insert(m_items.begin() + index, {text, data});
    if (m_selected >= index)
        ++m_selected;
    if (m_beforeDrop && m_beforeDrop->index >= index)
        ++m_beforeDrop->index;
    Changed(Afx::Part::Items);
    return index;
}

int CComboBox::DeleteString(int index)
{
    if (!At(index))
        return kNone;
    m_items.erase(m_items.begin() + index);
    if (m_beforeDrop && m_beforeDrop->index == index)
        m_beforeDrop.reset();
    else if (m_beforeDrop && m_beforeDrop->index > index)
        --m_beforeDrop->index;
    if (m_selected == index)
        SetCurSel(kNone);
    else if (m_selected > index)
        --m_selected;
    Changed(Afx::Part::Items);
    return GetCount();
}

void CComboBox::ResetContent()
{
    m_items.clear();
    m_beforeDrop.reset();
    SetCurSel(kNone);
    Changed(Afx::Part::Items);
}

int CComboBox::SetCurSel(int index)
{
    const Item* const item = At(index);
    m_selected = item ? index : kNone;
    MutableText() = item ? item->text : CString();
    Changed(Afx::Part::Selection | Afx::Part::Text);
    return m_selected;
}

bool CComboBox::GetLBText(int index, CString& text) const
{
    const Item* const item = At(index);
    if (item)
        text = item->text;
    return item != nullptr;
}

std::uintptr_t CComboBox::GetItemData(int index) const noexcept
{
    const Item* const item = At(index);
    return item ? item->data : 0;
}

void CComboBox::SetItemData(int index, std::uintptr_t data) noexcept
{
    if (At(index))
        m_items[static_cast<std::size_t>(index)].data = data;
}

int CComboBox::FindStringExact(int after, const char* text) const noexcept
{
    for (int i = std::max(after, kNone) + 1; i < GetCount(); ++i)
        if (m_items[static_cast<std::size_t>(i)].text.CompareNoCase(text) == 0)
            return i;
    return kNone;
}

int CComboBox::FindString(int after, const char* start) const noexcept
{
    const std::string_view wanted = start ? start : "";
    for (int i = 1; i <= GetCount(); ++i) {
        const int index = (std::max(after, kNone) + i) % GetCount();
        const std::string_view text = m_items[static_cast<std::size_t>(index)].text.View();
        if (Afx::EqualNoCase(text.substr(0, wanted.size()), wanted))
            return index;
    }
    return kNone;
}

int CComboBox::SelectString(const char* text)
{
    const int found = FindStringExact(kNone, text);
    return found == kNone ? kNone : SetCurSel(found);
}

void CComboBox::ShowDropDown(bool show)
{
    if (m_dropped == show)
        return;
    m_dropped = show;
    m_beforeDrop.reset();
    if (show)
        m_beforeDrop = Before{m_selected, Text()};
    Changed(Afx::Part::Items);
    NotifyParent(show ? CBN_DROPDOWN : CBN_CLOSEUP);
}

void CComboBox::Choose(int index)
{
    if (!At(index) || index == m_selected)
        return;
    SetCurSel(index);
    TellChosen();
}

void CComboBox::TellChosen()
{
    const WindowRef here(this);
    OnChosen();
    if (here)
        NotifyParent(CBN_SELCHANGE);
}

/// What was chosen when the list dropped is again; that may be nothing.
void CComboBox::TakeBackChoice()
{
    if (!m_beforeDrop || m_beforeDrop->index == m_selected)
        return;
    const Before before = *m_beforeDrop;
    SetCurSel(before.index);
    MutableText() = before.text;
    Changed(Afx::Part::Text);
    TellChosen();
}

bool CComboBox::OnKey(unsigned key, unsigned modifiers)
{
    if ((key == VK_F4 && !modifiers) || ((key == VK_DOWN || key == VK_UP) && modifiers == Afx::kAlt)) {
        ShowDropDown(!m_dropped);
        return true;
    }
    if (modifiers)
        return false;
    const int last = GetCount() - 1;
    switch (key) {
    case VK_DOWN:
        Choose(std::min(m_selected + 1, last));
        return true;
    case VK_UP:
        Choose(std::max(m_selected - 1, 0));
        return true;
    case VK_NEXT:
        Choose(std::min(m_selected + kChoicesOfAPage, last));
        return true;
    case VK_PRIOR:
        Choose(std::max(m_selected - kChoicesOfAPage, 0));
        return true;
    case VK_HOME:
    case VK_END:
        if (m_editable)
            return false;
        Choose(key == VK_HOME ? 0 : last);
        return true;
    case VK_RETURN:
    case VK_ESCAPE: {
        if (!m_dropped)
            return false;
        const WindowRef here(this);
        if (key == VK_ESCAPE)
            TakeBackChoice();
        if (here)
            ShowDropDown(false);
        return true;
    }
    default:
        return false;
    }
}

void CComboBox::OnChar(unsigned character, unsigned repeat, unsigned)
{
    std::string typed;
    if (character != VK_BACK && character >= ' ')
        Afx::AppendUtf8(typed, character);
    if (!m_editable) {
        if (!typed.empty())
            Choose(FindString(m_selected, typed.c_str()));
        return;
    }
    CString text = Text();
    for (; repeat > 0; --repeat)
        if (character != VK_BACK) {
            text += typed;
        } else {
            while (!text.IsEmpty() && Afx::ContinuesCharacter(text.GetAt(text.GetLength() - 1)))
                text = text.Left(text.GetLength() - 1);
            text = text.Left(text.GetLength() - 1);
        }
    Typed(text);
}

/// The text in the edit is `text` now: the item of that name is chosen, if there is one.
void CComboBox::Typed(const CString& text)
{
    if (text == Text())
        return;
    m_selected = FindStringExact(kNone, text);
    MutableText() = text;
    Changed(Afx::Part::Selection | Afx::Part::Text);
    NotifyParent(CBN_EDITCHANGE);
}

unsigned CComboBox::OnGetDlgCode() { return m_dropped ? DLGC_WANTALLKEYS : DLGC_WANTARROWS; }

void CComboBox::OnSetText(const char* text)
{
    if (m_editable)
        m_selected = FindStringExact(kNone, text);
    CWnd::OnSetText(text);
}

void CComboBox::OnKillFocus(CWnd* newFocus)
{
    ShowDropDown(false);
    CWnd::OnKillFocus(newFocus);
    NotifyParent(CBN_KILLFOCUS);
}

void CComboBox::TakeStyle(const CWnd& control)
{
    if (const auto* const combo = dynamic_cast<const CComboBox*>(&control)) {
        m_editable = m_editable || combo->m_editable;
        m_items = combo->m_items;
        m_selected = combo->m_selected;
    }
}
