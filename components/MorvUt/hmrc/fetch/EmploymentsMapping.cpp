#include "MorvUt/hmrc/fetch/EmploymentsMapping.h"

#include <algorithm>
#include <unordered_map>

#include "MorvUt/hmrc/fetch/PayeMapping.h"
#include "MorvUt/hmrc/schedules/PensionTypes.h"
#include "MorvUt/hmrc/staging/Identity.h"
#include "MorvUt/hmrc/staging/Pairing.h"
#include "MorvUt/hmrc/staging/Summaries.h"

namespace HmrcApi
{
namespace
{

StagedPension& ItemOf(StagedYear& year, Summary summary)
{
    const SummaryWords& words = WordsOf(summary);
    for (StagedPension& item : year.pensions)
        if (item.kind == words.kind && item.reference == words.text)
            return item;
    StagedPension& item = year.pensions.emplace_back();
    item.kind = words.kind;
    item.reference = words.text;
    return item;
}

void Add(StagedYear& year, Summary summary, Kiln::CAmt StagedPension::*figure, const Kiln::CAmt& amount)
{
    if (!amount.IsNull())
        ItemOf(year, summary).*figure = amount;
}

template<class T>
std::vector<T> LiveOf(const std::vector<T>& rows)
{
    std::vector<T> live;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(live), [](const T& row) { return !row.isWithdrawn; });
    return live;
}

/// What the other route alone knows, and what belongs to an interface that has said nothing.
void Complete(StagedEmployment& item, const AnsweredParts& parts, const StagedEmployment& row)
{
    item.worksNumber = row.worksNumber;
    item.start = row.start;
    item.end = row.end;
    item.studentLoan = row.studentLoan;
    if (!parts.history && item.employer.empty()) {
        item.employer = row.employer;
        item.isOffPayroll = row.isOffPayroll;
    }
    if (!parts.income && item.pay.IsNull())
        item.pay = row.pay;
    if (!parts.tax && item.tax.IsNull())
        item.tax = row.tax;
    if (!parts.benefits && item.benefits.empty())
        item.benefits = LiveOf(row.benefits);
}

/// An employment that no answer lists, while HMRC has not said which there are: it stays, without the figures of the
/// interfaces that have spoken.
StagedEmployment Unlisted(StagedEmployment row, const AnsweredParts& parts)
{
    if (parts.income)
        row.pay = {};
    if (parts.tax)
        row.tax = {};
    row.benefits = parts.benefits ? std::vector<StagedBenefit>() : LiveOf(row.benefits);
    return row;
}

/// The row of each item: as staging pairs them, else a withdrawn one of the reference, which HMRC sends again without
/// its works number.
std::vector<int> RowsOf(const std::vector<StagedEmployment>& items, const std::vector<StagedEmployment>& rows)
{
    std::vector<int> rowOf = PairEmployments(items, rows);
    std::vector<bool> isTaken(rows.size());
    for (const int row : rowOf)
        if (row != kNoRow)
            isTaken[static_cast<std::size_t>(row)] = true;
    for (std::size_t i = 0; i < items.size(); ++i)
        for (std::size_t row = 0; row < rows.size() && rowOf[i] == kNoRow; ++row)
            if (rows[row].isWithdrawn && !isTaken[row] && rows[row].reference == items[i].reference) {
                rowOf[i] = static_cast<int>(row);
                isTaken[row] = true;
            }
    return rowOf;
}

constexpr struct
{
    const char* name;
    bool AnsweredParts::*isThere;
} kParts[] = {{"employment history", &AnsweredParts::history},
              {"income", &AnsweredParts::income},
              {"benefits", &AnsweredParts::benefits},
              {"tax", &AnsweredParts::tax}};

/// "employment history 2, income 3"; empty when they agree: an answer lists an employment only where it knows more of
/// it than its name, so that the others may leave one out, and the history none.
CString Disagreement(const std::array<int, 4>& counts, const AnsweredParts& parts)
{
    CString text;
    bool differs = parts.history && counts[0] == 0;
    int first = 0;
    for (std::size_t part = 0; part < counts.size(); ++part) {
        if (!(parts.*kParts[part].isThere) || (counts[part] == 0 && part > 0))
            continue;
        differs = differs || (first != 0 && counts[part] != first);
        first = counts[part];
        text.AppendFormat("%s%s %d", text.IsEmpty() ? "" : ", ", kParts[part].name, counts[part]);
    }
    return differs ? text : CString();
}

} // namespace

void EachEmployment(const CEmploymentsResponse& response,
                    const std::function<void(const std::string& key, std::shared_ptr<const Employment_t> part)>& visit)
{
    std::unordered_map<std::string, int> counts;
    for (int i = 0; i <= response.GetUpperBound(); ++i) {
        const std::shared_ptr<const Employment_t> part = response.GetAt(i);
        const int nth = ++counts[part->employerPayeReference];
        visit(nth == 1 ? part->employerPayeReference : KeyOf(part->employerPayeReference, {}, nth - 1), part);
    }
}

