#include "MorvUt/money/Rates.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "Amounts.h"
#include "MorvUt/money/Pence.h"

namespace
{

using Kiln::CAmt;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN(), kInfinity = std::numeric_limits<double>::infinity();

CAmt Pence(__int64 pence) { return CAmt::FromPence(pence); }

} // namespace

TEST(GrossFromNet, RoundsHalvesUpToThePenny)
{
    const struct
    {
        __int64 net;
        double rate;
        __int64 gross;
        const char* why;
    } rows[] = {
        {1, 20.0, 1, "1.25"},
        {2, 20.0, 3, "2.5"},
        {9000, 10.0, 10000, "a dividend with its 10 % credit"},
        {54321, 0.0, 54321, "no tax"},
        {-1, 20.0, 0, "negative"},
        {0, 20.0, 0, "nothing"},
        {8000, 100.0, 0, "all of it is tax: there is no gross"},
        {8000, 150.0, -16000, "above 100 % the formula stands"},
        {8000, kNaN, 0, "no rate"},
        {::Test::kMaxAmountPence, 50.0, 0, "overflow"},
        {::Test::kMaxAmountPence + 1, 0.0, 0, "no amount"},
        {::Test::kMinPence, 20.0, 0, "lowest"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(GrossFromNet(row.net, row.rate), row.gross);
        if (row.net > 0 && row.net < ::Test::kMaxAmountPence) {
            EXPECT_EQ(GrossFromNet(static_cast<double>(row.net), row.rate), static_cast<double>(row.gross));
            EXPECT_EQ(GrossFromNet(static_cast<long double>(row.net), row.rate), static_cast<long double>(row.gross));
        }
    }
}

TEST(GrossFromNet, KnowsStatusAndPartsOfAPenny)
{
    EXPECT_EQ(GrossFromNet(CAmt(123456), 0.0).GetValue(), 123456) << "unchanged at rate 0";
    EXPECT_EQ(GrossFromNet(CAmt(80'0099), 20.0).GetValue(), 100'0000) << "80.0099 counts as 80.00, 100.00";
    EXPECT_TRUE(GrossFromNet(CAmt(), 20.0) == CAmt::kZero);
    EXPECT_TRUE(GrossFromNet(CAmt::Invalid(), 0.0) == CAmt::kZero);
    EXPECT_EQ(GrossFromNet(Pence(8000), 100.0).GetStatus(), CAmt::Status::Invalid);
    EXPECT_EQ(GrossFromNet(kNaN, 20.0), 0.0);
    EXPECT_EQ(GrossFromNet(8000.0, 100.0), 0.0);
    EXPECT_EQ(GrossFromNet(std::numeric_limits<long double>::max(), 20.0), 0.0L);
    EXPECT_EQ(GrossFromNet(1.25, 0.0), 1.25) << "unchanged at rate 0";
}

TEST(GrossFromTax, RoundsHalvesUpToThePenny)
{
    const struct
    {
        __int64 tax;
        double rate;
        __int64 gross;
        const char* why;
    } rows[] = {
        {1, 40.0, 3, "2.5"},
        {2000, 0.0, 0, "no rate"},
        {-1, 20.0, 0, "negative"},
        {0, 20.0, 0, "nothing"},
        {2000, kNaN, 0, "no rate"},
        {2000, 1e-300, 0, "overflow"},
        {2000, -20.0, -10000, "by the formula"},
        {::Test::kMaxPence, 20.0, 0, "no amount"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(GrossFromTax(row.tax, row.rate), row.gross) << row.why;
        EXPECT_EQ(GrossFromTax(Pence(row.tax), row.rate).GetPence(), row.gross) << row.why;
    }
    EXPECT_EQ(GrossFromTax(2000.0L, 20.0), 10000.0L);
    EXPECT_EQ(GrossFromTax(std::numeric_limits<long double>::quiet_NaN(), 20.0), 0.0L);
    EXPECT_TRUE(GrossFromTax(CAmt(), 20.0) == CAmt::kZero);
}

TEST(TaxFromGross, IsAPercentage)
{
    const struct
    {
        __int64 gross;
        double rate;
        __int64 tax;
    } rows[] = {
        {10000, 20.0, 2000},         {3, 50.0, 2}, {-3, 50.0, -2}, {10000, 0.0, 0}, {10000, kNaN, 0}, {1, 1e300, 0},
        {::Test::kMinPence, 20.0, 0}};
    for (const auto& row : rows) {
        EXPECT_EQ(TaxFromGross(row.gross, row.rate), row.tax);
        EXPECT_EQ(TaxFromGross(Pence(row.gross), row.rate).GetPence(), row.tax);
    }
    EXPECT_TRUE(TaxFromGross(CAmt::Invalid(), 0.0) == CAmt::kZero);
}

TEST(TaxFromNet, AddsUpToTheGross)
{
    EXPECT_EQ(TaxFromNet(std::int64_t{8000}, 20.0), 2000);
    EXPECT_EQ(TaxFromNet(std::int64_t{-8000}, 20.0), 0);
    EXPECT_TRUE(TaxFromNet(CAmt(), 20.0) == CAmt::kZero);
    EXPECT_FALSE(TaxFromNet(Pence(8000), 100.0).IsValid());
    for (const double rate : {10.0, 20.0, 22.5, 33.333, 40.0, 45.0, 99.99})
        for (__int64 net = 0; net < 50'000; net += net < 300 ? 1 : 613)
            ASSERT_EQ(net + TaxFromNet(net, rate), GrossFromNet(net, rate)) << net << " at " << rate;
}

TEST(CalculateAutoTax, LeavesWhatTheUserTyped)
{
    const struct
    {
        __int64 net, field;
        double rate;
        __int64 result;
        const char* why;
    } rows[] = {
        {8000, kAutoMarker, 20.0, -2000, "marker"},
        {8000, -1, 20.0, -2000, "calculated before"},
        {8000, 1500, 20.0, 1500, "typed"},
        {8000, 0, 20.0, 0, "empty"},
        {0, kAutoMarker, 20.0, kAutoMarker, "no tax"},
        {8000, -1, 0.0, kAutoMarker, "no rate"},
        {8000, ::Test::kMinPence, 20.0, -2000, "lowest field"},
        {::Test::kMinPence, -1, 20.0, kAutoMarker, "lowest net"},
        {8000, -1, 150.0, 24000, "above 100 % the formula stands"},
        {4294967294, -1, 100.0 / 3, -2147483647, "the one tax that is the marker"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CalculateAutoTax(row.net, row.field, row.rate), row.result) << row.why;
}

TEST(PercentOf, RoundsPenceOnly)
{
    EXPECT_EQ(PercentOf(std::int64_t{101}, 50.0), 51);
    EXPECT_EQ(PercentOf(std::int64_t{-101}, 50.0), -51);
    EXPECT_EQ(PercentOf(std::int64_t{100}, kNaN), 0);
    EXPECT_EQ(PercentOf(::Test::kMaxPence, 50.0), 0);
    EXPECT_EQ(PercentOf(101.0L, 50.0), 50.5L);
    std::int64_t pence = 101;
    EXPECT_EQ(PercentOf(pence, 50.0), 51);
    EXPECT_EQ(PercentOf(101.0, 50.0), 50.5L) << "a double is no pence";
    EXPECT_EQ(PercentOf(101, 50.0), 50.5L) << "nor is an int";
}

// Figures that the tax authority publishes.
TEST(Rates, GivePublishedFigures)
{
    // A relief-at-source pension payment of £80 is £100 in the pension (basic rate 20 %).
    EXPECT_EQ(GrossFromNet(std::int64_t{80'00}, 20.0), 100'00);
    // A Gift Aid donation of £100 is worth £125 to the charity.
    EXPECT_EQ(GrossFromNet(std::int64_t{100'00}, 20.0), 125'00);
    EXPECT_EQ(TaxFromNet(std::int64_t{100'00}, 20.0), 25'00);
    // Basic rate on £37,700 of taxable income.
    EXPECT_EQ(TaxFromGross(std::int64_t{37'700'00}, 20.0), 7'540'00);
}
