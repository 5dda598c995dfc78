#include "Afx/windows/Edit.h"

#include <algorithm>
#include <limits>

#include "Afx/text/Utf8.h"
#include "Afx/windows/MessageBox.h"
#include "Afx/windows/WindowSystem.h"

namespace
{

constexpr unsigned kLineFeed = 10, kDelete = 127;

bool IsControl(unsigned character) noexcept { return character < ' ' || character == kDelete; }

/// `position`, brought into the text and to the start of its character.
int Snap(const CString& text, int position) noexcept
{
    position = std::clamp(position, 0, text.GetLength());
    while (position > 0 && Afx::ContinuesCharacter(text.GetAt(position)))
        --position;
    return position;
}

/// The position after the character at `position`.
int Next(const CString& text, int position) noexcept
{
    while (++position < text.GetLength() && Afx::ContinuesCharacter(text.GetAt(position))) {
    }
    return std::min(position, text.GetLength());
}

} // namespace

IMPLEMENT_DYNCREATE(CEdit, CWnd)

void CEdit::SetSel(int start, int end)
{
    TakeSelection(start, end);
    Changed(Afx::Part::Selection);
}

void CEdit::TakeSelection(int start, int end) noexcept
{
    if (start < 0) {
        m_selStart = m_selEnd;
        return;
    }
    m_selStart = Snap(Text(), start);
    m_selEnd = end < 0 ? Text().GetLength() : Snap(Text(), end);
    if (m_selEnd < m_selStart)
        std::swap(m_selStart, m_selEnd);
}

void CEdit::GetSel(int& start, int& end) const noexcept
{
    start = m_selStart;
    end = m_selEnd;
}

CString CEdit::GetSelectedText() const { return Text().Mid(m_selStart, m_selEnd - m_selStart); }

void CEdit::SetReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    Changed(Afx::Part::Enabled);
}

void CEdit::OnChar(unsigned character, unsigned repeat, unsigned)
{
    if (m_readOnly)
        return;
    for (; repeat > 0; --repeat)
        if (character == VK_BACK)
            Erase();
        else if (!IsControl(character) || (character == kLineFeed && m_multiLine))
            Insert(character);
}

bool CEdit::OnKey(unsigned key, unsigned modifiers)
{
    if (modifiers & Afx::kAlt)
        return false;
    if (modifiers & Afx::kControl)
        return OnControlKey(key);
    const bool extend = (modifiers & Afx::kShift) != 0;
    switch (key) {
    case VK_LEFT:
        MoveCaret(Snap(Text(), m_selEnd - 1), extend);
        return true;
    case VK_RIGHT:
        MoveCaret(Next(Text(), m_selEnd), extend);
        return true;
    case VK_HOME:
        MoveCaret(0, extend);
        return true;
    case VK_END:
        MoveCaret(Text().GetLength(), extend);
        return true;
    case VK_DELETE:
        if (!m_readOnly) {
            if (m_selStart == m_selEnd)
                m_selEnd = Next(Text(), m_selStart);
            ReplaceSelection({});
        }
        return true;
    default:
        return false;
    }
}

bool CEdit::OnControlKey(unsigned key)
{
    Afx::WindowSystem* const system = Afx::WindowSystem::Current();
    switch (key) {
    case 'A':
        SetSel(0, -1);
        return true;
    case 'C':
    case 'X':
        if (m_password)
            return true;
        if (system && m_selStart != m_selEnd)
            system->SetClipboard(GetSelectedText().Str());
        if (key == 'X' && !m_readOnly)
            ReplaceSelection({});
        return true;
    case 'V':
        if (system && !m_readOnly)
            Paste(system->GetClipboard());
        return true;
    default:
        return false;
    }
}

/// As if typed, so that a field refuses in a pasted text what it refuses of a key. What would make the line too long is
/// refused whole: half a text would be taken for all of it.
void CEdit::Paste(std::string_view text)
{
    const WindowRef here(this);
    const int stays = m_characters - Afx::CountCharacters(GetSelectedText().View());
    const int most = m_limit > 0 ? std::min(m_limit, kLongestLine) : kLongestLine;
    const int added = Afx::CountCharacters(text);
    if (!m_multiLine && added > 1 && added > most - stays) { // one character more is ignored, as it is when typed
        CString message;
        message.Format("The text is too long: this field takes %d characters. Nothing was pasted.", most);
        AfxMessageBox(message);
        return;
    }
    while (here && !text.empty()) {
        OnChar(Afx::TakeCharacter(text), 1, 0);
        if (here && m_limit > 0 && m_characters >= m_limit)
            return;
    }
}

void CEdit::OnSetText(const char* text)
{
    const std::string_view whole(text ? text : "");
    const std::string_view fitting = Fitting(whole);
    CWnd::OnSetText(fitting.size() == whole.size() ? text : std::string(fitting).c_str());
    m_characters = Afx::CountCharacters(Text().View());
    m_selStart = m_selEnd = 0;
}

std::string_view CEdit::Fitting(std::string_view text) const noexcept
{
    if (m_multiLine || text.size() <= kLongestLine || Afx::CountCharacters(text) <= kLongestLine)
        return text;
    std::string_view rest = text;
    for (int i = 0; i < kLongestLine; ++i)
        Afx::TakeCharacter(rest);
    return text.substr(0, text.size() - rest.size());
}

void CEdit::OnSetFocus(CWnd* oldFocus)
{
    CWnd::OnSetFocus(oldFocus);
    NotifyParent(EN_SETFOCUS);
}

void CEdit::OnKillFocus(CWnd* newFocus)
{
    CWnd::OnKillFocus(newFocus);
    NotifyParent(EN_KILLFOCUS);
}

void CEdit::TakeStyle(const CWnd& control)
{
    if (const auto* const edit = dynamic_cast<const CEdit*>(&control)) {
        m_limit = edit->m_limit ? edit->m_limit : m_limit;
        m_readOnly = m_readOnly || edit->m_readOnly;
        m_multiLine = m_multiLine || edit->m_multiLine;
        m_password = m_password || edit->m_password;
    }
    m_characters = Afx::CountCharacters(Text().View());
}

void CEdit::Erase()
{
    if (m_selStart == m_selEnd)
        m_selStart = Snap(Text(), m_selStart - 1);
    ReplaceSelection({});
}

void CEdit::Insert(unsigned character)
{
    std::string typed;
    Afx::AppendUtf8(typed, character);
    const int selected = m_selStart == m_selEnd ? 0 : Afx::CountCharacters(GetSelectedText().View());
    const int most = m_multiLine ? std::numeric_limits<int>::max() : kLongestLine;
    const int limit = m_limit > 0 ? std::min(m_limit, most) : most;
    if (!typed.empty() && m_characters - selected < limit)
        ReplaceSelection(typed);
}

void CEdit::ReplaceSelection(std::string_view with)
{
    if (m_selStart == m_selEnd && with.empty())
        return;
    m_characters += Afx::CountCharacters(with) - Afx::CountCharacters(GetSelectedText().View());
    CString& text = MutableText();
    text.Delete(m_selStart, m_selEnd - m_selStart);
    text.Insert(m_selStart, std::string(with).c_str());
    m_selStart = m_selEnd = m_selStart + static_cast<int>(with.size());
    Changed(Afx::Part::Text | Afx::Part::Selection);
    NotifyParent(EN_CHANGE);
}

void CEdit::MoveCaret(int to, bool extend)
{
    if (extend)
        SetSel(std::min(m_selStart, to), std::max(m_selStart, to));
    else
        SetSel(to, to);
}
