#include "MorvUt/hmrc/schedules/Notes.h"

#include <algorithm>
#include <map>

#include "MorvUt/hmrc/schedules/BenefitTotals.h"
#include "MorvUt/hmrc/schedules/PensionTypes.h"
#include "MorvUt/hmrc/schedules/Words.h"
#include "MorvUt/hmrc/staging/Summaries.h"

namespace HmrcApi
{
namespace
{

constexpr int kEarlierYearsAdjustment = 101; // HMRC's number of the allowance

/// "10520.80, tax 2520.60", or what there is of it.
CString Figures(const StagedPension& item)
{
    CString text = item.amount.IsValid() ? item.amount.Format() : CString("no amount");
    if (item.tax.IsValid())
        text.AppendFormat(", tax %s", item.tax.Format());
    return text;
}

class Notes
{
public:
    template<class... Args>
    void Add(Afx::FormatString<std::type_identity_t<Args>...> format, const Args&... args)
    {
        m_notes.emplace_back().Format(format, args...);
    }
    std::vector<CString> Take() { return std::move(m_notes); }

private:
    std::vector<CString> m_notes;
};

void AddMissing(Notes& notes, const CString& payer, const Kiln::CAmt& pay, const Kiln::CAmt& tax)
{
    if (pay.IsValid() && tax.IsValid())
        return;
    notes.Add("%s: HMRC sent no %s.", payer, pay.IsValid() ? "tax" : tax.IsValid() ? "pay" : "pay and no tax");
}

void AddEmployment(Notes& notes, const StagedEmployment& item, int ofReference)
{
    const CString payer = NamedBy(item.employer, item.key);
    AddMissing(notes, payer, item.pay, item.tax);
    if (item.employer.empty())
        notes.Add("%s: HMRC did not name the employer.", payer);
    if (ofReference > 1 && std::any_of(item.benefits.begin(), item.benefits.end(), [](const StagedBenefit& benefit) {
            return IsBenefitSum(benefit.number) && !benefit.isWithdrawn;
        }))
        notes.Add("%s: HMRC gives benefits by the employer's reference, of which there are %d employments; check "
                  "which of them these belong to.",
                  payer, ofReference);
    if (item.isOffPayroll.value_or(false))
        notes.Add("%s: HMRC says that off-payroll working applied; the return asks for it.", payer);
    for (const CString& line : TotalsOf(item.benefits).told)
        notes.Add("%s: %s.", payer, line);
}

void AddStatePension(Notes& notes, const StagedPension& item)
{
    if (item.date.IsValid() || item.tax.IsValid() || item.reference == kLumpSumDescription)
        notes.Add("%s (%s): a lump sum has boxes and a rate of its own on the return.", item.reference, Figures(item));
    else
        notes.Add("%s (%s): HMRC's figure is the entitlement used for the tax code; compare it with what was received.",
                  item.reference, Figures(item));
}

void AddNoAmount(Notes& notes, const StagedPension& item)
{
    if (!item.amount.IsValid())
        notes.Add("%s: HMRC sent no amount.", NameOf(item));
}

void AddPension(Notes& notes, const StagedPension& item)
{
    switch (item.kind) {
    case kStatePension:
        return AddStatePension(notes, item);
    case kPrivatePension:
        return AddMissing(notes, NamedBy(item.payer, item.reference), item.amount, item.tax);
    case kJobseekersAllowance:
    case kEmploymentAndSupportAllowance:
        AddNoAmount(notes, item);
        if (IsSomething(item.tax))
            notes.Add("%s: HMRC sent tax of %s, which has no box of its own.", NameOf(item), item.tax.Format());
        return;
    case kIncapacityBenefit:
        return AddNoAmount(notes, item);
    default:
        if (SummaryOf(item) != Summary::None)
            return notes.Add("%s (%s): no schedule is made of it; %s.", item.reference, Figures(item),
                             WordsOf(SummaryOf(item)).advice);
        notes.Add("%s (%s): HMRC sent a benefit of a kind that is not known here. No schedule is made of it: enter it "
                  "on the return where it belongs.",
                  NameOf(item), Figures(item));
    }
}

} // namespace

std::vector<CString> NotesOf(const StagedYear& staged)
{
    Notes notes;
    std::map<std::string, int> ofReference;
    for (const StagedEmployment& item : staged.employments)
        ofReference[item.reference] += item.isWithdrawn ? 0 : 1;
    for (const StagedEmployment& item : staged.employments)
        if (!item.isWithdrawn)
            AddEmployment(notes, item, ofReference[item.reference]);
    for (const StagedPension& item : staged.pensions)
        if (!item.isWithdrawn)
            AddPension(notes, item);
    for (const StagedAllowance& item : staged.allowances)
        if (!item.isWithdrawn && item.number == kEarlierYearsAdjustment && IsSomething(item.amount))
            notes.Add("%s (%s): an adjustment of an earlier year, which has no box of its own.", item.type,
                      item.amount.Format());
    if (staged.nationalInsurance && staged.nationalInsurance->isMaximumReached.value_or(false))
        notes.Add("National Insurance: HMRC says that the maximum contributions of the year have been reached.");
    return notes.Take();
}

} // namespace HmrcApi
