// What an amount earned over a period comes to in a year.

#include "MorvUt/money/Rates.h"

namespace
{

using Kiln::CAmt;
using Kiln::CDate;

constexpr int kYear = 365, kTwoYearsWithLeapDay = 731;

/// From here on a period with a leap day is part of a year of 366 days.
CDate LeapYearRuleStart() noexcept { return CDate(2012, 4, 6); }

bool IsLeapDay(const Afx::CivilDate& date) noexcept { return date.month == 2 && date.day == 29; }

/// Whether the period is treated as one with a leap day. House rule: two years look ahead of its start and back from
/// its end, so the answer is near the truth for periods of about a year, whatever their length.
bool CountsLeapDay(const CDate& from, const CDate& to) noexcept
{
    const Afx::CivilDate first = from.GetFields(), last = to.GetFields();
    if (IsLeapDay(first) || IsLeapDay(last))
        return true;
    const auto daysInTwoYears = [](int year, int month, int day) { // whole days, whatever the time
        return Kiln::DaysBetween(CDate(year, month, day), CDate(year + 2, month, day));
    };
    return daysInTwoYears(first.year, first.month, first.day) == kTwoYearsWithLeapDay &&
           daysInTwoYears(last.year - 2, last.month, last.day) == kTwoYearsWithLeapDay;
}

} // namespace

CAmt AnnualiseAmount(const CAmt& amount, CDate from, CDate to)
{
    if (!from.IsValid() || !to.IsValid())
        return amount;
    const bool leapDay = CountsLeapDay(from, to);
    const bool countsIt = from >= LeapYearRuleStart();
    const long days = Kiln::DaysBetween(from, to) + (leapDay && !countsIt ? 0 : 1);
    if (days == 0)
        return amount;
    const double year = leapDay && countsIt ? kYear + 1 : kYear;
    return amount.PercentOf(year / static_cast<double>(days) * 100.0, 1);
}

__int64 AnnualiseAmount(__int64 amount, CDate from, CDate to)
{
    return AnnualiseAmount(CAmt::FromPence(amount), from, to).GetPence();
}
