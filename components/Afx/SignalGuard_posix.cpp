#include "Afx/SignalGuard.h"

#include <csignal>
#include <cstddef>
#include <mutex>

namespace Afx
{
namespace
{

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
constexpr std::size_t kCount = sizeof kSignals / sizeof *kSignals;

volatile std::sig_atomic_t g_waiting[kCount];

void Remember(int signal)
{
    for (std::size_t i = 0; i < kCount; ++i)
        if (kSignals[i] == signal)
            g_waiting[i] = 1;
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
        for (std::size_t i = 0; i < kCount; ++i) {
            g_waiting[i] = 0;
            sigaction(kSignals[i], nullptr, &before[i]);
            if (before[i].sa_handler != SIG_IGN)
                sigaction(kSignals[i], &remember, nullptr);
        }
    }

    void End()
    {
        for (std::size_t i = 0; i < kCount; ++i)
            sigaction(kSignals[i], &before[i], nullptr);
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
    for (std::size_t i = 0; i < kCount; ++i)
        if (g_waiting[i] != 0) {
            g_waiting[i] = 0;
            std::raise(kSignals[i]);
        }
}

bool SignalGuard::IsSignalWaiting() noexcept
{
    for (const auto& waiting : g_waiting)
        if (waiting)
            return true;
    return false;
}

} // namespace Afx
