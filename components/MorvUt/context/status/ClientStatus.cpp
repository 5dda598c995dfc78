#include "MorvUt/context/status/ClientStatus.h"

#include "MorvUt/context/singletons/ClientSingleton.h"
#include "MorvUt/context/status/detail/ReadFacts.h"

using Context::Detail::FactsOf;
using Context::Detail::ReadFacts;
using Context::Detail::Wanted;

namespace
{

constexpr Wanted kOwner{.owner = true};
constexpr Wanted kReturn{.form = true};
constexpr Wanted kWhetherActive{.owner = true, .form = true, .periods = true, .currentYear = true};

bool Is(StatusQuestion question, const StatusFacts& facts) { return static_cast<bool>(AnswerOf(question, facts)); }

/// A question about the record alone, whatever the year.
bool IsOwner(StatusQuestion question, long id, bool isPartnership)
{
    return id != 0 && Is(question, ReadFacts(id, isPartnership, 0, kOwner));
}

} // namespace

bool IsClientDeadDormant(long id, bool isPartnership, short year)
{
    return Is(StatusQuestion::DeadOrDormant, ReadFacts(id, isPartnership, year, kWhetherActive));
}

bool IsClientInactiveInYear(long id, bool isPartnership, short year)
{
    return Is(StatusQuestion::Inactive, ReadFacts(id, isPartnership, year, kWhetherActive));
}

bool ClientIsDormant(long id, bool isPartnership, short year)
{
    return CClientSingleton::Data(id, isPartnership ? 1 : 0, year).dormant != 0;
}

bool Amending(long id, bool isPartnership, short year)
{
    return CClientSingleton::Data(id, isPartnership ? 1 : 0, year).amending;
}

int IsTaxReturnFinalisedForYear(long clientId, short year)
{
    return Is(StatusQuestion::Finalised, ReadFacts(clientId, false, year, kReturn)) ? 1 : 0;
}

int IsPartershipTaxReturnFinalised(long partnershipId, short year)
{
    return Is(StatusQuestion::Finalised, ReadFacts(partnershipId, true, year, kReturn)) ? 1 : 0;
}

bool IsScottishTaxPayer(Brix::CTaxForm& taxForm)
{
    return !taxForm.IsEOL() && Is(StatusQuestion::Scottish, FactsOf(taxForm));
}

bool ClaimTradingAllowance(long clientId, short year)
{
    return year >= kFirstYearOfReturnInfo &&
           Is(StatusQuestion::TradingAllowance, ReadFacts(clientId, false, year, {.owner = true, .info = true}));
}

int IsClientATrust(const ClientId& id, bool checkKind)
{
    return id != ClientId() && TrustAnswerOf(ReadFacts(id.Get(), false, 0, kOwner), checkKind) ? 1 : 0;
}

int IsClientAnEstate(long clientId) { return IsOwner(StatusQuestion::Estate, clientId, false) ? 1 : 0; }

int IsActualTrustClient(long clientId) { return IsOwner(StatusQuestion::ActualTrust, clientId, false) ? 1 : 0; }

int IsPartnershipAnLLP(long partnershipId) { return IsOwner(StatusQuestion::Llp, partnershipId, true) ? 1 : 0; }

bool IsTrust(const Brix::CClient& client, bool checkKind)
{
    return static_cast<bool>(TrustAnswerOf(FactsOf(client), checkKind));
}

bool IsEstate(const Brix::CClient& client) { return Is(StatusQuestion::Estate, FactsOf(client)); }
