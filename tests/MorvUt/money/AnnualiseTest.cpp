#include <gtest/gtest.h>

#include "Amounts.h"
#include "MorvUt/money/Rates.h"
#include "support/Case.h"

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
    const ::Test::Row<__int64, CDate, CDate, __int64> rows[] = {
        {100, {2016, 2, 29}, {2016, 2, 29}, 36600, "one day, a leap day"},
        {36500, {2013, 4, 6}, {2014, 4, 5}, 36500, "365 days of 365"},
        {54900, {2013, 4, 6}, {2014, 10, 6}, 36500, "549 days without a leap day: 365 / 549"},
        {36600, {2015, 4, 6}, {2016, 4, 5}, 36600, "366 days of 366: a leap day within two years on either side"},
        {36600, {2015, 3, 1}, {2016, 2, 29}, 36600, "ends on the leap day"},
        {36600, {2016, 2, 29}, {2017, 2, 27}, 36700, "begins on it: 365 days of 366, rounded"},
        {142500, {2012, 4, 6}, {2016, 2, 29}, 36600, "first day of the later rule: 1425 days of 366"},
        {36400, {2012, 2, 29}, {2013, 2, 27}, 36500, "not at the last: earlier rule, 364 days counted"},
        {3, {2014, 6, 1}, {2014, 6, 30}, 36, "365 / 30 * 100.0 in that order"},
        {36600, At(2015, 4, 6, 18), At(2016, 4, 5, 18), 36600, "the time of day changes no leap day"},
        {36600, At(2014, 6, 1, 0), At(2015, 5, 31, 15), 36500, "nor makes one: 366 days, but of 365"},
        {142500, {2012, 4, 5}, {2016, 2, 29}, 36500, "last day of the earlier rule: 1425 days counted"},
        {36500, {2011, 4, 6}, {2012, 4, 5}, 36500, "earlier: the leap day is not counted, 365 of 365"},
        {100, {2012, 2, 29}, {2012, 3, 1}, 36500, "earlier: one day left of two"},
        {100, {2012, 2, 29}, {2012, 2, 29}, 100, "earlier: no day left, unchanged"},
        {54900, {2015, 4, 6}, {2016, 10, 5}, 36600, "549 days with a leap day: 366 / 549"},
        {100, {2014, 6, 2}, {2014, 6, 1}, 100, "empty, unchanged"},
        {100, {2014, 6, 11}, {2014, 6, 1}, -4056, "reversed, by the formula"},
        {100, CDate(), {2014, 6, 1}, 100, "no start"},
        {100, {2014, 6, 1}, CDate::Invalid(), 100, "no end"},
        {100, {9999, 12, 31}, {9999, 12, 31}, 36500, "two years ahead there is no date"},
        {100, {100, 1, 1}, {100, 1, 1}, 36500, "nor two years before"},
        {::Test::kMaxAmountPence, {2014, 6, 1}, {2014, 6, 2}, 0, "overflow"},
        {-100, {2014, 6, 1}, {2014, 6, 1}, -36500, "a loss"},
    };
    for (const auto& [amount, from, to, year, why] : rows)
        EXPECT_EQ(AnnualiseAmount(amount, from, to), year) << why;
    const CDate day(2014, 6, 1);
    EXPECT_TRUE(AnnualiseAmount(Kiln::CAmt(), day, day).IsNull());
    EXPECT_FALSE(AnnualiseAmount(Kiln::CAmt::Invalid(), day, day).IsValid());
    EXPECT_EQ(AnnualiseAmount(Kiln::CAmt(12345), CDate(), day).GetValue(), 12345) << "parts of a penny stay";
}
