#pragma once

// HMRC's answers as records: what a person earned and was given in one tax year, as HMRC's PAYE and National Insurance
// records have it.
//
// Amounts   Pounds, as HMRC sends them: "taxablePayTotal": 22551.05 is the CAmt of 225,510,500 ten-thousandths. Exact
//           to the fourth decimal, never rounded. HMRC documents neither sign nor range, so a negative one (a refund)
//           is kept. Totals are the tax year's, later corrections included.
// Dates     YYYY-MM-DD, month and day also with one digit. Not cut to the tax year: an employment may have begun years
//           before it.
// Absent    What HMRC did not send is null, an empty text, or nothing; JSON's null is the same. Absent is not zero:
//           "taxTotal": 0.00 is a zero, no "taxTotal" is null, "not reported". HMRC leaves out whatever it does not
//           know; only the members called required below are always there, since an answer without one is refused. So
//           is one with a member of the wrong type, except that a date that cannot be read is absent.
// Names     HMRC's, to the letter. Members that are not named here are ignored, whatever they hold.
// Order     HMRC's, which means nothing. A reference may occur more than once.
//
// Source: HMRC's interfaces Individual PAYE 1.0 and National Insurance 1.1, "annual summary" (the four interfaces that
// give parts of the same are in records/Summaries.h). Of the first HMRC has published the groups and the values of its
// scenarios, not the names of the members: these follow its record service and the sister interfaces. They stand in
// records/Responses.cpp alone.

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

/// A benefit or expense that an employer provided. Several of one type are several records.
struct CompanyBenefit_t
{
    std::string benefitType; // "CarBenefit"; required, kept when it is not known
    int benefitNumber = 0;   // HMRC's number of it, 31 (see BenefitNumber); 0: not known. Not sent: looked up
    Kiln::CAmt amount;       // the cash equivalent of the year; null: not reported
    /// An estimate that tax codes were made from; false, also when absent: a figure of a P11D.
    bool isForecastBenefit = false;
};

/// An employment, and whatever pays through PAYE without saying that it is a pension. Two periods with one employer are
/// two, told apart by the works number.
struct Employment_t
{
    std::string employerPayeReference;             // "123/AB456"; required
    std::string employerName;                      // empty: not sent
    std::string worksNumber;                       // the employer's number of the person, any text; empty: not sent
    Kiln::CDate startDate;                         // null: not reported
    Kiln::CDate endDate;                           // null: goes on, or not reported
    Kiln::CAmt taxablePayTotal;                    // pay of the year, as a P60 or P45 has it
    Kiln::CAmt taxTotal;                           // tax taken off it; negative: refunded
    Kiln::CAmt studentLoan;                        // repayments taken off the pay
    std::optional<bool> offPayrollWorkFlag;        // off-payroll working (IR35); nothing: HMRC did not say
    std::vector<CompanyBenefit_t> companyBenefits; // empty: none, or not reported yet
};

/// A pension from a former employer or a provider, which the payer reported as one. Members as in Employment_t.
struct PrivatePension_t
{
    std::string employerPayeReference; // the provider's; required
    std::string employerName;          // the provider; empty: not sent
    std::string worksNumber;
    Kiln::CDate startDate, endDate;
    Kiln::CAmt taxablePayTotal, taxTotal;
};

/// A benefit of the state on which tax is due.
struct TaxableSocialSecurityBenefit_t
{
    enum BenefitType
    {
        JobseekersAllowance = 0,
        IncapacityBenefit = 1,
        EmploymentAndSupportAllowance = 2,
        Unknown = -1 // kept, matches nothing
    };
    BenefitType benefitType = Unknown; // of benefitTypeName; not sent
    std::string benefitTypeName;       // required. Case counts: "jobseekersallowance" is Unknown
    std::string employerPayeReference; // of the office that paid, "475/BB00987"; empty: not sent
    Kiln::CDate startDate, endDate;    // HMRC's examples have one of the two, or both
    Kiln::CAmt taxablePayTotal;        // received in the year
    Kiln::CAmt taxTotal;               // HMRC sends it also where the return has no box for it
};

