#include "Afx/time/Clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>

#include "Afx/time/Calendar.h"
#include "support/Case.h"
#include "support/TestSupport.h"

namespace
{

std::int64_t Utc(int year, int month, int day, int hour)
{
    return Afx::ToUnixMilliseconds({year, month, day, hour, 0, 0, 0});
}

} // namespace

TEST(Calendar, AgreesWithTheStandardLibrary)
{
    for (int day = Afx::kFirstOleDay; day <= Afx::kLastOleDay; day += 11) {
        const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day + Afx::kOleDayZero}}};
        const Afx::CivilDate expected{static_cast<int>(date.year()), static_cast<int>(unsigned{date.month()}),
                                      static_cast<int>(unsigned{date.day()})};
        ASSERT_EQ(Afx::CivilOfOleDay(day), expected) << day;
        ASSERT_EQ(Afx::CivilFromDays(day + Afx::kOleDayZero), expected) << day;
        ASSERT_EQ(Afx::OleDayOf(expected.year, expected.month, expected.day), day);
        ASSERT_EQ(Afx::DaysFromCivil(expected.year, expected.month, expected.day), day + Afx::kOleDayZero);
    }
}

#ifndef _WIN32
TEST(Clock, GivesLocalTimeByTheZoneInEveryYear)
{
    const char* const zone = std::getenv("TZ");
    const std::string before = zone ? zone : ":/etc/localtime";
    ::setenv("TZ", "GMT0BST,M3.5.0/1,M10.5.0", 1); // London's rule, without needing the zone files
    const ::Test::Case<std::int64_t, int> rows[] = {
        {Utc(2024, 1, 15, 12), 12, "winter"},
        {Utc(2024, 7, 15, 12), 13, "summer"},
        {Utc(2024, 3, 31, 0), 0, "last hour of winter"},
        {Utc(2024, 3, 31, 1), 2, "first hour of summer"},
        {Utc(2050, 7, 15, 12), 13, "beyond 32-bit system time"},
    };
    for (const auto& row : rows) {
        Afx::Clock::Set([&] { return row.in; });
        EXPECT_EQ(Afx::Clock::Local().hour, row.out) << row.why;
    }
    ::setenv("TZ", before.c_str(), 1);
}
#endif
