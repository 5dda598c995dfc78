#include "MorvUt/context/status/StatusRules.h"

#include <iterator>

#include "MorvUt/context/singletons/ClientSingleton.h"
#include "MorvUt/taxyear/DateRules.h"

namespace
{

using Facts = StatusFacts;
using Reason = StatusReason;
using Decision = std::optional<StatusAnswer>; // nothing: the rule does not decide, the next one is asked

constexpr int kOrdinaryTrustKind = 1; // a trust option of this kind leaves the client what it is

/// Over before the tax year that is current now, whatever year is asked about.
bool IsOver(const Facts& facts) { return facts.owner && facts.owner->ended < facts.currentYearStart; }

bool IsTrustClient(const Facts& facts) { return !facts.isPartnership && facts.owner && facts.owner->isTrust; }

Decision Ended(const Facts& facts)
{
    if (!IsOver(facts) || IsTrustClient(facts))
        return {};
    return StatusAnswer{facts.isPartnership ? Reason::Ceased : Reason::Died, facts.id, facts.owner->ended};
}

Decision ByDormantReturn(const Facts& facts)
{
    if (!facts.form || !facts.form->isDormant)
        return {};
    return StatusAnswer{Reason::DormantReturn, facts.form->id};
}

Decision ByPeriod(const Facts& facts)
{
    if (!facts.period || !CoversTaxYear(facts.period->start, facts.period->end, facts.year))
        return {};
    return StatusAnswer{Reason::InactivityPeriod, facts.period->id, facts.period->start, facts.period->end};
}

Decision ByActiveFlag(const Facts& facts)
{
    if (!facts.owner || facts.owner->isActive)
        return {};
    if (facts.isPartnership)
        return StatusAnswer{Reason::NotActive, facts.id};
    if (facts.form)
        return {};
    return StatusAnswer{Reason::NotActiveNoReturn, facts.id};
}

/// Why one is not dead, dormant or inactive.
StatusAnswer StillThere(const Facts& facts)
{
    if (facts.owner && facts.owner->ended.IsValid()) {
        const Reason tooLate = facts.isPartnership ? Reason::CeasedTooLate : Reason::DiedTooLate;
        return {IsTrustClient(facts) ? Reason::TrustOutlives : tooLate, facts.id, facts.owner->ended};
    }
    if (facts.period)
        return {Reason::PeriodTooShort, facts.period->id, facts.period->start, facts.period->end};
    return {Reason::NothingEnds};
}

StatusAnswer DeadOrDormant(const Facts& facts)
{
    for (const auto rule : {Ended, ByDormantReturn, ByPeriod})
        if (const Decision decided = rule(facts))
            return *decided;
    return StillThere(facts);
}

StatusAnswer Inactive(const Facts& facts)
{
    static constexpr Decision (*kOfClients[])(const Facts&) = {ByDormantReturn, ByActiveFlag, Ended, ByPeriod};
    static constexpr Decision (*kOfPartnerships[])(const Facts&) = {ByActiveFlag, Ended, ByDormantReturn, ByPeriod};
    for (const auto rule : facts.isPartnership ? kOfPartnerships : kOfClients)
        if (const Decision decided = rule(facts))
            return *decided;
    if (facts.owner && !facts.owner->isActive && facts.form)
        return {Reason::NotActiveButFiles, facts.form->id};
    return StillThere(facts);
}

StatusAnswer Dormant(const Facts& facts)
{
    if (!facts.form)
        return {Reason::NoReturn};
    return {facts.form->isDormant ? Reason::DormantReturn : Reason::NotDormant, facts.form->id};
}

StatusAnswer IsAmending(const Facts& facts)
{
    if (facts.year < kFirstYearOfAmendments)
        return {Reason::BeforeAmendments};
    if (!facts.owner)
        return {Reason::NoSuchOwner};
    if (!facts.accepted)
        return {Reason::NothingAccepted};
    return {Reason::AcceptedReturn, facts.accepted->id, facts.accepted->submitted};
}

StatusAnswer Finalised(const Facts& facts)
{
    if (!facts.form)
        return {Reason::NoReturn};
    if (!facts.form->finalised.IsValid())
        return {Reason::NotFinalised, facts.form->id};
    return {Reason::FinalisedReturn, facts.form->id, facts.form->finalised};
}

/// Why this is no client that there is; nothing when it is one.
Decision NoClient(const Facts& facts)
{
    if (facts.isPartnership)
        return StatusAnswer{Reason::IsPartnership};
    if (!facts.owner || facts.id == 0)
        return StatusAnswer{Reason::NoSuchOwner};
    return {};
}

StatusAnswer Trust(const Facts& facts) { return TrustAnswerOf(facts, false); }

StatusAnswer Estate(const Facts& facts)
{
    if (const Decision none = NoClient(facts))
        return *none;
    if (!facts.owner->isTrust)
        return {Reason::IsNoTrust, facts.id};
    return {facts.owner->isOfEstateType ? Reason::EstateType : Reason::IsNoEstate, facts.id};
}

StatusAnswer ActualTrust(const Facts& facts)
{
    const StatusAnswer trust = TrustAnswerOf(facts, true);
    return trust && Estate(facts) ? StatusAnswer{Reason::EstateIsNoTrust, facts.id} : trust;
}

StatusAnswer Llp(const Facts& facts)
{
    if (!facts.isPartnership)
        return {Reason::IsClient};
    if (!facts.owner || facts.id == 0)
        return {Reason::NoSuchOwner};
    return {facts.owner->isLlp ? Reason::LlpFlag : Reason::NotLlp, facts.id};
}

/// Why the return says nothing of its taxpayer; nothing when it does.
Decision NoReturnInfo(const Facts& facts)
{
    if (facts.isPartnership)
        return StatusAnswer{Reason::IsPartnership};
    if (facts.year < kFirstYearOfReturnInfo)
        return StatusAnswer{Reason::Before2018};
    if (!facts.form)
        return StatusAnswer{Reason::NoReturn};
    if (!facts.info)
        return StatusAnswer{Reason::NoInfo, facts.form->id};
    return {};
}

StatusAnswer Scottish(const Facts& facts)
{
    if (const Decision none = NoReturnInfo(facts))
        return *none;
    const bool isScottish = IsTaxPayerStatusScottish(facts.info->taxPayerStatus);
    return {isScottish ? Reason::ScottishReturn : Reason::NotScottish, facts.info->id};
}

StatusAnswer TradingAllowance(const Facts& facts)
{
    if (const Decision none = NoReturnInfo(facts))
        return *none;
    if (!facts.info->claimsTradingAllowance)
        return {Reason::NotClaimed, facts.info->id};
    if (Trust(facts))
        return {Reason::TrustClaimsNone, facts.id};
    return {Reason::AllowanceClaimed, facts.info->id};
}

struct Rule
{
    StatusQuestion question;
    const char* name;
    StatusAnswer (*answer)(const Facts& facts);
};

constexpr Rule kRules[] = {
    {StatusQuestion::DeadOrDormant, "deadOrDormant", DeadOrDormant},
    {StatusQuestion::Inactive, "inactive", Inactive},
    {StatusQuestion::Dormant, "dormant", Dormant},
    {StatusQuestion::Amending, "amending", IsAmending},
    {StatusQuestion::Finalised, "finalised", Finalised},
    {StatusQuestion::Trust, "trust", Trust},
    {StatusQuestion::Estate, "estate", Estate},
    {StatusQuestion::ActualTrust, "actualTrust", ActualTrust},
    {StatusQuestion::Llp, "llp", Llp},
    {StatusQuestion::Scottish, "scottish", Scottish},
    {StatusQuestion::TradingAllowance, "tradingAllowance", TradingAllowance},
};
static_assert(std::size(kRules) == kStatusQuestions);
static_assert([] {
    for (std::size_t i = 0; i < kStatusQuestions; ++i)
        if (kRules[i].question != static_cast<StatusQuestion>(i))
            return false;
    return true;
}());

const Rule& RuleOf(StatusQuestion question) noexcept { return kRules[static_cast<std::size_t>(question)]; }

} // namespace

