#include "MorvUt/enquiries/tracker/Carried.h"

#include "MorvUt/res/Strings.h"

namespace Tracker
{

CString NotCarried::Text() const
{
    constexpr unsigned kTexts[] = {IDS_CARRY_HAS_LEFT, IDS_CARRY_NO_RETURN_WANTED, IDS_CARRY_JOB_COMPLETE,
                                   IDS_CARRY_NO_SOURCE_TYPE, IDS_CARRY_SOURCE_GONE};
    return Afx::FillPlaces(LibraryText(kTexts[static_cast<int>(why)]).View(), {what.View()});
}

Carried& Carried::operator+=(const Carried& other)
{
    sources += other.sources;
    tasks += other.tasks;
    enquiries += other.enquiries;
    notCarried.insert(notCarried.end(), other.notCarried.begin(), other.notCarried.end());
    hasLeft = hasLeft || other.hasLeft;
    return *this;
}

} // namespace Tracker
