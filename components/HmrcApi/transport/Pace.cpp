#include "HmrcApi/transport/Pace.h"

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <optional>

#include "Afx/time/Clock.h"
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
    std::mutex mutex;
    std::int64_t next = 0; // Unix milliseconds

    /// Takes the next turn and answers how long it is away; nothing when that is longer than `most`.
    std::optional<std::int64_t> Take(std::int64_t most)
    {
        const std::lock_guard lock(mutex);
        const std::int64_t now = Afx::Clock::UnixMilliseconds();
        // A clock that was set back must not leave us waiting for the old time.
        const std::int64_t turn = next - now > 60 * kSpacing ? now : std::max(now, next);
        if (turn - now > most)
            return std::nullopt;
        next = turn + kSpacing;
        return turn - now;
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

} // namespace HmrcApi
