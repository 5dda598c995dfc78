#pragma once

// Where HMRC's figures differ from those of the return.

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
    CString caption;
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
    int number = 0; // from 1, in the order shown
    Schedule schedule = Schedule::Employment;
    CString item; // whose figures: employer and PAYE reference, or pension and payer
    State state = State::Open;
    std::vector<DifferenceRow> rows;
    long stagedId = 0;   // CMTD_Employments or CMTD_PensionStateBenefits
    long scheduleId = 0; // CNewEmploy or CPensionStateBenefits; 0: none is HMRC's item
};

/// Compares the staged records of a year with the return's schedules: employments first, then pensions and benefits,
/// each in the return's order, then HMRC's items of which the return has one that does not say which it is. A schedule
/// that stands for several benefits of one date is held against their sum, and each of them is listed. No difference:
/// an item without a schedule, one that HMRC has withdrawn, a figure that HMRC did not send, National Insurance.
MORVUT_API std::vector<Difference> FindDifferences(const StagedYear& staged, const ReturnYear& own);
/// Of what the practice holds now: seven statements. Throws Cellar::DatabaseError.
MORVUT_API std::vector<Difference> FindDifferences(ClientId client, TaxYear taxYear);

} // namespace HmrcApi
