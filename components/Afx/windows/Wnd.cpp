#include "Afx/windows/Wnd.h"

#include <algorithm>
#include <utility>

#include "Afx/Exceptions.h"
#include "Afx/text/Ascii.h"
#include "Afx/windows/DataExchange.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/Static.h"
#include "Afx/windows/WindowSystem.h"

namespace
{

CWnd* g_focus = nullptr;

int g_eventsRunning = 0;

/// Windows that ended while an event ran. Never destroyed itself: nothing is torn down by static destruction.
std::vector<std::unique_ptr<CWnd>>& Ended()
{
    static auto& ended = *new std::vector<std::unique_ptr<CWnd>>;
    return ended;
}

} // namespace

namespace Afx
{

WindowPeer::~WindowPeer() = default;
void WindowPeer::ShowCells(int, int, int, int) { Show(Part::Cells); }

RunningEvent::RunningEvent() noexcept { ++g_eventsRunning; }

RunningEvent::~RunningEvent()
{
    if (--g_eventsRunning == 0)
        while (!Ended().empty()) {
            const std::vector<std::unique_ptr<CWnd>> going = std::exchange(Ended(), {});
        }
}

CString WithoutMnemonic(const CString& text)
{
    std::string plain;
    for (int i = 0; i < text.GetLength(); ++i) {
        if (text[i] == '&' && text[++i] == '\0')
            break;
        plain += text[i];
    }
    if (plain.ends_with(':'))
        plain.pop_back();
    return CString(std::move(plain));
}

CString WithoutMarks(const CString& data)
{
    CString text = data;
    text.Replace("&", "&&");
    return text;
}

char MnemonicOf(const CString& text) noexcept
{
    for (int i = 0; i + 1 < text.GetLength(); ++i)
        if (text[i] == '&' && text[++i] != '&')
            return UpperAscii(text[i]);
    return 0;
}

} // namespace Afx

IMPLEMENT_DYNCREATE(CWnd, CObject)

CWnd::~CWnd()
{
    m_peer.reset();
    Unlink();
    for (CWnd* const child : m_children)
        child->m_parent = nullptr;
}

void CWnd::Unlink() noexcept
{
    if (g_focus == this)
        g_focus = nullptr;
    if (m_parent)
        std::erase(m_parent->m_children, this);
    m_parent = nullptr;
}

bool CWnd::Create(CWnd* parent, unsigned id)
{
    if (m_parent || !parent)
        return false;
    parent->m_children.push_back(this);
    m_parent = parent;
    m_id = id;
    if (parent->m_peer)
        MakePeers();
    return true;
}

CWnd& CWnd::Adopt(std::unique_ptr<CWnd> control, unsigned id)
{
    m_owned.push_back(std::move(control));
    CWnd& adopted = *m_owned.back();
    adopted.Create(this, id);
    return adopted;
}

bool CWnd::SubclassDlgItem(unsigned id, CWnd* parent)
{
    CWnd* const there = parent ? parent->GetDlgItem(static_cast<int>(id)) : nullptr;
    if (!there || there == this || m_parent)
        return false;
    const Afx::RunningEvent event;
    m_text = there->m_text;
    m_name = there->m_name;
    m_rect = there->m_rect;
    m_enabled = there->m_enabled;
    m_visible = there->m_visible;
    TakeStyle(*there);
    const bool hadFocus = g_focus == there;
    Create(parent, id);
    auto& siblings = parent->m_children;
    siblings.pop_back();
    *std::find(siblings.begin(), siblings.end(), there) = this;
    there->m_parent = nullptr;
    there->DropPeers();
    if (hadFocus)
        g_focus = this;
    parent->LetGo(*there);
    PreSubclassWindow();
    return true;
}

bool CWnd::DestroyWindow()
{
    const Afx::RunningEvent event;
    if (HasFocusWithin())
        g_focus = nullptr;
    OnDestroy();
    while (!m_children.empty())
        m_children.back()->DestroyWindow();
    DropPeers();
    if (m_parent)
        m_parent->LetGo(*this);
    Unlink();
    return true;
}

/// A child that this window owns, if it does, lives until the running event has returned.
void CWnd::LetGo(const CWnd& child)
{
    const auto held =
        std::find_if(m_owned.begin(), m_owned.end(), [&child](const auto& one) { return one.get() == &child; });
    if (held == m_owned.end())
        return;
    Ended().push_back(std::move(*held));
    m_owned.erase(held);
}

