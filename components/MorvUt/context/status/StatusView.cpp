#include "MorvUt/context/status/StatusView.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "MorvUt/context/status/detail/ReadFacts.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/taxyear/DateRules.h"
#include "MorvUt/taxyear/YearTitles.h"

namespace
{

using Reason = StatusReason;

constexpr unsigned kNoWord = 0;

struct ReasonTexts
{
    Reason reason;
    unsigned why;
    unsigned word = kNoWord; // for a list, where this reason comes first
};

constexpr ReasonTexts kTexts[] = {
    {Reason::Died, IDS_STATUS_DIED, IDS_STATUS_WORD_DIED},
    {Reason::Ceased, IDS_STATUS_CEASED, IDS_STATUS_WORD_CEASED},
    {Reason::DormantReturn, IDS_STATUS_DORMANT, IDS_STATUS_WORD_DORMANT},
    {Reason::InactivityPeriod, IDS_STATUS_PERIOD, IDS_STATUS_WORD_INACTIVE_SINCE},
    {Reason::NotActiveNoReturn, IDS_STATUS_NOT_ACTIVE_NO_RETURN, IDS_STATUS_WORD_INACTIVE},
    {Reason::NotActive, IDS_STATUS_NOT_ACTIVE, IDS_STATUS_WORD_INACTIVE},
    {Reason::AcceptedReturn, IDS_STATUS_ACCEPTED, IDS_STATUS_WORD_AMENDING},
    {Reason::FinalisedReturn, IDS_STATUS_FINALISED, IDS_STATUS_WORD_FINALISED},
    {Reason::TrustFlag, IDS_STATUS_TRUST},
    {Reason::TrustOption, IDS_STATUS_TRUST_OPTION},
    {Reason::EstateType, IDS_STATUS_ESTATE},
    {Reason::LlpFlag, IDS_STATUS_LLP},
    {Reason::ScottishReturn, IDS_STATUS_SCOTTISH},
    {Reason::AllowanceClaimed, IDS_STATUS_ALLOWANCE_CLAIMED},
    {Reason::DiedTooLate, IDS_STATUS_DIED_TOO_LATE},
    {Reason::CeasedTooLate, IDS_STATUS_CEASED_TOO_LATE},
    {Reason::TrustOutlives, IDS_STATUS_TRUST_OUTLIVES},
    {Reason::PeriodTooShort, IDS_STATUS_PERIOD_TOO_SHORT},
    {Reason::NotActiveButFiles, IDS_STATUS_NOT_ACTIVE_BUT_FILES},
    {Reason::EstateIsNoTrust, IDS_STATUS_ESTATE_IS_NO_TRUST},
    {Reason::TrustClaimsNone, IDS_STATUS_TRUST_CLAIMS_NONE},
    {Reason::NothingEnds, IDS_STATUS_NOTHING_ENDS},
    {Reason::NoReturn, IDS_STATUS_NO_RETURN, IDS_STATUS_WORD_NO_RETURN},
    {Reason::NotDormant, IDS_STATUS_NOT_DORMANT},
    {Reason::NotFinalised, IDS_STATUS_NOT_FINALISED, IDS_STATUS_WORD_IN_PROGRESS},
    {Reason::BeforeAmendments, IDS_STATUS_BEFORE_AMENDMENTS},
    {Reason::NothingAccepted, IDS_STATUS_NOTHING_ACCEPTED},
    {Reason::NoSuchOwner, IDS_STATUS_NO_SUCH_OWNER},
    {Reason::IsNoTrust, IDS_STATUS_IS_NO_TRUST},
    {Reason::IsNoEstate, IDS_STATUS_IS_NO_ESTATE},
    {Reason::IsPartnership, IDS_STATUS_IS_PARTNERSHIP},
    {Reason::IsClient, IDS_STATUS_IS_CLIENT},
    {Reason::NotLlp, IDS_STATUS_NOT_LLP},
    {Reason::Before2018, IDS_STATUS_BEFORE_2018},
    {Reason::NoInfo, IDS_STATUS_NO_INFO},
    {Reason::NotScottish, IDS_STATUS_NOT_SCOTTISH},
    {Reason::NotClaimed, IDS_STATUS_NOT_CLAIMED},
};
static_assert([] {
    for (std::size_t i = 0; i < std::size(kTexts); ++i)
        if (kTexts[i].reason != static_cast<Reason>(i))
            return false;
    return std::size(kTexts) == static_cast<std::size_t>(Reason::NotClaimed) + 1;
}());

const ReasonTexts& TextsOf(Reason reason) noexcept { return kTexts[static_cast<std::size_t>(reason)]; }

CString Shown(const Kiln::CDate& date) { return date.Format("%d/%m/%Y"); }

} // namespace

