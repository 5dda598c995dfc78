#include "Amounts.h"
#include "MorvUt/money/Rates.h"
#include "support/Test.h"

namespace
{

using Kiln::CAmt;
using ::Test::kInfinity, ::Test::kMaxPence, ::Test::kMinPence, ::Test::kNaN;

__int64 Share(__int64 pence, double percent, int remainder)
{
    return JointSpousePercentOf(CAmt::FromPence(pence), percent, remainder).GetPence();
}

template<class Amount>
void CheckAllocate(Amount available, Amount amount, Amount taken, Amount left)
{
    EXPECT_EQ(Allocate(amount, available), taken);
    EXPECT_EQ(available, left);
}

} // namespace

TEST(Allocate, TakesWhatThereIs)
{
    for (const auto& [available, amount, taken, left, why] :
         ::Test::Table<int, int, int, int>("MorvUt/money/Shares.tsv")) {
        SCOPED_TRACE(why);
        CheckAllocate<__int64>(available, amount, taken, left);
        CheckAllocate<double>(available, amount, taken, left);
        CheckAllocate<long double>(available, amount, taken, left);
        CheckAllocate(CAmt(available), CAmt(amount), CAmt(taken), CAmt(left));
    }
}

TEST(Allocate, SaturatesAndRefusesWhatIsNoNumber)
{
    CheckAllocate<__int64>(100, kMinPence, kMinPence, kMaxPence);
    CheckAllocate(CAmt(100), CAmt(kMinPence), CAmt(kMinPence), CAmt(kMaxPence));
    for (const CAmt& none : {CAmt(), CAmt::Invalid()})
        CheckAllocate(CAmt(100), none, CAmt(), CAmt(100));
    CheckAllocate(100.0, kNaN, 0.0, 100.0);
    CheckAllocate(100.0, kInfinity, 100.0, 0.0);
    CheckAllocate(kInfinity, kInfinity, kInfinity, 0.0);
    __int64 all = 700;
    EXPECT_EQ(Allocate(all, all), 700) << "an amount from itself";
    EXPECT_EQ(all, 0);
}

TEST(ZeroIfNegative, LeavesTheRest)
{
    const auto kept = [](auto value) { return ZeroIfNegative(value), value; };
    EXPECT_TRUE(kept(std::int64_t{-1}) == 0 && kept(kMinPence) == 0 && kept(std::int64_t{1}) == 1);
    EXPECT_TRUE(kept(-0.001) == 0 && kept(0.5) == 0.5 && kept(-kInfinity) == 0);
    EXPECT_TRUE(kept(-0.5L) == 0 && kept(0.5L) == 0.5L);
}

TEST(JointSpousePercentOf, CutsToThePenny)
{
    for (const auto& [pence, percent, remainder, share, why] :
         ::Test::Table<__int64, double, int, __int64>("MorvUt/money/Shares.tsv"))
        EXPECT_EQ(Share(pence, percent, remainder), share) << why;
    EXPECT_EQ(JointSpousePercentOf(10.01, 50.0, 0), 5.0) << "in pounds";
    EXPECT_EQ(JointSpousePercentOf(10.01, 50.0, 1), 5.01);
    EXPECT_EQ(JointSpousePercentOf(10.01, 0.0, 1), 0.0);
    EXPECT_EQ(JointSpousePercentOf(8.29, 100.0, 0), 8.28) << "the pounds are cut to pence first";
}

TEST(JointSpousePercentOf, TakesAnyNumber)
{
    EXPECT_TRUE(JointSpousePercentOf(CAmt(), 50.0, 0).IsNull() && JointSpousePercentOf(CAmt(), 0.0, 0).IsNull());
    EXPECT_TRUE(JointSpousePercentOf(CAmt::Invalid(), 0.0, 0) == CAmt::kZero && Share(100, 0.0, 0) == 0);
    EXPECT_EQ(JointSpousePercentOf(CAmt::Invalid(), 50.0, 0), CAmt::Invalid());
    EXPECT_EQ(JointSpousePercentOf(9.2e14, 10'100.0, 1), 0.0) << "more is left than 64 bits hold";
    for (const double percent : {kNaN, kInfinity, -kInfinity, 1e300, -1e300, 9.3e16, 9.2e16, -9.2e16, 1e-300})
        for (const int remainder : {0, 1}) {
            for (const CAmt& amount : {CAmt(100'100), CAmt(kMinPence), CAmt(kMaxPence)})
                EXPECT_EQ(JointSpousePercentOf(amount, percent, remainder).IsValid(), percent == 1e-300) << percent;
            EXPECT_EQ(JointSpousePercentOf(kNaN, percent, remainder), 0.0);
            EXPECT_EQ(JointSpousePercentOf(1e300, percent, remainder), 0.0);
        }
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
