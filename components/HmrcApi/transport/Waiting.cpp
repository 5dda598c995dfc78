#include "HmrcApi/transport/Waiting.h"

#include <algorithm>

#include "Afx/time/Clock.h"
#include "Afx/windows/WindowSystem.h"

namespace HmrcApi
{

bool WaitUnless(const std::function<bool()>& cancelled, unsigned milliseconds)
{
    constexpr unsigned kSlice = 100;
    while (milliseconds > 0) {
        if (cancelled && cancelled())
            return false;
        const unsigned slice = std::min(milliseconds, kSlice);
        Afx::Clock::Sleep(slice);
        milliseconds -= slice;
    }
    return !(cancelled && cancelled());
}

WaitWindow::WaitWindow(const std::string& text)
{
    if (Afx::WindowSystem* system = Afx::WindowSystem::Current())
        system->ShowWait(text);
}

WaitWindow::~WaitWindow()
{
    if (Afx::WindowSystem* system = Afx::WindowSystem::Current())
        system->ShowWait({});
}

bool WaitWindow::IsCancelled()
{
    Afx::WindowSystem* system = Afx::WindowSystem::Current();
    return system && system->WaitCancelled();
}

} // namespace HmrcApi
