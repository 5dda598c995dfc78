#include "Afx/system/SignalGuard.h"

#include <atomic>
#include <mutex>

#include "Afx/Platform.h"

namespace Afx
{
namespace
{

constexpr DWORD kNone = ~DWORD{0};

std::atomic<int> g_guards{0};
std::atomic<DWORD> g_waiting{kNone};

/// Runs on a thread of the system's own. The events after which the process is ended whatever the answer (the window
/// closes, the user logs off) are answered when nothing is guarded any more, as far as the system waits.
BOOL WINAPI Remember(DWORD event)
{
    g_waiting = event;
    if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT)
        return TRUE;
    while (g_guards > 0)
        Sleep(20);
    return FALSE;
}

/// Of the number of guards and the handler together.
std::mutex& TheMutex()
{
    static auto& mutex = *new std::mutex;
    return mutex;
}

} // namespace

SignalGuard::SignalGuard()
{
    const std::lock_guard lock(TheMutex());
    if (g_guards++ == 0)
        SetConsoleCtrlHandler(&Remember, TRUE);
}

SignalGuard::~SignalGuard()
{
    {
        const std::lock_guard lock(TheMutex());
        if (--g_guards > 0)
            return;
        SetConsoleCtrlHandler(&Remember, FALSE);
    }
    const DWORD event = g_waiting.exchange(kNone);
    if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT)
        GenerateConsoleCtrlEvent(event, 0);
}

bool SignalGuard::IsSignalWaiting() noexcept { return g_waiting != kNone; }

} // namespace Afx
