#include "MorvUt/users/ReadOnlyManager.h"

#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"

namespace
{

void BeginUpTo(int levels)
{
    while (Quarry::GetTransactionLevel() < levels)
        Quarry::BeginTransaction();
}

} // namespace

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
    const int levels = Quarry::GetTransactionLevel();
    try {
        while (Quarry::GetTransactionLevel() > 0)
            Quarry::Commit();
    } catch (...) {
        BeginUpTo(levels); // who opened them ends them
        throw;
    }
    BeginUpTo(levels);
}
