#pragma once

// Where HMRC's figures differ from those of the return.

#include <cstdint>
#include <string>
#include <vector>

#include "Afx/text/CString.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "Quarry/Keys.h"

namespace HmrcApi
{

/// One figure: the return's and HMRC's. Of `amounts` and `dates` one pair is used.
struct DifferenceRow
{
    enum class Kind
    {
        Amount,
        Date
    };
    /// What of the schedule it is about.
    enum class Field
    {
        None, // told, not compared: a part of a sum
        Start,
        End,
        Pay,
        Tax,
        StudentLoan,
        Benefit,
        Amount
    };
    CString caption;
    Field field = Field::None;
    int code = 0;       // of mapNewEmployBenefitsGrid, for a benefit
    bool isBox = false; // HMRC's figure is the sum of all codes of that one's box
    Kind kind = Kind::Amount;
    Kiln::CAmt returnAmount, hmrcAmount; // a figure that the return lacks is null
    Kiln::CDate returnDate, hmrcDate;
    bool estimate = false; // HMRC's figure is a forecast

    /// As shown: "22551.05", "20/08/2017"; empty for what is not there.
    MORVUT_API CString ReturnText() const;
    MORVUT_API CString HmrcText() const;
};

/// One item of HMRC's whose schedule says something else.
struct Difference
{
    enum class State
    {
        Open,
        Accepted,
        Rejected,
        Skipped
    };
    enum class Schedule
    {
        Employment,
        PensionOrBenefit
    };
    std::int64_t number = 0; // the item's own, whatever else there is, while its staged row stays
    Schedule schedule = Schedule::Employment;
    CString item;              // whose figures: employer and PAYE reference, or pension and payer
    State state = State::Open; // or Rejected, while HMRC's figures are those that were
    std::vector<DifferenceRow> rows;
    /// CMTD_Employments or CMTD_PensionStateBenefits; several where one schedule stands for their sum.
    std::vector<long> stagedIds;
    long scheduleId = 0; // CNewEmploy or CPensionStateBenefits; 0: none is HMRC's item, or several are

    /// HMRC's side and the return's in one line each: "Pay 22551.05, Tax 900.38 (forecast)".
    MORVUT_API CString HmrcSummary() const;
    MORVUT_API CString ReturnSummary() const;
    /// Sixteen hexadecimal digits, others when any figure of either side is another.
    MORVUT_API std::string Hash() const;
};

/// Compares the staged records of a year with the return's schedules: employments first, then pensions and benefits,
/// each in the return's order, then HMRC's items of which the return has one that does not say which it is. A schedule
/// that stands for several benefits of one date is held against their sum, and each of them is listed. No difference:
/// an item without a schedule, one that HMRC has withdrawn, a figure that HMRC did not send, National Insurance.
MORVUT_API std::vector<Difference> FindDifferences(const StagedYear& staged, const ReturnYear& own);
/// Somebody has to look: one of them is open.
MORVUT_API bool IsReviewDue(const std::vector<Difference>& differences);
/// Of what the practice holds now: seven statements. Throws Cellar::DatabaseError.
MORVUT_API std::vector<Difference> FindDifferences(ClientId client, TaxYear taxYear);

} // namespace HmrcApi
