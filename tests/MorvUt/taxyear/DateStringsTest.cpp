#include "MorvUt/taxyear/DateStrings.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "Kiln/CDate.h"
#include "support/Case.h"
#include "support/TestSupport.h"

namespace
{

using Record = X_DateStr_tag;

constexpr Record kNull{0, 0, 0}, kUnknown{99, 0, 0}, kNoDate{0, 13, 0};

std::string Fields(const Record& record)
{
    return std::to_string(record.day) + "." + std::to_string(record.month) + "." + std::to_string(record.year);
}

std::string TextOf(const Record& record)
{
    CString text("left over");
    ConvertDateToStr(&record, text);
    return text.Str();
}

} // namespace

TEST(ParseDateStr, ReadsDatesUnknownAndNothing)
{
    const ::Test::Case<const char*, Record> rows[] = {
        {"", kNull, "empty"},
        {nullptr, kNull, "null reads as empty"},
        {" ", kNoDate, "a blank is no date"},
        {"X", kUnknown, "X"},
        {"Unknown", kUnknown, "capital U"},
        {"Used to be 1 May", kUnknown, "anything from a capital U on"},
        {"unknown", kNoDate, "small letters go to the parser"},
        {"x", kNoDate, "so does a small x"},
        {"05/04/2024", {5, 4, 2024}, "as programs write it"},
        {"29/02/1900", kNoDate, "the parser knows the century rule"},
        {"01/01/0100", {1, 1, 100}, "first date"},
        {"31/12/9999", {31, 12, 9999}, "last date"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        Record record{7, 7, 7};
        ParseDateStr(row.in, &record);
        EXPECT_EQ(Fields(record), Fields(row.out));
        EXPECT_EQ(Fields(ConvertStrToDate(row.in)), Fields(row.out));
    }
    EXPECT_EQ(Fields(ConvertStrToDate(std::string(1'000'000, '1').c_str())), Fields(kNoDate)) << "a megabyte";
}

TEST(ConvertDateToStr, WritesEveryRecord)
{
    const ::Test::Case<Record, const char*> rows[] = {
        {{5, 4, 2024}, "05/04/2024", "leading zeros"},
        {kNull, "", "null"},
        {kUnknown, "Unknown", "unknown"},
        {{99, 4, 2024}, "Unknown", "by the day alone"},
        {{0, 4, 2024}, "", "by the day alone"},
        {{1, 2, 3}, "01/02/0003", "early year"},
        {{255, 255, 65535}, "255/255/65535", "fields filled to the brim"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(TextOf(row.in), row.out);
        char buffer[14] = "xxxxxxxxxxxxx";
        convert_date_to_str(&row.in, buffer, sizeof buffer);
        EXPECT_STREQ(buffer, row.out);
    }
}

TEST(ConvertDateToStr, RefusesABufferWithoutRoomForTheEndMark)
{
    const Record date{5, 4, 2024};
    char buffer[11] = "xxxxxxxxxx";
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { convert_date_to_str(&date, buffer, 10); }));
    EXPECT_EQ(buffer[0], '\0');
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { convert_date_to_str(&date, nullptr, 11); }));
    convert_date_to_str(&date, buffer, 11);
    EXPECT_STREQ(buffer, "05/04/2024");
}

TEST(DateStrings, TodayIsTheLocalDate)
{
    ::Test::SetNow(2024, 4, 5, 23, 59, 59);
    CString text;
    GetTodaysDate(text);
    EXPECT_EQ(text, "05/04/2024");
    Record today;
    X_GetDate(&today);
    EXPECT_EQ(DtoxL(&today), 20240405);
}

