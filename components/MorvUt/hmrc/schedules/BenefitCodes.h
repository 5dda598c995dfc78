#pragma once

// HMRC's company benefits in the terms of the return's employment schedule.

namespace HmrcApi
{

/// The code of mapNewEmployBenefitsGrid under which HMRC's benefit of this number is returned; 180 (other items) for a
/// number that is not known.
int BenefitCode(int hmrcNumber) noexcept;
/// The code under which HMRC's sum of a box of the employment pages is returned, for a code of that box: 70 (cars) for
/// 90 (vans), both of box 9. A code that is not known is one of box 15 (170).
int BoxCode(int code) noexcept;
/// What the return calls the benefit of this code; empty for a code that the table has not.
const char* BenefitCaption(int code) noexcept;

} // namespace HmrcApi
