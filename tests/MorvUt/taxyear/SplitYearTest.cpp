#include "MorvUt/taxyear/SplitYear.h"

#include "support/Test.h"

namespace
{

using Kiln::CDate;
using Kiln::DatePeriod;
using Period = DatePeriod (*)(short yearEnd);

DatePeriod FromMay(short end) { return {CDate(end - 1, 5, 1), CDate(end, 4, 30)}; }
DatePeriod ThreeYears(short end) { return {CDate(end - 1, 1, 1), CDate(end + 1, 12, 31)}; }
DatePeriod NamedEarly(short end) { return {CDate(end + 1, 1, 1), CDate(end + 1, 12, 31)}; }
DatePeriod JuneOnly(short end) { return {CDate(end, 6, 1), CDate(end, 6, 30)}; }

struct AnyYear : SplitYear
{
    using SplitYear::Create;
    AnyYear() = default;
    explicit AnyYear(short year) : SplitYear(year) {}
    DatePeriod GetYearPeriod(short yearEnd) const override { return period(yearEnd); }
    Period period = &FromMay;
};

} // namespace

TEST(SplitYear, TakesYearsFrom1802To2099)
{
    const ::Test::Case<short, bool> rows[] = {{1801, false}, {1802, true},    {2099, true},
                                              {2100, false}, {-32768, false}, {0, false}};
    for (const auto& row : rows) {
        AnyYear year(2024);
        EXPECT_EQ(year.Create(row.in), row.out) << row.in;
        EXPECT_TRUE(year.IsValid() == row.out && year.IsInvalid() != row.out) << row.in;
        EXPECT_EQ(year.GetYearEnd(), row.out ? row.in : 2024) << "a refused year leaves the number";
    }
}

TEST(SplitYear, BeginsNullAndAnswersByItsPeriod)
{
    AnyYear year;
    EXPECT_TRUE(year.IsNull() && !year.IsValid() && !year.IsInvalid() && year.GetYearEnd() == 0);
    EXPECT_FALSE(year.GetStart().IsValid());
    ASSERT_TRUE(year.Create(short{2024}));
    EXPECT_EQ(year.Format(), "2023/24");
    EXPECT_EQ(year.GetStart().FormatIso(), "2023-05-01");
    EXPECT_EQ(year.GetEnd().FormatIso(), "2024-04-30");
    EXPECT_TRUE(year.IsDateInYear({2023, 5, 1}) && year.IsDateInYear({2024, 4, 30}));
    EXPECT_FALSE(year.IsDateInYear({2023, 4, 30}) || year.IsDateInYear({2024, 5, 1}) || year.IsDateInYear({}));
}

TEST(SplitYear, FindsTheYearOfADate)
{
    const ::Test::Row<Period, CDate, bool, short> rows[] = {
        {&FromMay, {2024, 4, 30}, true, 2024, "calendar year"},
        {&FromMay, {2024, 5, 1}, true, 2025, "year after"},
        {&NamedEarly, {2023, 6, 15}, true, 2022, "year before"},
        {&ThreeYears, {2023, 6, 15}, true, 2023, "its neighbours have it too; calendar year first"},
        {&JuneOnly, {2023, 7, 1}, false, 2024, "in none: the last that was tried"},
        {&FromMay, CDate::Invalid(), false, 0, "no date counts as of the year -1"},
        {&FromMay, {}, false, 0, "so does null"},
    };
    AnyYear year; // moves from valid to invalid and back
    for (const auto& [period, date, found, yearEnd, why] : rows) {
        year.period = period;
        EXPECT_EQ(year.Create(date), found) << why;
        EXPECT_TRUE(found ? year.IsValid() : year.IsInvalid()) << why;
        EXPECT_EQ(year.GetYearEnd(), yearEnd) << why;
    }
    EXPECT_TRUE(year.Create(short{2024}) && year.IsValid());
}
