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

TEST(PoundsToPence, ReadsTheNumberAtTheStart)
{
    const ::Test::Case<const char*, __int64> rows[] = {
        {"1,234.567", 123457}, {"-0.01", -1}, {"+0.01", 1}, {" \t12", 1200}, {"", 0},
        {nullptr, 0},          {".", 0},      {".5", 50},   {"5.", 500},     {"1.2.3", 120},
        {",,1,2,", 1200},      {", 5", 500},  {"- 5", 0},   {"abc", 0},      {"1e2", 10000},
        {"1E2", 10000},        {"1e", 100},   {".e5", 0},   {"0x10", 0},     {"inf", 0},
        {"1e400", 0},          {"1e-400", 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PoundsToPence(row.in), row.out) << (row.in ? row.in : "null");
}

TEST(PoundsToPence, RoundsAsTheDoubleIsPrinted)
{
    const ::Test::Case<const char*, __int64> rows[] = {
        {"0.125", 12, "a tie that the double holds goes to the even penny"},
        {"0.375", 38, "here up"},
        {"1.005", 100, "its double lies below the tie"},
        {"-8.345", -835, "its double lies above, by magnitude"},
        {"18742904.384999999", 1874290438, "seventeen digits, just below the tie"},
        {"0.00500000000000000000001", 1, "above the tie by its last digit"},
        {"0.00000000000000000001", 0, "twenty decimals"},
        {".5e2", 5000, "begins with the point"},
        {"1e300", ::Test::kMaxPence, "beyond 64 bits"},
        {"999999999999.99", 99999999999999, "the last amount whose pence stand in their place"},
        {"1000000000000.25", 100000000000000, "the pence are a point too early: .25 reads as 0"},
        {"1000000000000.5", 100000000000000, "with fewer digits, too"},
        {"12345678901234.56", 1234567890123404, "and here 4.56 reads as 4"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PoundsToPence(row.in), row.out) << row.why;
    EXPECT_EQ(PoundsToPence(std::string(1'000'000, '9').c_str()), 0) << "a megabyte of nines is infinity";
    EXPECT_EQ(PoundsToPence((std::string(1'000'000, '0') + "1.25").c_str()), 125) << "a megabyte of zeros";
}

TEST(ConvertAutoToStr, MarksWhatWasCalculated)
{
    const ::Test::Row<__int64, const char*, const char*, const char*> rows[] = {
        {-2147483647, "AUTO", "", "AUTO", "marker, also when £21,474,836.47 was calculated"},
        {-2147483646, "A21474836.46", "A21474836.46", "A21,474,836.46", "a penny less is not"},
        {2147483647, "21474836.47", "21474836.47", "21,474,836.47", "nor is one typed"},
        {0, "", "", "", "empty"},
        {-123456, "A1234.56", "A1234.56", "A1,234.56", "calculated"},
        {-99999, "A999.99", "A999.99", "A999.99", "no separator right behind the A"},
        {::Test::kMinPence, "A92233720368547758.08", "A92233720368547758.08", "A92,233,720,368,547,758.08", "lowest"},
    };
    for (const auto& [value, text, blank, withCommas, why] : rows) {
        EXPECT_EQ(ConvertAutoToStr(value, 0), text) << why;
        EXPECT_EQ(ConvertAutoToStr(value, 1), blank) << why;
        const ::Test::CommaScope commas;
        EXPECT_EQ(ConvertAutoToStr(value, 0), withCommas) << why;
    }
}

TEST(ConvertStrToAuto, ReadsMarkerAndAmounts)
{
    const ::Test::Case<const char*, __int64> rows[] = {
        {"auto", kAutoMarker, "marker"},      {"", 0, "empty"},
        {" A U T O ", kAutoMarker, "blanks"}, {"a", kAutoMarker, "case"},
        {" a 12.50 ", -1250, "calculated"},   {"12.50", 1250, "typed"},
        {"-12.50", -1250, "as calculated"},   {"A-12.50", 1250, "the negation"},
        {"AUTOMATIC", 0, "no amount"},        {"A21474836.47", kAutoMarker, "marker"},
        {"12.5.0", 0, "no amount"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ConvertStrToAuto(row.in), row.out) << row.why;
    EXPECT_EQ(ConvertStrToAuto("A922337203685477.5807"), -92233720368547758) << "largest amount";
}
