#include "MorvUt/money/Pence.h"

#include <gtest/gtest.h>

#include <string>

#include "Amounts.h"
#include "support/Case.h"
#include "support/TestSupport.h"

namespace
{

/// Switches the separators on while it lives.
struct CommaScope
{
    CommaScope() { SetShowCommaSeparators(1); }
    ~CommaScope() { SetShowCommaSeparators(0); }
};

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
    const struct
    {
        __int64 pence;
        const char *plain, *withCommas;
    } rows[] = {
        {0, "", ""},
        {-5, "-0.05", "-0.05"},
        {100, "1.00", "1.00"},
        {99999, "999.99", "999.99"},
        {100000, "1000.00", "1,000.00"},
        {-123456, "-1234.56", "-1,234.56"},
        {-99999999, "-999999.99", "-999,999.99"},
        {::Test::kMaxPence, "92233720368547758.07", "92,233,720,368,547,758.07"},
        {::Test::kMinPence, "-92233720368547758.08", "-92,233,720,368,547,758.08"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(TextOf(row.pence), row.plain);
        const CommaScope commas;
        EXPECT_EQ(TextOf(row.pence), row.withCommas);
    }
}

TEST(CurrencyToCStr, AgreesWithTheDefinitionAndIsReadBack)
{
    for (const __int64 pence : ::Test::SampleOfPence()) {
        ASSERT_EQ(TextOf(pence), PlainText(pence, false));
        const bool isAmount = pence >= -::Test::kMaxAmountPence && pence <= ::Test::kMaxAmountPence;
        ASSERT_EQ(CStrToCurrency(TextOf(pence).c_str()), isAmount ? pence : 0);
        const CommaScope commas;
        ASSERT_EQ(TextOf(pence), PlainText(pence, true));
        ASSERT_EQ(StrToCurrency(TextOf(pence).c_str()), isAmount ? pence : 0);
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
    buffer[0] = 'x';
    ConvertLongPenceToStr(0, buffer, 1);
    EXPECT_STREQ(buffer, "");
}

TEST(CStrToCurrency, ReadsAmountsAndNothingElse)
{
    const ::Test::Case<const char*, __int64> rows[] = {
        {"", 0, "empty"},
        {nullptr, 0, "null reads as empty"},
        {"0.0199", 1, "cut to the penny"},
        {"-0.0199", -1, "toward zero"},
        {"92233720368547758.07", 0, "beyond an amount"},
        {"922337203685477.5807", 92233720368547758, "largest amount"},
        {"12 pounds", 0, "rest"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CStrToCurrency(CString(row.in)), row.out) << row.why;
        EXPECT_EQ(StrToCurrency(row.in), row.out) << row.why;
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
    const ::Test::Case<const char*, int> rows[] = {
        {" -42x", -42},
        {"", 0},
        {nullptr, 0},
        {"2147483647", 2147483647},
        {"2147483648", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"-9999999999", -2147483647 - 1},
        {"99999999999999999999999", 2147483647},
    };
    for (const auto& row : rows)
        EXPECT_EQ(StringToInt(row.in), row.out) << (row.in ? row.in : "null");
}

TEST(Decimals, AreRoundedToTheTenThousandthAndCutToThePenny)
{
    const auto decimal = [](std::uint64_t low, unsigned scale, bool negative = false, unsigned high = 0) {
        DECIMAL value{};
        value.scale = static_cast<unsigned char>(scale);
        value.sign = negative ? 0x80 : 0;
        value.Hi32 = high;
        value.Lo64 = low;
        return value;
    };
    const struct
    {
        DECIMAL value;
        __int64 tenThousandths, pence;
        bool isValid;
        const char* why;
    } rows[] = {
        {decimal(123456, 4, true), -123456, -1234, true, "toward zero"},
        {decimal(123455, 5), 12346, 123, true, "1.23455: half to even, up"},
        {decimal(123445, 5), 12344, 123, true, "1.23445: half to even, down"},
        {decimal(99999, 5), 10000, 100, true, "0.99999 rounds to a penny more"},
        {decimal(0, 0, false, 1), 0, 0, false, "2^64: too large"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(DecimalToCAmt(row.value).IsValid(), row.isValid);
        EXPECT_EQ(DecimalToCAmt(row.value).GetValue(), row.tenThousandths);
        EXPECT_EQ(DecimalToCurrency(row.value), row.pence);
    }
}
