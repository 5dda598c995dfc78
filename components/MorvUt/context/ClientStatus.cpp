#include "MorvUt/context/ClientStatus.h"

#include "Brix/Records.h"

namespace
{

constexpr int kOrdinaryTrustKind = 1; // a trust option of this kind leaves the client what it is

} // namespace

int IsClientATrust(const ClientId& id, bool checkKind)
{
    if (id == ClientId())
        return 0;
    Brix::CClient client;
    if (!client.Open({{0, id.Get()}}))
        return 0;
    if (checkKind && client.GetTrustOption() && client.GetTrustKind() != kOrdinaryTrustKind)
        return 1;
    return client.GetTrust();
}
