#pragma once

// Dates and times as text.

#include <string_view>

#include "Afx/Export.h"
#include "Afx/text/CString.h"

namespace Afx
{

struct LocalTime; // Afx/Clock.h

/// A date and time by a strftime-like pattern with English names: %d %m %y %Y %b %B %H %M %S %X %#d %#m %%. Any other
/// placeholder stays as it is; a month outside 1 to 12 has no name.
AFX_API CString FormatTime(const LocalTime& time, std::string_view pattern);

} // namespace Afx
