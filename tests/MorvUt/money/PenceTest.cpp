#include "MorvUt/money/Pence.h"

#include <gtest/gtest.h>

#include <string>

#include "Amounts.h"
#include "support/Case.h"
#include "support/TestSupport.h"

namespace
{

std::string TextOf(__int64 pence)
{
    CString text("left over");
    CurrencyToCStr(pence, text);
    return text.Str();
}

/// What the text is by its definition: pounds, point and pence, then a comma before every three digits of pounds.
std::string PlainText(__int64 pence, bool showCommas)
{
    if (pence == 0)
        return "";
    std::string digits = std::to_string(pence);
    const std::string sign = pence < 0 ? "-" : "";
    digits.erase(0, sign.size());
    digits.insert(0, digits.size() < 3 ? 3 - digits.size() : 0, '0');
    digits.insert(digits.size() - 2, ".");
    for (std::size_t at = digits.size() - 3; showCommas && at > 3;)
        digits.insert(at -= 3, ",");
    return sign + digits;
}

} // namespace

TEST(CurrencyToCStr, WritesPoundsAndPence)
{
    const std::tuple<__int64, const char*, const char*> rows[] = {
        {-50, "-0.50", "-0.50"},         {0, "", ""},
        {-5, "-0.05", "-0.05"},          {-123456, "-1234.56", "-1,234.56"},
        {100, "1.00", "1.00"},           {123456789, "1234567.89", "1,234,567.89"},
        {99999, "999.99", "999.99"},     {::Test::kMinPence, "-92233720368547758.08", "-92,233,720,368,547,758.08"},
        {100000, "1000.00", "1,000.00"},
    };
    for (const auto& [pence, plain, withCommas] : rows) {
        EXPECT_EQ(TextOf(pence), plain);
        for (const int show : {1, 2, -1}) {
            const ::Test::CommaScope commas(show);
            EXPECT_EQ(TextOf(pence), withCommas) << show;
        }
    }
}

TEST(CurrencyToCStr, AgreesWithTheDefinitionAndIsReadBack)
{
    for (const __int64 pence : ::Test::SampleOfPence()) {
        ASSERT_EQ(TextOf(pence), PlainText(pence, false));
        ASSERT_EQ(CStrToCurrency(TextOf(pence).c_str()), ::Test::IsAmount(pence) ? pence : 0);
        const ::Test::CommaScope commas;
        ASSERT_EQ(TextOf(pence), PlainText(pence, true));
        ASSERT_EQ(StrToCurrency(TextOf(pence).c_str()), ::Test::IsAmount(pence) ? pence : 0);
        if (pence > -100'000'000'000'000 && pence < 100'000'000'000'000) { // as far as the pence are read right
            ASSERT_EQ(PoundsToPence(TextOf(pence).c_str()), pence);
        }
    }
}

TEST(ConvertLongPenceToStr, RefusesABufferWithoutRoomForTheEndMark)
{
    char buffer[9] = "xxxxxxxx";
    ConvertLongPenceToStr(-123456, buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "-1234.56");
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { ConvertLongPenceToStr(-123456, buffer, 8); }));
    EXPECT_EQ(buffer[0], '\0');
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { ConvertLongPenceToStr(1, nullptr, 8); }));
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { ConvertLongPenceToStr(0, buffer, 0); }));
    ConvertLongPenceToStr(100, buffer, 5);
    ConvertLongPenceToStr(0, buffer, 1);
    EXPECT_STREQ(buffer, "");
}

TEST(CStrToCurrency, ReadsAmountsAndNothingElse)
{
    const ::Test::Case<const char*, __int64> rows[] = {
        {"", 0},          {nullptr, 0},
        {"0.0199", 1},    {"92233720368547758.07", 0},
        {"-0.0199", -1},  {"922337203685477.5807", 92233720368547758},
        {"12 pounds", 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CStrToCurrency(CString(row.in)), row.out) << row.out;
        EXPECT_EQ(StrToCurrency(row.in), row.out) << row.out;
    }
    EXPECT_EQ(StrToCurrency(std::string(1'000'000, '9').c_str()), 0) << "a megabyte";
}

TEST(PenceToPounds, IsTheNearestDouble)
{
    EXPECT_EQ(PenceToPounds(123456), 1234.56);
    EXPECT_EQ(PenceToPounds(::Test::kMinPence), -92233720368547758.08);
}

TEST(StringToInt, ReadsDigitsAndSaturates)
{
    EXPECT_EQ(StringToInt("99999999999999999999999"), 2147483647);
    const ::Test::Case<const char*, int> rows[] = {
        {"2147483647", 2147483647},       {" -42x", -42}, {"2147483648", 2147483647}, {"", 0},
        {"-2147483648", -2147483647 - 1}, {nullptr, 0},   {"9999999999", 2147483647}, {"-9999999999", -2147483647 - 1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(StringToInt(row.in), row.out) << (row.in ? row.in : "null");
}

TEST(Decimals, AreCutToThePenny)
{
    DECIMAL value{};
    value.Lo64 = 123456;
    value.scale = 4;
    EXPECT_EQ(DecimalToCAmt(value), Kiln::CAmt(123456));
    EXPECT_EQ(DecimalToCurrency(value), 1234) << "12.3456";
    value.sign = 0x80;
    EXPECT_EQ(DecimalToCurrency(value), -1234) << "toward zero";
    value.Hi32 = 0xFFFF'FFFF;
    EXPECT_EQ(DecimalToCAmt(value), Kiln::CAmt::Invalid()) << "too large";
    EXPECT_EQ(DecimalToCurrency(value), 0);
}
