#include "hmrc-sandbox/Identifiers.h"

#include <gtest/gtest.h>

namespace Sandbox
{

using Texts = std::initializer_list<const char*>;

void Expect(bool (*check)(std::string_view), Texts good, Texts bad)
{
    for (const char* text : good)
        EXPECT_TRUE(check(text)) << text;
    for (const char* text : bad)
        EXPECT_FALSE(check(text)) << text;
}

TEST(IsUtr, ChecksLengthCharactersAndCheckDigit)
{
    // The good ones are HMRC's examples; the first bad one has a wrong check digit.
    Expect(IsUtr, {"2234567890", "1111111111"},
           {"1234567890", "223456789", "22345678900", "2234567890K", "22345 6789", ""});
}

TEST(IsNino, TakesWhatTheInterfaceTakes)
{
    // The suffix is optional; O may come first but not second, Q never (though HMRC's prose has it); BG, GB, KN, NK,
    // NT, TN and ZZ are never given out.
    Expect(IsNino, {"AA000001A", "AA000001", "AA000001D", "OA123456A", "GA123456A"},
           {"AA000001E", "QQ123456A", "AO123456A", "ZZ123456A", "BG123456A", "aa000001a", "AA 00 00 01 A", ""});
}

TEST(IsTaxYear, WantsTwoYearsInARow)
{
    Expect(IsTaxYear, {"2017-18", "1999-00"}, {"2017-17", "2017-2018", "2017/18", "2017-1a", ""});
}

} // namespace Sandbox
