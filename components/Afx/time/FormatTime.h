#pragma once

// Dates and times as text.

#include <string_view>

#include "Afx/Export.h"
#include "Afx/text/CString.h"

namespace Afx
{

struct LocalTime; // Afx/time/Clock.h

/// January first. The first three letters are the short name.
inline constexpr std::string_view kMonthNames[12] = {"January",   "February", "March",    "April",
                                                     "May",       "June",     "July",     "August",
                                                     "September", "October",  "November", "December"};

/// 1 to 12 for the name of a month, whole or its first three letters, in any case; 0 for another word.
AFX_API int MonthOf(std::string_view name) noexcept;

/// A date and time by a strftime-like pattern with English names: %d %m %y %Y %b %B %H %M %S %X %#d %#m %%. Any other
/// placeholder stays as it is; a month outside 1 to 12 has no name.
AFX_API CString FormatTime(const LocalTime& time, std::string_view pattern);

} // namespace Afx
