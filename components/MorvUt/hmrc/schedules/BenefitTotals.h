#pragma once

// The company benefits of an employment under the codes of the return.

#include <map>
#include <vector>

#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// The benefits under one code, added up; null when none of them has an amount.
struct BenefitTotal
{
    Kiln::CAmt amount;
    bool isEstimate = false; // one of them is a forecast
};
using BenefitTotals = std::map<int, BenefitTotal>; // by code of mapNewEmployBenefitsGrid

struct HmrcBenefits
{
    BenefitTotals totals;
    std::vector<CString> told; // for people: what does not count, or not as HMRC named it, and why
};

/// HMRC's, withdrawn ones left out. Different benefits of one code add up; of one benefit the forecasts do not count
/// once there is an actual figure (a forecast of £4,000 and an actual £4,200 are £4,200), and the total of all benefits
/// counts only where it stands alone.
HmrcBenefits TotalsOf(const std::vector<StagedBenefit>& benefits);
/// The return's.
BenefitTotals TotalsOf(const std::vector<ReturnBenefit>& benefits);

} // namespace HmrcApi
