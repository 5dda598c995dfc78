#include "HmrcApi/transport/Pace.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <utility>

#include "Afx/time/Clock.h"
#include "HmrcApi/transport/Transport.h"
#include "HmrcApi/transport/Waiting.h"
#include "Shellkit/NamedItems.h"

namespace HmrcApi
{
namespace
{

constexpr std::int64_t kSpacing = 500; // milliseconds

/// The next free moment; one for the process, whichever modules send.
struct Turns
{
    std::atomic<bool> isForLoopback = false;
    std::mutex mutex;
    std::int64_t next = 0;                 // Unix milliseconds
    std::function<std::int64_t()> shared;  // where blocks come from; empty: all time is ours
    std::int64_t end = 0, longestWait = 0; // of the block in hand, and for its second turn

    /// Takes the next turn and answers how long it is away; nothing when that is longer than `most`.
    std::optional<std::int64_t> Take(std::int64_t most)
    {
        const std::lock_guard lock(mutex);
        if (shared && !IsInBlock())
            TakeBlock();
        const std::int64_t now = Afx::Clock::UnixMilliseconds();
        // A clock that was set back must not leave us waiting for the old time.
        const bool isSetBack = !shared && next - now > 60 * kSpacing;
        const std::int64_t turn = isSetBack ? now : std::max(now, next);
        if (turn - now > most)
            return std::nullopt;
        next = turn + kSpacing;
        return turn - now;
    }

private:
    /// What is left of a second that is over is not made up for: it is another program's second by now.
    bool IsInBlock() const
    {
        const std::int64_t now = Afx::Clock::UnixMilliseconds();
        return std::max(now, next) < end && next - now <= longestWait;
    }

    void TakeBlock()
    {
        const std::int64_t wait = shared();
        next = Afx::Clock::UnixMilliseconds() + wait;
        end = next + 2 * kSpacing;
        longestWait = wait + kSpacing;
    }
};

Turns& TheTurns()
{
    void* item = GetGlobalDataItem(
        "HmrcApi.Turns", []() -> void* { return new Turns; }, [](void* turns) { delete static_cast<Turns*>(turns); });
    return *static_cast<Turns*>(item);
}

} // namespace

bool TakeTurn(const std::function<bool()>& cancelled, std::int64_t most)
{
    const std::optional<std::int64_t> wait = TheTurns().Take(most);
    return wait && WaitUnless(cancelled, static_cast<unsigned>(*wait));
}

bool HasPace(const std::string& address) { return !IsLoopbackAddress(address) || TheTurns().isForLoopback; }

void PaceLoopback(bool isPaced) { TheTurns().isForLoopback = isPaced; }

SharedTurns::SharedTurns(std::function<std::int64_t()> next)
{
    Turns& turns = TheTurns();
    const std::lock_guard lock(turns.mutex);
    turns.shared = std::move(next);
    turns.end = 0; // no block is in hand
}

SharedTurns::~SharedTurns()
{
    Turns& turns = TheTurns();
    const std::lock_guard lock(turns.mutex);
    turns.shared = nullptr;
}

} // namespace HmrcApi
