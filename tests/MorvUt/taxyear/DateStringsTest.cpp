#include "MorvUt/taxyear/DateStrings.h"

#include <limits>
#include <string>

#include "support/Test.h"

namespace
{

using Record = X_DateStr_tag;

constexpr Record kNull{0, 0, 0}, kUnknown{99, 0, 0};
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
    for (const auto& [day, month, year, isDay, isValid, why] :
         ::Test::Table<std::uint8_t, std::uint8_t, std::uint16_t, int, int>("MorvUt/taxyear/DateStrings.tsv")) {
        const Record record{day, month, year};
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
    for (const auto& [from, to, days, why] : ::Test::Table<long, long, long>("MorvUt/taxyear/DateStrings.tsv")) {
        Record first, last;
        LtoxD(from, &first);
        LtoxD(to, &last);
        EXPECT_EQ(DayBetween(&first, &last), days) << why;
    }
}
