#include "Afx/windows/Wnd.h"

#include <algorithm>
#include <utility>

#include "Afx/Exceptions.h"
#include "Afx/windows/DataExchange.h"

namespace
{

CWnd* g_focus = nullptr;

constexpr unsigned kIdBits = 16; // of a command's first parameter

} // namespace

IMPLEMENT_DYNCREATE(CWnd, CObject)

CWnd::~CWnd()
{
    if (g_focus == this)
        g_focus = nullptr;
    if (m_parent)
        std::erase(m_parent->m_children, this);
    for (CWnd* const child : m_children)
        child->m_parent = nullptr;
}

bool CWnd::Create(CWnd* parent, unsigned id)
{
    if (m_parent || !parent)
        return false;
    parent->m_children.push_back(this);
    m_parent = parent;
    m_id = id;
    return true;
}

CWnd* CWnd::GetDlgItem(int id) const noexcept
{
    const auto found = std::find_if(m_children.begin(), m_children.end(),
                                    [id](const CWnd* child) { return child->GetDlgCtrlID() == id; });
    return found == m_children.end() ? nullptr : *found;
}

bool CWnd::EnableWindow(bool enable) noexcept { return std::exchange(m_enabled, enable); }

bool CWnd::ShowWindow(bool show) noexcept { return std::exchange(m_visible, show); }

bool CWnd::IsWindowVisible() const noexcept
{
    for (const CWnd* window = this; window; window = window->m_parent)
        if (!window->m_visible)
            return false;
    return true;
}

bool CWnd::TakesInput() const noexcept
{
    for (const CWnd* window = this; window; window = window->m_parent)
        if (!window->m_enabled || !window->m_visible)
            return false;
    return true;
}

CWnd* CWnd::SetFocus()
{
    CWnd* const before = g_focus;
    if (before == this || !TakesInput())
        return before;
    g_focus = this; // first, so that a handler may move it on
    if (before)
        before->OnKillFocus(this);
    return before;
}

CWnd* CWnd::GetFocus() noexcept { return g_focus; }

void CWnd::KillFocus()
{
    if (CWnd* const before = std::exchange(g_focus, nullptr))
        before->OnKillFocus(nullptr);
}

bool CWnd::HasFocusWithin() const noexcept
{
    for (const CWnd* window = g_focus; window; window = window->m_parent)
        if (window == this)
            return true;
    return false;
}

bool CWnd::UpdateData(bool saveAndValidate)
{
    CDataExchange exchange(this, saveAndValidate);
    try {
        DoDataExchange(&exchange);
    } catch (CUserException* refusal) {
        refusal->Delete();
        return false;
    }
    return true;
}

void CWnd::DeliverChar(unsigned character, unsigned repeat)
{
    if (TakesInput())
        OnChar(character, repeat, 0);
}

bool CWnd::DeliverCommand(unsigned id, unsigned notification)
{
    return TakesInput() && OnCommand(WPARAM{notification} << kIdBits | id, 0);
}

void CWnd::OnChar(unsigned, unsigned, unsigned) {}
void CWnd::OnSetText(const char* text) { m_text = text; }
void CWnd::OnKillFocus(CWnd*) {}
bool CWnd::OnCommand(WPARAM, LPARAM) { return false; }
void CWnd::DoDataExchange(CDataExchange*) {}
