#include "Afx/time/detail/ZoneOffset.h"

#include <ctime>
#include <limits>

namespace Afx::Detail
{
namespace
{

constexpr std::int64_t FloorSeconds(std::int64_t milliseconds) noexcept
{
    return milliseconds / 1000 - (milliseconds % 1000 < 0);
}

} // namespace

std::int64_t SystemZoneOffset(std::int64_t utc)
{
    const auto seconds = static_cast<std::time_t>(FloorSeconds(utc));
    std::tm fields{};
    tzset();
    if (!localtime_r(&seconds, &fields))
        return 0;
    return static_cast<std::int64_t>(fields.tm_gmtoff) * 1000;
}

bool SystemHolds(std::int64_t utc) noexcept
{
    const std::int64_t seconds = FloorSeconds(utc);
    return seconds >= std::numeric_limits<std::time_t>::min() && seconds <= std::numeric_limits<std::time_t>::max();
}

} // namespace Afx::Detail