void AddPart(StagedEmployment& item, const Employment_t& part)
{
    const StagedEmployment more = MapEmployment(part);
    item.reference = more.reference;
    if (!more.employer.empty())
        item.employer = more.employer;
    if (!more.pay.IsNull())
        item.pay = more.pay;
    if (!more.tax.IsNull())
        item.tax = more.tax;
    if (more.isOffPayroll)
        item.isOffPayroll = more.isOffPayroll;
    item.benefits.insert(item.benefits.end(), more.benefits.begin(), more.benefits.end());
}

void AddIncome(StagedYear& year, const CIncomeSummaryResponse& response)
{
    constexpr auto kAmount = &StagedPension::amount;
    Add(year, Summary::OtherPensions, kAmount, response.otherPensionsAndRetirementAnnuities);
    Add(year, Summary::IncapacityBenefit, kAmount, response.incapacityBenefit);
    Add(year, Summary::JobseekersAllowance, kAmount, response.jobseekersAllowance);
    Add(year, Summary::IncomeSupportScheme, kAmount, response.seissNetPaid);
}

void AddTax(StagedYear& year, const CTaxSummaryResponse& response)
{
    Add(year, Summary::OtherPensions, &StagedPension::tax, response.otherPensionsAndRetirementAnnuities);
    Add(year, Summary::IncapacityBenefit, &StagedPension::tax, response.incapacityBenefit);
    Add(year, Summary::TaxRefunded, &StagedPension::amount, response.taxRefundedOrSetOff);
}

std::vector<StagedEmployment> CompletedEmployments(const StagedYear& sent, const AnsweredParts& parts,
                                                   const StagedYear& stored)
{
    std::vector<StagedEmployment> items = sent.employments;
    const std::vector<StagedEmployment>& rows = stored.employments;
    const std::vector<int> rowOf = RowsOf(items, rows);
    std::vector<bool> isSent(rows.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (rowOf[i] == kNoRow)
            continue;
        const auto row = static_cast<std::size_t>(rowOf[i]);
        isSent[row] = true;
        Complete(items[i], parts, rows[row]);
    }
    if (parts.history) // else HMRC has not said which there are
        return items;
    for (std::size_t row = 0; row < rows.size(); ++row)
        if (!isSent[row] && !rows[row].isWithdrawn)
            items.push_back(Unlisted(rows[row], parts));
    return items;
}

std::vector<CString> NotesOfParts(const StagedYear& sent, const AnsweredParts& parts, const PartCounts& counts,
                                  const StagedYear& staged)
{
    std::vector<CString> notes;
    for (const auto& [name, isThere] : kParts)
        if (parts.IsAny() && !(parts.*isThere))
            notes.emplace_back().Format("HMRC holds no %s records for this year, though it holds others: what was "
                                        "fetched of them earlier stays as it was.",
                                        name);
    for (const auto& [reference, ofParts] : counts)
        if (const CString text = Disagreement(ofParts, parts); !text.IsEmpty())
            notes.emplace_back().Format("%s: HMRC's answers list a different number of employments (%s). They were "
                                        "joined in HMRC's order: check what belongs together.",
                                        reference, text);
    for (const StagedPension& item : sent.pensions)
        if (std::none_of(staged.pensions.begin(), staged.pensions.end(), [&](const StagedPension& row) {
                return !row.isWithdrawn && row.kind == item.kind && row.reference == item.reference;
            }))
            notes.emplace_back().Format("%s: HMRC sent tax of %s without the income that it was taken off. It is left "
                                        "out until HMRC sends both.",
                                        item.reference, item.tax.Format());
    return notes;
}

/// The state pension is none of this route's and stays out.
std::vector<StagedPension> CompletedPensions(const StagedYear& sent, const AnsweredParts& parts,
                                             const StagedYear& stored)
{
    std::vector<StagedPension> items = sent.pensions;
    for (const StagedPension& row : LiveOf(stored.pensions)) {
        const Summary summary = SummaryOf(row);
        const auto same = std::find_if(items.begin(), items.end(), [&](const StagedPension& item) {
            return summary != Summary::None && summary == SummaryOf(item);
        });
        // The tax refunded is a figure of the tax interface, all other amounts are the income interface's.
        const bool isAmountSent = summary == Summary::TaxRefunded ? parts.tax : parts.income;
        if (same == items.end()) {
            if (row.kind != kStatePension && !isAmountSent)
                items.push_back(row);
            continue;
        }
        if (!isAmountSent)
            same->amount = row.amount;
        if (!parts.tax)
            same->tax = row.tax;
    }
    // Without the income it is not known whose tax it is: the other route's pensions may hold it already.
    if (!parts.income)
        std::erase_if(items, [](const StagedPension& item) { return ScheduleOf(item.kind) && item.amount.IsNull(); });
    return items;
}

} // namespace HmrcApi
