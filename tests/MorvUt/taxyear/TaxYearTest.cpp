#include "MorvUt/taxyear/TaxYear.h"

#include <gtest/gtest.h>

#include "support/Case.h"

TEST(TaxYearRange, NumbersThirtyFiveYears)
{
    EXPECT_EQ(GetMinRealTaxYear(), 1991);
    EXPECT_EQ(GetMaxRealTaxYear(), 2025);
    EXPECT_EQ(GetMaxTaxYear(), 34);
    EXPECT_EQ(GetNumTaxYears(), 35);
    EXPECT_EQ(GetDefaultRealTaxYear(), 2024);
}

TEST(TaxYearRange, ConvertsAnyNumberAndBack)
{
    const ::Test::Case<short, short> rows[] = {
        {1991, 0, "first"},
        {2025, 34, "last"},
        {1990, -1, "before the range"},
        {2100, 109, "behind the range"},
        {-32768, 30777, "wraps at 16 bits"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(ConvertRealToRelativeTaxYear(row.in), row.out);
        EXPECT_EQ(ConvertRelativeToRealTaxYear(row.out), row.in);
        EXPECT_EQ(TaxYear(row.in).GetRelativeTaxYear(), row.out);
    }
}

TEST(TaxYear, RunsFromSixthToFifthOfApril)
{
    const TaxYear year(2024);
    EXPECT_EQ(year.GetStart().FormatIso(), "2023-04-06");
    EXPECT_EQ(year.GetEnd().FormatIso(), "2024-04-05");
    EXPECT_FALSE(TaxYear(100).GetStart().IsValid()) << "dates begin in the year 100";
    EXPECT_FALSE(TaxYear(-32768).GetEnd().IsValid());
}

TEST(TaxYear, ComparesTheYearAlone)
{
    EXPECT_FALSE(TaxYear().IsValid());
    EXPECT_TRUE(TaxYear(0).IsValid());
    EXPECT_EQ(TaxYear(), TaxYear(0));
    EXPECT_NE(TaxYear(2023), TaxYear(2024));
    EXPECT_TRUE(TaxYear(-1) < TaxYear(0));
    EXPECT_TRUE(TaxYear(2024) > TaxYear(2023) && TaxYear(2024) >= TaxYear(2024) && TaxYear(2024) <= TaxYear(2024));
    EXPECT_FALSE(TaxYear(2024) > TaxYear(2024) || TaxYear(2023) >= TaxYear(2024) || TaxYear(2024) <= TaxYear(2023));
}

TEST(TaxYear, MovesByYears)
{
    TaxYear year(2025);
    EXPECT_EQ(year++, TaxYear(2025));
    EXPECT_EQ(++year, TaxYear(2027)); // the range is nobody's business here
    EXPECT_EQ(year--, TaxYear(2027));
    EXPECT_EQ(--year, TaxYear(2025));
    EXPECT_EQ((year += 10) -= 4, TaxYear(2031));
    EXPECT_EQ(year + -31, TaxYear(2000));
    EXPECT_EQ(year - 31, TaxYear(2000));
    EXPECT_EQ(TaxYear(32767) + 1, TaxYear(-32768));
    EXPECT_FALSE((TaxYear() + 2024).IsValid()) << "a null year stays null";
}
