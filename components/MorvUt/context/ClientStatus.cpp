#include "MorvUt/context/ClientStatus.h"

#include "Brix/Records.h"

namespace
{

constexpr int kOrdinaryTrustKind = 1; // a trust option of this kind leaves the client what it is

} // namespace

bool IsTrust(const Brix::CClient& client, bool checkKind)
{
    return (checkKind && client.GetTrustOption() && client.GetTrustKind() != kOrdinaryTrustKind) || client.GetTrust();
}

int IsClientATrust(const ClientId& id, bool checkKind)
{
    Brix::CClient client;
    return id != ClientId() && client.Open({{0, id.Get()}}) && IsTrust(client, checkKind);
}
