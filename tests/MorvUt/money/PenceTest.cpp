#include "MorvUt/money/Pence.h"

#include <random>

#include "Amounts.h"
#include "fuzz/Targets.h"
#include "support/Test.h"

namespace
{

std::string TextOf(__int64 pence)
{
    CString text("left over");
    CurrencyToCStr(pence, text);
    return text.Str();
}

} // namespace

TEST(CurrencyToCStr, WritesPoundsAndPence)
{
    for (const auto& [pence, plain, withCommas, why] :
         ::Test::Table<__int64, const char*, const char*>("MorvUt/money/Pence.tsv")) {
        EXPECT_EQ(TextOf(pence), plain);
        for (const int show : {1, 2, -1}) {
            const ::Test::CommaScope commas(show);
            EXPECT_EQ(TextOf(pence), withCommas) << show;
        }
    }
}

TEST(CurrencyToCStr, IsReadBack)
{
    std::mt19937_64 random(2024);
    for (int i = 0; i < 20'000; ++i) // of every size
        Fuzz::AmountText(Kiln::CAmt(static_cast<std::int64_t>(random()) >> (i % 60)).Format().View());
}

TEST(ConvertLongPenceToStr, RefusesABufferWithoutRoomForTheEndMark)
{
    char buffer[9] = "xxxxxxxx";
    ConvertLongPenceToStr(-123456, buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "-1234.56");
    for (const unsigned size : {8u, 0u})
        EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { ConvertLongPenceToStr(-123456, buffer, size); }));
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { ConvertLongPenceToStr(0, buffer, 0); }));
}

TEST(StrToCurrency, CutsToThePenny)
{
    EXPECT_EQ(StrToCurrency("-0.0199"), -1);
    EXPECT_EQ(StrToCurrency(nullptr), 0);
}

TEST(PenceToPounds, IsTheNearestDouble)
{
    EXPECT_EQ(PenceToPounds(123456), 1234.56);
    EXPECT_EQ(PenceToPounds(::Test::kMinPence), -92233720368547758.08);
}

TEST(StringToInt, ReadsDigitsAndSaturates)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, int>("MorvUt/money/Pence.tsv"))
        EXPECT_EQ(StringToInt(in), out) << (in ? in : "null");
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

TEST(PoundsToPence, ReadsTheNumberAtTheStart)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, __int64>("MorvUt/money/Pence.tsv"))
        EXPECT_EQ(PoundsToPence(in), out) << (in ? in : "null");
}

TEST(PoundsToPence, RoundsAsTheDoubleIsPrinted)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, __int64>("MorvUt/money/Pence.tsv"))
        EXPECT_EQ(PoundsToPence(in), out) << why;
    EXPECT_EQ(PoundsToPence(std::string(1'000'000, '9').c_str()), 0) << "a megabyte of nines is infinity";
    EXPECT_EQ(PoundsToPence((std::string(1'000'000, '0') + "1.25").c_str()), 125) << "a megabyte of zeros";
}

TEST(ConvertAutoToStr, MarksWhatWasCalculated)
{
    for (const auto& [value, text, blank, withCommas, why] :
         ::Test::Table<__int64, const char*, const char*, const char*>("MorvUt/money/Pence.tsv")) {
        EXPECT_EQ(ConvertAutoToStr(value, 0), text) << why;
        EXPECT_EQ(ConvertAutoToStr(value, 1), blank) << why;
        const ::Test::CommaScope commas;
        EXPECT_EQ(ConvertAutoToStr(value, 0), withCommas) << why;
    }
}

TEST(ConvertStrToAuto, ReadsMarkerAndAmounts)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, __int64>("MorvUt/money/Pence.tsv"))
        EXPECT_EQ(ConvertStrToAuto(in), out) << why;
    EXPECT_EQ(ConvertStrToAuto("A922337203685477.5807"), -92233720368547758) << "largest amount";
}
