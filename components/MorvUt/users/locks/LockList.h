#pragma once

// All locks of a practice: who has them, since when, and whether they were left behind.

#include <optional>
#include <vector>

#include "Afx/text/CString.h"
#include "Afx/time/DateTime.h"
#include "Cellar/Connection.h"
#include "MorvUt/Export.h"

enum class LockKind
{
    User,    // somebody uses an application (UserLockFile.h)
    Feature, // (FeatureLock.h)
    Token    // a gateway's tokens are being refreshed
};

/// "user", "feature", "token".
MORVUT_API const char* LockKindName(LockKind kind) noexcept;

/// One row of a table of locks.
struct HeldLock
{
    LockKind kind = LockKind::User;
    CString key; // "Morv/ann/12" (application, user, session), the feature's number, the Government Gateway user ID
    CString user, workstation;                 // workstation may be empty: not known
    COleDateTime since = COleDateTime::Null(); // local time of the database; null: not known
    std::optional<double> age; // seconds, never negative, by the database's clock in UTC; nothing: not known
    /// Whether the session that took it still runs. Nothing where that cannot be known: of rows that a program made
    /// which sets no process mark (on a server that does not tell its sessions: which may have), where neither mark nor
    /// server tells.
    std::optional<bool> isAlive;

    /// Where its row is, for ClearLock.
    struct Row
    {
        int table = 0;
        Cellar::Value key, locked;
        std::int64_t session = 0;
    };
    Row row;
};

/// Those of users, of features, of tokens; each oldest first. Throws Cellar::DatabaseError.
MORVUT_API std::vector<HeldLock> ListLocks(Cellar::CConnection& connection);

/// Removes the row, and tells the audit (client 0, action "clear lock") that `user` did. False when it is gone, or not
/// the same any more: then nothing is written. Both are written, or neither, aside from open levels (std::logic_error
/// once they have begun). Throws Cellar::DatabaseError.
///
/// Whoever asks for it ought to know what isAlive says: a feature whose holder lives has two users afterwards, and
/// tokens that two programs refresh at once are lost.
MORVUT_API bool ClearLock(Cellar::CConnection& connection, const HeldLock& lock, const CString& user);
