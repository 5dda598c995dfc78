#pragma once

// A date by its parts.

namespace Afx
{

struct CivilDate
{
    int year, month, day; // month 1 to 12, day 1 to 31

    friend bool operator==(const CivilDate&, const CivilDate&) = default;
};

} // namespace Afx
