#include "Afx/windows/WindowSystem.h"

#include <iostream>
#include <stdexcept>

#include "Afx/text/Utf8.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/MessageBox.h"

namespace Afx
{
namespace
{

/// Never destroyed: nothing may be torn down by static destruction.
std::unique_ptr<WindowSystem>& Installed()
{
    static auto& installed = *new std::unique_ptr<WindowSystem>;
    return installed;
}

constexpr unsigned kButtonsMask = 0xF;

bool Offers(unsigned style, int button) noexcept
{
    switch (style & kButtonsMask) {
    case MB_OKCANCEL:
        return button == IDOK || button == IDCANCEL;
    case MB_YESNO:
        return button == IDYES || button == IDNO;
    default:
        return button == IDOK;
    }
}

void RequireInput(const CWnd& window)
{
    if (!window.TakesInput())
        throw std::logic_error("window " + std::to_string(window.GetDlgCtrlID()) + " is disabled or hidden");
}

} // namespace

int SafeAnswer(unsigned style) noexcept
{
    switch (style & kButtonsMask) {
    case MB_OKCANCEL:
        return IDCANCEL;
    case MB_YESNO:
        return IDNO;
    default:
        return IDOK;
    }
}

WindowSystem::~WindowSystem() = default;
void WindowSystem::RunDialog(CDialog&) {}
void WindowSystem::Wait(int) {}
void WindowSystem::ShowWait(const std::string&) {}
bool WindowSystem::WaitCancelled() { return false; }
bool WindowSystem::OpenBrowser(const std::string&) { return false; }
bool WindowSystem::ShowHelp(const std::string&, unsigned) { return false; }
std::unique_ptr<WindowPeer> WindowSystem::MakePeer(CWnd&) { return nullptr; }
std::unique_ptr<CDC> WindowSystem::MeasuringContext() const { return std::make_unique<CDC>(); }
std::string WindowSystem::GetClipboard() { return m_clipboard; }
void WindowSystem::SetClipboard(const std::string& text) { m_clipboard = text; }

WindowSystem* WindowSystem::Current() noexcept { return Installed().get(); }

std::unique_ptr<WindowSystem> WindowSystem::Install(std::unique_ptr<WindowSystem> system)
{
    std::swap(Installed(), system);
    return system;
}

int ConsoleWindowSystem::MessageBox(const std::string& text, unsigned style)
{
    std::cerr << ToPrintable(text, true) << std::endl;
    return SafeAnswer(style);
}

int HeadlessWindowSystem::MessageBox(const std::string& text, unsigned style)
{
    m_shown.push_back({text, style});
    if (!m_answers.empty()) {
        const int answer = m_answers.front();
        m_answers.pop_front();
        if (Offers(style, answer))
            return answer;
    }
    return Unexpected({text, style});
}

int HeadlessWindowSystem::Unexpected(const Shown& shown) const
{
    return m_unexpected ? m_unexpected(shown) : SafeAnswer(shown.style);
}

void HeadlessWindowSystem::RunDialog(CDialog& dialog)
{
    if (!m_scripts.empty()) {
        const DialogScript script = std::move(m_scripts.front());
        m_scripts.pop_front(); // first: the script may open another dialog
        script(dialog);
    }
    if (!dialog.IsOpen())
        return;
    CString title;
    dialog.GetWindowText(title);
    dialog.DeliverCommand(static_cast<unsigned>(Unexpected({"dialog: " + title.Str(), MB_OKCANCEL})));
}

void HeadlessWindowSystem::Type(CWnd& control, std::string_view text)
{
    RequireInput(control);
    if (CWnd::GetFocus() != &control)
        CDialog::GotoDlgCtrl(&control);
    const WindowRef here(&control);
    while (!text.empty() && here)
        UserActs::Char(control, TakeCharacter(text));
}

void HeadlessWindowSystem::Leave() { CWnd::KillFocus(); }

void HeadlessWindowSystem::Click(CWnd& window, unsigned id)
{
    CWnd* const button = window.GetDlgItem(static_cast<int>(id));
    RequireInput(button ? *button : window);
    if (button)
        UserActs::Click(*button);
    else
        window.DeliverCommand(id);
}

bool HeadlessWindowSystem::Key(unsigned key, unsigned modifiers)
{
    CWnd* const focus = CWnd::GetFocus();
    return focus && UserActs::Key(*focus, key, modifiers);
}

bool HeadlessWindowSystem::ShowHelp(const std::string& file, unsigned topic)
{
    m_helped.push_back(file + '#' + std::to_string(topic));
    return true;
}

} // namespace Afx

CWaitCursor::CWaitCursor()
{
    if (Afx::WindowSystem* const system = Afx::WindowSystem::Current())
        system->Wait(+1);
}

CWaitCursor::~CWaitCursor()
{
    if (Afx::WindowSystem* const system = Afx::WindowSystem::Current())
        system->Wait(-1);
}
