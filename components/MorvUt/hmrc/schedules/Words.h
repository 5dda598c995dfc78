#pragma once

// Figures that may be absent, their sums, and how items are named to people.

#include "Afx/text/CString.h"
#include "Kiln/CAmt.h"

namespace HmrcApi
{

/// Not absent, and not nought either.
inline bool IsSomething(const Kiln::CAmt& amount) { return amount.IsValid() && !amount.IsZero(); }

/// Adds what is there: nothing to nothing is nothing. A sum that is larger than an amount can be is invalid and stays
/// so.
inline void AddTo(Kiln::CAmt& sum, const Kiln::CAmt& more)
{
    if (!more.IsNull())
        sum = sum.IsNull() ? more : sum + more;
}

/// "Company XYZ (123/AB456)", or what there is of it.
inline CString NamedBy(const CString& name, const CString& reference)
{
    if (name.IsEmpty() || reference.IsEmpty())
        return name + reference;
    return name + " (" + reference + ")";
}

} // namespace HmrcApi
