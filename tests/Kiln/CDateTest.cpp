#include "Kiln/CDate.h"

#include <cmath>
#include <limits>

#include "support/Test.h"

using Kiln::CDate;
using Kiln::YearHandlerScope;

namespace
{

constexpr double kHalfSecond = 5.787037037037037e-6; // of a day
constexpr int kMinInt = std::numeric_limits<int>::min(), kMaxInt = std::numeric_limits<int>::max();

/// Ordering is false for dates that are not valid; a hash or a three-way order would have to invent an answer.
static_assert(!std::three_way_comparable<CDate>);
static_assert(!std::is_convertible_v<double, CDate>);

struct ParseOrderScope
{
    explicit ParseOrderScope(CDate::ParseOrder order) { CDate::SetParseOrder(order); }
    ~ParseOrderScope() { CDate::SetParseOrder(before); }
    const CDate::ParseOrder before = CDate::GetParseOrder();
};

/// The date as read, "null", or "invalid"; checks that result, status and reason agree.
std::string ReadDate(const char* text)
{
    CDate date(1999, 12, 31);
    const bool good = date.ParseDate(text);
    EXPECT_EQ(good, date.IsValid());
    EXPECT_EQ(good, CDate::WhyNotDate(text).IsEmpty());
    return good ? date.FormatIso().Str() : date.IsNull() ? "null" : "invalid";
}

} // namespace

TEST(CDateParseDate, ReadsEveryForm)
{
    ::Test::SetNow(2025, 6, 1);
    for (const auto& [text, date, why] : ::Test::Table<const char*, const char*>("Kiln/CDate.tsv"))
        EXPECT_EQ(ReadDate(text), date) << text;
}

