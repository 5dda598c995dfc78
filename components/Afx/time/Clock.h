#pragma once

// The time of day, which tests set.

#include <cstdint>
#include <functional>

#include "Afx/Export.h"

namespace Afx
{

/// A calendar date and time of day; no zone.
struct LocalTime
{
    int year, month, day; // month 1 to 12, day 1 to 31
    int hour, minute, second, milliseconds;

    friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

class AFX_API Clock
{
public:
    /// Now, by the machine's zone.
    static LocalTime Local();
    /// The same of another moment, in milliseconds since 1970-01-01 00:00 UTC.
    static LocalTime LocalAt(std::int64_t milliseconds);
    static LocalTime Utc();
    /// Milliseconds since 1970-01-01 00:00 UTC.
    static std::int64_t UnixMilliseconds();
    /// Replaces the machine's clock; an empty function gives it back. The function answers as UnixMilliseconds.
    static void Set(std::function<std::int64_t()> source);
    /// Waits; tests replace the wait.
    static void Sleep(unsigned milliseconds);
    static void SetSleep(std::function<void(unsigned)> sleep);
};

/// UTC fields of a moment, and back; never through time_t.
AFX_API LocalTime FromUnixMilliseconds(std::int64_t milliseconds) noexcept;
AFX_API std::int64_t ToUnixMilliseconds(const LocalTime& utc) noexcept;

} // namespace Afx
