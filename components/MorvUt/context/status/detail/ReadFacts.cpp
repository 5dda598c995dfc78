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

template<class Record>
StatusFacts FactsOfOwner(const Record& record, bool isPartnership)
{
    StatusFacts facts;
    facts.id = record.GetID();
    facts.isPartnership = isPartnership;
    facts.owner = OwnerOf(record);
    return facts;
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

/// The facts of the owners' own rows; one after the other by their ids.
template<class Tables>
std::vector<StatusFacts> ReadOwners()
{
    std::vector<StatusFacts> all;
    typename Tables::Owner rows;
    for (rows.Open(); !rows.IsEOL(); rows.MoveNext())
        all.push_back(FactsOf(rows));
    return all;
}

/// What hangs on them: rows of the ids from the first to the last, since more ids than a few do not go into a
/// statement.
template<class Tables>
void ReadRest(std::span<StatusFacts> owners, short year)
{
    const auto among = [&](int column) { return Where::Between(column, owners.front().id, owners.back().id); };
    const auto byId = [&](long id) -> StatusFacts* {
        const auto found = std::ranges::lower_bound(owners, id, {}, &StatusFacts::id);
        return found != owners.end() && found->id == id ? &*found : nullptr;
    };
    ReadReturns<Tables>({among(Tables::kOwnerOfReturn), {Tables::Return::kYear, year}}, byId);
    ReadPeriods<Tables>({among(Tables::kOwnerOfPeriod)}, byId);
    if (year >= kFirstYearOfAmendments)
        ReadSubmissions<Tables>({among(Tables::kOwnerOfSubmission),
                                 {Tables::Submission::kYear, year},
                                 {Tables::Submission::kStatus, kAcceptedSubmission}},
                                byId);
}

/// The rest of the clients' returns.
void ReadReturnInfoOf(std::span<StatusFacts> clients, short year)
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
    using Form = Brix::CTaxForm;
    ReadReturnInfo(
        {Where::Under(Info::kTaxFormID, Form::Declaration(),
                      {Where::Between(Form::kClientID, clients.front().id, clients.back().id), {Form::kYear, year}})},
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

void CompleteFacts(std::span<StatusFacts> owners, short year)
{
    if (owners.empty())
        return;
    const Kiln::CDate start = CurrentYearStart();
    for (StatusFacts& facts : owners) {
        facts.year = year;
        facts.currentYearStart = start;
    }
    if (owners.front().isPartnership)
        return ReadRest<PartnershipTables>(owners, year);
    ReadRest<ClientTables>(owners, year);
    ReadReturnInfoOf(owners, year);
}

std::vector<StatusFacts> ReadFactsOfAll(short year)
{
    std::vector<StatusFacts> all = ReadOwners<ClientTables>();
    CompleteFacts(all, year);
    std::vector<StatusFacts> partnerships = ReadOwners<PartnershipTables>();
    CompleteFacts(partnerships, year);
    all.insert(all.end(), partnerships.begin(), partnerships.end());
    return all;
}

StatusFacts FactsOf(const Brix::CClient& client) { return FactsOfOwner(client, false); }
StatusFacts FactsOf(const Brix::CPartnership& partnership) { return FactsOfOwner(partnership, true); }

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
