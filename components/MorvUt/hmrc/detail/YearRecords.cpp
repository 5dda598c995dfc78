#include "MorvUt/hmrc/detail/YearRecords.h"

namespace HmrcApi
{
namespace
{

template<class List>
std::vector<long> IdsOf(List& list)
{
    std::vector<long> ids;
    for (bool isThere = list.MoveFirst(); isThere; isThere = list.MoveNext())
        ids.push_back(list.GetID());
    return ids;
}

template<class List>
std::vector<long> YearIds(ClientId client, short year)
{
    List list;
    list.Open({{List::kClientID, client.Get()}, {List::kYear, year}});
    return IdsOf(list);
}

template<class List>
std::vector<long> EnsureYear(ClientId client, short year)
{
    List list;
    if (!list.Open({{List::kClientID, client.Get()}, {List::kYear, year}})) {
        list.AddNew();
        list.SetClientID(client.Get());
        list.SetYear(year);
        list.Update();
    }
    return IdsOf(list);
}

} // namespace

std::vector<long> StagedYearIds(ClientId client, short year) { return YearIds<Brix::CMTD_TaxYear>(client, year); }
std::vector<long> EnsureStagedYear(ClientId client, short year) { return EnsureYear<Brix::CMTD_TaxYear>(client, year); }

void StampStagedYear(ClientId client, short year)
{
    Brix::CMTD_TaxYear list;
    if (!list.Open({{0, EnsureStagedYear(client, year).front()}}))
        return;
    list.SetFetched(COleDateTime::GetCurrentTime());
    list.Update();
}

std::vector<long> TaxFormIds(ClientId client, short year) { return YearIds<Brix::CTaxForm>(client, year); }
long EnsureTaxForm(ClientId client, short year) { return EnsureYear<Brix::CTaxForm>(client, year).front(); }

} // namespace HmrcApi
