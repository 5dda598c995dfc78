#include "Afx/time/Clock.h"

#include <chrono>
#include <thread>

#include "Afx/time/Calendar.h"
#include "Afx/time/detail/ZoneOffset.h"

namespace Afx
{
namespace
{

/// What tests replace; never destroyed.
struct Source
{
    std::function<std::int64_t()> now;
    std::function<void(unsigned)> sleep;
};

Source& TheSource()
{
    static auto& source = *new Source;
    return source;
}

constexpr std::int64_t kMillisecondsPerDay = 86'400'000;

constexpr std::int64_t FloorDivide(std::int64_t value, std::int64_t by) noexcept
{
    return value / by - (value % by < 0);
}

/// A year that the system's zone rules are asked about instead of `year`: of the same length, beginning on the same
/// weekday, and one that 32-bit system time holds. The calendar repeats every 28 years within 2001 to 2099.
int EquivalentYear(int year) noexcept
{
    constexpr int kFirst = 2008;
    const std::int64_t weekday = (DaysFromCivil(year, 1, 1) % 7 + 7) % 7;
    for (int candidate = kFirst; candidate < kFirst + 28; ++candidate)
        if (IsLeapYear(candidate) == IsLeapYear(year) && DaysFromCivil(candidate, 1, 1) % 7 == weekday)
            return candidate;
    return kFirst; // not reached: 28 years hold every kind of year
}

/// Milliseconds that local time is ahead of `utc` at that moment.
std::int64_t ZoneOffset(std::int64_t utc)
{
    if (Detail::SystemHolds(utc))
        return Detail::SystemZoneOffset(utc);
    LocalTime fields = FromUnixMilliseconds(utc);
    fields.year = EquivalentYear(fields.year);
    return Detail::SystemZoneOffset(ToUnixMilliseconds(fields));
}

} // namespace

LocalTime FromUnixMilliseconds(std::int64_t milliseconds) noexcept
{
    const std::int64_t days = FloorDivide(milliseconds, kMillisecondsPerDay);
    const CivilDate date = CivilFromDays(days);
    const int ofDay = static_cast<int>(milliseconds - days * kMillisecondsPerDay);
    return {date.year, date.month, date.day, ofDay / 3'600'000, ofDay / 60'000 % 60, ofDay / 1000 % 60, ofDay % 1000};
}

std::int64_t ToUnixMilliseconds(const LocalTime& utc) noexcept
{
    const std::int64_t seconds = (utc.hour * 60LL + utc.minute) * 60 + utc.second;
    return DaysFromCivil(utc.year, utc.month, utc.day) * kMillisecondsPerDay + seconds * 1000 + utc.milliseconds;
}

std::int64_t Clock::UnixMilliseconds()
{
    if (const auto& now = TheSource().now)
        return now();
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::floor<std::chrono::milliseconds>(sinceEpoch).count();
}

LocalTime Clock::Utc() { return FromUnixMilliseconds(UnixMilliseconds()); }

LocalTime Clock::Local() { return LocalAt(UnixMilliseconds()); }

LocalTime Clock::LocalAt(std::int64_t milliseconds)
{
    return FromUnixMilliseconds(milliseconds + ZoneOffset(milliseconds));
}

void Clock::Set(std::function<std::int64_t()> source) { TheSource().now = std::move(source); }
void Clock::SetSleep(std::function<void(unsigned)> sleep) { TheSource().sleep = std::move(sleep); }

void Clock::Sleep(unsigned milliseconds)
{
    if (const auto& sleep = TheSource().sleep)
        sleep(milliseconds);
    else
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace Afx
