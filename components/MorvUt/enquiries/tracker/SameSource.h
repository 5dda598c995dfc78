#pragma once

// Which source of one year is that of another.

#include <vector>

#include "Afx/text/TextFold.h"
#include "MorvUt/enquiries/tracker/TaskRules.h"

namespace Tracker
{

/// The first source of the type that is so called, in any case; null when there is none. Of a tax return (`returnType`)
/// that no user made there is one in a year, whatever it is called.
inline const Source* FindSameSource(const std::vector<Source>& sources, const Source& wanted, long returnType)
{
    for (const Source& each : sources) {
        const bool isReturn = wanted.typeId == returnType && !wanted.isUserCreated && !each.isUserCreated;
        if (each.typeId == wanted.typeId &&
            (isReturn || Afx::EqualNoCase(each.description.View(), wanted.description.View())))
            return &each;
    }
    return nullptr;
}

} // namespace Tracker
