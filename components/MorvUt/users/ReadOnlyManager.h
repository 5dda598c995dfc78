#pragma once

// Read-only modes as scopes, and the transactions beneath an operation.

#include "MorvUt/Export.h"

/// Local read-only mode (CUserData) for a scope: each SetLocalReadOnly is released in the end.
class MORVUT_API CReadOnlyManager
{
public:
    CReadOnlyManager() noexcept = default;
    ~CReadOnlyManager();
    CReadOnlyManager(const CReadOnlyManager&) = delete;
    CReadOnlyManager& operator=(const CReadOnlyManager&) = delete;

    void SetLocalReadOnly() noexcept;

private:
    int count = 0;
};

/// 1 when the application runs in read-only PIN mode.
MORVUT_API int UsingReadOnlyPin();

/// Commits all open levels of the current connection, so that everything written so far is durable, and begins as many
/// anew; with none open nothing. Throws Cellar::DatabaseError when a commit fails; there are as many levels as before
/// then too.
MORVUT_API void BounceCommitBeginTrans();
