#include "MorvUt/ui/grids/EntitiesOf.h"

#include <algorithm>
#include <vector>

#include "Afx/text/TextFold.h"
#include "Brix/Records.h"

namespace
{

using Brix::CPartnershipClients;

/// Appends those clients, or partnerships, by name.
template<class Owner>
void AppendOwners(CEntityArray& entities, const std::vector<long>& ids, int isPartnership)
{
    std::vector<CEntity> owners;
    for (const std::vector<long>& piece : Quarry::Where::InPieces(ids)) {
        Owner owner;
        for (owner.Open({Quarry::Where::In(0, piece)}, {}, {{Owner::kName}}); !owner.IsEOL(); owner.MoveNext())
            owners.push_back({owner.GetID(), isPartnership, owner.GetName()});
    }
    std::sort(owners.begin(), owners.end(), [](const CEntity& a, const CEntity& b) {
        const int names = Afx::CompareNoCase(a.name.View(), b.name.View());
        return names != 0 ? names < 0 : a.id < b.id;
    });
    for (const CEntity& owner : owners)
        entities.Add(owner);
}

/// One column of the memberships whose other column holds `id`.
std::vector<long> MembershipIds(int column, long id, int wanted)
{
    std::vector<long> ids;
    CPartnershipClients member;
    for (member.Open({{column, id}}); !member.IsEOL(); member.MoveNext())
        ids.push_back(member.Current().GetLong(wanted));
    std::sort(ids.begin(), ids.end()); // each once, also when they are read in pieces
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

} // namespace

CEntityArray EntitiesOf(const ClientId& client)
{
    CEntityArray entities;
    AppendOwners<Brix::CClient>(entities, {client.Get()}, 0);
    AppendOwners<Brix::CPartnership>(
        entities, MembershipIds(CPartnershipClients::kClientID, client.Get(), CPartnershipClients::kPClientID), 1);
    return entities;
}

CEntityArray EntitiesOf(const PartnershipId& partnership)
{
    CEntityArray entities;
    AppendOwners<Brix::CClient>(
        entities, MembershipIds(CPartnershipClients::kPClientID, partnership.Get(), CPartnershipClients::kClientID), 0);
    return entities;
}

CEntityArray EntitiesOfJointSource(long jointIncomeSourceTaxYearId)
{
    CEntityArray entities;
    Brix::CJointIncomeSourceTaxYear source;
    if (!source.Open({{0, jointIncomeSourceTaxYearId}}))
        return entities;
    AppendOwners<Brix::CClient>(entities, {source.GetClientID()}, 0);
    if (source.GetSpouseID() != source.GetClientID())
        AppendOwners<Brix::CClient>(entities, {source.GetSpouseID()}, 0);
    return entities;
}
