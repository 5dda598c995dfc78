#include "MorvUt/identifiers/TaxIdentifiers.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <string_view>

#include "support/Case.h"

TEST(NINumber, IsTakenInThreeShapes)
{
    for (const char* text : {"QQ123456C", "qq123456c", "qQ123456z", "QQ123456", "12A34567", "12a34567"}) {
        SCOPED_TRACE(text);
        EXPECT_TRUE(IsValidNINumber(text));
        EXPECT_EQ(WhyNotNINumber(text), "");
    }
}

TEST(NINumber, IsRefusedWithAReason)
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
        {"Q\xC3\xA9"
         "123456C",
         "Character 2 must be a letter", "a letter of another alphabet"},
        {"12345678", "Character 3 must be a letter", "the third shape is nearest"},
        {"12A345678", "A number of the form 12A34567 has 8 characters; this has 9", "the third shape and more"},
        {"QQ12345\xC2\xB2", "Character 8 must be a digit", "superscript two"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_FALSE(IsValidNINumber(row.in));
        EXPECT_EQ(WhyNotNINumber(row.in), row.out);
    }
}

TEST(NINumber, AgreesWithTheShapesWhateverCharacterChanges)
{
    const std::regex shape("[A-Za-z]{2}[0-9]{6}[A-Za-z]?|[0-9]{2}[A-Za-z][0-9]{5}");
    for (const std::string base : {"QQ123456C", "QQ123456", "12A34567", "12A34567B", "QQ123456CD"})
        for (std::size_t place = 0; place < base.size(); ++place)
            for (const char c : std::string_view("AZaz@[`{09/: \x80\xC1\xE1\0", 17)) {
                std::string text = base;
                text[place] = c;
                text = text.c_str(); // up to the end mark
                EXPECT_EQ(IsValidNINumber(text.c_str()), std::regex_match(text, shape)) << text;
            }
}

TEST(NINumber, IsNeverRefusedWithoutAReason)
{
    for (int place = 0; place < 9; ++place)
        for (int c = 1; c < 256; ++c) {
            std::string text = "QQ123456C";
            text[static_cast<std::size_t>(place)] = static_cast<char>(c);
            ASSERT_EQ(IsValidNINumber(text.c_str()), WhyNotNINumber(text.c_str()).IsEmpty()) << place << ' ' << c;
        }
}

TEST(UTR, HasACheckDigitForEveryRemainder)
{
    // The last digit weighs 2 and the one before 3: these nine digits have the sums 0 to 10.
    const char* const others[] = {"000000000", "000000037", "000000001", "000000010", "000000002", "000000011",
                                  "000000003", "000000012", "000000004", "000000013", "000000005"};
    const std::string checkDigits = "21987654321";
    for (std::size_t remainder = 0; remainder < 11; ++remainder)
        for (char digit = '0'; digit <= '9'; ++digit) {
            const std::string text = digit + std::string(others[remainder]);
            EXPECT_EQ(IsValidUTR(text.c_str()), digit == checkDigits[remainder]) << text;
        }
}

TEST(UTR, WeighsEveryDigit)
{
    const int weights[] = {6, 7, 8, 9, 10, 5, 4, 3, 2};
    const std::string checkDigits = "21987654321";
    for (std::size_t place = 0; place < 9; ++place) {
        std::string text = "0000000000";
        text[place + 1] = '1';
        text[0] = checkDigits[static_cast<std::size_t>(weights[place])];
        EXPECT_TRUE(IsValidUTR(text.c_str())) << text;
    }
}

TEST(UTR, IsRefusedWithAReason)
{
    const ::Test::Case<const char*, const char*> rows[] = {
        {nullptr, "A UTR is missing", "null"},
        {"", "A UTR is missing", "empty"},
        {"22345 67890", "A UTR is written without blanks", "as HMRC prints it"},
        {"223456789", "A UTR has 10 digits and nothing else; this has 9", "too short"},
        {"2234567890K", "A UTR has 10 digits and nothing else; this has 11",
         "with the letter that HMRC prints behind it"},
        {"22345\xD9\xA3"
         "7890",
         "Character 6 must be a digit", "a digit of another script"},
        {"2234567890", "", "none: this one is taken"},
        {"1234567890",
         "The first digit does not agree with the other nine: a digit is wrong, or two have changed places",
         "check digit"},
        {"2243567890",
         "The first digit does not agree with the other nine: a digit is wrong, or two have changed places",
         "changed places"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(IsValidUTR(row.in), *row.out == '\0');
        EXPECT_EQ(WhyNotUTR(row.in), row.out);
    }
}
