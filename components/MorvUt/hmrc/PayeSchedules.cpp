// Whether HMRC has items that the return lacks.

#include <algorithm>

#include "MorvUt/hmrc/detail/PayeAnswer.h"
#include "MorvUt/hmrc/detail/PayeMatches.h"

namespace HmrcApi
{
namespace
{

bool AnyNew(PsbMatches& matches, bool (*isOfKind)(long mtdType))
{
    for (int row = 0; row < matches.staged.GetCount(); ++row)
        if (matches.isNew[static_cast<std::size_t>(row)] && isOfKind(matches.staged[row].GetMTDType()))
            return true;
    return false;
}

} // namespace

bool CPAYEPrepop::DoNewEmploymentsExist()
{
    EmploymentMatches matches(GetClient(), GetYear());
    const auto& scheduleOf = matches.scheduleOf;
    if (std::find(scheduleOf.begin(), scheduleOf.end(), kNoSchedule) != scheduleOf.end())
        return true;

    using List = Brix::CMTD_TaxFreeAllowances;
    RowsUnder<List> allowances(StagedYearIds(GetClient(), GetYear()), List::kMTD_TaxYearID, {{List::kAmount}});
    if (matches.schedules.GetCount() == 0) {
        for (int row = 0; row < allowances.GetCount(); ++row)
            if (!allowances[row].GetWithdrawn() && MTD_TaxFreeAllowancesHasValue(allowances[row]))
                return true;
        return false;
    }
    Match_MTD_TaxFreeAllowancesToEmployment(matches.schedules[0]);
    return false;
}

bool CPAYEPrepop::DoNewPensionStateBenefitsExist()
{
    return DoNewPensionStateBenefitsExist_Other() || DoNewPensionStateBenefitsExist_PrivatePensions() ||
           DoNewPensionStateBenefitsExist_TaxableSocialSecurityBenefits();
}

bool CPAYEPrepop::DoNewPensionStateBenefitsExist_Other()
{
    PsbMatches matches(GetClient(), GetYear());
    return AnyNew(matches, [](long type) { return type == MTD_None; });
}

bool CPAYEPrepop::DoNewPensionStateBenefitsExist_PrivatePensions()
{
    PsbMatches matches(GetClient(), GetYear());
    return AnyNew(matches, [](long type) { return IsPrivatePension(type); });
}

bool CPAYEPrepop::DoNewPensionStateBenefitsExist_TaxableSocialSecurityBenefits()
{
    PsbMatches matches(GetClient(), GetYear());
    return AnyNew(matches, [](long type) { return IsTaxableSocialSecurityBenefit(type); });
}

bool CPAYEPrepop::MTD_TaxFreeAllowancesHasValue(const Brix::CMTD_TaxFreeAllowances& allowances)
{
    return !allowances.IsEOL() && allowances.GetAmount().IsValid() && !allowances.GetAmount().IsZero();
}

bool CPAYEPrepop::Match_MTD_TaxFreeAllowancesToEmployment(Brix::CNewEmploy& schedules)
{
    int first = -1;
    int lowest = 0;
    for (bool isThere = schedules.MoveFirst(); isThere; isThere = schedules.MoveNext())
        if (first < 0 || schedules.GetOrdering() < lowest) {
            first = schedules.GetPosition();
            lowest = schedules.GetOrdering();
        }
    return schedules.MoveTo(first);
}

} // namespace HmrcApi
