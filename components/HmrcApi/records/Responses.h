#pragma once

// HMRC's answers as records. An amount or date that HMRC did not send is null: absent is not zero.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "HmrcApi/Export.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"

namespace HmrcApi
{

struct CompanyBenefit_t
{
    std::string benefitType; // HMRC's name, kept when unknown
    int benefitNumber = 0;   // HMRC's number of that name; 0 when unknown
    Kiln::CAmt amount;
    bool isForecastBenefit = false; // a coding estimate, not a P11D figure
};

struct Employment_t
{
    std::string employerPayeReference;
    std::string employerName;
    std::string worksNumber;
    Kiln::CDate startDate, endDate;
    Kiln::CAmt taxablePayTotal, taxTotal, studentLoan;
    std::vector<CompanyBenefit_t> companyBenefits;
};

struct PrivatePension_t
{
    std::string employerPayeReference;
    std::string employerName;
    std::string worksNumber;
    Kiln::CDate startDate, endDate;
    Kiln::CAmt taxablePayTotal, taxTotal;
};

struct TaxableSocialSecurityBenefit_t
{
    enum BenefitType
    {
        JobseekersAllowance = 0,
        IncapacityBenefit = 1,
        EmploymentAndSupportAllowance = 2,
        Unknown = -1 // kept, matches nothing
    };
    BenefitType benefitType = Unknown;
    std::string benefitTypeName; // as HMRC wrote it
    std::string employerPayeReference;
    Kiln::CDate startDate, endDate;
    Kiln::CAmt taxablePayTotal, taxTotal;
};

struct TaxFreeAllowance_t
{
    std::string allowanceType;
    int allowanceNumber = 0; // HMRC's number; 0 when unknown
    Kiln::CAmt amount;
};

struct StatePension_t
{
    struct LumpSum_t
    {
        Kiln::CDate startDate, endDate;
        Kiln::CAmt taxablePayTotal, taxTotal;
    };
    Kiln::CAmt grossAmount; // for the year; no tax is deducted from it
    std::string typeDescription;
    std::shared_ptr<const LumpSum_t> lumpSum; // null when there is none
};

/// The answer of the PAYE interface. `…UpperBound` is the last index, -1 when there is none.
class HMRCAPI_API CPayeResponse
{
public:
    std::shared_ptr<const Employment_t> GetEmploymentAt(int index) const { return At(m_employments, index); }
    int GetEmploymentUpperBound() const noexcept { return Last(m_employments); }
    std::shared_ptr<const PrivatePension_t> GetPrivatePensionAt(int index) const { return At(m_pensions, index); }
    int GetPrivatePensionUpperBound() const noexcept { return Last(m_pensions); }
    std::shared_ptr<const TaxableSocialSecurityBenefit_t> GetTaxableSocialSecurityBenefitAt(int index) const
    {
        return At(m_benefits, index);
    }
    int GetTaxableSocialSecurityBenefitUpperBound() const noexcept { return Last(m_benefits); }
    std::shared_ptr<const TaxFreeAllowance_t> GetTaxFreeAllowanceAt(int index) const { return At(m_allowances, index); }
    int GetTaxFreeAllowanceUpperBound() const noexcept { return Last(m_allowances); }
    /// Null when HMRC sent none.
    std::shared_ptr<const StatePension_t> getStatePension() const noexcept { return m_statePension; }

    /// HMRC holds nothing for the person and year, not even that there is nothing: what was sent earlier stands.
    bool IsNothingYet() const noexcept { return m_isNothingYet; }

    // Filled by the reader of the answer, and by tests.
    void SetNothingYet() noexcept { m_isNothingYet = true; }
    void Add(Employment_t item) { m_employments.push_back(std::make_shared<const Employment_t>(std::move(item))); }
    void Add(PrivatePension_t item) { m_pensions.push_back(std::make_shared<const PrivatePension_t>(std::move(item))); }
    void Add(TaxableSocialSecurityBenefit_t item)
    {
        m_benefits.push_back(std::make_shared<const TaxableSocialSecurityBenefit_t>(std::move(item)));
    }
    void Add(TaxFreeAllowance_t item)
    {
        m_allowances.push_back(std::make_shared<const TaxFreeAllowance_t>(std::move(item)));
    }
    void SetStatePension(StatePension_t item)
    {
        m_statePension = std::make_shared<const StatePension_t>(std::move(item));
    }

private:
    template<class T>
    using List = std::vector<std::shared_ptr<const T>>;
    template<class T>
    static std::shared_ptr<const T> At(const List<T>& list, int index) // null outside the list
    {
        return index >= 0 && index <= Last(list) ? list[static_cast<std::size_t>(index)] : nullptr;
    }
    template<class T>
    static int Last(const List<T>& list) noexcept
    {
        return static_cast<int>(list.size()) - 1;
    }

    List<Employment_t> m_employments;
    List<PrivatePension_t> m_pensions;
    List<TaxableSocialSecurityBenefit_t> m_benefits;
    List<TaxFreeAllowance_t> m_allowances;
    std::shared_ptr<const StatePension_t> m_statePension;
    bool m_isNothingYet = false;
};

/// The answer of the National Insurance interface.
struct CNationalInsuranceResponse
{
    Kiln::CAmt class1NicableEarnings; // between the primary threshold and the upper earnings limit; null when absent
    Kiln::CAmt class2Due;
    bool maxNicsReached = false;
};

/// HMRC's number of a company benefit or allowance type; 0 when the name is not known.
HMRCAPI_API int BenefitNumber(std::string_view iabdType) noexcept;
HMRCAPI_API int AllowanceNumber(std::string_view iabdType) noexcept;

/// Reads the text of an answer. Throws HmrcApiErrorException: ANSWER_MALFORMED for what is not JSON of this shape or is
/// nested deeper than 32 levels, AMOUNT_NOT_EXACT for an amount with more than four decimals or out of range.
HMRCAPI_API CPayeResponse ReadPayeResponse(std::string_view json);
HMRCAPI_API CNationalInsuranceResponse ReadNationalInsuranceResponse(std::string_view json);

} // namespace HmrcApi
