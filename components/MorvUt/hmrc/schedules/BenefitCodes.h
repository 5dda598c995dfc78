#pragma once

// HMRC's company benefits in the terms of the return's employment schedule.

namespace HmrcApi
{

/// The code of mapNewEmployBenefitsGrid under which HMRC's benefit of this number is returned; 180 (other items) for a
/// number that is not known.
int BenefitCode(int hmrcNumber) noexcept;
/// What the return calls the benefit of this code; empty for a code that the table has not.
const char* BenefitCaption(int code) noexcept;

} // namespace HmrcApi