CWnd& CWnd::GetTopLevel() noexcept
{
    CWnd* window = this;
    while (window->m_parent)
        window = window->m_parent;
    return *window;
}

CWnd* CWnd::GetDlgItem(int id) const noexcept
{
    const auto found = std::find_if(m_children.begin(), m_children.end(),
                                    [id](const CWnd* child) { return child->GetDlgCtrlID() == id; });
    return found == m_children.end() ? nullptr : *found;
}

/// The control that gets the focus when this one can no longer have it; null when it has not got it.
CWnd* CWnd::NextOfFocus()
{
    const auto* const dialog = g_focus == this ? dynamic_cast<const CDialog*>(&GetTopLevel()) : nullptr;
    CWnd* const next = dialog ? dialog->GetNextDlgTabItem(this) : nullptr;
    return next == this ? nullptr : next;
}

bool CWnd::EnableWindow(bool enable)
{
    CWnd* const next = enable ? nullptr : NextOfFocus();
    const bool before = std::exchange(m_enabled, enable);
    if (before != enable)
        Changed(Afx::Part::Enabled);
    if (next)
        CDialog::GotoDlgCtrl(next);
    return before;
}

bool CWnd::ShowWindow(bool show)
{
    CWnd* const next = show ? nullptr : NextOfFocus();
    const bool before = std::exchange(m_visible, show);
    if (before != show)
        Changed(Afx::Part::Visible);
    if (next)
        CDialog::GotoDlgCtrl(next);
    return before;
}

bool CWnd::IsWindowVisible() const noexcept
{
    for (const CWnd* window = this; window; window = window->m_parent)
        if (!window->m_visible)
            return false;
    return true;
}

bool CWnd::TakesInput() const noexcept
{
    const CWnd* window = this;
    for (;; window = window->m_parent) {
        if (!window->m_enabled || !window->m_visible)
            return false;
        if (!window->m_parent)
            break;
    }
    const CDialog* const modal = CDialog::GetTopModal();
    return !modal || modal == window;
}

void CWnd::MoveWindow(const CRect& rect)
{
    SetWindowPos(nullptr, rect.left, rect.top, rect.Width(), rect.Height(), SWP_NOZORDER);
}

void CWnd::SetWindowPos(CWnd* after, int x, int y, int cx, int cy, unsigned flags)
{
    WINDOWPOS position{};
    position.hwnd = GetSafeHwnd();
    position.hwndInsertAfter = after ? after->GetSafeHwnd() : nullptr;
    position.x = x;
    position.y = y;
    position.cx = cx;
    position.cy = cy;
    position.flags = flags;
    Afx::MapMessage message;
    message.kind = Afx::MapMessage::Kind::PositionChanging;
    message.position = &position;
    OnMapped(message);
    if (!(position.flags & SWP_NOMOVE))
        m_rect = {position.x, position.y, position.x + m_rect.Width(), position.y + m_rect.Height()};
    if (!(position.flags & SWP_NOSIZE)) {
        m_rect.right = m_rect.left + position.cx;
        m_rect.bottom = m_rect.top + position.cy;
    }
    CWnd* const before = FromHandle(position.hwndInsertAfter);
    if (!(position.flags & SWP_NOZORDER) && before && before != this && m_parent && before->m_parent == m_parent) {
        auto& siblings = m_parent->m_children;
        std::erase(siblings, this);
        siblings.insert(std::find(siblings.begin(), siblings.end(), before) + 1, this);
    }
    Changed(Afx::Part::Rect);
}

void CWnd::SetRedraw(bool redraw)
{
    m_drawingOff = std::max(0, m_drawingOff + (redraw ? -1 : +1));
    if (redraw)
        Changed(Afx::Part::All);
}

CWnd* CWnd::GetLabel() const noexcept
{
    if (!m_parent)
        return nullptr;
    const auto& siblings = m_parent->m_children;
    const auto here = std::find(siblings.begin(), siblings.end(), this);
    const bool isLabelled = here != siblings.begin() && (*(here - 1))->IsKindOf(RUNTIME_CLASS(CStatic));
    return isLabelled ? *(here - 1) : nullptr;
}

