#pragma once

// HMRC's PAYE answer in the terms of the staging rows.

#include "HmrcApi/records/Responses.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// All that the answer holds. A kind of benefit that is not known is kept as kUnknownBenefit under HMRC's name. The
/// keys of employments are worked out when they are written.
StagedYear MapPayeAnswer(const CPayeResponse& response);
StagedEmployment MapEmployment(const Employment_t& employment);
/// kStatePension (0) for a benefit type that is not known.
int StagedKindOf(int benefitType) noexcept;

} // namespace HmrcApi
