#pragma once

// What HMRC sent that has no box of its own on a schedule: never dropped without a word.

#include <vector>

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// One line each, for people, the same each time until HMRC's figures change: kinds that are not known, the State
/// Pension as HMRC's entitlement and its lump sum, tax on benefits that carry none, an earlier year's adjustment,
/// missing pay or tax, benefits that do not count, off-payroll working, the maximum of contributions.
MORVUT_API std::vector<CString> NotesOf(const StagedYear& staged);

} // namespace HmrcApi