CString CWnd::GetAccessibleName() const
{
    if (!m_name.IsEmpty())
        return m_name;
    if (NamesItself())
        return Afx::WithoutMnemonic(m_text);
    const CWnd* const label = GetLabel();
    return label ? Afx::WithoutMnemonic(label->m_text) : CString();
}

void CWnd::SetAccessibleName(const CString& name)
{
    m_name = name;
    Changed(Afx::Part::Name);
}

CWnd* CWnd::SetFocus()
{
    CWnd* const before = g_focus;
    if (before == this || !TakesInput())
        return before;
    const Afx::RunningEvent event;
    const WindowRef here(this), left(before);
    g_focus = this; // first, so that a handler may move it on
    if (before)
        before->OnKillFocus(this);
    if (here && g_focus == this)
        OnSetFocus(left.Get());
    if (here && g_focus == this)
        Changed(Afx::Part::Focus);
    return left.Get();
}

CWnd* CWnd::GetFocus() noexcept { return g_focus; }

void CWnd::KillFocus()
{
    const Afx::RunningEvent event;
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
    const Afx::RunningEvent event;
    if (TakesInput())
        OnChar(character, repeat, 0);
}

bool CWnd::DeliverCommand(unsigned id, unsigned notification)
{
    const Afx::RunningEvent event;
    return TakesInput() && OnCommand(WPARAM{notification} << Afx::kCommandIdBits | id, 0);
}

bool CWnd::DeliverNotify(unsigned code)
{
    if (!m_parent)
        return false;
    const Afx::RunningEvent event;
    NMHDR header{};
    header.hwndFrom = GetSafeHwnd();
    header.idFrom = m_id;
    header.code = code;
    LRESULT result = 0;
    return m_parent->OnNotify(m_id, reinterpret_cast<LPARAM>(&header), &result);
}

bool CWnd::NotifyParent(unsigned notification)
{
    return m_parent &&
           m_parent->OnCommand(WPARAM{notification} << Afx::kCommandIdBits | m_id, reinterpret_cast<LPARAM>(this));
}

void CWnd::MakePeers()
{
    Afx::WindowSystem* const system = Afx::WindowSystem::Current();
    if (!system)
        return;
    if (!m_peer)
        m_peer = system->MakePeer(*this);
    if (m_peer)
        for (std::size_t i = 0; i < m_children.size(); ++i)
            m_children[i]->MakePeers();
}

void CWnd::DropPeers() noexcept
{
    for (CWnd* const child : m_children)
        child->DropPeers();
    m_peer.reset();
}

void CWnd::Changed(Afx::Part parts)
{
    if (m_peer && m_drawingOff == 0)
        m_peer->Show(parts);
}

bool CWnd::PreTranslateMessage(MSG*) { return false; }
unsigned CWnd::OnGetDlgCode() { return 0; }
void CWnd::PreSubclassWindow() {}
void CWnd::TakeStyle(const CWnd&) {}
void CWnd::OnChar(unsigned, unsigned, unsigned) {}
bool CWnd::OnKey(unsigned, unsigned) { return false; }

void CWnd::OnSetText(const char* text)
{
    m_text = text;
    Changed(Afx::Part::Text);
}

void CWnd::OnSetFocus(CWnd*) {}
void CWnd::OnKillFocus(CWnd*) {}

bool CWnd::OnCommand(WPARAM wParam, LPARAM)
{
    Afx::MapMessage message;
    message.id = static_cast<unsigned>(wParam & Afx::kCommandIdMask);
    message.code = static_cast<unsigned>(wParam >> Afx::kCommandIdBits & Afx::kCommandIdMask);
    return OnMapped(message);
}

bool CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    Afx::MapMessage message;
    message.kind = Afx::MapMessage::Kind::Notify;
    message.id = static_cast<unsigned>(wParam);
    message.header = reinterpret_cast<NMHDR*>(lParam);
    message.code = message.header->code;
    message.result = result;
    return OnMapped(message);
}

bool CWnd::OnMapped(Afx::MapMessage&) { return false; }
void CWnd::DoDataExchange(CDataExchange*) {}
void CWnd::OnDestroy() {}

WindowRef::WindowRef(CWnd* window) : m_window(window)
{
    if (!window)
        return;
    if (!window->m_life)
        window->m_life = std::make_shared<char>();
    m_life = window->m_life;
}
