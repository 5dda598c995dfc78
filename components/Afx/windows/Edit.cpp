#include "Afx/windows/Edit.h"

#include <algorithm>

#include "Afx/text/Utf8.h"

namespace
{

constexpr unsigned kBackspace = 8, kDelete = 127;

bool IsControl(unsigned character) noexcept { return character < ' ' || character == kDelete; }

/// `position`, brought into the text and to the start of its character.
int Snap(const CString& text, int position) noexcept
{
    position = std::clamp(position, 0, text.GetLength());
    while (position > 0 && Afx::ContinuesCharacter(text.GetAt(position)))
        --position;
    return position;
}

} // namespace

IMPLEMENT_DYNCREATE(CEdit, CWnd)

void CEdit::SetSel(int start, int end) noexcept
{
    CString text;
    GetWindowText(text);
    if (start < 0) {
        m_selStart = m_selEnd;
        return;
    }
    m_selStart = Snap(text, start);
    m_selEnd = end < 0 ? text.GetLength() : Snap(text, end);
    if (m_selEnd < m_selStart)
        std::swap(m_selStart, m_selEnd);
}

void CEdit::GetSel(int& start, int& end) const noexcept
{
    start = m_selStart;
    end = m_selEnd;
}

void CEdit::OnChar(unsigned character, unsigned repeat, unsigned)
{
    for (; repeat > 0; --repeat)
        if (character == kBackspace)
            Erase();
        else if (!IsControl(character))
            Insert(character);
}

void CEdit::OnSetText(const char* text)
{
    CWnd::OnSetText(text);
    m_selStart = m_selEnd = 0;
}

void CEdit::Erase()
{
    CString text;
    GetWindowText(text);
    if (m_selStart == m_selEnd)
        m_selStart = Snap(text, m_selStart - 1);
    ReplaceSelection({});
}

void CEdit::Insert(unsigned character)
{
    std::string typed;
    Afx::AppendUtf8(typed, character);
    CString text;
    GetWindowText(text);
    const CString stays = text.Left(m_selStart) + text.Mid(m_selEnd);
    const bool isFull = m_limit > 0 && Afx::CountCharacters(stays.View()) >= m_limit;
    if (!typed.empty() && !isFull)
        ReplaceSelection(typed);
}

void CEdit::ReplaceSelection(const std::string& with)
{
    CString text;
    GetWindowText(text);
    const int caret = m_selStart + static_cast<int>(with.size());
    CWnd::OnSetText(text.Left(m_selStart) + CString(with) + text.Mid(m_selEnd)); // typed, not set
    SetSel(caret, caret);
}
