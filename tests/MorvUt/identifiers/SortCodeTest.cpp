#include "MorvUt/identifiers/SortCode.h"

#include "support/Test.h"

TEST(FormatSortCode, PutsDashesBetweenPairs)
{
    const ::Test::Case<const char*, const char*> rows[] = {
        {"123456", "12-34-56", "six digits"}, {"1234567", "12-34-56", "cut after six"},
        {"12345", "12-34-5", "five"},         {"1", "1--", "one"},
        {"1234", "12-34-", "four"},           {"12-34-56", "12-34-56", "has its dashes"},
        {"1-", "1-", "any dash will do"},     {"", "  -  -  ", "empty"},
        {"--", "  -  -  ", "dashes alone"},   {" - - ", "  -  -  ", "the empty mask, short"},
        {" ", " --", "a blank is no mask"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FormatSortCode(row.in), row.out) << row.why;
}

TEST(TidySortCodeString, EmptiesTheEmptyMask)
{
    EXPECT_EQ(TidySortCodeString("  -  -  "), "");
    for (const char* code : {"12-34-56", " 12-34", "-", "---", "   ", "\t--"})
        EXPECT_EQ(TidySortCodeString(code), code);
}

TEST(WhyNotSortCode, NamesPlaceAndLength)
{
    const ::Test::Case<const char*, const char*> rows[] = {
        {"12 34-56 ", "Character 9 must be a digit; a sort code is three pairs of digits"},
        {"", "A sort code is missing"},
        {"  -  -  ", "A sort code is missing"},
        {"12-34-5", "A sort code has 6 digits; this has 5"},
        {"1234567", "A sort code has 6 digits; this has 7"},
        {"12-34-56-", "Character 9 must be a digit; a sort code is three pairs of digits"},
        {"1-23-456", "Character 2 must be a digit; a sort code is three pairs of digits"},
        {"12--3456", "Character 4 must be a digit; a sort code is three pairs of digits"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(WhyNotSortCode(row.in), row.out) << row.in;
    for (const char* const code : {"123456", "12-34-56", "12-3456", "12 34 56"})
        EXPECT_EQ(WhyNotSortCode(code), "") << code;
}
