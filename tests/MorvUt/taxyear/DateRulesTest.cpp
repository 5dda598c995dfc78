#include "MorvUt/taxyear/DateRules.h"

#include <limits>
#include <string>

#include "fuzz/Targets.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "support/Test.h"

namespace
{

using Kiln::CDate;
constexpr int kMinInt = std::numeric_limits<int>::min(), kMaxInt = std::numeric_limits<int>::max();
constexpr short kMinShort = std::numeric_limits<short>::min(), kMaxShort = std::numeric_limits<short>::max();

/// `seconds` after midnight of a date.
CDate At(const CDate& date, double seconds)
{
    const double fraction = seconds / 86'400;
    return CDate::FromOleDate(date.GetOleDate() < 0 ? date.GetOleDate() - fraction : date.GetOleDate() + fraction);
}

} // namespace

TEST(GetTaxYear, TurnsOverOnTheSixthOfApril)
{
    const ::Test::Case<CDate, short> rows[] = {
        {CDate(2024, 4, 5), 2024, "last day"},  {At({2024, 4, 5}, 86'399), 2024, "a second to midnight"},
        {CDate(2024, 4, 6), 2025, "first day"}, {At({2024, 4, 5}, 86'399.9), 2025, "nearly midnight"},
        {CDate(100, 1, 1), 100, "first date"},  {At({1890, 4, 5}, 43'200), 1890, "noon before 1900"},
        {CDate::Invalid(), -1, "invalid"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(GetTaxYear(row.in), row.out) << row.why;
}

TEST(TaxYears, HoldEveryDayOnce)
{
    for (CDate day(1753, 1, 1); day <= CDate(2100, 12, 31); day = day + 1) {
        Fuzz::LongDate(std::to_string(CDateToLong(day)));
        const short year = GetTaxYear(day);
        X_DateStr_tag record{};
        LtoxD(CDateToLong(day), &record);
        ASSERT_EQ(TaxYearDays(year, day, day), 1) << day.FormatIso();
        for (const int other : {-1, 0, 1}) {
            SCOPED_TRACE(day.FormatIso());
            const auto asked = static_cast<short>(year + other);
            ASSERT_EQ(IsDateInTaxYear(day, asked), other == 0);
            ASSERT_EQ(AssessmentYearCheck(day, asked), -other);
            ASSERT_EQ(DateBeforeAssessmentYear(asked, record), other > 0);
            ASSERT_EQ(DateAfterAssessmentYear(asked, record), other < 0);
        }
    }
}

TEST(TaxYears, HaveAnAnswerForWhatIsNoDateOrNoYear)
{
    const ::Test::Row<CDate, short, bool, int> rows[] = {
        {At({2024, 4, 5}, 0.4), 2024, true, 1, "half a second late"},
        {CDate(), 2024, false, 0, "null"},
        {At({2024, 4, 5}, 1), 2024, false, 1, "a second late"},
        {CDate::Invalid(), 2024, false, 0, "invalid"},
        {CDate(100, 4, 6), 100, false, 1, "before all dates"},
        {CDate(9999, 12, 31), 10000, false, 0, "after them"},
        {CDate(2024, 1, 1), kMinShort, false, 0, "lowest year"},
        {CDate(), -1, false, 0, "the year of no date"},
    };
    for (const auto& [date, year, isIn, place, why] : rows) {
        EXPECT_EQ(IsDateInTaxYear(date, year), isIn) << why;
        EXPECT_EQ(AssessmentYearCheck(date, year), place) << why;
    }
    for (const int year : {kMinInt, kMaxInt})
        EXPECT_EQ(AssessmentYearCheck({2024, 1, 1}, year), AssessmentCheckWithin) << year;
}

TEST(TaxYearDays, ClipsToTheYear)
{
    for (const auto& [year, from, to, days, why] :
         ::Test::Table<short, long, long, long>("MorvUt/taxyear/DateRules.tsv"))
        EXPECT_EQ(TaxYearDays(year, LongToCDate(from), LongToCDate(to)), days) << why;
    EXPECT_EQ(TaxYearDays(2024, At({2024, 1, 1}, 86'399.8), {2024, 1, 3}), 2) << "half a second's correction";
}

TEST(DatesIntersect, LetsTheFirstPeriodBeOpen)
{
    for (const auto& [from1, to1, from2, to2, meet, why] :
         ::Test::Table<long, long, long, long, int>("MorvUt/taxyear/DateRules.tsv"))
        EXPECT_EQ(DatesIntersect(LongToCDate(from1), LongToCDate(to1), LongToCDate(from2), LongToCDate(to2)), meet)
            << why;
}

TEST(PeriodHasLeapDay, FollowsTheGregorianRule)
{
    for (const auto& [from, to, has, why] : ::Test::Table<long, long, int>("MorvUt/taxyear/DateRules.tsv"))
        EXPECT_EQ(PeriodHasLeapDay(LongToCDate(from), LongToCDate(to)), has) << why;
}

TEST(LongToCDate, RefusesWhatIsNoDate)
{
    EXPECT_EQ(CDateToLong(At({2024, 4, 5}, 43'200)), 20240405);
    EXPECT_EQ(CDateToLong(CDate()) + CDateToLong(CDate::Invalid()), 0);
    EXPECT_TRUE(LongToCDate(0).IsNull());
    for (const long value :
         {99L, 20230229L, -20240405L, 100000101L, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()})
        EXPECT_EQ(LongToCDate(value), CDate::Invalid()) << value;
    if constexpr (sizeof(long) > 4) { // year 2^32 + 2024
        EXPECT_FALSE(LongToCDate(static_cast<long>(4'294'967'296LL * 10'000 + 20240405)).IsValid());
    }
}

TEST(DateBeforeAndAfterAssessmentYear, PlaceRecordsThatAreNoDates)
{
    const ::Test::Row<X_DateStr_tag, short, int, int> rows[] = {
        {{99, 0, 0}, 2024, 1, 1, "unknown lies outside every year"},
        {{0, 0, 0}, 2024, 1, 0, "null lies before"},
        {{255, 255, 65535}, kMaxShort, 0, 1, "brim"},
        {{1, 1, 2024}, kMinShort, 0, 1, "lowest year"},
    };
    for (const auto& [date, year, before, after, why] : rows) {
        EXPECT_EQ(DateBeforeAssessmentYear(year, date), before) << why;
        EXPECT_EQ(DateAfterAssessmentYear(year, date), after) << why;
    }
}

TEST(CalculateFilingDate, CountsMonthsInDays)
{
    SetCurrentTaxYear(ConvertRealToRelativeTaxYear(2010)); // every notice of 2022 comes late
    constexpr int kThreeMonths[] = {89, 88, 91, 90, 91, 91, 91, 91, 90, 91, 91, 89};
    constexpr int kOneMonth[] = {30, 18, 30, 29, 30, 29, 30, 30, 29, 30, 29, 30};
    for (int month = 1; month <= 12; ++month) {
        const CDate issued(2022, month, 10);
        EXPECT_EQ(CalculateFilingDate(issued, "SA900") - issued, kThreeMonths[month - 1]) << month;
        EXPECT_EQ(CalculateFilingDate(issued, "P11D") - issued, kOneMonth[month - 1]) << month;
    }
}

TEST(CalculateFilingDate, OfNoticesToFileAndOtherReturns)
{
    const auto due = [](long issued, const char* type) {
        return CDateToLong(CalculateFilingDate(LongToCDate(issued), type));
    };
    SetCurrentTaxYear(ConvertRealToRelativeTaxYear(2023));
    EXPECT_EQ(due(20241031, "SA800"), 20250130) << "late for that year, so 91 days";
    EXPECT_EQ(due(20240406, "P11D"), 20240505) << "late too: 29 days";
    SetCurrentTaxYear(ConvertRealToRelativeTaxYear(2024));
    for (const auto& [issued, type, expected, why] :
         ::Test::Table<long, const char*, long>("MorvUt/taxyear/DateRules.tsv"))
        EXPECT_EQ(due(issued, type), expected) << why;
    EXPECT_EQ(due(0, "SA100") + due(99, "P11D") + due(99991231, "SA100"), 0) << "null, invalid, past the calendar";
}

TEST(EnableSmallBusinessEntitlement, HasTwoWindows)
{
    for (const auto& [start, end, isEntitled, why] : ::Test::Table<long, long, bool>("MorvUt/taxyear/DateRules.tsv"))
        EXPECT_EQ(EnableSmallBusinessEntitlement(LongToCDate(start), LongToCDate(end)), isEntitled) << why;
}

TEST(HalvessaTaxYears, RunFrom2015ToTheLast)
{
    for (const short year : {short{2014}, short{2015}, short{2025}, short{2026}}) {
        EXPECT_EQ(IsValidHalvessaTaxYearStart(TaxYear(year)), year != 2014) << year;
        EXPECT_EQ(IsValidHalvessaTaxYearEnd(TaxYear(year)), year != 2026) << year;
        EXPECT_EQ(IsValidHalvessaTaxYearStart(GetTaxYearEnd(year)), year != 2014) << year;
        EXPECT_EQ(IsValidHalvessaTaxYearEnd(GetTaxYearStart(year)), year != 2026) << year;
    }
    EXPECT_FALSE(IsValidHalvessaTaxYearStart(CDate()));
    EXPECT_TRUE(IsValidHalvessaTaxYearEnd(CDate())) << "the year -1: callers test validity";
}
