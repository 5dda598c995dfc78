// The reference data behind GetTurnoverDiscloseLevel, which is declared with the arithmetic of money.

#include "MorvUt/context/PFile.h"
#include "MorvUt/money/Rates.h"

namespace
{

const Kiln::CAmt kOldSoleLevel(15'000 * std::int64_t{10'000}); // £15,000, as it was up to 2007/08

/// The records that hold for a year without one of its own: those of the latest year, or of the earliest when the year
/// lies before it.
Brix::CPFile OtherYears(short year)
{
    Brix::CPFile list;
    if (!list.Open({}, {{Brix::CPFile::kYear}}) || year < list.GetYear())
        return list;
    list.MoveTo(list.GetCount() - 1);
    return GetPFileForYear(list.GetYear(), false);
}

Kiln::CAmt LevelOf(const Brix::CPFile& list, int first, int second)
{
    if (second)
        return first ? list.GetTurnoverPartnershipOld() : list.GetTurnoverPartnership();
    return first ? list.GetTurnoverSoleOld() : list.GetTurnoverSole();
}

} // namespace

Kiln::CAmt GetTurnoverDiscloseLevel(short year, int first, int second)
{
    if (year == 2008 && first)
        return kOldSoleLevel;
    Brix::CPFile list = GetPFileForYear(year, false);
    if (list.IsEOL())
        list = OtherYears(year);
    return list.IsEOL() ? kOldSoleLevel : LevelOf(list, first, second);
}
