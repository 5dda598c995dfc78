#pragma once

// HMRC's answers as records.
//
// Amounts are pounds, as HMRC sends them: "taxablePayTotal": 22551.05 is the CAmt of 225,510,500 ten-thousandths. They
// are exact to the fourth decimal and are never rounded; HMRC documents neither sign nor range, so a negative one (a
// refund) is kept. What HMRC did not send is null, and absent is not zero: "taxTotal": 0.00 is a zero, no "taxTotal" is
// null. A date is null too when it cannot be read; a text is then empty. Members that are not named here are ignored,
// whatever they hold. Names and kinds are kept as HMRC wrote them. Records come in HMRC's order, which means nothing,
// and a reference may occur more than once.

#include <memory>
#include <optional>
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
    std::string benefitType; // HMRC's name, also when unknown; never empty
    int benefitNumber = 0;   // HMRC's number of that name; 0 when unknown
    Kiln::CAmt amount;
    bool isForecastBenefit = false; // a coding estimate, not a P11D figure
};

/// An employment. Two periods with one employer are two, told apart by the works number.
struct Employment_t
{
    std::string employerPayeReference; // "123/AB456"; never empty
    std::string employerName;          // may be empty
    std::string worksNumber;           // may be empty
    Kiln::CDate startDate, endDate;
    Kiln::CAmt taxablePayTotal, taxTotal, studentLoan; // for the year, corrections included
    std::optional<bool> offPayrollWorkFlag;            // nothing when HMRC did not say
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
    std::string benefitTypeName; // as HMRC wrote it, to the letter: "jobseekersallowance" is Unknown; never empty
    std::string employerPayeReference;
    Kiln::CDate startDate, endDate;
    Kiln::CAmt taxablePayTotal, taxTotal;
};

struct TaxFreeAllowance_t
{
    std::string allowanceType; // HMRC's name, also when unknown; never empty
    int allowanceNumber = 0;   // HMRC's number; 0 when unknown
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

/// What every answer may be.
class HMRCAPI_API CResponse
{
public:
    /// HMRC holds nothing for the person and year, not even that there is nothing (404 NOT_FOUND): what was sent
    /// earlier stands. Usual for the year in progress, and until HMRC has reconciled the year, June to November after
    /// it.
    bool IsNothingYet() const noexcept { return m_isNothingYet; }
    void SetNothingYet() noexcept { m_isNothingYet = true; }

private:
    bool m_isNothingYet = false;
};

/// The answer of the PAYE interface. `…UpperBound` is the last index, -1 when there is none; `…At` is null outside.
class HMRCAPI_API CPayeResponse : public CResponse
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

    // Filled by the reader of the answer, and by tests.
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
};

/// The answer of the National Insurance interface.
struct CNationalInsuranceResponse : CResponse
{
    /// Earnings between the primary threshold and the upper earnings limit. HMRC sends 0.00 before it has reconciled
    /// the year (end of August after it), which cannot be told from a real zero.
    Kiln::CAmt class1NicableEarnings;
    Kiln::CAmt class2Due;
    std::optional<bool> maxNicsReached; // the year's maximum is reached; nothing when HMRC did not say
};

/// HMRC's number of a company benefit or allowance type; 0 when the name is not known.
HMRCAPI_API int BenefitNumber(std::string_view iabdType) noexcept;
HMRCAPI_API int AllowanceNumber(std::string_view iabdType) noexcept;

/// Reads the text of an answer. An absent list is empty, a null member is absent. Throws HmrcApiErrorException without
/// a status, its third text the place ("/employments/0/taxTotal"): ANSWER_MALFORMED for what is not one JSON object of
/// this shape, has two members of one name, or is beyond the bounds of json/Json.h; AMOUNT_NOT_EXACT for an amount with
/// more than four decimals that are not 0, or beyond 922,337,203,685,477.5807.
HMRCAPI_API CPayeResponse ReadPayeResponse(std::string_view json);
HMRCAPI_API CNationalInsuranceResponse ReadNationalInsuranceResponse(std::string_view json);

} // namespace HmrcApi
