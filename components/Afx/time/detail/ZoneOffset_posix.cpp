#include "Afx/time/detail/ZoneOffset.h"

#include <chrono>
#include <ctime>
#include <limits>

namespace Afx::Detail
{
namespace
{

std::int64_t SecondsOf(std::int64_t milliseconds) noexcept
{
    return std::chrono::floor<std::chrono::seconds>(std::chrono::milliseconds(milliseconds)).count();
}

} // namespace

std::int64_t SystemZoneOffset(std::int64_t utc)
{
    const auto seconds = static_cast<std::time_t>(SecondsOf(utc));
    std::tm fields{};
    tzset();
    if (!localtime_r(&seconds, &fields))
        return 0;
    return static_cast<std::int64_t>(fields.tm_gmtoff) * 1000;
}

bool SystemHolds(std::int64_t utc) noexcept
{
    const std::int64_t seconds = SecondsOf(utc);
    return seconds >= std::numeric_limits<std::time_t>::min() && seconds <= std::numeric_limits<std::time_t>::max();
}

} // namespace Afx::Detail
