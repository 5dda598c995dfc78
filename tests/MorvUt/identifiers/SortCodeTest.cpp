#include "MorvUt/identifiers/SortCode.h"

#include "support/Test.h"

TEST(FormatSortCode, PutsDashesBetweenPairs)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("MorvUt/identifiers/SortCode.tsv"))
        EXPECT_EQ(FormatSortCode(in), out) << why;
}

TEST(TidySortCodeString, EmptiesTheEmptyMask)
{
    EXPECT_EQ(TidySortCodeString("  -  -  "), "");
    for (const char* code : {"12-34-56", " 12-34", "-", "---", "   ", "\t--"})
        EXPECT_EQ(TidySortCodeString(code), code);
}

TEST(WhyNotSortCode, NamesPlaceAndLength)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("MorvUt/identifiers/SortCode.tsv"))
        EXPECT_EQ(WhyNotSortCode(in), out) << in;
    for (const char* const code : {"123456", "12-34-56", "12-3456", "12 34 56"})
        EXPECT_EQ(WhyNotSortCode(code), "") << code;
}
