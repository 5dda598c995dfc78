#pragma once

// The proleptic Gregorian calendar by day numbers: std::chrono, and beyond the years that it holds.

#include <chrono>
#include <cstdint>

#include "Afx/time/CivilDate.h"

namespace Afx
{

constexpr bool IsLeapYear(int year) noexcept { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

/// 28 to 31; 0 for a month outside 1 to 12.
constexpr int DaysInMonth(int year, int month) noexcept
{
    if (month < 1 || month > 12)
        return 0;
    const std::chrono::year plain(IsLeapYear(year) ? 2000 : 2001); // stands for any other, whatever its size
    return static_cast<int>(unsigned{(plain / month / std::chrono::last).day()});
}

/// The day of a date that exists, in the years -32767 to 32767.
constexpr std::chrono::sys_days ToSysDays(int year, int month, int day) noexcept
{
    return std::chrono::year(year) / month / day;
}

constexpr CivilDate ToCivilDate(std::chrono::sys_days day) noexcept
{
    const std::chrono::year_month_day date(day);
    return {static_cast<int>(date.year()), static_cast<int>(unsigned{date.month()}),
            static_cast<int>(unsigned{date.day()})};
}

/// The calendar repeats itself after so many years, or days.
inline constexpr int kYearsOfEra = 400, kDaysOfEra = 146'097;

/// Days from 1970-01-01 to the date, which must exist, of any year.
constexpr std::int64_t DaysFromCivil(int year, int month, int day) noexcept
{
    const int era = year / kYearsOfEra;
    return std::int64_t{era} * kDaysOfEra + ToSysDays(year - era * kYearsOfEra, month, day).time_since_epoch().count();
}

/// The date `days` after 1970-01-01. `days` within 292 million years, which every count of milliseconds is.
constexpr CivilDate CivilFromDays(std::int64_t days) noexcept
{
    const auto era = static_cast<int>(days / kDaysOfEra);
    CivilDate date = ToCivilDate(std::chrono::sys_days(std::chrono::days(days % kDaysOfEra)));
    date.year += era * kYearsOfEra;
    return date;
}

/// Day 0 of OLE automation dates, 30 December 1899, counted from 1970-01-01.
inline constexpr int kOleDayZero = -25569;
/// The first and the last OLE day: 1 January 100 and 31 December 9999.
inline constexpr int kFirstOleDay = -657434, kLastOleDay = 2958465;

/// The OLE day of a date that exists, in the years 100 to 9999.
constexpr int OleDayOf(int year, int month, int day) noexcept
{
    return static_cast<int>(ToSysDays(year, month, day).time_since_epoch().count()) - kOleDayZero;
}

/// The date of an OLE day from the first to the last.
constexpr CivilDate CivilOfOleDay(int day) noexcept
{
    return ToCivilDate(std::chrono::sys_days(std::chrono::days(day + kOleDayZero)));
}

static_assert(DaysFromCivil(1899, 12, 30) == kOleDayZero && CivilFromDays(kOleDayZero) == CivilDate{1899, 12, 30});
static_assert(OleDayOf(100, 1, 1) == kFirstOleDay && OleDayOf(9999, 12, 31) == kLastOleDay);
static_assert(CivilOfOleDay(kFirstOleDay) == CivilDate{100, 1, 1} && CivilOfOleDay(0) == CivilDate{1899, 12, 30});

} // namespace Afx
