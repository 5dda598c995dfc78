#include "MorvUt/context/Children.h"

#include <algorithm>
#include <vector>

#include "Brix/Records.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/DateRules.h"

namespace
{

using Kiln::CAmt;
using Kiln::CDate;

constexpr long kNoClient = -1;
constexpr short kFirstInYearAllowance = 2003; // real year; before it a birth in the year made no difference

/// The links of one kind. Open compares ids, so a child without a row must not be asked for.
template<class Links>
Links LinksOf(const Brix::CChild& child)
{
    Links links;
    if (!child.IsEOL())
        links.Open({{Links::kChildID, child.GetID()}});
    return links;
}

bool TouchesYear(const CDate& start, const CDate& end, int year)
{
    year = std::clamp(year, 101, 9999); // beyond them there is no date to compare with
    return (!start.IsValid() || start <= CDate(year, 4, 5)) && (!end.IsValid() || end >= CDate(year - 1, 4, 6));
}

template<class Links>
int CountInYear(Links links, int year)
{
    int count = 0;
    for (links.MoveFirst(); !links.IsEOL(); links.MoveNext())
        count += TouchesYear(links.GetStart(), links.GetEnd(), year) ? 1 : 0;
    return count;
}

/// A child's links, read once.
struct Parents
{
    explicit Parents(const Brix::CChild& child)
        : clients(LinksOf<Brix::CChildParentLink>(child)), others(LinksOf<Brix::CChildOtherParentLink>(child))
    {}
    long Count() const { return clients.GetCount() + others.GetCount(); }
    int CountIn(int year) const { return CountInYear(clients, year) + CountInYear(others, year); }

    Brix::CChildParentLink clients;
    Brix::CChildOtherParentLink others;
};

long OtherThan(long clientId, Brix::CChildParentLink links)
{
    for (links.MoveFirst(); !links.IsEOL(); links.MoveNext())
        if (links.GetClientID() != clientId)
            return links.GetClientID();
    return kNoClient;
}

bool IsActiveClient(long id)
{
    Brix::CClient client;
    return id != kNoClient && client.Open({{0, id}}) && client.Current().GetInt(Brix::CClient::kActive) == 1;
}

ChildAllowance DefaultAllowance(const Parents& parents, long clientId, const CAmt& amount)
{
    const int responsible = parents.CountIn(GetCurrentRealTaxYear());
    if (responsible > 2)
        return ChildAllowanceApportioned;
    if (responsible < 2)
        return ChildAllowanceFull;
    return amount > CAmt::kZero || IsActiveClient(OtherThan(clientId, parents.clients)) ? ChildAllowanceShared
                                                                                        : ChildAllowanceFull;
}

} // namespace

long GetNumParents(const Brix::CChild& child) { return Parents(child).Count(); }

int GetNumParentsResponsibleInYear(const Brix::CChild& child, int year) { return Parents(child).CountIn(year); }

long GetOtherParentClientID(const Brix::CChild& child, long clientId)
{
    return OtherThan(clientId, LinksOf<Brix::CChildParentLink>(child));
}

short GetDefaultAllowance(const Brix::CChild& child, long clientId, CAmt amount)
{
    return DefaultAllowance(Parents(child), clientId, amount);
}

void SetChildDefaults(Brix::CChildSchedule& schedule, CAmt amount, long otherParentId, bool markShared)
{
    Brix::CChild child;
    child.Open({{0, schedule.GetChildID()}});
    const Parents parents(child);
    const long clientId = schedule.GetClientID();
    const ChildAllowance code = DefaultAllowance(parents, clientId, amount);
    schedule.SetAllowance(code);
    const short current = GetCurrentRealTaxYear();
    if (current >= kFirstInYearAllowance && !child.IsEOL() && IsDateInTaxYear(child.GetBirth(), current))
        schedule.SetAllowanceInYear(code);
    const bool isWithOtherParent = parents.Count() == 2 && OtherThan(clientId, parents.clients) == otherParentId;
    if (code == ChildAllowanceFull || (markShared && isWithOtherParent))
        schedule.SetShared(true);
}
