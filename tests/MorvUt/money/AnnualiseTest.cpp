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
    const ::Test::Row<__int64, long, long, __int64> rows[] = {
        {100, 20160229, 20160229, 36600, "one day, a leap day"},   {100, 20140601, 20140601, 36500, "one day"},
        {36600, 20150301, 20160229, 36600, "to the leap day"},     {36500, 20130406, 20140405, 36500, "365 of 365"},
        {36600, 20160229, 20170227, 36700, "from it: 365 of 366"}, {36600, 20150406, 20160405, 36600, "366 of 366"},
        {142500, 20120406, 20160229, 36600, "later rule"},         {54900, 20130406, 20141006, 36500, "365 of 549"},
        {142500, 20120405, 20160229, 36500, "earlier, by a day"},  {54900, 20150406, 20161005, 36600, "366 of 549"},
        {36500, 20110406, 20120405, 36500, "leap day left out"},   {100, 20120229, 20120229, 100, "no day left"},
        {36400, 20120229, 20130227, 36500, "364 days counted"},    {100, 20140611, 20140601, -4056, "reversed"},
        {100, 20120229, 20120301, 36500, "one day of two left"},   {-100, 20140601, 20140601, -36500, "a loss"},
        {3, 20140601, 20140630, 36, "365 / 30 * 100 first"},       {100, 1000101, 1000101, 36500, "nothing before"},
        {100, 20140602, 20140601, 100, "empty, unchanged"},        {100, 0, 20140601, 100, "no start: unchanged"},
        {100, 99991231, 99991231, 36500, "nothing ahead"},         {100, 20140601, 99, 100, "no end: unchanged"},
        {36400, 20110302, 20120229, 36500, "to a leap day"},
    };
    for (const auto& [amount, from, to, year, why] : rows)
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
