#include "MorvUt/taxyear/SplitYear.h"

#include <gtest/gtest.h>

#include "support/Case.h"

namespace
{

template<class Year>
struct Open : SplitYear
{
    using SplitYear::Create;
    Open() = default;
    explicit Open(short year) : SplitYear(year) {}
    Kiln::DatePeriod GetYearPeriod(short yearEnd) const override { return Year::Period(yearEnd); }
};

/// 1 May to 30 April.
struct FromMay
{
    static Kiln::DatePeriod Period(short end) { return {Kiln::CDate(end - 1, 5, 1), Kiln::CDate(end, 4, 30)}; }
};
/// Twice as long as a year: its years overlap.
struct TwoYears
{
    static Kiln::DatePeriod Period(short end) { return {Kiln::CDate(end - 1, 1, 1), Kiln::CDate(end, 12, 31)}; }
};
/// Named by the year before it begins.
struct NamedEarly
{
    static Kiln::DatePeriod Period(short end) { return {Kiln::CDate(end + 1, 1, 1), Kiln::CDate(end + 1, 12, 31)}; }
};
/// A month only.
struct JuneOnly
{
    static Kiln::DatePeriod Period(short end) { return {Kiln::CDate(end, 6, 1), Kiln::CDate(end, 6, 30)}; }
};

using MayYear = Open<FromMay>;

} // namespace

TEST(SplitYear, TakesYearsFrom1802To2099)
{
    const ::Test::Case<short, bool> rows[] = {{1801, false}, {1802, true},    {2099, true},
                                              {2100, false}, {-32768, false}, {0, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.in);
        MayYear year(2024);
        EXPECT_EQ(year.Create(row.in), row.out);
        EXPECT_EQ(year.IsValid(), row.out);
        EXPECT_EQ(year.IsInvalid(), !row.out);
        EXPECT_EQ(year.GetYearEnd(), row.out ? row.in : 2024) << "a refused year leaves the number";
    }
    EXPECT_TRUE(MayYear(1801).IsInvalid());
}

TEST(SplitYear, BeginsNullAndAnswersByItsPeriod)
{
    MayYear year;
    EXPECT_TRUE(year.IsNull() && !year.IsValid() && !year.IsInvalid());
    EXPECT_EQ(year.GetYearEnd(), 0);
    EXPECT_FALSE(year.GetStart().IsValid());

    ASSERT_TRUE(year.Create(short{2024}));
    EXPECT_EQ(year.Format(), "2023/24");
    EXPECT_EQ(year.GetStart().FormatIso(), "2023-05-01");
    EXPECT_EQ(year.GetEnd().FormatIso(), "2024-04-30");
    EXPECT_TRUE(year.IsDateInYear(Kiln::CDate(2023, 5, 1)) && year.IsDateInYear(Kiln::CDate(2024, 4, 30)));
    EXPECT_FALSE(year.IsDateInYear(Kiln::CDate(2023, 4, 30)) || year.IsDateInYear(Kiln::CDate(2024, 5, 1)));
    EXPECT_FALSE(year.IsDateInYear(Kiln::CDate()));
}

TEST(SplitYear, FindsTheYearOfADate)
{
    const Kiln::CDate june(2023, 6, 15), july(2023, 7, 1);
    const auto find = [](SplitYear& year, bool found) { return std::pair(found, year.GetYearEnd()); };
    MayYear may;
    Open<TwoYears> two;
    Open<NamedEarly> early;
    Open<JuneOnly> month;
    EXPECT_EQ(find(may, may.Create(Kiln::CDate(2024, 4, 30))), std::pair(true, short{2024})) << "calendar year";
    EXPECT_EQ(find(may, may.Create(Kiln::CDate(2024, 5, 1))), std::pair(true, short{2025})) << "year after";
    EXPECT_EQ(find(early, early.Create(june)), std::pair(true, short{2022})) << "year before";
    EXPECT_EQ(find(two, two.Create(june)), std::pair(true, short{2023})) << "2024 has it too; calendar year first";
    EXPECT_EQ(find(month, month.Create(june)), std::pair(true, short{2023}));
    EXPECT_EQ(find(month, month.Create(july)), std::pair(false, short{2024})) << "in none: the last that was tried";
    EXPECT_TRUE(month.IsInvalid());
    EXPECT_TRUE(month.Create(june) && month.IsValid()) << "from invalid to valid";
}

TEST(SplitYear, HasNoYearForADateThatIsNone)
{
    for (const Kiln::CDate& none : {Kiln::CDate(), Kiln::CDate::Invalid()}) {
        MayYear year(2024);
        EXPECT_FALSE(year.Create(none));
        EXPECT_TRUE(year.IsInvalid());
        EXPECT_EQ(year.GetYearEnd(), 0);
    }
}
