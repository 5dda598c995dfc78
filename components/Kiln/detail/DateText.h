#pragma once

// The grammar of dates as users type them.

#include <cstdint>
#include <string_view>

#include "Kiln/CDate.h"

namespace Kiln::Detail
{

enum class DateFault : std::uint8_t
{
    None,
    Blank,
    Form,       // nothing like a date
    Separators, // two kinds of them
    MonthName,  // a word that names no month
    Month,      // not 1 to 12
    Day,        // not 1 to 31
    NoSuchDay,  // not in that month, or that year
    YearDigits, // neither two nor four
    YearRange,  // not 100 to 9999
    NoYear,     // none was typed, and the handler gave none
};

struct DateText
{
    DateFault fault = DateFault::None;
    int year = 0; // 0 while it is not known
    int month = 0;
    int day = 0;
    bool yearFirst = false;  // typed as 2024-04-30
    std::string_view word{}; // with the fault MonthName: its letters, or the first of them
};

/// Looks at no more of `text` than a date can need, blanks around its parts aside. `handler` gives the year of a date
/// without one.
DateText ReadDate(const char* text, CDate::ParseOrder order, CDate::YearHandler handler);

} // namespace Kiln::Detail