TEST(CDateParseDate, RefusesAndSaysHowToMendIt)
{
    ::Test::SetNow(2025, 6, 1);
    for (const auto& [text, reason, why] : ::Test::Table<const char*, std::string>("Kiln/CDate.tsv")) {
        EXPECT_EQ(ReadDate(text), "invalid") << text;
        EXPECT_TRUE(reason == "any" || CDate::WhyNotDate(text) == reason) << text << ": " << CDate::WhyNotDate(text);
    }
    for (const char* const blank : {"", " \t", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(ReadDate(blank), "null");
        EXPECT_EQ(CDate::WhyNotDate(blank), "No date was given");
    }
}

TEST(CDateParseDate, ReadsTheMonthFirstOnRequest)
{
    const ParseOrderScope order(CDate::ParseOrder::MonthFirst);
    ::Test::SetNow(2025, 6, 1);
    for (const auto& [text, date, why] : ::Test::Table<const char*, const char*>("Kiln/CDate.tsv"))
        EXPECT_EQ(ReadDate(text), date) << text;
    EXPECT_EQ(CDate::WhyNotDate("13/05/2024"), "13 is no month; write the month first, as in 4/30/2024");
}

TEST(CDateParseDate, AsksTheYearHandlerOnlyWhenTheYearIsMissing)
{
    static int asked = 0;
    const YearHandlerScope outer([](int day, int month) { return ++asked, month * 100 + day; });
    EXPECT_EQ(ReadDate("5/12"), "1205-12-05");
    EXPECT_EQ(asked, 2) << "once for the date, once for the reason";
    ReadDate("5/12/2024");
    ReadDate("31/4");
    ReadDate("5/13");
    EXPECT_EQ(asked, 2);
    {
        static int given = 0;
        const YearHandlerScope inner([](int, int) { return given; });
        for (const int year : {kMinInt, 0, 99, 10'000, kMaxInt}) {
            given = year;
            EXPECT_EQ(ReadDate("5/12"), "invalid") << year;
        }
        EXPECT_EQ(CDate::WhyNotDate("5/12"), "The year is missing; write it as in 30/4/2024");
    }
    EXPECT_EQ(ReadDate("6/12"), "1206-12-06") << "the handler before is back";
}

TEST(CDate, HasAStatus)
{
    EXPECT_TRUE(CDate().IsNull());
    EXPECT_TRUE(CDate(0, 0, 0).IsNull());
    const int fields[][3] = {
        {2023, 2, 29}, {2024, 0, 1},  {2024, 13, 1},   {2024, 1, 0},       {2024, 4, 31},
        {99, 12, 31},  {10000, 1, 1}, {kMinInt, 1, 1}, {2024, kMinInt, 1}, {2024, 1, kMaxInt},
        {-1, 4, 6},    {0, 0, 1},     {0, 4, 6},       {-32768, 4, 5},     {kMaxInt, kMaxInt, kMaxInt}};
    for (const auto& [year, month, day] : fields) {
        const CDate date(year, month, day);
        EXPECT_EQ(date.GetStatus(), CDate::Status::Invalid) << year << '-' << month << '-' << day;
        EXPECT_EQ(date.GetYear() + date.GetMonth() + date.GetDay(), 0);
        EXPECT_TRUE(date.FormatIso().IsEmpty() && date.Format("%Y").IsEmpty());
    }
    for (const double ole : {std::nan(""), HUGE_VAL, -HUGE_VAL, 2958466.0, -657435.0, 1e300})
        EXPECT_EQ(CDate::FromOleDate(ole), CDate::Invalid()) << ole;
    EXPECT_TRUE(CDate(100, 1, 1).IsValid() && CDate(9999, 12, 31).IsValid());
}

TEST(CDate, TakesTheTimeAlongAndRoundsToTheSecond)
{
    const ::Test::Case<double, const char*> rows[] = {
        {45387.999999, "2024-04-06 00:00:00", "nearly midnight"},      {45387.75, "2024-04-05 18:00:00", "evening"},
        {-1.25, "1899-12-29 06:00:00", "forward before day zero too"}, {45387.99999, "2024-04-05 23:59:59", "earlier"},
        {2958465.9999999, "9999-12-31 23:59:59", "the last"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CDate::FromOleDate(row.in).Format("%Y-%m-%d %X"), row.out) << row.why;
    EXPECT_TRUE(CDate::FromOleDate(45387.9).IsSameDay(CDate(2024, 4, 5)));
    EXPECT_FALSE(CDate::FromOleDate(45387.999999).IsSameDay(CDate(2024, 4, 5)));
    EXPECT_FALSE(CDate().IsSameDay(CDate())) << "only valid dates have a day";
    const CDate day(2024, 4, 5), evening = CDate::FromOleDate(45387.9), next(2024, 4, 6);
    EXPECT_TRUE(evening.IsEarlierDay(next) && evening.IsNotLaterDay(day) && day.IsNotLaterDay(evening));
    EXPECT_FALSE(day.IsEarlierDay(evening) || next.IsNotLaterDay(evening));
    for (const CDate& none : {CDate(), CDate::Invalid()})
        EXPECT_FALSE(none.IsEarlierDay(day) || day.IsEarlierDay(none) || none.IsNotLaterDay(none));
}

TEST(CDate, ComparesByHalfASecond)
{
    const CDate day(2024, 4, 5), next(2024, 4, 6), null, invalid = CDate::Invalid();
    const CDate close = CDate::FromOleDate(45387 + kHalfSecond * 0.9),
                apart = CDate::FromOleDate(45387 + kHalfSecond * 1.1);
    EXPECT_TRUE(day == close && day < close && close <= day) << "equal and still earlier";
    EXPECT_TRUE(day != apart && day < apart && !(apart <= day));
    EXPECT_TRUE(day < next && next > day && next >= day && day <= day);
    EXPECT_TRUE(null == CDate() && invalid == CDate::Invalid() && null != invalid && null != day);
    for (const CDate& other : {null, invalid})
        EXPECT_FALSE(other < day || day < other || other > day || other <= other || other >= other);
    EXPECT_TRUE(CDate::FromOleDate(-1.75) > CDate::FromOleDate(-1.25)) << "evening after morning before 1900";
    EXPECT_TRUE(CDate::FromOleDate(-1.9999988) == CDate::FromOleDate(0)) << "the last moment of 29 December 1899";
}

TEST(CDate, AddsDays)
{
    const CDate day(2024, 2, 28);
    EXPECT_EQ((day + 2).FormatIso(), "2024-03-01");
    EXPECT_EQ((day - 59).FormatIso(), "2023-12-31");
    EXPECT_EQ((CDate::FromOleDate(1.25) - 3).Format("%d %X"), "28 06:00:00") << "the time stays across day zero";
    for (const int days : {kMinInt, kMaxInt}) {
        EXPECT_TRUE(day + days == CDate::Invalid() && day - days == CDate::Invalid()) << days;
        EXPECT_TRUE((CDate() + days).IsNull() && (CDate() - days).IsNull());
    }
    EXPECT_EQ(CDate(9999, 12, 31) + 1, CDate::Invalid());
    EXPECT_EQ(CDate(100, 1, 1) - 1, CDate::Invalid());
}

TEST(DaysBetween, CountsWholeDays)
{
    const ::Test::Row<double, double, long> rows[] = {
        {45022, 45387, 365, "whole days"},         {-657434, 2958465, 3615899, "all there is"},
        {10.5, 11, 1, "half a day counts as one"}, {10.5 + kHalfSecond * 0.9, 11, 1, "nearly half"},
        {11, 10.5, -1, "backwards too"},           {10.5 + kHalfSecond * 1.1, 11, 0, "no more"},
    };
    for (const auto& [from, to, days, why] : rows)
        EXPECT_EQ(DaysBetween(CDate::FromOleDate(from), CDate::FromOleDate(to)), days) << why;
    EXPECT_EQ(Kiln::DaysBetween({}, {2024, 4, 5}) + Kiln::DaysBetween({2024, 4, 5}, CDate::Invalid()), 0);
    EXPECT_EQ(CDate::FromOleDate(-1.75) - CDate::FromOleDate(-1.25), 0.5) << "before 1900";
}

TEST(DatePeriod, HoldsBothEnds)
{
    const Kiln::DatePeriod year({2023, 4, 6}, {2024, 4, 5});
    EXPECT_TRUE(year.IsDateInPeriod({2023, 4, 6}) && year.IsDateInPeriod({2024, 4, 5}));
    EXPECT_FALSE(year.IsDateInPeriod({2023, 4, 5}) || year.IsDateInPeriod({2024, 4, 6}));
    EXPECT_FALSE(year.IsDateInPeriod({}) || year.IsDateInPeriod(CDate::Invalid()));
    EXPECT_FALSE(Kiln::DatePeriod({}, {2024, 4, 5}).IsDateInPeriod({2024, 1, 1})) << "an end is missing";
}
