#include "MorvUt/hmrc/review/Differences.h"

#include <algorithm>

#include "MorvUt/hmrc/review/Figures.h"
#include "MorvUt/hmrc/schedules/BenefitCodes.h"
#include "MorvUt/hmrc/schedules/BenefitTotals.h"
#include "MorvUt/hmrc/schedules/Matching.h"
#include "MorvUt/hmrc/schedules/PensionTypes.h"
#include "MorvUt/hmrc/schedules/StagedWords.h"
#include "MorvUt/hmrc/schedules/Words.h"
#include "MorvUt/hmrc/staging/Summaries.h"
#include "MorvUt/identifiers/Hex.h"
#include "Shellkit/Digest.h"

namespace HmrcApi
{
namespace
{

using Field = DifferenceRow::Field;

/// Adds a row when HMRC sent the figure and the return has another. Nothing in the return is as good as HMRC's 0.00:
/// both are shown as nothing.
void CompareAmount(std::vector<DifferenceRow>& rows, DifferenceRow::Field field, const CString& caption,
                   const Kiln::CAmt& own, const Kiln::CAmt& hmrc, bool isEstimate = false)
{
    if (!hmrc.IsValid() || own == hmrc || (hmrc.IsZero() && !own.IsValid()))
        return;
    DifferenceRow row;
    row.field = field;
    row.caption = caption;
    row.returnAmount = own;
    row.hmrcAmount = hmrc;
    row.estimate = isEstimate;
    rows.push_back(row);
}

/// The same for a date, but one that the return lacks is no other figure.
void CompareDate(std::vector<DifferenceRow>& rows, DifferenceRow::Field field, const char* caption,
                 const Kiln::CDate& own, const Kiln::CDate& hmrc)
{
    if (!hmrc.IsValid() || !own.IsValid() || own.IsSameDay(hmrc))
        return;
    DifferenceRow row;
    row.field = field;
    row.caption = caption;
    row.kind = DifferenceRow::Kind::Date;
    row.returnDate = own;
    row.hmrcDate = hmrc;
    rows.push_back(row);
}

/// All codes of a box under its first, as HMRC's sums are.
BenefitTotals ByBox(const BenefitTotals& totals)
{
    BenefitTotals boxes;
    for (const auto& [code, total] : totals)
        AddTo(boxes[BoxCode(code)].amount, total.amount);
    return boxes;
}

std::vector<DifferenceRow> Compare(const ReturnEmployment& own, const StagedEmployment& hmrc)
{
    std::vector<DifferenceRow> rows;
    CompareDate(rows, Field::Start, "Start date", own.start, hmrc.start);
    CompareDate(rows, Field::End, "End date", own.end, hmrc.end);
    CompareAmount(rows, Field::Pay, "Pay", own.pay, hmrc.pay);
    CompareAmount(rows, Field::Tax, "Tax", own.tax, hmrc.tax);
    CompareAmount(rows, Field::StudentLoan, "Student loan", own.studentLoan, hmrc.studentLoan);
    const bool isByBox = std::any_of(hmrc.benefits.begin(), hmrc.benefits.end(), [](const StagedBenefit& benefit) {
        return IsBenefitSum(benefit.number) && !benefit.isWithdrawn;
    });
    BenefitTotals ownBenefits = isByBox ? ByBox(TotalsOf(own.benefits)) : TotalsOf(own.benefits);
    for (const auto& [code, total] : TotalsOf(hmrc.benefits).totals) {
        const std::size_t before = rows.size();
        CompareAmount(rows, Field::Benefit, BenefitCaption(code), ownBenefits[code].amount, total.amount,
                      total.isEstimate);
        if (rows.size() > before) {
            rows.back().code = code;
            rows.back().isBox = isByBox;
        }
    }
    return rows;
}

Kiln::CAmt Sum(const std::vector<const StagedPension*>& items, Kiln::CAmt StagedPension::*figure)
{
    Kiln::CAmt sum;
    for (const StagedPension* item : items)
        AddTo(sum, item->*figure);
    return sum;
}

/// One schedule against the items that it stands for.
std::vector<DifferenceRow> Compare(const ReturnPension& own, const std::vector<const StagedPension*>& hmrc)
{
    std::vector<DifferenceRow> rows;
    const Kiln::CAmt amount = Sum(hmrc, &StagedPension::amount), tax = Sum(hmrc, &StagedPension::tax);
    if (hmrc.size() == 1)
        CompareDate(rows, Field::Start, "Date", own.start, hmrc[0]->date);
    CompareAmount(rows, Field::Amount, "Amount", own.amount, amount);
    CompareAmount(rows, Field::Tax, "Tax", own.tax, tax);
    const auto isTooLarge = [](const Kiln::CAmt& sum) { return !sum.IsValid() && !sum.IsNull(); };
    if (hmrc.size() == 1 || (rows.empty() && !isTooLarge(amount) && !isTooLarge(tax)))
        return rows;
    for (const StagedPension* item : hmrc) {
        CString caption;
        caption.Format("of which %s", NameOf(*item));
        CompareAmount(rows, Field::None, caption, {}, item->amount);
        CompareAmount(rows, Field::None, caption + ", tax", {}, item->tax);
    }
    return rows;
}

CString ItemOf(const CString& description, const StagedPension& hmrc)
{
    CString name = description;
    if (name.IsEmpty())
        name = hmrc.payer;
    if (name.IsEmpty())
        name = NameOf(hmrc);
    return NamedBy(name, DisplayReference(hmrc));
}

class Finder
{
public:
    Finder(const StagedYear& staged, const ReturnYear& own) : m_staged(staged), m_own(own) {}

