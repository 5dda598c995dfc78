#pragma once

// HMRC's limit on requests.

#include <functional>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// Waits until the next request may go: at most two a second from this process, because all installations of the
/// application share HMRC's limit of three. False when `cancelled` ended the wait.
HMRCAPI_API bool TakeTurn(const std::function<bool()>& cancelled);

} // namespace HmrcApi
