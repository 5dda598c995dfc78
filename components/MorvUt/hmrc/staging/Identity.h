#pragma once

// Which row is this? For HMRC's employments and private pensions, whose reference and works number may stand for
// several.

#include <string>
#include <vector>

#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// The row of each item, or kNoRow for a new one. An answer's order means nothing where anything else tells items
/// apart: the same reference and works number with the same start and figures come first, then with the same start, the
/// same figures, and only then in order; then the same reference with another works number, by start or by figures;
/// last, one of the two has no works number, or there is one of each.
std::vector<int> PairEmployments(const std::vector<StagedEmployment>& items, const std::vector<StagedEmployment>& rows);
std::vector<int> PairPrivatePensions(const std::vector<StagedPension>& items, const std::vector<StagedPension>& rows);

/// The key of the `nth` (from 1) item of a reference that HMRC sends more than once: reference, blank and works number,
/// from the second on with " #2" and so on behind it; without works number the reference and " #2", " #3" and so on.
/// (An item that has its reference for itself has the reference.) It is for readers outside: this library compares what
/// it is made of and never takes it apart.
std::string KeyOf(const std::string& reference, const std::string& worksNumber, int nth);

/// Gives items and rows their keys, no two the same: `rowOf` as PairEmployments gave it. An item keeps the key of its
/// row where that is still right; a row that HMRC no longer sends keeps its own unless an item needs it.
MORVUT_API void SetKeys(std::vector<StagedEmployment>& items, std::vector<StagedEmployment>& rows,
                        const std::vector<int>& rowOf);

} // namespace HmrcApi
