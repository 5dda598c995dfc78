#pragma once

// For what must not be broken off half-way.

#include "Afx/Export.h"

namespace Afx
{

/// While one lives, the signals that end a program (INT, TERM, HUP; on Windows the console's events) are held back;
/// when the last one ends they take their course. Guards nest and may live on several threads. A signal that the
/// program ignores stays ignored. Nothing holds back a kill.
class AFX_API SignalGuard
{
public:
    SignalGuard();
    ~SignalGuard();
    SignalGuard(const SignalGuard&) = delete;
    SignalGuard& operator=(const SignalGuard&) = delete;

    /// One waits: what takes long should stop where it loses nothing.
    static bool IsSignalWaiting() noexcept;
};

} // namespace Afx
