#include "MorvUt/ui/edits/YearRules.h"

namespace
{

/// Orders the days of a year.
constexpr int PlaceInYear(int day, int month) noexcept { return month * 100 + day; }

constexpr int kTaxYearStarts = PlaceInYear(6, 4);

} // namespace

int YearWithinTaxYear(int day, int month, short realYear) noexcept
{
    return PlaceInYear(day, month) >= kTaxYearStarts ? realYear - 1 : realYear;
}

int UnderwritingYear(int day, int month, short realYear, bool isUnderwriting) noexcept
{
    return isUnderwriting ? realYear - 1 : YearWithinTaxYear(day, month, realYear);
}

int YearBeside(int day, int month, const Kiln::CDate& partner, bool after, short realYear) noexcept
{
    if (!partner.IsValid())
        return YearWithinTaxYear(day, month, realYear);
    // Days are compared within a year, since 29 February may be missing in the partner's and there in the next.
    const int typed = PlaceInYear(day, month), partners = PlaceInYear(partner.GetDay(), partner.GetMonth());
    if (after)
        return partner.GetYear() + (typed < partners ? 1 : 0);
    return partner.GetYear() - (typed > partners ? 1 : 0);
}
