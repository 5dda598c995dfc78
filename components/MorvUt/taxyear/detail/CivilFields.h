#pragma once

// The calendar fields of a date in one step.

#include "Afx/Calendar.h"
#include "Afx/Numbers.h"
#include "Kiln/CDate.h"

namespace Detail
{

/// Year, month and day of a valid date, as its own accessors give them. Those convert once each; a date without a time
/// of day, which nearly every date is, is converted once here.
inline Afx::CivilDate CivilFields(const Kiln::CDate& date) noexcept
{
    const double oleDate = date.GetOleDate();
    const auto day = static_cast<int>(Afx::ToInt64(oleDate).value_or(0));
    if (day == oleDate)
        return Afx::CivilOfOleDay(day);
    return {date.GetYear(), date.GetMonth(), date.GetDay()};
}

} // namespace Detail