    std::vector<Difference> Find()
    {
        const std::vector<Match> employments = MatchEmployments(m_staged, m_own);
        const std::vector<Match> pensions = MatchPensions(m_staged, m_own);
        FindEmployments(employments);
        FindPensions(pensions);
        for (std::size_t i = 0; i < employments.size(); ++i)
            if (const StagedEmployment& hmrc = m_staged.employments[i]; employments[i].state == Match::State::Ambiguous)
                Add(Difference::Schedule::Employment, NamedBy(hmrc.employer, hmrc.key), Compare({}, hmrc),
                    std::vector{&hmrc}, 0);
        for (std::size_t i = 0; i < pensions.size(); ++i)
            if (const StagedPension& hmrc = m_staged.pensions[i]; pensions[i].state == Match::State::Ambiguous)
                Add(Difference::Schedule::PensionOrBenefit, ItemOf({}, hmrc), Compare({}, {&hmrc}), std::vector{&hmrc},
                    0);
            else if (pensions[i].state == Match::State::Total)
                Add(Difference::Schedule::PensionOrBenefit, ItemOf({}, hmrc), Compare(SumOf(hmrc.kind), {&hmrc}),
                    std::vector{&hmrc}, 0);
        return std::move(m_found);
    }

private:
    /// The items of each schedule.
    static std::vector<std::vector<std::size_t>> ItemsOf(const std::vector<Match>& matches, std::size_t schedules)
    {
        std::vector<std::vector<std::size_t>> items(schedules);
        for (const Match::State state : {Match::State::Matched, Match::State::Shared})
            for (std::size_t i = 0; i < matches.size(); ++i)
                if (matches[i].state == state && matches[i].schedule != kNoSchedule)
                    items[static_cast<std::size_t>(matches[i].schedule)].push_back(i);
        return items;
    }

    /// What the return has of a kind, as one.
    ReturnPension SumOf(int kind) const
    {
        ReturnPension sum;
        for (const ReturnPension& own : m_own.pensions)
            if (IsScheduleOfKind(own.type, kind)) {
                AddTo(sum.amount, own.amount);
                AddTo(sum.tax, own.tax);
            }
        return sum;
    }

    void FindEmployments(const std::vector<Match>& matches)
    {
        const auto items = ItemsOf(matches, m_own.employments.size());
        for (std::size_t schedule = 0; schedule < items.size(); ++schedule) {
            const ReturnEmployment& own = m_own.employments[schedule];
            for (const std::size_t item : items[schedule]) {
                const StagedEmployment& hmrc = m_staged.employments[item];
                Add(Difference::Schedule::Employment,
                    NamedBy(own.employer.IsEmpty() ? CString(hmrc.employer) : own.employer, hmrc.key),
                    Compare(own, hmrc), std::vector{&hmrc}, own.id);
            }
        }
    }

