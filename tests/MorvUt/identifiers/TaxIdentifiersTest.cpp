#include "MorvUt/identifiers/TaxIdentifiers.h"

#include <cstdint>
#include <regex>
#include <string>

#include "support/Test.h"

TEST(NINumber, IsTakenInThreeShapesOrRefusedWithAReason)
{
    const ::Test::Case<const char*, const char*> rows[] = {
        {nullptr, "A National Insurance number is missing", "null"},
        {"", "A National Insurance number is missing", "empty"},
        {"QQ 12 34 56 C", "A National Insurance number is written without blanks", "as people write it"},
        {"QQ12345", "A National Insurance number has 8 or 9 characters; this has 7", "too short"},
        {"QQ123456CC", "A National Insurance number has 8 or 9 characters; this has 10", "too long"},
        {"QQ12345\xC3\xA9\xC3\xA9\xC3\xA9", "A National Insurance number has 8 or 9 characters; this has 10",
         "counts characters, not bytes"},
        {"QQ12345C", "Character 8 must be a digit", "a digit too few"},
        {"QQ12O456C", "Character 5 must be a digit", "letter O for zero"},
        {"Q\xC3\x89QQ3456", "Character 2 must be a letter", "a letter of another alphabet"},
        {"12345678", "Character 3 must be a letter", "the third shape is nearest"},
        {"12A345678", "A number of the form 12A34567 has 8 characters; this has 9", "the third shape and more"},
    };
    for (const auto& row : rows) {
        EXPECT_FALSE(IsValidNINumber(row.in)) << row.why;
        EXPECT_EQ(WhyNotNINumber(row.in), row.out) << row.why;
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
    const char* const kBadCheckDigit =
        "The first digit does not agree with the other nine: a digit is wrong, or two have changed places";
    const ::Test::Case<const char*, const char*> rows[] = {
        {nullptr, "A UTR is missing", "null"},
        {"", "A UTR is missing", "empty"},
        {"22345 67890", "A UTR is written without blanks", "as HMRC prints it"},
        {"223456789", "A UTR has 10 digits and nothing else; this has 9", "too short"},
        {"2234567890K", "A UTR has 10 digits and nothing else; this has 11",
         "with the letter that HMRC prints behind it"},
        {"2234\xD9\xA3-7890", "Character 5 must be a digit", "a digit of another script"},
        {"2234567890", "", "none: this one is taken"},
        {"1234567890", kBadCheckDigit, "check digit"},
        {"2243567890", kBadCheckDigit, "changed places"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(IsValidUTR(row.in), *row.out == '\0') << row.why;
        EXPECT_EQ(WhyNotUTR(row.in), row.out) << row.why;
    }
}