TEST(CompareDates, SaysOneWhenInOrder)
{
    const struct
    {
        Record a, b;
        int order;
        const char* why;
    } rows[] = {
        {{1, 1, 2024}, {2, 1, 2024}, 1, "a day earlier"},
        {{2, 1, 2024}, {1, 1, 2024}, -1, "a day later"},
        {{31, 1, 2024}, {1, 2, 2024}, 1, "months before days"},
        {{31, 12, 2023}, {1, 1, 2024}, 1, "years before months"},
        {{1, 1, 2024}, {1, 1, 2024}, 0, "same"},
        {{1, 1, 2024}, kNull, 0, "null on the right"},
        {kUnknown, {1, 1, 2024}, 1, "unknown sorts as 99"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(CompareDates(&row.a, &row.b), row.order);
        EXPECT_EQ(DatesIdentical(&row.a, &row.b), DtoxL(&row.a) == DtoxL(&row.b));
    }
}

TEST(LongDate, GoesThereAndBackOrIsCutToTheFields)
{
    const ::Test::Case<long, Record> rows[] = {
        {20240405, {5, 4, 2024}, "a date"},
        {0, kNull, "null"},
        {99, kUnknown, "unknown"},
        {-20240405, {251, 252, 63512}, "negative remainders, cut to 8 and 16 bits"},
        {2147483647, {47, 36, 18140}, "year 214748 is 18140 in 16 bits"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        Record record{1, 1, 1};
        LtoxD(row.in, &record);
        EXPECT_EQ(Fields(record), Fields(row.out));
        if (row.in >= 0 && row.in <= 99999999) {
            EXPECT_EQ(DtoxL(&record), row.in);
        }
        Record copy{};
        CopyDate(&copy, &record);
        EXPECT_TRUE(DatesIdentical(&copy, &record));
    }
}

TEST(ValidXDate, HasNoCenturyRule)
{
    const struct
    {
        Record record;
        int isDay, isValid;
        const char* why;
    } rows[] = {
        {{29, 2, 1900}, 1, 1, "no century rule"}, {{29, 2, 2100}, 1, 1, "nor here"},
        {{29, 2, 2023}, 0, 0, "no leap year"},    {{30, 2, 2024}, 0, 0, "February"},
        {{30, 4, 2024}, 1, 1, "April"},           {{31, 4, 2024}, 0, 0, "has 30 days"},
        {{31, 12, 2024}, 1, 1, "December"},       {{32, 12, 2024}, 0, 0, "has 31 days"},
        {{1, 0, 2024}, 0, 0, "no month"},         {{1, 13, 2024}, 0, 0, "month 13"},
        {{0, 4, 2024}, 0, 0, "no day"},           {{1, 1, 0}, 1, 1, "year 0"},
        {{255, 255, 65535}, 0, 0, "brim"},        {kNull, 0, 1, "null is allowed"},
        {kUnknown, 0, 1, "so is unknown"},        {{99, 4, 2024}, 0, 0, "unknown has no month"},
        {kNoDate, 0, 0, "what was no date"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(validXDate(&row.record), row.isDay);
        EXPECT_EQ(IsValidDate(&row.record), row.isValid);
    }
}

TEST(Isleapyear, TakesEveryFourthYear)
{
    const ::Test::Case<int, int> rows[] = {
        {2024, 1, "leap"},
        {2023, 0, "not"},
        {2100, 1, "century"},
        {100, 1, "no longer 1900 + "},
        {0, 1, "1900"},
        {-4, 1, "1896"},
        {-1, 0, "1899"},
        {1796, 1, "before 1800"},
        {std::numeric_limits<int>::min(), 1, "lowest"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(isleapyear(row.in), row.out) << row.why;
}

TEST(GetDayOfWeek, BeginsOnMonday)
{
    EXPECT_EQ(GetDayOfWeek(14, 11, 2026), 5);
    EXPECT_EQ(GetDayOfWeek(15, 11, 2026), 6);
    EXPECT_EQ(GetDayOfWeek(29, 2, 2024), 3);
    // Every day of the Gregorian calendar from 1753 to 2100 follows its predecessor; 1 January 1753 was a Monday.
    int expected = 0;
    for (Kiln::CDate day(1753, 1, 1); day.GetYear() <= 2100; day = day + 1, expected = (expected + 1) % 7)
        ASSERT_EQ(GetDayOfWeek(day.GetDay(), day.GetMonth(), day.GetYear()), expected) << day.FormatIso();
}

TEST(GetDayOfWeek, GivesSomeDayForAnyNumbers)
{
    constexpr int kEnds[] = {std::numeric_limits<int>::min(), -1, 0, 13, std::numeric_limits<int>::max()};
    for (const int day : kEnds)
        for (const int month : kEnds)
            for (const int year : kEnds) {
                const int weekday = GetDayOfWeek(day, month, year);
                EXPECT_TRUE(weekday >= 0 && weekday <= 6) << day << '/' << month << '/' << year;
            }
}

TEST(DayBetween, CountsRealDaysOnly)
{
    const struct
    {
        Record from, to;
        long days;
        const char* why;
    } rows[] = {
        {{6, 4, 2023}, {5, 4, 2024}, 365, "a tax year with a leap day, less one"},
        {{5, 4, 2024}, {6, 4, 2023}, -365, "reversed"},
        {{5, 4, 2024}, {5, 4, 2024}, 0, "same day"},
        {{28, 2, 1900}, {1, 3, 1900}, 1, "1900 is no leap year here"},
        {{29, 2, 1900}, {1, 3, 1900}, 0, "so this is no day"},
        {{29, 12, 1899}, {1, 1, 1900}, 3, "across day zero of OLE dates"},
        {{1, 1, 100}, {31, 12, 9999}, 3615899, "first to last"},
        {{31, 12, 99}, {1, 1, 100}, 0, "too early"},
        {{31, 2, 2024}, {1, 3, 2024}, 0, "31 February"},
        {{5, 4, 2024}, kNull, 0, "null"},
        {kNoDate, {5, 4, 2024}, 0, "what was no date"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DayBetween(&row.from, &row.to), row.days) << row.why;
}

// Most dates are counted in a shorter way; all must count as the calendar does.
TEST(DayBetween, AgreesWithTheCalendarOnEveryDay)
{
    constexpr Record kFrom{15, 6, 2000};
    for (const int year : {1899, 1900, 1901, 1904, 2000, 2023, 2024, 2099, 2100})
        for (int month = 0; month <= 14; ++month)
            for (int day = 0; day <= 32; ++day) {
                const Record to{static_cast<std::uint8_t>(day), static_cast<std::uint8_t>(month),
                                static_cast<std::uint16_t>(year)};
                const Kiln::CDate date(year, month, day);
                const double days = date - Kiln::CDate(2000, 6, 15);
                EXPECT_EQ(DayBetween(&kFrom, &to), days) << year << '-' << month << '-' << day;
            }
}

TEST(DateFormats, EndWithANull)
{
    for (const auto* table : {arrDateFormatStrings, arrDateFormatStringsForDialogs}) {
        for (int i = 0; i < 4; ++i)
            EXPECT_NE(table[i], nullptr);
        EXPECT_EQ(table[4], nullptr);
    }
    EXPECT_EQ(Kiln::CDate(2024, 4, 5).Format(arrDateFormatStrings[2]), "05 Apr 2024");
    EXPECT_STREQ(arrDateFormatStringsForDialogs[2], "DD MMM YYYY");
}