CString ClientStatus::TextOf(unsigned id, const StatusAnswer& answer) const
{
    const CString year = FormatYearString42Digit(m_facts.year);
    const CString currentYear = FormatYearString42Digit(GetTaxYear(m_facts.currentYearStart));
    const bool isPeriod = answer.reason == Reason::InactivityPeriod || answer.reason == Reason::PeriodTooShort;
    const CString none = LibraryText(isPeriod ? IDS_STATUS_OPEN_END : IDS_STATUS_NO_DATE);
    const CString from = answer.from.IsValid() ? Shown(answer.from) : none;
    const CString to = answer.to.IsValid() ? Shown(answer.to) : none;
    const Afx::ResourceContextGuard resources(MorvUtResources());
    CString text;
    text.FormatMessage(id, {year.View(), from.View(), to.View(), currentYear.View()});
    return text;
}

CString ClientStatus::ReasonText(StatusQuestion question) const
{
    const StatusAnswer answer = AnswerOf(question);
    return TextOf(TextsOf(answer.reason).why, answer);
}

std::vector<CString> ClientStatus::Because() const
{
    std::vector<CString> reasons;
    for (std::size_t i = 0; i < kStatusQuestions; ++i) {
        const auto question = static_cast<StatusQuestion>(i);
        if (!IsNotable(AnswerOf(question).reason))
            continue;
        CString reason = ReasonText(question);
        if (std::find(reasons.begin(), reasons.end(), reason) == reasons.end())
            reasons.push_back(std::move(reason));
    }
    return reasons;
}

CString ClientStatus::Word() const
{
    using enum StatusQuestion;
    StatusAnswer first;
    for (const StatusQuestion question : {DeadOrDormant, Inactive, Amending, Finalised})
        if (first = AnswerOf(question); first)
            break; // else the last: why the return is not finalised
    const bool isOpenFrom = first.reason == Reason::InactivityPeriod && !first.from.IsValid();
    return TextOf(isOpenFrom ? IDS_STATUS_WORD_INACTIVE : TextsOf(first.reason).word, first);
}

ClientStatus StatusOf(long id, bool isPartnership, short year)
{
    return ClientStatus(Context::Detail::ReadFacts(id, isPartnership, year, Context::Detail::kEverything));
}

std::vector<ClientStatus> StatusOfAll(short year)
{
    const std::vector<StatusFacts> facts = Context::Detail::ReadFactsOfAll(year);
    return {facts.begin(), facts.end()};
}

StatusFacts StatusFactsOf(const Brix::CClient& client) { return Context::Detail::FactsOf(client); }
StatusFacts StatusFactsOf(const Brix::CPartnership& partnership) { return Context::Detail::FactsOf(partnership); }

std::vector<ClientStatus> StatusOf(std::vector<StatusFacts> owners, short year)
{
    Context::Detail::CompleteFacts(owners, year);
    return {owners.begin(), owners.end()};
}

const ClientStatus* FindStatus(const std::vector<ClientStatus>& all, long id, bool isPartnership) noexcept
{
    const auto key = [](const ClientStatus& one) { return std::tuple(one.IsPartnership(), one.GetId()); };
    const std::tuple wanted(isPartnership, id);
    const auto found = std::lower_bound(all.begin(), all.end(), wanted,
                                        [&](const ClientStatus& one, const auto& value) { return key(one) < value; });
    return found != all.end() && key(*found) == wanted ? &*found : nullptr;
}
