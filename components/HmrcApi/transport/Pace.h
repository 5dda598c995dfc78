#pragma once

// HMRC's limit on requests.

#include <cstdint>
#include <functional>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// Waits until the next request may go: at most two a second from this process, because all installations of the
/// application share HMRC's limit of three. False when `cancelled` ended the wait, and at once, no turn being taken,
/// when it would be longer than `most` milliseconds.
HMRCAPI_API bool TakeTurn(const std::function<bool()>& cancelled, std::int64_t most);

} // namespace HmrcApi