const char* NameOf(StatusQuestion question) noexcept { return RuleOf(question).name; }

bool IsYes(StatusReason reason) noexcept { return reason <= Reason::AllowanceClaimed; }

bool IsNotable(StatusReason reason) noexcept { return reason <= Reason::TrustClaimsNone; }

StatusAnswer AnswerOf(StatusQuestion question, const StatusFacts& facts) { return RuleOf(question).answer(facts); }

StatusAnswer TrustAnswerOf(const StatusFacts& facts, bool checkKind)
{
    if (const Decision none = NoClient(facts))
        return *none;
    const Facts::Owner& client = *facts.owner;
    if (checkKind && client.hasTrustOption && client.trustKind != kOrdinaryTrustKind)
        return {Reason::TrustOption, facts.id};
    return {client.isTrust ? Reason::TrustFlag : Reason::IsNoTrust, facts.id};
}

bool CoversTaxYear(const Kiln::CDate& start, const Kiln::CDate& end, short year) noexcept
{
    if (start.IsNull() && end.IsNull())
        return false;
    return (start.IsNull() || start <= GetTaxYearStart(year)) && (end.IsNull() || end >= GetTaxYearEnd(year));
}

void ConsiderPeriod(StatusFacts& facts, const StatusFacts::Period& period) noexcept
{
    if (period.start.IsNull() && period.end.IsNull())
        return;
    if (!facts.period || (!CoversTaxYear(facts.period->start, facts.period->end, facts.year) &&
                          CoversTaxYear(period.start, period.end, facts.year)))
        facts.period = period;
}

int GetTaxPayerStatusUK() noexcept { return 0; }

int GetTaxPayerStatusScottish() noexcept { return 1; }

int GetTaxPayerStatusWelsh() noexcept { return 2; }

bool IsTaxPayerStatusScottish(int status) noexcept { return status == GetTaxPayerStatusScottish(); }

bool IsTaxPayerStatusWelsh(int status) noexcept { return status == GetTaxPayerStatusWelsh(); }
