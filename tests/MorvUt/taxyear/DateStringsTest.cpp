#include "MorvUt/taxyear/DateStrings.h"

#include <limits>
#include <string>

#include "support/Test.h"

namespace
{

using Record = X_DateStr_tag;

constexpr Record kNull{0, 0, 0}, kUnknown{99, 0, 0}, kNoDate{0, 13, 0};
constexpr int kLeastYear = std::numeric_limits<int>::min(), kLastYear = std::numeric_limits<int>::max();

std::string Fields(const Record& record)
{
    return std::to_string(record.day) + "." + std::to_string(record.month) + "." + std::to_string(record.year);
}

} // namespace

TEST(ConvertDateToStr, WritesEveryRecord)
{
    const ::Test::Case<Record, const char*> rows[] = {
        {{5, 4, 2024}, "05/04/2024", "leading zeros"}, {kNull, "", "null shows nothing"},
        {kUnknown, "Unknown", "the Unknown date"},     {{99, 4, 2024}, "Unknown", "by the day alone"},
        {{0, 4, 2024}, "", "by the day alone"},        {{255, 255, 65535}, "255/255/65535", "fields full to the brim"},
        {{1, 2, 3}, "01/02/0003", "early year"},
    };
    for (const auto& row : rows) {
        CString text("left over");
        ConvertDateToStr(&row.in, text);
        EXPECT_EQ(text, row.out) << row.why;
        char buffer[14] = "xxxxxxxxxxxxx";
        convert_date_to_str(&row.in, buffer, sizeof buffer);
        EXPECT_STREQ(buffer, row.out) << row.why;
    }
    for (const Record& record : {Record{5, 4, 2024}, kUnknown, kNull})
        EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { convert_date_to_str(&record, nullptr, 11); }));
}

TEST(DateStrings, TodayIsTheLocalDate)
{
    ::Test::SetNow(2024, 4, 5, 23, 59, 59);
    CString text;
    Record today;
    GetTodaysDate(text);
    X_GetDate(&today);
    EXPECT_TRUE(text == "05/04/2024" && Fields(today) == "5.4.2024") << text << ' ' << Fields(today);
}

TEST(CompareDates, SaysOneWhenInOrder)
{
    const ::Test::Row<Record, Record, int, int> rows[] = {
        {{1, 1, 2024}, {2, 1, 2024}, 1, 0, "earlier"},    {{2, 1, 2024}, {1, 1, 2024}, -1, 0, "later"},
        {{31, 1, 2024}, {1, 2, 2024}, 1, 0, "months"},    {{31, 12, 2023}, {1, 1, 2024}, 1, 0, "years"},
        {{1, 1, 2024}, {1, 1, 2024}, 0, 1, "same"},       {{100, 0, 0}, {0, 1, 0}, 0, 1, "same long date"},
        {{1, 1, 2024}, kNull, 0, 0, "null on the right"}, {kNull, {1, 1, 2024}, 0, 0, "null on the left"},
        {kUnknown, {1, 1, 2024}, 1, 0, "unknown is 99"},
    };
    for (const auto& [a, b, order, isIdentical, why] : rows) {
        EXPECT_EQ(CompareDates(&a, &b), order) << why;
        EXPECT_EQ(DatesIdentical(&a, &b), isIdentical) << why;
    }
}

TEST(ValidXDate, TakesEveryFourthYearForALeapYear)
{
    const ::Test::Row<Record, int, int> rows[] = {
        {{29, 2, 1900}, 1, 1, "no century"}, {{29, 2, 2023}, 0, 0, "no leap year"},
        {{30, 2, 2024}, 0, 0, "February"},   {{30, 4, 2024}, 1, 1, "April"},
        {{31, 4, 2024}, 0, 0, "30 days"},    {{31, 12, 2024}, 1, 1, "December"},
        {{32, 12, 2024}, 0, 0, "31 days"},   {{1, 0, 2024}, 0, 0, "no month"},
        {{1, 13, 2024}, 0, 0, "month 13"},   {{0, 4, 2024}, 0, 0, "no day"},
        {{1, 1, 0}, 1, 1, "the year 0"},     {{255, 255, 65535}, 0, 0, "brim"},
        {kNull, 0, 1, "null is allowed"},    {{0, 0, 2024}, 0, 0, "with no year"},
        {kUnknown, 0, 1, "so is unknown"},   {{99, 0, 2024}, 0, 0, "with no year"},
        {{99, 4, 0}, 0, 0, "nor a month"},   {kNoDate, 0, 0, "what was no date"},
    };
    for (const auto& [record, isDay, isValid, why] : rows) {
        EXPECT_EQ(validXDate(&record), isDay) << why;
        EXPECT_EQ(IsValidDate(&record), isValid) << why;
        EXPECT_EQ(DateIsNull(&record), Fields(record) == "0.0.0") << why;
    }
    for (const int year : {2024, 2100, 100, 0, -4, 1796, kLeastYear})
        EXPECT_EQ(isleapyear(year), 1) << year;
    for (const int year : {2023, -1, kLastYear})
        EXPECT_EQ(isleapyear(year), 0) << year;
}

TEST(GetDayOfWeek, BeginsOnMonday)
{
    EXPECT_EQ(GetDayOfWeek(14, 11, 2026), 5);
    EXPECT_EQ(GetDayOfWeek(1, 3, 3000), 6) << "a Saturday, but the congruence is negative";
    EXPECT_EQ(GetDayOfWeek(1, 0, 2024), 6) << "month 0 is not of the year before";
}

TEST(DayBetween, CountsRealDaysOnly)
{
    const ::Test::Row<long, long, long> rows[] = {
        {20230406, 20240405, 365, "a tax year less a day"}, {20240405, 20230406, -365, "reversed"},
        {19000228, 19000301, 1, "no leap day there"},       {18991229, 19000101, 3, "over OLE's day zero"},
        {1000101, 99991231, 3615899, "first to last"},      {991231, 1000101, 0, "before the first"},
        {20240405, 99, 0, "to the Unknown date"},           {1300, 20240405, 0, "what was no date"},
    };
    for (const auto& [from, to, days, why] : rows) {
        Record first, last;
        LtoxD(from, &first);
        LtoxD(to, &last);
        EXPECT_EQ(DayBetween(&first, &last), days) << why;
    }
}
