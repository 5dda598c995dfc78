#include "MorvUt/money/Rates.h"

#include "Amounts.h"
#include "MorvUt/money/Pence.h"
#include "support/Test.h"

using Kiln::CAmt;
using ::Test::kInfinity, ::Test::kMaxAmountPence, ::Test::kMaxPence, ::Test::kMinPence, ::Test::kNaN;

// HMRC publishes that a payment of £80 is £100 in the pension, a gift of £100 worth £125 to the charity, and the tax of
// the whole basic rate band, £37,700, £7,540.
TEST(GrossFromNet, RoundsHalvesUpToThePenny)
{
    for (const auto& [net, rate, gross, why] : ::Test::Table<__int64, double, __int64>("MorvUt/money/Rates.tsv")) {
        SCOPED_TRACE(why);
        EXPECT_EQ(GrossFromNet(net, rate), gross);
        if (net < kMaxAmountPence) {
            EXPECT_EQ(GrossFromNet(static_cast<double>(net), rate), static_cast<double>(gross));
            EXPECT_EQ(GrossFromNet(static_cast<long double>(net), rate), static_cast<long double>(gross));
        }
    }
}

TEST(GrossFromNet, KnowsStatusAndPartsOfAPenny)
{
    EXPECT_EQ(GrossFromNet(CAmt(123456), 0.0).GetValue(), 123456) << "unchanged at rate 0";
    EXPECT_EQ(GrossFromNet(1.25, 0.0), 1.25);
    EXPECT_EQ(GrossFromNet(1.25L, 0.0), 1.25L);
    EXPECT_EQ(GrossFromNet(CAmt(80'0099), 20.0).GetValue(), 100'0000) << "80.0099 counts as 80.00, 100.00";
    EXPECT_TRUE(GrossFromNet(CAmt(), 20.0) == CAmt::kZero && GrossFromNet(CAmt::Invalid(), 0.0) == CAmt::kZero);
    EXPECT_EQ(GrossFromNet(CAmt::FromPence(8000), 100.0), CAmt::Invalid());
    EXPECT_EQ(GrossFromNet(kNaN, 20.0), 0.0);
    EXPECT_EQ(GrossFromNet(std::numeric_limits<long double>::max(), 20.0), 0.0L);
}

TEST(GrossFromTax, RoundsHalvesUpToThePenny)
{
    for (const auto& [tax, rate, gross, why] : ::Test::Table<__int64, double, __int64>("MorvUt/money/Rates.tsv")) {
        EXPECT_EQ(GrossFromTax(tax, rate), gross) << why;
        EXPECT_EQ(GrossFromTax(CAmt::FromPence(tax), rate).GetPence(), gross) << why;
        if (rate != 1e-300) {
            EXPECT_EQ(GrossFromTax(static_cast<long double>(tax), rate), static_cast<long double>(gross)) << why;
        }
    }
    EXPECT_EQ(GrossFromTax(std::int64_t{kMaxPence}, 20.0), 0) << "no amount";
    for (const long double tax : {std::numeric_limits<long double>::max(), static_cast<long double>(kNaN)})
        EXPECT_EQ(GrossFromTax(tax, 20.0), 0.0L);
    EXPECT_EQ(GrossFromTax(CAmt(), 20.0), CAmt::kZero);
    EXPECT_EQ(GrossFromTax(CAmt::FromPence(2000), 0.0), CAmt::kZero) << "a valid one";
}

TEST(TaxFromGross, IsAPercentage)
{
    for (const auto& [gross, rate, tax, why] : ::Test::Table<__int64, double, __int64>("MorvUt/money/Rates.tsv")) {
        EXPECT_EQ(TaxFromGross(gross, rate), tax) << why;
        EXPECT_EQ(TaxFromGross(CAmt::FromPence(gross), rate).GetPence(), tax) << why;
    }
    EXPECT_TRUE(TaxFromGross(CAmt::Invalid(), 0.0) == CAmt::kZero);
}

TEST(TaxFromNet, AddsUpToTheGross)
{
    EXPECT_EQ(TaxFromNet(std::int64_t{100'00}, 20.0), 25'00) << "Gift Aid";
    EXPECT_EQ(TaxFromNet(std::int64_t{-8000}, 20.0), 0);
    EXPECT_TRUE(TaxFromNet(CAmt(), 20.0) == CAmt::kZero);
    EXPECT_FALSE(TaxFromNet(CAmt::FromPence(8000), 100.0).IsValid());
    for (const double rate : {10.0, 20.0, 22.5, 33.333, 40.0, 45.0, 99.99})
        for (__int64 net = 0; net < 50'000; net += net < 300 ? 1 : 613)
            ASSERT_EQ(net + TaxFromNet(net, rate), GrossFromNet(net, rate)) << net << " at " << rate;
}

TEST(CalculateAutoTax, LeavesWhatTheUserTyped)
{
    for (const auto& [net, field, rate, result, why] :
         ::Test::Table<__int64, __int64, double, __int64>("MorvUt/money/Rates.tsv"))
        EXPECT_EQ(CalculateAutoTax(net, field, rate), result) << why;
}

TEST(PercentOf, RoundsPenceOnly)
{
    EXPECT_EQ(PercentOf(std::int64_t{101}, 50.0), 51);
    EXPECT_EQ(PercentOf(std::int64_t{-101}, 50.0), -51);
    EXPECT_EQ(PercentOf(std::int64_t{100}, kNaN), 0);
    EXPECT_EQ(PercentOf(kMaxPence, 50.0), 0);
    std::int64_t pence = 101;
    EXPECT_EQ(PercentOf(pence, 50.0), 51);
    EXPECT_EQ(PercentOf(7.0L, 0.1), 7.0L * 0.001) << "divided as a double, and then multiplied";
    EXPECT_EQ(PercentOf(101.0, 50.0), 50.5L) << "a double is no pence";
    EXPECT_EQ(PercentOf(101, 50.0), 50.5L) << "nor is an int";
}
