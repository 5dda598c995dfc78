#include "MorvUt/hmrc/Differences.h"

#include "MorvUt/hmrc/detail/BenefitCodes.h"
#include "MorvUt/hmrc/detail/PayeMatches.h"

namespace HmrcApi
{
namespace
{

/// Adds a row when HMRC sent the figure and the return has another. Nothing in the return is as good as HMRC's 0.00:
/// both are shown as nothing.
void CompareAmount(std::vector<DifferenceRow>& rows, const CString& caption, const Kiln::CAmt& own,
                   const Kiln::CAmt& hmrc, bool isEstimate = false)
{
    if (!hmrc.IsValid() || own == hmrc || (hmrc.IsZero() && !own.IsValid()))
        return;
    DifferenceRow row;
    row.caption = caption;
    row.returnAmount = own;
    row.hmrcAmount = hmrc;
    row.estimate = isEstimate;
    rows.push_back(row);
}

/// The same for a date, but one that the return lacks is no other figure.
void CompareDate(std::vector<DifferenceRow>& rows, const char* caption, const Kiln::CDate& own, const Kiln::CDate& hmrc)
{
    if (!hmrc.IsValid() || !own.IsValid() || own.IsSameDay(hmrc))
        return;
    DifferenceRow row;
    row.caption = caption;
    row.kind = DifferenceRow::Kind::Date;
    row.returnDate = own;
    row.hmrcDate = hmrc;
    rows.push_back(row);
}

std::vector<DifferenceRow> Compare(const Brix::CNewEmploy& own, const Brix::CMTD_Employments& hmrc)
{
    std::vector<DifferenceRow> rows;
    CompareDate(rows, "Start date", own.GetStart(), hmrc.GetStart());
    CompareDate(rows, "End date", own.GetEnd(), hmrc.GetEnd());
    CompareAmount(rows, "Pay", own.GetPay(), hmrc.GetPay());
    CompareAmount(rows, "Tax", own.GetTax(), hmrc.GetTax());
    CompareAmount(rows, "Student loan", own.GetStudentLoan(), hmrc.GetStudentLoan());
    std::map<int, BenefitTotal> ownBenefits = ScheduleBenefits(own.GetID());
    for (const auto& [code, total] : StagedBenefits(hmrc.GetID()))
        CompareAmount(rows, BenefitCaption(code), ownBenefits[code].amount, total.amount, total.isEstimate);
    return rows;
}

std::vector<DifferenceRow> Compare(const Brix::CPensionStateBenefits& own, const Brix::CMTD_PensionStateBenefits& hmrc)
{
    std::vector<DifferenceRow> rows;
    CompareAmount(rows, "Amount", own.GetAmount(), hmrc.GetAmount());
    CompareAmount(rows, "Tax", own.GetTax(), hmrc.GetTax());
    return rows;
}

CString ItemOf(const Brix::CNewEmploy& own, const Brix::CMTD_Employments& hmrc)
{
    CString item;
    item.Format("%s (%s)", own.GetEmployerName().IsEmpty() ? hmrc.GetEmployerName() : own.GetEmployerName(),
                hmrc.GetKey());
    return item;
}

CString ItemOf(const Brix::CPensionStateBenefits& own, const Brix::CMTD_PensionStateBenefits& hmrc)
{
    CString item = own.GetDescription();
    if (item.IsEmpty())
        item = hmrc.GetPayer();
    if (item.IsEmpty())
        item = PsbName(hmrc.GetMTDType());
    if (hmrc.GetMTDType() != CPAYEPrepop::MTD_None && !hmrc.GetReference().IsEmpty())
        item.AppendFormat(" (%s)", hmrc.GetReference());
    return item;
}

/// The pairs of `matches` that differ, in the order of the schedules.
template<class Matches>
void AddDifferences(std::vector<Difference>& found, Matches& matches, Difference::Schedule kind)
{
    for (int schedule = 0; schedule < matches.schedules.GetCount(); ++schedule) {
        for (int row = 0; row < matches.staged.GetCount(); ++row) {
            if (matches.scheduleOf[static_cast<std::size_t>(row)] != schedule)
                continue;
            const auto& own = matches.schedules[schedule];
            const auto& hmrc = matches.staged[row];
            Difference difference;
            difference.rows = Compare(own, hmrc);
            if (difference.rows.empty())
                continue;
            difference.number = static_cast<int>(found.size()) + 1;
            difference.schedule = kind;
            difference.item = ItemOf(own, hmrc);
            difference.stagedId = hmrc.GetID();
            difference.scheduleId = own.GetID();
            found.push_back(std::move(difference));
        }
    }
}

CString Show(DifferenceRow::Kind kind, const Kiln::CAmt& amount, const Kiln::CDate& date)
{
    return kind == DifferenceRow::Kind::Amount ? amount.Format() : date.Format("%d/%m/%Y");
}

} // namespace

CString DifferenceRow::ReturnText() const { return Show(kind, returnAmount, returnDate); }
CString DifferenceRow::HmrcText() const { return Show(kind, hmrcAmount, hmrcDate); }

std::vector<Difference> FindDifferences(ClientId client, TaxYear taxYear)
{
    std::vector<Difference> found;
    EmploymentMatches employments(client, taxYear.GetRealTaxYear());
    AddDifferences(found, employments, Difference::Schedule::Employment);
    PsbMatches pensions(client, taxYear.GetRealTaxYear());
    AddDifferences(found, pensions, Difference::Schedule::PensionOrBenefit);
    return found;
}

} // namespace HmrcApi
