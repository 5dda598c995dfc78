#pragma once

// HMRC's limit on requests.

#include <cstdint>
#include <functional>
#include <string>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// Waits until the next request may go: at most two a second from this process, because all installations of the
/// application share HMRC's limit of three. False when `cancelled` ended the wait, and at once, no turn being taken,
/// when it would be longer than `most` milliseconds.
HMRCAPI_API bool TakeTurn(const std::function<bool()>& cancelled, std::int64_t most);

/// Whether a request to this address is to wait for its turn: HMRC's are, those to this computer are only once
/// PaceLoopback has said so.
HMRCAPI_API bool HasPace(const std::string& address);
/// For trying out, by programs that ask a sandbox, what the pace does; for the process, until it is said otherwise.
HMRCAPI_API void PaceLoopback(bool isPaced);

/// While one lives, this process takes its turns from blocks that it shares with other programs: each is a second, in
/// which two requests may go. One at a time.
class HMRCAPI_API SharedTurns
{
public:
    /// `next`: takes the next block and answers in how many milliseconds it begins. Called by whoever waits for a turn,
    /// on whichever thread, by one at a time; what it throws comes out of TakeTurn.
    explicit SharedTurns(std::function<std::int64_t()> next);
    ~SharedTurns();
    SharedTurns(const SharedTurns&) = delete;
    SharedTurns& operator=(const SharedTurns&) = delete;
};

} // namespace HmrcApi
