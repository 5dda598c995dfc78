#include "Afx/system/SignalGuard.h"

#include <atomic>
#include <csignal>
#include <cstddef>
#include <mutex>

namespace Afx
{
namespace
{

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
constexpr std::size_t kCount = sizeof kSignals / sizeof *kSignals;

std::atomic<bool> g_waiting[kCount];
std::atomic<bool> g_isHeld; // a guard lives
static_assert(std::atomic<bool>::is_always_lock_free, "a handler uses them");

/// Each that waits takes its course once, whoever comes first.
void Release()
{
    for (std::size_t i = 0; i < kCount; ++i)
        if (g_waiting[i].exchange(false))
            std::raise(kSignals[i]);
}

void Remember(int signal)
{
    for (std::size_t i = 0; i < kCount; ++i)
        if (kSignals[i] == signal)
            g_waiting[i] = true;
    if (!g_isHeld) // it came on its way here when the last guard ended, which may have looked before
        Release();
}

/// A handler, since a mask would hold back the signals of one thread only: the process's go to any other.
struct Hold
{
    std::mutex mutex;
    int guards = 0;
    struct sigaction before[kCount];

    void Begin()
    {
        struct sigaction remember = {};
        remember.sa_handler = &Remember;
        remember.sa_flags = SA_RESTART;
        sigemptyset(&remember.sa_mask);
        g_isHeld = true;
        for (std::size_t i = 0; i < kCount; ++i) {
            sigaction(kSignals[i], nullptr, &before[i]);
            if (before[i].sa_handler != SIG_IGN)
                sigaction(kSignals[i], &remember, nullptr);
        }
    }

    void End()
    {
        for (std::size_t i = 0; i < kCount; ++i)
            sigaction(kSignals[i], &before[i], nullptr);
        g_isHeld = false;
    }
};

Hold& TheHold()
{
    static auto& hold = *new Hold;
    return hold;
}

} // namespace

SignalGuard::SignalGuard()
{
    Hold& hold = TheHold();
    const std::lock_guard lock(hold.mutex);
    if (hold.guards++ == 0)
        hold.Begin();
}

SignalGuard::~SignalGuard()
{
    Hold& hold = TheHold();
    {
        const std::lock_guard lock(hold.mutex);
        if (--hold.guards > 0)
            return;
        hold.End();
    }
    Release(); // another thread's guard may have begun by now, and holds them back in its turn
}

bool SignalGuard::IsSignalWaiting() noexcept
{
    for (const auto& waiting : g_waiting)
        if (waiting)
            return true;
    return false;
}

} // namespace Afx
