#include "hmrc-sandbox/Identifiers.h"

#include <gtest/gtest.h>

namespace Sandbox
{

struct Row
{
    const char* text;
    bool good;
    const char* why;
};

TEST(IsUtr, ChecksLengthCharactersAndCheckDigit)
{
    const Row rows[] = {
        {"2234567890", true, "HMRC's example"},     {"1111111111", true, "HMRC's example"},
        {"1234567890", false, "check digit wrong"}, {"223456789", false, "nine digits"},
        {"22345678900", false, "eleven digits"},    {"2234567890K", false, "with the K of the printed form"},
        {"22345 6789", false, "blank inside"},      {"", false, "empty"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(IsUtr(row.text), row.good);
    }
}

TEST(IsNino, TakesWhatTheInterfaceTakes)
{
    const Row rows[] = {
        {"AA000001A", true, "HMRC's example"},
        {"AA000001", true, "suffix is optional"},
        {"AA000001E", false, "suffix beyond D"},
        {"QQ123456A", false, "Q never comes first, in HMRC's own prose example too"},
        {"AO123456A", false, "O never comes second"},
        {"OA123456A", true, "O may come first"},
        {"ZZ123456A", false, "prefix never given out"},
        {"BG123456A", false, "prefix never given out"},
        {"GA123456A", true, "only the pair is excluded"},
        {"aa000001a", false, "lower case"},
        {"AA 00 00 01 A", false, "blanks"},
        {"", false, "empty"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(IsNino(row.text), row.good);
    }
}

TEST(IsTaxYear, WantsTwoYearsInARow)
{
    const Row rows[] = {
        {"2017-18", true, "ordinary"},
        {"1999-00", true, "turn of the century"},
        {"2017-17", false, "the same year"},
        {"2017-2018", false, "second year in full"},
        {"2017/18", false, "slash"},
        {"2017-1a", false, "letter"},
        {"", false, "empty"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(IsTaxYear(row.text), row.good);
    }
}

} // namespace Sandbox
