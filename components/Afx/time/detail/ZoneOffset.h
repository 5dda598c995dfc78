#pragma once

// The machine's time zone, as its system knows it.

#include <cstdint>

namespace Afx::Detail
{

/// Whether the system can be asked about that moment (milliseconds since 1970-01-01 00:00 UTC).
bool SystemHolds(std::int64_t utc) noexcept;
/// Milliseconds that local time is ahead of UTC at a moment which the system holds; 0 when it does not tell.
std::int64_t SystemZoneOffset(std::int64_t utc);

} // namespace Afx::Detail
