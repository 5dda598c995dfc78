#include "MorvUt/hmrc/fetch/Desk.h"

#include <functional>
#include <utility>

#include "HmrcApi/oauth/StoredGrant.h"

namespace HmrcApi
{
namespace
{

using Store = CAuthorisationStore;

constexpr double kNearItsEnd = 120; // seconds; another program refreshes, or one of our clients, in the last of them

} // namespace

Desk::~Desk() = default;

const PracticeOptions& Desk::GetOptions()
{
    if (!m_options)
        m_options = ReadPracticeOptions();
    return *m_options;
}

const CAuthorisationStore* Desk::GetGrant()
{
    const bool isGood = m_grant && m_grant->GetAuthorisationStatus() == Store::Authorised &&
                        StoredGrant(*m_grant, {}).SecondsLeft() > kNearItsEnd;
    return isGood ? &*m_grant : nullptr;
}

void Desk::KeepGrant(const CAuthorisationStore* grant)
{
    m_grant.reset();
    if (grant)
        m_grant.emplace(*grant);
}

DeskStore::~DeskStore() = default;
DeskLogger::~DeskLogger() = default;

template<class Work, class IsKept>
auto DeskStore::KeptAtDesk(Work work, IsKept isKept)
{
    return AtDesk([&] {
        const auto result = work();
        m_desk.KeepGrant(isKept(result) ? this : nullptr);
        return result;
    });
}

bool DeskStore::LoadTokens()
{
    return KeptAtDesk(
        [this] {
            const CAuthorisationStore* const known = std::exchange(m_isFirst, false) ? m_desk.GetGrant() : nullptr;
            if (known)
                TakeRow(*known);
            return known || Store::LoadTokens();
        },
        std::identity());
}
bool DeskStore::UpdateTokens()
{
    return KeptAtDesk([this] { return Store::UpdateTokens(); }, std::identity());
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
    return KeptAtDesk([this] { return Store::UpdateLoaded(); }, [](Update result) { return result == Update::Done; });
}
bool DeskStore::UpdateConsent()
{
    return KeptAtDesk([this] { return Store::UpdateConsent(); }, std::identity());
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
