#include "MorvUt/hmrc/fetch/PayeMapping.h"

namespace HmrcApi
{
namespace
{

constexpr char kStatePensionDescription[] = "State Pension"; // where HMRC has none

const Kiln::CDate& FirstOf(const Kiln::CDate& start, const Kiln::CDate& end) { return start.IsValid() ? start : end; }

StagedPension MapPension(const PrivatePension_t& pension)
{
    StagedPension item;
    item.kind = kPrivatePension;
    item.reference = pension.employerPayeReference;
    item.worksNumber = pension.worksNumber;
    item.payer = pension.employerName;
    item.date = pension.startDate;
    item.end = pension.endDate;
    item.amount = pension.taxablePayTotal;
    item.tax = pension.taxTotal;
    return item;
}

StagedPension MapBenefit(const TaxableSocialSecurityBenefit_t& benefit)
{
    StagedPension item;
    item.kind = StagedKindOf(benefit.benefitType);
    item.reference = benefit.employerPayeReference;
    if (item.kind == kStatePension) { // would be taken for one
        item.kind = kUnknownBenefit;
        item.reference = benefit.benefitTypeName;
        item.payer = benefit.employerPayeReference;
    }
    item.date = FirstOf(benefit.startDate, benefit.endDate);
    item.end = benefit.endDate;
    item.amount = benefit.taxablePayTotal;
    item.tax = benefit.taxTotal;
    return item;
}

void MapStatePension(const StatePension_t& pension, std::vector<StagedPension>& items)
{
    const bool isLumpSumAlone = pension.lumpSum && pension.typeDescription.empty() && !pension.grossAmount.IsValid();
    if (!isLumpSumAlone) {
        StagedPension& item = items.emplace_back();
        item.reference = pension.typeDescription.empty() ? kStatePensionDescription : pension.typeDescription;
        item.amount = pension.grossAmount;
    }
    if (const auto& lump = pension.lumpSum) {
        StagedPension& item = items.emplace_back();
        item.reference = kLumpSumDescription;
        item.date = FirstOf(lump->startDate, lump->endDate);
        item.end = lump->endDate;
        item.amount = lump->taxablePayTotal;
        item.tax = lump->taxTotal;
    }
}

} // namespace

int StagedKindOf(int benefitType) noexcept
{
    switch (benefitType) {
    case TaxableSocialSecurityBenefit_t::JobseekersAllowance:
        return kJobseekersAllowance;
    case TaxableSocialSecurityBenefit_t::IncapacityBenefit:
        return kIncapacityBenefit;
    case TaxableSocialSecurityBenefit_t::EmploymentAndSupportAllowance:
        return kEmploymentAndSupportAllowance;
    default:
        return kStatePension;
    }
}

StagedEmployment MapEmployment(const Employment_t& employment)
{
    StagedEmployment item;
    item.reference = employment.employerPayeReference;
    item.worksNumber = employment.worksNumber;
    item.employer = employment.employerName;
    item.start = employment.startDate;
    item.end = employment.endDate;
    item.pay = employment.taxablePayTotal;
    item.tax = employment.taxTotal;
    item.studentLoan = employment.studentLoan;
    item.isOffPayroll = employment.offPayrollWorkFlag;
    for (const CompanyBenefit_t& benefit : employment.companyBenefits)
        item.benefits.push_back(
            {0, benefit.benefitType, benefit.benefitNumber, benefit.amount, benefit.isForecastBenefit, false});
    return item;
}

StagedYear MapPayeAnswer(const CPayeResponse& response)
{
    StagedYear year;
    for (int i = 0; i <= response.GetEmploymentUpperBound(); ++i)
        year.employments.push_back(MapEmployment(*response.GetEmploymentAt(i)));
    for (int i = 0; i <= response.GetPrivatePensionUpperBound(); ++i)
        year.pensions.push_back(MapPension(*response.GetPrivatePensionAt(i)));
    for (int i = 0; i <= response.GetTaxableSocialSecurityBenefitUpperBound(); ++i)
        year.pensions.push_back(MapBenefit(*response.GetTaxableSocialSecurityBenefitAt(i)));
    if (const auto pension = response.getStatePension())
        MapStatePension(*pension, year.pensions);
    for (int i = 0; i <= response.GetTaxFreeAllowanceUpperBound(); ++i) {
        const auto allowance = response.GetTaxFreeAllowanceAt(i);
        year.allowances.push_back({0, allowance->allowanceType, allowance->allowanceNumber, allowance->amount, false});
    }
    return year;
}

} // namespace HmrcApi
