#include "Afx/time/Clock.h"

#include <cmath>
#include <cstdlib>

#include "Afx/time/Calendar.h"
#include "Afx/time/DateTime.h"
#include "support/Test.h"

TEST(Calendar, CountsEveryDay)
{
    Afx::CivilDate date{100, 1, 1};
    for (int day = Afx::kFirstOleDay; day <= Afx::kLastOleDay; ++day) {
        ASSERT_TRUE(Afx::CivilOfOleDay(day) == date && Afx::OleDayOf(date.year, date.month, date.day) == day) << day;
        const std::int64_t unixDay = day + Afx::kOleDayZero;
        ASSERT_TRUE(Afx::CivilFromDays(unixDay) == date) << day;
        ASSERT_EQ(Afx::DaysFromCivil(date.year, date.month, date.day), unixDay);
        const bool isLeap = date.year % 4 == 0 && (date.year % 100 != 0 || date.year % 400 == 0);
        const int length = date.month == 2 ? 28 + isLeap : 30 + (date.month + date.month / 8) % 2;
        ASSERT_EQ(Afx::DaysInMonth(date.year, date.month), length) << day;
        date.day = date.day % length + 1;
        date.month = date.day > 1 ? date.month : date.month % 12 + 1;
        date.year += date.day == 1 && date.month == 1;
    }
    EXPECT_EQ(date, (Afx::CivilDate{10'000, 1, 1}));
}

#ifndef _WIN32
namespace
{

std::int64_t Utc(int year, int month, int day, int hour)
{
    return Afx::ToUnixMilliseconds({year, month, day, hour, 0, 0, 0});
}

} // namespace

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
        EXPECT_EQ(std::lround(COleDateTime::GetCurrentUtcTime().GetOleDate() * 24) % 24, row.in / 3'600'000 % 24);
    }
    ::setenv("TZ", before.c_str(), 1);
}
#endif
