#include "Amounts.h"
#include "MorvUt/money/Rates.h"
#include "MorvUt/taxyear/DateRules.h"
#include "support/Test.h"

using Kiln::CDate;

namespace
{

CDate At(int year, int month, int day, int hour)
{
    return CDate::FromOleDate(CDate(year, month, day).GetOleDate() + hour / 24.0);
}

} // namespace

TEST(AnnualiseAmount, ScalesToAYear)
{
    for (const auto& [amount, from, to, year, why] :
         ::Test::Table<__int64, long, long, __int64>("MorvUt/money/Annualise.tsv"))
        EXPECT_EQ(AnnualiseAmount(amount, LongToCDate(from), LongToCDate(to)), year) << why;
    EXPECT_EQ(AnnualiseAmount(::Test::kMaxAmountPence, {2014, 6, 1}, {2014, 6, 2}), 0) << "overflow";
    const std::int64_t amount = 36600;
    EXPECT_EQ(AnnualiseAmount(amount, At(2015, 4, 6, 18), At(2016, 4, 5, 18)), 36600) << "the time of day counts for";
    EXPECT_EQ(AnnualiseAmount(amount, At(2014, 6, 1, 0), At(2015, 5, 31, 15)), 36500) << "no leap day, nor against";
    const CDate day(2014, 6, 1);
    EXPECT_TRUE(AnnualiseAmount(Kiln::CAmt(), day, day).IsNull());
    EXPECT_FALSE(AnnualiseAmount(Kiln::CAmt::Invalid(), day, day).IsValid());
    EXPECT_EQ(AnnualiseAmount(Kiln::CAmt(12345), CDate(), day).GetValue(), 12345) << "parts of a penny stay";
}
