#include "MorvUt/taxyear/YearTitles.h"

#include <gtest/gtest.h>

#include "MorvUt/taxyear/TaxYear.h"
#include "support/TestSupport.h"

TEST(YearTitles, AreWrittenInFourWays)
{
    const struct
    {
        short year;
        const char *two, *fourTwo, *hyphen, *four, *why;
    } rows[] = {
        {2024, "23-24", "2023/24", "2023-24", "2023/24", "any year"},
        {2000, "99-00", "1999/00", "1999-00", "1999/2000", "ends a century"},
        {1999, "98-99", "1998/99", "1998-99", "1998/99", "the year before"},
        {2001, "00-01", "2000/01", "2000-01", "2000/01", "the year after"},
        {7, "06-07", "0006/07", "0006-07", "0006/07", "keeps its digits"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(FormatYearString2Digit(row.year), row.two);
        EXPECT_EQ(FormatYearString42Digit(row.year), row.fourTwo);
        EXPECT_EQ(FormatYearString42DigitWithHyphen(row.year), row.hyphen);
        EXPECT_EQ(FormatYearString4Digit(row.year), row.four);
        EXPECT_EQ(TaxYear(row.year).Format(), row.fourTwo);
    }
}

TEST(GetTaxYearTitle, RefusesATooSmallBuffer)
{
    char buffer[8];
    GetTaxYearTitle(33, buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "2023/24");
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { GetTaxYearTitle(33, buffer, 7); }));
    EXPECT_STREQ(buffer, "") << "nothing half written";
}
