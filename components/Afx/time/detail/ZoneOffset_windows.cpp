#include "Afx/time/detail/ZoneOffset.h"

#include "Afx/Platform.h"
#include "Afx/time/Clock.h"

namespace Afx::Detail
{
std::int64_t SystemZoneOffset(std::int64_t utc)
{
    const LocalTime fields = FromUnixMilliseconds(utc);
    const auto word = [](int value) { return static_cast<WORD>(value); };
    const SYSTEMTIME universal{word(fields.year),   word(fields.month),       word(0),
                               word(fields.day),    word(fields.hour),        word(fields.minute),
                               word(fields.second), word(fields.milliseconds)};
    SYSTEMTIME local;
    if (!SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local))
        return 0;
    return ToUnixMilliseconds({local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond,
                               local.wMilliseconds}) -
           utc;
}

bool SystemHolds(std::int64_t utc) noexcept
{
    return utc >= ToUnixMilliseconds({1602, 1, 1, 0, 0, 0, 0}) && utc < ToUnixMilliseconds({9999, 1, 1, 0, 0, 0, 0});
}

} // namespace Afx::Detail
