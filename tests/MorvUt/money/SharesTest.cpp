#include <gtest/gtest.h>

#include <limits>

#include "Amounts.h"
#include "MorvUt/money/Rates.h"

namespace
{

using Kiln::CAmt;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN(), kInfinity = std::numeric_limits<double>::infinity();

CAmt Pence(__int64 pence) { return CAmt::FromPence(pence); }

__int64 Share(__int64 pence, double percent, int remainder)
{
    return JointSpousePercentOf(Pence(pence), percent, remainder).GetPence();
}

} // namespace

TEST(Allocate, TakesWhatThereIs)
{
    const struct
    {
        __int64 amount, available, taken, left;
        const char* why;
    } rows[] = {
        {500, 300, 300, 0, "too little"},
        {200, 300, 200, 100, "enough"},
        {100, -50, -50, 0, "overdrawn: the whole of it"},
        {-100, 50, -100, 150, "a negative amount gives back"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        __int64 pence = row.available;
        EXPECT_EQ(Allocate(row.amount, pence), row.taken);
        EXPECT_EQ(pence, row.left);
        CAmt amount = Pence(row.available);
        EXPECT_EQ(Allocate(Pence(row.amount), amount).GetPence(), row.taken);
        EXPECT_EQ(amount.GetPence(), row.left);
        double real = static_cast<double>(row.available);
        EXPECT_EQ(Allocate(static_cast<double>(row.amount), real), static_cast<double>(row.taken));
        EXPECT_EQ(real, static_cast<double>(row.left));
        long double wide = static_cast<long double>(row.available);
        EXPECT_EQ(Allocate(static_cast<long double>(row.amount), wide), static_cast<long double>(row.taken));
        EXPECT_EQ(wide, static_cast<long double>(row.left));
    }
}

TEST(Allocate, SaturatesAndRefusesWhatIsNoNumber)
{
    __int64 pence = 100;
    EXPECT_EQ(Allocate(::Test::kMinPence, pence), ::Test::kMinPence);
    EXPECT_EQ(pence, ::Test::kMaxPence);
    CAmt amount = Pence(100);
    EXPECT_EQ(Allocate(CAmt(::Test::kMinPence), amount).GetValue(), ::Test::kMinPence);
    EXPECT_EQ(amount.GetValue(), ::Test::kMaxPence);
    amount = Pence(100);
    EXPECT_TRUE(Allocate(CAmt(), amount).IsNull());
    EXPECT_TRUE(Allocate(CAmt::Invalid(), amount).IsNull());
    EXPECT_EQ(amount.GetPence(), 100);
    double real = 100;
    EXPECT_EQ(Allocate(kNaN, real), 0);
    EXPECT_EQ(real, 100);
    EXPECT_EQ(Allocate(kInfinity, real), 100);
    EXPECT_EQ(real, 0);
    real = kInfinity;
    EXPECT_EQ(Allocate(kInfinity, real), kInfinity);
    EXPECT_EQ(real, 0);
    __int64 all = 700;
    EXPECT_EQ(Allocate(all, all), 700) << "an amount from itself";
    EXPECT_EQ(all, 0);
}

TEST(ZeroIfNegative, LeavesTheRest)
{
    __int64 pence = -1;
    ZeroIfNegative(pence);
    EXPECT_EQ(pence, 0);
    pence = 1;
    ZeroIfNegative(pence);
    EXPECT_EQ(pence, 1);
    double real = -0.001;
    ZeroIfNegative(real);
    EXPECT_EQ(real, 0);
    long double wide = -kInfinity;
    ZeroIfNegative(wide);
    EXPECT_EQ(wide, 0);
}

TEST(JointSpousePercentOf, CutsToThePenny)
{
    const struct
    {
        __int64 pence;
        double percent;
        int remainder;
        __int64 share;
        const char* why;
    } rows[] = {
        {1001, 50.0, 0, 500, "half"},
        {1001, 50.0, 1, 501, "the other half"},
        {10000, 33.336, 0, 3334, "rounded up"},
        {1001, 100.0, 1, 1001, "all that is left"},
        {1001, 0.004, 1, 0, "less than a hundredth"},
        {1001, 0.0, 1, 0, "none"},
        {-1001, 50.0, 0, -500, "a loss"},
        {1001, 150.0, 0, 1501, "more than all, by the formula"},
        {1001, 150.0, 1, 1501, "what is left of less than nothing"},
        {1001, -50.0, 0, -500, "less than nothing: cut, so half up is toward zero"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Share(row.pence, row.percent, row.remainder), row.share) << row.why;
}

TEST(JointSpousePercentOf, TakesAnyNumber)
{
    EXPECT_TRUE(JointSpousePercentOf(CAmt(), 50.0, 0).IsNull());
    EXPECT_TRUE(JointSpousePercentOf(CAmt(), 0.0, 0).IsNull()) << "null before 0 per cent";
    EXPECT_TRUE(JointSpousePercentOf(Pence(100), 0.0, 0) == CAmt::kZero);
    EXPECT_TRUE(JointSpousePercentOf(CAmt::Invalid(), 0.0, 0) == CAmt::kZero);
    EXPECT_TRUE(JointSpousePercentOf(CAmt::Invalid(), 50.0, 0) == CAmt::Invalid());
    constexpr double kPercents[] = {kNaN, kInfinity, -kInfinity, 1e300, -1e300, 9.3e16, 9.2e16, -9.2e16, 1e-300};
    for (const double percent : kPercents)
        for (const int remainder : {0, 1}) {
            const bool isSmall = percent == 1e-300;
            EXPECT_EQ(JointSpousePercentOf(Pence(1001), percent, remainder).IsValid(), isSmall) << percent;
            EXPECT_EQ(JointSpousePercentOf(kNaN, percent, remainder), 0.0);
            EXPECT_EQ(JointSpousePercentOf(1e300, percent, remainder), 0.0);
            JointSpousePercentOf(CAmt(::Test::kMinPence), percent, remainder);
            JointSpousePercentOf(CAmt(::Test::kMaxPence), percent, remainder);
        }
    EXPECT_EQ(JointSpousePercentOf(10.01, 50.0, 0), 5.0);
    EXPECT_EQ(JointSpousePercentOf(10.01, 50.0, 1), 5.01);
    EXPECT_EQ(JointSpousePercentOf(10.01, 0.0, 1), 0.0);
}

// Percentages in thousandths. One whose last digit is 5 rounds up for both owners, so that pair is left out.
TEST(JointSpousePercentOf, TwoSharesAddUp)
{
    constexpr __int64 kAmounts[] = {1, 2, 99, 100, 1001, 123457, 99999999, -1001, 1'000'000'000'01, 9'007'199'254'74};
    for (int thousandths = 1; thousandths < 100'000; ++thousandths) {
        if (thousandths % 10 == 5)
            continue;
        const double percent = thousandths / 1000.0;
        for (const __int64 pence : kAmounts)
            ASSERT_EQ(Share(pence, percent, 0) + Share(pence, 100.0 - percent, 1), pence) << percent;
    }
}