/// What HMRC allowed for in the tax code: job expenses, subscriptions, an earlier year's adjustment.
struct TaxFreeAllowance_t
{
    std::string allowanceType; // "FlatRateJobExpenses"; required, kept when it is not known
    int allowanceNumber = 0;   // HMRC's number of it, 56 (see AllowanceNumber); 0: not known. Not sent: looked up
    Kiln::CAmt amount;         // of the year; null: not reported
};

/// The State Pension. At most one to a person.
struct StatePension_t
{
    /// What a person got who had put the State Pension off. Taxed at a rate of its own.
    struct LumpSum_t
    {
        Kiln::CDate startDate, endDate; // of HMRC's record of it; may lie outside the year
        Kiln::CAmt taxablePayTotal, taxTotal;
    };
    /// The entitlement of the year, which the tax code was made from, not what was paid; no tax is taken off it. Null:
    /// not reported.
    Kiln::CAmt grossAmount;
    std::string typeDescription;              // "State Pension"; empty: not sent
    std::shared_ptr<const LumpSum_t> lumpSum; // null: none
};

/// What every answer may be.
class HMRCAPI_API CResponse
{
public:
    /// HMRC holds nothing for the person and year (404 NOT_FOUND), not even that there is nothing; all else is empty
    /// then, and what was sent earlier stands. Usual for the year in progress, until HMRC has reconciled the year (June
    /// to November after it), and again once it has processed the return.
    bool IsNothingYet() const noexcept { return m_isNothingYet; }
    void SetNothingYet() noexcept { m_isNothingYet = true; }

private:
    bool m_isNothingYet = false;
};

/// The answer of the PAYE interface. `…UpperBound` is the last index, -1 for an empty list; `…At` counts from 0 and is
/// null outside the list. What it gives stays as it is, and outlives the response.
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

    // Filled by the reader of the answer, and by tests. A second state pension replaces the first.
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

/// The answer of the National Insurance interface: for people with income from self-employment in the year. HMRC sends
/// all three; each may be absent all the same, all three may not.
struct CNationalInsuranceResponse : CResponse
{
    /// Earnings between the primary threshold and the upper earnings limit ("class1": "totalNICableEarnings"). HMRC
    /// sends 0.00 before it has reconciled the year (end of August after it), which cannot be told from a real zero.
    Kiln::CAmt class1NicableEarnings;
    /// Class 2 contributions due ("class2": "totalDue"). There as soon as the year has ended; may change later.
    Kiln::CAmt class2Due;
    /// The person has reached the year's maximum of contributions ("maxNICsReached"); nothing: HMRC did not say.
    std::optional<bool> maxNicsReached;
};

/// HMRC's number of a type of company benefit (8 to 54, 117) or allowance (56, 57, 101): "CarBenefit" is 31,
/// "FlatRateJobExpenses" 56. The sums of the benefits interface, which have none, are 1000 and their box of the
/// employment pages: "companyCarsAndVansBenefit" is 1009. 0 when the name is not known; case counts. Source: the types
/// of HMRC's record service.
HMRCAPI_API int BenefitNumber(std::string_view iabdType) noexcept;
HMRCAPI_API int AllowanceNumber(std::string_view iabdType) noexcept;

/// Reads the text of a 200 answer, UTF-8. An absent list is empty, but one of the interface's own members must be
/// there:
/// {"employments":[]} says that there are none, {} says nothing. Nothing is kept of a text that is refused. Throws
/// HmrcApiErrorException without a status, its third text the place ("/employments/0/taxTotal"):
///   ANSWER_MALFORMED   not one JSON object of this shape, none of its members, a required one absent or empty, two
///                      members of one name, or beyond the bounds of json/Json.h
///   AMOUNT_NOT_EXACT   an amount with more than four decimals that are not 0, or beyond 922,337,203,685,477.5807
HMRCAPI_API CPayeResponse ReadPayeResponse(std::string_view json);
HMRCAPI_API CNationalInsuranceResponse ReadNationalInsuranceResponse(std::string_view json);

} // namespace HmrcApi