    void FindPensions(const std::vector<Match>& matches)
    {
        const auto items = ItemsOf(matches, m_own.pensions.size());
        for (std::size_t schedule = 0; schedule < items.size(); ++schedule) {
            if (items[schedule].empty())
                continue;
            const ReturnPension& own = m_own.pensions[schedule];
            std::vector<const StagedPension*> hmrc;
            for (const std::size_t item : items[schedule])
                hmrc.push_back(&m_staged.pensions[item]);
            Add(Difference::Schedule::PensionOrBenefit, ItemOf(own.description, *hmrc[0]), Compare(own, hmrc), hmrc,
                own.id);
        }
    }

    template<class Item>
    void Add(Difference::Schedule kind, const CString& item, std::vector<DifferenceRow> rows,
             const std::vector<const Item*>& hmrc, long scheduleId)
    {
        if (rows.empty())
            return;
        Difference difference;
        difference.schedule = kind;
        difference.item = item;
        difference.rows = std::move(rows);
        difference.scheduleId = scheduleId;
        for (const Item* each : hmrc)
            difference.stagedIds.push_back(each->id);
        // The first row that was staged; of two tables, whose ids may be the same.
        const long first = *std::min_element(difference.stagedIds.begin(), difference.stagedIds.end());
        difference.number = std::int64_t{first} * 2 + (kind == Difference::Schedule::PensionOrBenefit ? 1 : 0);
        difference.state = IsRejected(hmrc) ? Difference::State::Rejected : Difference::State::Open;
        m_found.push_back(std::move(difference));
    }

    const StagedYear& m_staged;
    const ReturnYear& m_own;
    std::vector<Difference> m_found;
};

CString Show(DifferenceRow::Kind kind, const Kiln::CAmt& amount, const Kiln::CDate& date)
{
    return kind == DifferenceRow::Kind::Amount ? amount.Format() : date.Format("%d/%m/%Y");
}

/// "Pay 22551.05, Tax nothing".
CString InOneLine(const std::vector<DifferenceRow>& rows, CString (DifferenceRow::*textOf)() const, bool marksForecasts)
{
    CString summary;
    for (const DifferenceRow& row : rows) {
        const CString text = (row.*textOf)();
        summary += (summary.IsEmpty() ? CString() : CString(", ")) + row.caption + ' ' +
                   (text.IsEmpty() ? CString("nothing") : text) +
                   CString(marksForecasts && row.estimate ? kForecastMark : "");
    }
    return summary;
}

} // namespace

CString Difference::HmrcSummary() const { return InOneLine(rows, &DifferenceRow::HmrcText, true); }
CString Difference::ReturnSummary() const { return InOneLine(rows, &DifferenceRow::ReturnText, false); }

std::string Difference::Hash() const
{
    constexpr unsigned kBytes = 8;
    const Shellkit::Bytes digest = Shellkit::Sha256(HmrcSummary().Str() + '\n' + ReturnSummary().Str());
    return BinaryToHex::Convert(digest.data(), kBytes).MakeLower().Str();
}

bool IsReviewDue(const std::vector<Difference>& differences)
{
    return std::any_of(differences.begin(), differences.end(),
                       [](const Difference& difference) { return difference.state == Difference::State::Open; });
}

CString DifferenceRow::ReturnText() const { return Show(kind, returnAmount, returnDate); }
CString DifferenceRow::HmrcText() const { return Show(kind, hmrcAmount, hmrcDate); }

std::vector<Difference> FindDifferences(const StagedYear& staged, const ReturnYear& own)
{
    return Finder(staged, own).Find();
}

std::vector<Difference> FindDifferences(ClientId client, TaxYear taxYear)
{
    const short year = taxYear.GetRealTaxYear();
    const StagedYear staged = LoadStagedItems(client, year);
    return FindDifferences(staged, LoadReturnYear(client, year));
}

} // namespace HmrcApi
