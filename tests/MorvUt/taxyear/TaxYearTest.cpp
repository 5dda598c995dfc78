#include "MorvUt/taxyear/TaxYear.h"

#include "support/Test.h"

TEST(TaxYearRange, NumbersThirtyFiveYears)
{
    EXPECT_TRUE(GetMinRealTaxYear() == 1991 && GetMaxRealTaxYear() == 2025 && GetDefaultRealTaxYear() == 2024);
    EXPECT_TRUE(GetMaxTaxYear() == 34 && GetNumTaxYears() == 35);
    EXPECT_TRUE(TaxYear::GetFirstTaxYear() == TaxYear(1991) && TaxYear::GetLastTaxYear() == TaxYear(2025));
    for (const auto& [year, number, why] : ::Test::Table<short, short>("MorvUt/taxyear/TaxYear.tsv")) {
        EXPECT_EQ(ConvertRealToRelativeTaxYear(year), number) << why;
        EXPECT_EQ(ConvertRelativeToRealTaxYear(number), year) << why;
        EXPECT_EQ(TaxYear(year).GetRelativeTaxYear(), number) << why;
    }
}

TEST(TaxYear, RunsFromSixthToFifthOfApril)
{
    EXPECT_EQ(TaxYear(2024).GetStart().FormatIso(), "2023-04-06");
    EXPECT_EQ(TaxYear(2024).GetEnd().FormatIso(), "2024-04-05");
    EXPECT_FALSE(TaxYear(100).GetStart().IsValid()) << "dates begin in the year 100";
    EXPECT_FALSE(TaxYear(-32768).GetEnd().IsValid());
}

TEST(TaxYear, ComparesAndMovesByTheYearAlone)
{
    EXPECT_FALSE(TaxYear().IsValid());
    EXPECT_TRUE(TaxYear(0).IsValid() && TaxYear() == TaxYear(0));
    EXPECT_TRUE(TaxYear(2023) != TaxYear(2024) && TaxYear(-1) < TaxYear(0));
    EXPECT_TRUE(TaxYear(2024) > TaxYear(2023) && TaxYear(2024) >= TaxYear(2024) && TaxYear(2024) <= TaxYear(2024));
    TaxYear year(2025);
    EXPECT_EQ(year++, TaxYear(2025));
    EXPECT_EQ(++year, TaxYear(2027)) << "the range is nobody's business here";
    EXPECT_EQ(year--, TaxYear(2027));
    EXPECT_EQ(--year, TaxYear(2025));
    EXPECT_EQ((year += 10) -= 4, TaxYear(2031));
    EXPECT_TRUE(year + -31 == TaxYear(2000) && year - 31 == TaxYear(2000) && TaxYear(32767) + 1 == TaxYear(-32768));
    EXPECT_FALSE((TaxYear() + 2024).IsValid()) << "a null year stays null";
}

TEST(YearTitles, AreWrittenInFourWays)
{
    for (const auto& [year, two, fourTwo, hyphen, four, why] :
         ::Test::Table<short, const char*, const char*, const char*, const char*>("MorvUt/taxyear/TaxYear.tsv")) {
        SCOPED_TRACE(why);
        EXPECT_EQ(FormatYearString2Digit(year), two);
        EXPECT_EQ(FormatYearString42Digit(year), fourTwo);
        EXPECT_EQ(FormatYearString42DigitWithHyphen(year), hyphen);
        EXPECT_EQ(FormatYearString4Digit(year), four);
        EXPECT_EQ(TaxYear(year).Format(), fourTwo);
    }
    char buffer[8];
    GetTaxYearTitle(33, buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "2023/24");
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { GetTaxYearTitle(33, buffer, 7); }));
}
