#include "MorvUt/users/ReadOnlyManager.h"

#include <vector>

#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"

CReadOnlyManager::~CReadOnlyManager()
{
    for (; count > 0; --count)
        CUserData::ReleaseLocalReadOnly();
}

void CReadOnlyManager::SetLocalReadOnly() noexcept
{
    CUserData::SetLocalReadOnly();
    ++count;
}

int UsingReadOnlyPin() { return CUserData::IsReadOnlyPIN(); }

void BounceCommitBeginTrans()
{
    if (Quarry::GetTransactionLevel() == 0)
        return;
    Cellar::CConnection& connection = Quarry::GetConnection();
    const std::vector<Cellar::Begun> levels = connection.GetLevels();
    try {
        while (connection.GetLevel() > 0)
            Quarry::Commit();
        for (const auto& [intent, subject] : levels)
            connection.Begin(intent, subject);
    } catch (...) {
        while (connection.GetLevel() < static_cast<int>(levels.size())) // who opened them ends them
            connection.Begin();
        throw;
    }
}
