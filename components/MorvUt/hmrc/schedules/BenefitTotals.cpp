#include "MorvUt/hmrc/schedules/BenefitTotals.h"

#include <set>
#include <string>

#include "MorvUt/hmrc/schedules/BenefitCodes.h"
#include "MorvUt/hmrc/schedules/Words.h"

namespace HmrcApi
{
namespace
{

constexpr int kTotalOfBenefits = 28; // HMRC's number

void Add(BenefitTotal& total, const Kiln::CAmt& amount, bool isEstimate)
{
    AddTo(total.amount, amount);
    total.isEstimate = total.isEstimate || isEstimate;
}

CString Line(const StagedBenefit& benefit, const char* why)
{
    CString line;
    line.Format(benefit.amount.IsValid() ? "%s %s%s: %s" : "%s%s%s: %s", benefit.type, benefit.amount.Format(),
                benefit.isForecast ? " (forecast)" : "", why);
    return line;
}

} // namespace

HmrcBenefits TotalsOf(const std::vector<StagedBenefit>& benefits)
{
    std::set<std::string> actual, types;
    for (const StagedBenefit& benefit : benefits) {
        if (benefit.isWithdrawn)
            continue;
        if (benefit.amount.IsValid())
            types.insert(TypeText(benefit.type, benefit.number));
        if (!benefit.isForecast && benefit.amount.IsValid())
            actual.insert(TypeText(benefit.type, benefit.number));
    }
    HmrcBenefits found;
    for (const StagedBenefit& benefit : benefits) {
        if (benefit.isWithdrawn) {
            found.told.push_back(Line(benefit, "HMRC no longer sends it; the return may still hold it"));
            continue;
        }
        if (benefit.number == kTotalOfBenefits && types.size() > 1)
            found.told.push_back(Line(benefit, "the total is not added to the benefits that it is made of"));
        else if (benefit.isForecast && actual.contains(TypeText(benefit.type, benefit.number)))
            found.told.push_back(Line(benefit, "HMRC sent an actual figure too, which counts"));
        else
            Add(found.totals[BenefitCode(benefit.number)], benefit.amount, benefit.isForecast);
        if (benefit.number == 0)
            found.told.push_back(Line(benefit, "of a kind that is not known here; it counts among other items"));
        if (!benefit.amount.IsValid())
            found.told.push_back(Line(benefit, "HMRC sent no amount"));
    }
    for (const auto& [code, total] : found.totals)
        if (!total.amount.IsValid() && !total.amount.IsNull())
            found.told.push_back(CString(BenefitCaption(code)) + ": the sum is larger than an amount can be");
    return found;
}

BenefitTotals TotalsOf(const std::vector<ReturnBenefit>& benefits)
{
    BenefitTotals totals;
    for (const ReturnBenefit& benefit : benefits)
        Add(totals[benefit.code], benefit.amount, benefit.isEstimate);
    return totals;
}

} // namespace HmrcApi
