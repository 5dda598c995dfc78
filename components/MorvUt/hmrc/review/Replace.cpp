#include "MorvUt/hmrc/review/Replace.h"

#include <algorithm>

#include "Brix/Records.h"
#include "MorvUt/hmrc/schedules/BenefitCodes.h"

namespace HmrcApi
{
namespace
{

using Brix::CNewEmploy;
using Brix::CNewEmployBenefits;
using Brix::CPensionStateBenefits;
using Field = DifferenceRow::Field;

void ReplaceBenefit(CNewEmployBenefits& benefits, long employment, const DifferenceRow& row)
{
    constexpr int kNone = -1;
    int first = kNone;
    for (int place = 0; benefits.MoveTo(place);) {
        const int code = benefits.GetType();
        const bool isMeant = code == row.code || (row.isBox && BoxCode(code) == row.code);
        if (isMeant && first != kNone) {
            benefits.Delete(); // the next one takes its place
            continue;
        }
        if (isMeant)
            first = place;
        ++place;
    }
    if (first != kNone) {
        benefits.MoveTo(first);
    } else {
        benefits.AddNew();
        benefits.SetNewEmployID(employment);
    }
    benefits.SetType(row.code);
    benefits.SetBenefit(row.hmrcAmount);
    benefits.SetEstimate(row.estimate);
    benefits.Update();
}

bool ReplaceEmployment(const Difference& difference)
{
    CNewEmploy schedule;
    CNewEmployBenefits benefits;
    if (!schedule.Open({{0, difference.scheduleId}}))
        return false;
    benefits.Open({{CNewEmployBenefits::kNewEmployID, difference.scheduleId}});
    for (const DifferenceRow& row : difference.rows) {
        switch (row.field) {
        case Field::Start:
            schedule.SetStart(row.hmrcDate);
            break;
        case Field::End:
            schedule.SetEnd(row.hmrcDate);
            break;
        case Field::Pay:
            schedule.SetPay(row.hmrcAmount);
            break;
        case Field::Tax:
            schedule.SetTax(row.hmrcAmount);
            break;
        case Field::StudentLoan:
            schedule.SetStudentLoan(row.hmrcAmount);
            break;
        case Field::Benefit:
            ReplaceBenefit(benefits, difference.scheduleId, row);
            break;
        case Field::Amount:
        case Field::None:
            break;
        }
    }
    schedule.Update();
    return true;
}

bool ReplacePension(const Difference& difference)
{
    CPensionStateBenefits schedule;
    if (!schedule.Open({{0, difference.scheduleId}}))
        return false;
    for (const DifferenceRow& row : difference.rows)
        if (row.field == Field::Start)
            schedule.SetStart(row.hmrcDate);
        else if (row.field == Field::Amount)
            schedule.SetAmount(row.hmrcAmount);
        else if (row.field == Field::Tax)
            schedule.SetTax(row.hmrcAmount);
    schedule.Update();
    return true;
}

} // namespace

bool ReplaceFigures(const Difference& difference)
{
    const bool isAnyCompared = std::any_of(difference.rows.begin(), difference.rows.end(),
                                           [](const DifferenceRow& row) { return row.field != Field::None; });
    if (difference.scheduleId == 0 || !isAnyCompared)
        return false;
    return difference.schedule == Difference::Schedule::Employment ? ReplaceEmployment(difference)
                                                                   : ReplacePension(difference);
}

} // namespace HmrcApi
