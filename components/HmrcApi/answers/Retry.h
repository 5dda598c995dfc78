#pragma once

// How long to wait before a request is sent again.

#include <optional>
#include <string>
#include <string_view>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// Milliseconds to wait before request number `done` + 1: 500, 1000, 2000 and up to a quarter more, or what Retry-After
/// asks, whichever is longer. Nothing when it asks for more than a minute: nobody is kept waiting for that.
/// Retry-After is seconds ("7") or a date ("Wed, 21 Oct 2015 07:28:00 GMT"); what is neither is ignored.
HMRCAPI_API std::optional<unsigned> RetryWait(unsigned done, std::string_view retryAfter);

/// When to try again, where Retry-After asks for more than a minute: "after 14:05", from a day on "after 14:05 on
/// 02/03/2024"; local time, rounded up to the minute. Empty where it asks for less or nothing.
HMRCAPI_API std::string TryAgainText(std::string_view retryAfter);

} // namespace HmrcApi
