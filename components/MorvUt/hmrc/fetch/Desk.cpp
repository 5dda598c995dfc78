#include "MorvUt/hmrc/fetch/Desk.h"

namespace HmrcApi
{

using Store = CAuthorisationStore;

Desk::~Desk() = default;
DeskStore::~DeskStore() = default;
DeskLogger::~DeskLogger() = default;

bool DeskStore::LoadTokens()
{
    return AtDesk([this] { return Store::LoadTokens(); });
}
bool DeskStore::UpdateTokens()
{
    return AtDesk([this] { return Store::UpdateTokens(); });
}
bool DeskStore::LockStore()
{
    return AtDesk([this] { return Store::LockStore(); });
}
bool DeskStore::UnlockStore()
{
    return AtDesk([this] { return Store::UnlockStore(); });
}
bool DeskStore::HasAuthenticatedGatewayID() const
{
    return AtDesk([this] { return Store::HasAuthenticatedGatewayID(); });
}
DeskStore::Update DeskStore::UpdateLoaded()
{
    return AtDesk([this] { return Store::UpdateLoaded(); });
}
bool DeskStore::UpdateConsent()
{
    return AtDesk([this] { return Store::UpdateConsent(); });
}
bool DeskStore::Rehearse()
{
    return AtDesk([this] { return Store::Rehearse(); });
}
bool DeskStore::GetLockHolder(std::string& workstation, std::string& user)
{
    return AtDesk([&] { return Store::GetLockHolder(workstation, user); });
}

void DeskLogger::Log(const std::string& a1, const std::string& a2, const std::string& a3, const std::string& a4,
                     const std::string& a5)
{
    m_desk.Leave([=, this] { Logger::Log(a1, a2, a3, a4, a5); });
}

} // namespace HmrcApi
