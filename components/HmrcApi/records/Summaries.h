#pragma once

// The answers of HMRC's four individual interfaces by UTR: employment history, income, benefits, tax. Each has a part
// of what a person earned in a tax year; only the employer's PAYE reference joins them. What is said of amounts, absent
// members, names and order in records/Responses.h holds here too.
//
// Source: HMRC's interfaces Individual Employment 1.2, Income 1.2, Benefits 1.1 and Tax 1.1, "annual summary".

#include <memory>
#include <string_view>
#include <vector>

#include "HmrcApi/Export.h"
#include "HmrcApi/records/Responses.h"
#include "Kiln/CAmt.h"

namespace HmrcApi
{

/// Employments, each with its reference and with what the interface knows of it; everything else is absent.
/// `GetUpperBound` is the last index, -1 for none; `GetAt` counts from 0 and is null outside the list. A reference may
/// occur more than once, in one answer more often than in another, and in another order.
class HMRCAPI_API CEmploymentsResponse : public CResponse
{
public:
    std::shared_ptr<const Employment_t> GetAt(int index) const
    {
        return index >= 0 && index <= GetUpperBound() ? m_employments[static_cast<std::size_t>(index)] : nullptr;
    }
    int GetUpperBound() const noexcept { return static_cast<int>(m_employments.size()) - 1; }
    /// For the reader of the answer, and for tests.
    void Add(Employment_t item) { m_employments.push_back(std::make_shared<const Employment_t>(std::move(item))); }

private:
    std::vector<std::shared_ptr<const Employment_t>> m_employments;
};

/// Of the employments the employer's name, and whether off-payroll working applied. No dates, no works numbers.
class HMRCAPI_API CEmploymentHistoryResponse : public CEmploymentsResponse
{};

/// Of the employments for which any were reported: companyBenefits, a sum for each of eight kinds as the employment
/// pages (SA102) have them, numbered 1009 to 1016 by their boxes; HMRC calls none a forecast.
class HMRCAPI_API CBenefitsSummaryResponse : public CEmploymentsResponse
{};

/// Of the employments taxablePayTotal, and of everything else one sum of the year for each kind.
class HMRCAPI_API CIncomeSummaryResponse : public CEmploymentsResponse
{
public:
    /// Pensions but the State Pension, retirement annuities, taxable trivial payments.
    Kiln::CAmt otherPensionsAndRetirementAnnuities;
    /// Taxable Incapacity Benefit and contribution-based Employment and Support Allowance, in one figure.
    Kiln::CAmt incapacityBenefit;
    Kiln::CAmt jobseekersAllowance;
    Kiln::CAmt seissNetPaid; // Self-Employment Income Support Scheme
};

/// Of the employments taxTotal, and the tax taken off the sums of CIncomeSummaryResponse. (There is no figure for
/// Jobseeker's Allowance.)
class HMRCAPI_API CTaxSummaryResponse : public CEmploymentsResponse
{
public:
    Kiln::CAmt otherPensionsAndRetirementAnnuities;
    Kiln::CAmt incapacityBenefit;
    Kiln::CAmt taxRefundedOrSetOff; // Income Tax refunded or set off by HMRC or Jobcentre Plus
};

// Read the text of a 200 answer as ReadPayeResponse does, with the same errors.
HMRCAPI_API CEmploymentHistoryResponse ReadEmploymentHistoryResponse(std::string_view json);
HMRCAPI_API CBenefitsSummaryResponse ReadBenefitsSummaryResponse(std::string_view json);
HMRCAPI_API CIncomeSummaryResponse ReadIncomeSummaryResponse(std::string_view json);
HMRCAPI_API CTaxSummaryResponse ReadTaxSummaryResponse(std::string_view json);

} // namespace HmrcApi
