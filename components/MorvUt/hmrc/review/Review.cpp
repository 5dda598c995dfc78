#include "MorvUt/hmrc/review/Review.h"

#include <algorithm>

#include "Brix/Records.h"
#include "Brix/Subjects.h"
#include "MorvUt/hmrc/review/Figures.h"
#include "MorvUt/hmrc/review/Replace.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"
#include "Trailmark/MTDAudit.h"

namespace HmrcApi
{
namespace
{

using Outcome = ReviewResult::Outcome;

struct DecisionFacts
{
    const char* action; // in the audit
    bool (CUserData::*isAllowed)(bool showMessage) const;
    unsigned refusal;
    StagedDecision::Made made;
    Difference::State state;
};

const DecisionFacts& FactsOf(Decision decision) noexcept
{
    static constexpr DecisionFacts kFacts[] = {
        {"accept", &CUserData::HMRCDataAcceptAllowed, IDS_REVIEW_NO_ACCEPT, StagedDecision::Accepted,
         Difference::State::Accepted},
        {"reject", &CUserData::HMRCDataRejectAllowed, IDS_REVIEW_NO_REJECT, StagedDecision::Rejected,
         Difference::State::Rejected},
        {"skip", nullptr, 0, StagedDecision::Open, Difference::State::Skipped},
    };
    return kFacts[static_cast<std::size_t>(decision)];
}

ReviewResult Ended(Outcome outcome, unsigned text, Difference difference = {})
{
    return {outcome, LibraryText(text), std::move(difference)};
}

template<class List, class Item>
void Remember(const std::vector<Item>& items, const std::vector<long>& ids, StagedDecision::Made made)
{
    std::vector<const Item*> decided;
    for (const Item& item : items)
        if (std::find(ids.begin(), ids.end(), item.id) != ids.end())
            decided.push_back(&item);
    const std::string figures = FiguresOf(decided);
    for (const Item* item : decided) {
        List list;
        if (!list.Open({{0, item->id}}))
            continue;
        list.SetDecision(made);
        list.SetDecided(figures);
        list.Update();
    }
}

void Remember(const Difference& difference, const StagedYear& staged, StagedDecision::Made made)
{
    if (difference.schedule == Difference::Schedule::Employment)
        Remember<Brix::CMTD_Employments>(staged.employments, difference.stagedIds, made);
    else
        Remember<Brix::CMTD_PensionStateBenefits>(staged.pensions, difference.stagedIds, made);
}

/// The difference while it is to be decided on: what has been rejected is not offered again.
Difference* Find(std::vector<Difference>& differences, std::int64_t number)
{
    const auto found = std::find_if(differences.begin(), differences.end(), [&](const Difference& difference) {
        return difference.number == number && difference.state == Difference::State::Open;
    });
    return found == differences.end() ? nullptr : &*found;
}

/// In a transaction of the caller's: finds the difference as it is now and, unless it is only skipped, settles it.
ReviewResult Settle(ClientId client, TaxYear taxYear, std::int64_t number, Decision decision, const std::string& hash,
                    bool audits)
{
    const DecisionFacts& facts = FactsOf(decision);
    const bool isWriting = decision != Decision::Skip;
    if (isWriting && (CUserData::IsReadOnly() || CUserData::IsReadOnlyBecauseLocked()))
        return Ended(Outcome::Refused, IDS_CLIENT_READ_ONLY);
    const short year = taxYear.GetRealTaxYear();
    const ReturnYear own = LoadReturnYear(client, year);
    if (isWriting && own.finalised.IsValid())
        return Ended(Outcome::Refused, IDS_CLIENT_READ_ONLY);
    const StagedYear staged = LoadStagedItems(client, year);
    std::vector<Difference> differences = FindDifferences(staged, own);
    Difference* const found = Find(differences, number);
    if (!found)
        return Ended(Outcome::Gone, IDS_REVIEW_GONE);
    if (!hash.empty() && hash != found->Hash())
        return Ended(Outcome::Changed, IDS_REVIEW_CHANGED, std::move(*found));
    if (isWriting) {
        if (audits)
            AuditDecision(client, decision, found->item, found->HmrcSummary(), found->ReturnSummary());
        if (decision == Decision::Accept && !ReplaceFigures(*found))
            return Ended(Outcome::NoSchedule, IDS_REVIEW_NO_SCHEDULE, std::move(*found));
        Remember(*found, staged, facts.made);
    }
    found->state = facts.state;
    return {Outcome::Done, {}, std::move(*found)};
}

} // namespace

CString WhyMayNot(Decision decision)
{
    const DecisionFacts& facts = FactsOf(decision);
    if (!facts.isAllowed)
        return {};
    if (!TheUser().TaxReturnSaveAllowed(false))
        return LibraryText(IDS_REVIEW_NO_SAVE);
    return (TheUser().*facts.isAllowed)(false) ? CString() : LibraryText(facts.refusal);
}

void AuditDecision(ClientId client, Decision decision, const CString& item, const CString& hmrc,
                   const CString& ofReturn)
{
    Trailmark::CMTDAuditCache audit(client, Quarry::GetConnection());
    audit.Add(FactsOf(decision).action, GetCurrentRealTaxYear(), CUserData::m_strUser, item, hmrc, ofReturn);
    audit.Flush();
}

ReviewResult Decide(ClientId client, TaxYear taxYear, std::int64_t number, Decision decision, const std::string& hash)
{
    if (const CString why = WhyMayNot(decision); !why.IsEmpty())
        return {Outcome::Refused, why, {}};
    const bool isWriting = decision != Decision::Skip;
    Quarry::CTransaction transaction(isWriting ? Cellar::Intent::Write : Cellar::Intent::Read, Brix::SubjectOf(client));
    ReviewResult result = Settle(client, taxYear, number, decision, hash, true);
    if (isWriting && result.outcome == Outcome::Done)
        transaction.Commit();
    return result;
}

ReviewResult ApplyDecision(ClientId client, TaxYear taxYear, std::int64_t number, Decision decision,
                           const std::string& hash)
{
    return Settle(client, taxYear, number, decision, hash, false);
}

} // namespace HmrcApi
