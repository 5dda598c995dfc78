#include "MorvUt/context/status/detail/ReadFacts.h"

#include <algorithm>
#include <unordered_map>

#include "MorvUt/context/singletons/ClientSingleton.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/DateRules.h"

namespace Context::Detail
{

namespace
{

using Quarry::Where;
using Conditions = std::initializer_list<Where>;

struct ClientTables
{
    using Owner = Brix::CClient;
    using Return = Brix::CTaxForm;
    using Period = Brix::CClientPeriodsInactivity;
    using Submission = Brix::CFBISubmissions;
    static constexpr int kOwnerOfReturn = Return::kClientID;
    static constexpr int kOwnerOfPeriod = Period::kClientID;
    static constexpr int kOwnerOfSubmission = Submission::kClientID;
};

struct PartnershipTables
{
    using Owner = Brix::CPartnership;
    using Return = Brix::CPartnershipTaxForm;
    using Period = Brix::CPartnershipPeriodsInactivity;
    using Submission = Brix::CPartnershipFBISubmissions;
    static constexpr int kOwnerOfReturn = Return::kPClientID;
    static constexpr int kOwnerOfPeriod = Period::kPClientID;
    static constexpr int kOwnerOfSubmission = Submission::kPClientID;
};

StatusFacts NoFacts(long id, bool isPartnership, short year)
{
    StatusFacts facts;
    facts.id = id;
    facts.isPartnership = isPartnership;
    facts.year = year;
    return facts;
}

Kiln::CDate CurrentYearStart() { return GetTaxYearStart(GetCurrentRealTaxYear()); }

StatusFacts::Owner OwnerOf(const Brix::CClient& row)
{
    StatusFacts::Owner owner;
    owner.isTrust = row.GetTrust();
    owner.hasTrustOption = row.GetTrustOption();
    owner.trustKind = row.GetTrustKind();
    owner.isOfEstateType = row.GetEntityType().CompareNoCase("Estate") == 0;
    owner.isActive = row.GetActive();
    owner.ended = row.GetDeath();
    return owner;
}

StatusFacts::Owner OwnerOf(const Brix::CPartnership& row)
{
    StatusFacts::Owner owner;
    owner.isLlp = row.GetLLP();
    owner.isActive = row.GetActive();
    owner.ended = row.GetCessation();
    return owner;
}

// Below, `find` answers the facts that a row belongs to by the key in it; null when nobody asked about those.

template<class Tables, class Find>
void ReadReturns(Conditions where, const Find& find)
{
    typename Tables::Return rows;
    for (rows.Open(where); !rows.IsEOL(); rows.MoveNext())
        if (StatusFacts* const facts = find(rows.Current().GetLong(Tables::kOwnerOfReturn)); facts && !facts->form)
            facts->form = {rows.GetID(), rows.GetDormant(), rows.GetFinalised()};
}

template<class Find>
void ReadReturnInfo(Conditions where, const Find& find)
{
    Brix::COtherReturnInfo rows;
    for (rows.Open(where); !rows.IsEOL(); rows.MoveNext())
        if (StatusFacts* const facts = find(rows.GetTaxFormID()); facts && !facts->info)
            facts->info = {rows.GetID(), rows.GetTaxPayerStatus(), rows.GetTradingAllowance()};
}

template<class Tables, class Find>
void ReadPeriods(Conditions where, const Find& find)
{
    typename Tables::Period rows;
    for (rows.Open(where); !rows.IsEOL(); rows.MoveNext())
        if (StatusFacts* const facts = find(rows.Current().GetLong(Tables::kOwnerOfPeriod)))
            ConsiderPeriod(*facts, {rows.GetID(), rows.GetStart(), rows.GetEnd()});
}

template<class Tables, class Find>
void ReadSubmissions(Conditions where, const Find& find)
{
    using Submission = typename Tables::Submission;
    Submission rows;
    for (rows.Open(where); !rows.IsEOL(); rows.MoveNext())
        if (StatusFacts* const facts = find(rows.Current().GetLong(Tables::kOwnerOfSubmission));
            facts && !facts->accepted)
            facts->accepted = {rows.GetID(), Cellar::ToDate(rows.Get(Submission::kSubmitted))};
}

/// What hangs on one client or partnership is read by its id, whether or not there is one of that id.
template<class Tables>
void ReadOne(StatusFacts& facts, const Wanted& wanted)
{
    const auto theOne = [&](long) { return &facts; };
    const short year = facts.year;
    if (wanted.owner)
        if (typename Tables::Owner row; row.Open({{0, facts.id}}))
            facts.owner = OwnerOf(row);
    if (wanted.form || wanted.info)
        ReadReturns<Tables>({{Tables::kOwnerOfReturn, facts.id}, {Tables::Return::kYear, year}}, theOne);
    if (wanted.info && !facts.isPartnership && year >= kFirstYearOfReturnInfo && facts.form)
        ReadReturnInfo({{Brix::COtherReturnInfo::kTaxFormID, facts.form->id}}, theOne);
    if (wanted.currentYear)
        facts.currentYearStart = CurrentYearStart();
    if (wanted.periods)
        ReadPeriods<Tables>({{Tables::kOwnerOfPeriod, facts.id}}, theOne);
    if (wanted.submissions && year >= kFirstYearOfAmendments)
        ReadSubmissions<Tables>({{Tables::kOwnerOfSubmission, facts.id},
                                 {Tables::Submission::kYear, year},
                                 {Tables::Submission::kStatus, kAcceptedSubmission}},
                                theOne);
}

/// The same for all clients, or all partnerships, whose facts have the ids and follow each other by them.
template<class Tables>
void ReadAll(std::vector<StatusFacts>& all, bool arePartnerships, short year)
{
    const std::size_t first = all.size();
    StatusFacts none = NoFacts(0, arePartnerships, year);
    none.currentYearStart = CurrentYearStart();
    typename Tables::Owner rows;
    for (rows.Open(); !rows.IsEOL(); rows.MoveNext()) {
        StatusFacts& facts = all.emplace_back(none);
        facts.id = rows.GetID();
        facts.owner = OwnerOf(rows);
    }
    const auto byId = [&](long id) -> StatusFacts* {
        const auto found = std::lower_bound(all.begin() + static_cast<std::ptrdiff_t>(first), all.end(), id,
                                            [](const StatusFacts& facts, long wanted) { return facts.id < wanted; });
        return found != all.end() && found->id == id ? &*found : nullptr;
    };
    ReadReturns<Tables>({{Tables::Return::kYear, year}}, byId);
    ReadPeriods<Tables>({}, byId);
    if (year >= kFirstYearOfAmendments)
        ReadSubmissions<Tables>({{Tables::Submission::kYear, year}, {Tables::Submission::kStatus, kAcceptedSubmission}},
                                byId);
}

/// The rest of the clients' returns; `clients` holds clients only.
void ReadReturnInfoOfAll(std::vector<StatusFacts>& clients, short year)
{
    if (year < kFirstYearOfReturnInfo)
        return;
    std::unordered_map<long, StatusFacts*> byReturn;
    for (StatusFacts& facts : clients)
        if (facts.form)
            byReturn.emplace(facts.form->id, &facts);
    const auto find = [&](long form) {
        const auto found = byReturn.find(form);
        return found != byReturn.end() ? found->second : nullptr;
    };
    using Info = Brix::COtherReturnInfo;
    ReadReturnInfo({Where::Under(Info::kTaxFormID, Brix::CTaxForm::Declaration(), {{Brix::CTaxForm::kYear, year}})},
                   find);
}

} // namespace

StatusFacts ReadFacts(long id, bool isPartnership, short year, const Wanted& wanted)
{
    StatusFacts facts = NoFacts(id, isPartnership, year);
    if (isPartnership)
        ReadOne<PartnershipTables>(facts, wanted);
    else
        ReadOne<ClientTables>(facts, wanted);
    return facts;
}

std::vector<StatusFacts> ReadFactsOfAll(short year)
{
    std::vector<StatusFacts> all;
    ReadAll<ClientTables>(all, false, year);
    ReadReturnInfoOfAll(all, year);
    ReadAll<PartnershipTables>(all, true, year);
    return all;
}

StatusFacts FactsOf(const Brix::CClient& client)
{
    StatusFacts facts;
    facts.id = client.GetID();
    facts.owner = OwnerOf(client);
    return facts;
}

StatusFacts FactsOf(const Brix::CTaxForm& form)
{
    StatusFacts facts;
    facts.id = form.GetClientID();
    facts.year = form.GetYear();
    facts.form = {form.GetID(), form.GetDormant(), form.GetFinalised()};
    if (facts.year >= kFirstYearOfReturnInfo)
        ReadReturnInfo({{Brix::COtherReturnInfo::kTaxFormID, form.GetID()}}, [&](long) { return &facts; });
    return facts;
}

} // namespace Context::Detail
