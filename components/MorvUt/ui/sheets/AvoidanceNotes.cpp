#include "MorvUt/ui/sheets/AvoidanceNotes.h"

#include "Afx/text/Numbers.h"
#include "MorvUt/res/Strings.h"

CString ExpandAvoidanceYear(const CString& text)
{
    CString typed = text;
    typed.Trim();
    const auto year = Afx::ParseWhole<unsigned>(typed.View());
    if (!year || *year >= 1000)
        return text; // nobody's slip becomes a year
    CString expanded;
    expanded.Format("%u", *year + 2000); // 200%d, 20%d, 2%d by the number of its digits
    return expanded;
}

std::optional<AvoidanceRefusal> CheckAvoidance(const AvoidanceEntry& entry, int earliestYear, const CString& tooEarly)
{
    if (entry.hasYear && entry.year < earliestYear)
        return AvoidanceRefusal{AvoidanceField::Year,
                                tooEarly.IsEmpty() ? LibraryText(IDS_AVOIDANCE_YEAR_TOO_EARLY) : tooEarly};
    if (entry.reference.IsEmpty())
        return AvoidanceRefusal{AvoidanceField::Reference, LibraryText(IDS_AVOIDANCE_NO_REFERENCE)};
    return std::nullopt;
}
