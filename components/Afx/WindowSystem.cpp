#include "Afx/WindowSystem.h"

#include <iostream>

#include "Afx/MessageBox.h"

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
void WindowSystem::Wait(int) {}
void WindowSystem::ShowWait(const std::string&) {}
bool WindowSystem::WaitCancelled() { return false; }
bool WindowSystem::OpenBrowser(const std::string&) { return false; }

WindowSystem* WindowSystem::Current() noexcept { return Installed().get(); }

std::unique_ptr<WindowSystem> WindowSystem::Install(std::unique_ptr<WindowSystem> system)
{
    std::swap(Installed(), system);
    return system;
}

int ConsoleWindowSystem::MessageBox(const std::string& text, unsigned style)
{
    std::cerr << text << std::endl;
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
    const Shown shown = m_shown.back(); // copied: the handler may clear the list
    return m_unexpected ? m_unexpected(shown) : SafeAnswer(style);
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
