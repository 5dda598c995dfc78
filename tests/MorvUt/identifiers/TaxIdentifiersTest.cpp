#include "MorvUt/identifiers/TaxIdentifiers.h"

#include <cstdint>
#include <regex>
#include <string>

#include "support/Test.h"

TEST(NINumber, IsTakenInThreeShapesOrRefusedWithAReason)
{
    for (const auto& [in, out, why] :
         ::Test::Table<const char*, const char*>("MorvUt/identifiers/TaxIdentifiers.tsv")) {
        EXPECT_FALSE(IsValidNINumber(in)) << why;
        EXPECT_EQ(WhyNotNINumber(in), out) << why;
    }
    for (const char* const text : {"QQ123456C", "qq123456c", "QQ123456", "12A34567", "12a34567"})
        EXPECT_TRUE(IsValidNINumber(text) && WhyNotNINumber(text).IsEmpty()) << text;
}

TEST(NINumber, AgreesWithTheShapesWhateverCharacterChanges)
{
    const std::regex shape("[A-Za-z]{2}[0-9]{6}[A-Za-z]?|[0-9]{2}[A-Za-z][0-9]{5}");
    for (const std::string base : {"QQ123456C", "QQ123456", "12A34567", "12A34567B", "QQ123456CD"})
        for (std::size_t place = 0; place < base.size(); ++place)
            for (int c = 0; c < 256; ++c) {
                std::string text = base;
                text[place] = static_cast<char>(c);
                text = text.c_str(); // up to the end mark
                EXPECT_EQ(IsValidNINumber(text.c_str()), std::regex_match(text, shape)) << text;
                EXPECT_EQ(IsValidNINumber(text.c_str()), WhyNotNINumber(text.c_str()).IsEmpty()) << text;
            }
}

// The rule as HMRC words it: multiply the second digit by 6, the third by 7 and so on; the remainder by 11 gives the
// first digit from a list.
TEST(UTR, HasTheCheckDigitOfTheOtherNine)
{
    std::uint64_t random = 1;
    for (int i = 0; i < 1'000'000; ++i) {
        random = random * 6364136223846793005u + 1442695040888963407u;
        std::string text = std::to_string(10'000'000'000 + (random >> 31) % 10'000'000'000).substr(1);
        const auto digit = [&text](std::size_t place) { return text[place - 1] - '0'; };
        const int sum = 6 * digit(2) + 7 * digit(3) + 8 * digit(4) + 9 * digit(5) + 10 * digit(6) + 5 * digit(7) +
                        4 * digit(8) + 3 * digit(9) + 2 * digit(10);
        const int remainder = sum % 11;
        const int check = remainder == 0 ? 2 : remainder == 1 ? 1 : 11 - remainder;
        ASSERT_EQ(IsValidUTR(text.c_str()), digit(1) == check) << text;
        text[0] = static_cast<char>('0' + check);
        ASSERT_TRUE(IsValidUTR(text.c_str())) << text;
    }
}

TEST(UTR, IsRefusedWithAReason)
{
    for (const auto& [in, out, why] :
         ::Test::Table<const char*, const char*>("MorvUt/identifiers/TaxIdentifiers.tsv")) {
        EXPECT_EQ(IsValidUTR(in), *out == '\0') << why;
        EXPECT_EQ(WhyNotUTR(in), out) << why;
    }
}
