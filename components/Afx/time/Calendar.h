#pragma once

// The proleptic Gregorian calendar as arithmetic on day numbers, for years beyond what std::chrono holds.

#include <cstdint>

namespace Afx
{

struct CivilDate
{
    int year, month, day; // month 1 to 12, day 1 to 31

    friend bool operator==(const CivilDate&, const CivilDate&) = default;
};

constexpr bool IsLeapYear(int year) noexcept { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

/// 28 to 31; 0 for a month outside 1 to 12.
constexpr int DaysInMonth(int year, int month) noexcept
{
    constexpr signed char kDays[] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12)
        return 0;
    return kDays[month] + (month == 2 && IsLeapYear(year));
}

/// Days from 1970-01-01 to the date, which must exist.
constexpr std::int64_t DaysFromCivil(int year, int month, int day) noexcept
{
    // The year begins in March here, so that the leap day is its last.
    const std::int64_t marchYear = static_cast<std::int64_t>(year) - (month <= 2);
    const std::int64_t era = (marchYear >= 0 ? marchYear : marchYear - 399) / 400;
    const int yearOfEra = static_cast<int>(marchYear - era * 400);
    const int dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

/// The date `days` after 1970-01-01. `days` within 292 million years, which every count of milliseconds is.
constexpr CivilDate CivilFromDays(std::int64_t days) noexcept
{
    const std::int64_t shifted = days + 719468;
    const std::int64_t era = (shifted >= 0 ? shifted : shifted - 146096) / 146097;
    const int dayOfEra = static_cast<int>(shifted - era * 146097);
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int marchMonth = (5 * dayOfYear + 2) / 153;
    const int month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
    return {static_cast<int>(era * 400 + yearOfEra + (month <= 2)), month, dayOfYear - (153 * marchMonth + 2) / 5 + 1};
}

/// Day 0 of OLE automation dates, 30 December 1899, counted from 1970-01-01.
inline constexpr int kOleDayZero = -25569;
/// The first and the last OLE day: 1 January 100 and 31 December 9999.
inline constexpr int kFirstOleDay = -657434, kLastOleDay = 2958465;

/// The OLE day of a date that exists, in the years 100 to 9999.
constexpr int OleDayOf(int year, int month, int day) noexcept
{
    constexpr short kDaysBefore[] = {0, 306, 337, 0, 31, 61, 92, 122, 153, 184, 214, 245, 275}; // from March on
    const auto marchYear = static_cast<unsigned>(year - (month <= 2));
    const unsigned days = marchYear * 365 + marchYear / 4 - marchYear / 100 + marchYear / 400;
    return static_cast<int>(days) + kDaysBefore[month] + day - 693900;
}

/// The date of an OLE day from the first to the last.
constexpr CivilDate CivilOfOleDay(int day) noexcept
{
    const auto shifted = static_cast<unsigned>(day + 693899); // from 1 March of year 0
    const unsigned era = shifted / 146097, dayOfEra = shifted % 146097;
    const unsigned yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const unsigned marchMonth = (5 * dayOfYear + 2) / 153;
    const unsigned month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
    return {static_cast<int>(era * 400 + yearOfEra + (month <= 2)), static_cast<int>(month),
            static_cast<int>(dayOfYear - (153 * marchMonth + 2) / 5 + 1)};
}

static_assert(DaysFromCivil(1899, 12, 30) == kOleDayZero && CivilFromDays(kOleDayZero) == CivilDate{1899, 12, 30});
static_assert(OleDayOf(100, 1, 1) == kFirstOleDay && OleDayOf(9999, 12, 31) == kLastOleDay);
static_assert(CivilOfOleDay(kFirstOleDay) == CivilDate{100, 1, 1} && CivilOfOleDay(0) == CivilDate{1899, 12, 30});

} // namespace Afx
