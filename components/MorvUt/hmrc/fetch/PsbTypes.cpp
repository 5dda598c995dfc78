#include "MorvUt/hmrc/fetch/PayePrepop.h"

namespace HmrcApi
{
namespace
{

struct TypePair
{
    long scheduleType; // of mapPSBTypes
    long mtdType;
};
// Which schedules of the return may be which of HMRC's items.
constexpr TypePair kMatchingTypes[] = {
    {1040, CPAYEPrepop::MTD_PrivatePension},
    {1050, CPAYEPrepop::MTD_PrivatePension},
    {1090, CPAYEPrepop::MTD_JobseekersAllowance},
    {1140, CPAYEPrepop::MTD_IncapacityBenefit},
    {1140, CPAYEPrepop::MTD_EmploymentAndSupportAllowance},
};

constexpr bool IsPension(long scheduleType) noexcept { return scheduleType == 1040 || scheduleType == 1050; }

} // namespace

CPAYEPrepop::MTD_PSBType CPAYEPrepop::MapTSSBBenefitTypeToMTD_PSBType(int benefitType) noexcept
{
    switch (benefitType) {
    case TaxableSocialSecurityBenefit_t::JobseekersAllowance:
        return MTD_JobseekersAllowance;
    case TaxableSocialSecurityBenefit_t::IncapacityBenefit:
        return MTD_IncapacityBenefit;
    case TaxableSocialSecurityBenefit_t::EmploymentAndSupportAllowance:
        return MTD_EmploymentAndSupportAllowance;
    default:
        return MTD_None;
    }
}

bool CPAYEPrepop::IsPrivatePension(long mtdType) noexcept { return mtdType == MTD_PrivatePension; }

bool CPAYEPrepop::IsTaxableSocialSecurityBenefit(long mtdType) noexcept
{
    return mtdType >= MTD_JobseekersAllowance && mtdType <= MTD_EmploymentAndSupportAllowance;
}

bool CPAYEPrepop::DoPSBTypeAndMTD_PSBTypeMatch(long scheduleType, long mtdType) noexcept
{
    for (const TypePair& pair : kMatchingTypes)
        if (pair.scheduleType == scheduleType && pair.mtdType == mtdType)
            return true;
    return false;
}

bool CPAYEPrepop::PSBMatchesMTDPSB(Brix::CPensionStateBenefits& schedule, Brix::CMTD_PensionStateBenefits& staged)
{
    const long type = schedule.GetType();
    if (!DoPSBTypeAndMTD_PSBTypeMatch(type, staged.GetMTDType()))
        return false;
    return IsPension(type) ? schedule.GetReference() == staged.GetReference()
                           : schedule.GetStart() == staged.GetStart();
}

} // namespace HmrcApi
