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
/// anew, each with the intent and for the subject of the one that has ended; with none open nothing. Another program
/// may have written in between: read again what must still hold.
///
/// Throws Cellar::DatabaseError when a commit fails, or when a level is refused its lock (everything is saved then);
/// there are as many levels as before then too, the new ones without a lock.
MORVUT_API void BounceCommitBeginTrans();
