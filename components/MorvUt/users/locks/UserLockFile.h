#pragma once

// Who uses an application: a row of its table for each user, or for each session.

#include <memory>

#include "Afx/text/CString.h"
#include "Cellar/Connection.h"
#include "MorvUt/Export.h"
#include "Shellkit/ProcessMark.h"

/// This process's row in the table of one application: written at login, removed at exit. The table is a part of the
/// practice's schema: UserId, ConnectionID (the session, by default), dtLocked, strWorkstation. An id in any case of
/// its letters is the same user's: a further row has it as the first one has.
///
/// A process that ends without RemoveLock leaves its row; no other session removes it, but LockList.h tells that its
/// holder has ended, and clears it. For the user-interface thread.
///
/// With one row a user (SetUnlimitedSameUserLogin) a second session of the same user writes none and is logged in all
/// the same (HasOwnRow tells). When the first logs out the row goes, and the second is no longer in a valid state.
class MORVUT_API CUserLockFile
{
public:
    enum Result
    {
        Held = 0,
        Failed = -2
    };

    CUserLockFile() noexcept = default;
    CUserLockFile(const CUserLockFile&) = delete;
    CUserLockFile& operator=(const CUserLockFile&) = delete;
    virtual ~CUserLockFile(); // leaves the row in place
    /// The application's table.
    virtual const char* GetTableName() const noexcept = 0;

    /// The connection for all of them. Must come first: without one, or once it is closed, locks fail, nobody is
    /// counted, and a lock that is held is not valid.
    static void InitUserLocking(Cellar::CConnection& conn);

    /// Takes the lock for the user; calls nest, and the row stays that of the first. Failed: the statement did, and
    /// nothing changed; so it is for an id that holds a single quote. The row is seen by others at once and no rollback
    /// takes it; std::logic_error once the connection's levels have begun (Cellar::CConnection::Aside).
    Result AddLock(CString user);
    /// Ends one AddLock; the last removes the row of this session. When that fails the lock is given up nevertheless
    /// and the row stays. With no lock held: nothing. Throws std::logic_error as AddLock; the lock is held then.
    void RemoveLock();
    bool IsLocked() const noexcept { return lockCount > 0; }
    /// The row is this session's. False with no lock held, and when another session of the user had a row already: for
    /// a message such as IDS_USER_ALREADY_USING.
    bool HasOwnRow() const noexcept { return m_hasOwnRow; }

    /// How many use the application: rows of all users and sessions. Throws Cellar::DatabaseError.
    int GetNumUsers() const;
    /// With no lock held true. Otherwise whether the table has exactly one row of the user: not so when another session
    /// removed it, or there are several. Throws Cellar::DatabaseError.
    bool IsValidState() const;

protected:
    static Cellar::CConnection* m_pConn;

private:
    static Cellar::CConnection* OpenConnection() noexcept;
    CString AsStored(Cellar::CConnection& connection, const CString& user) const;
    long Insert(Cellar::CConnection& connection, const CString& user, bool isMarked) const;
    long CountOwn(Cellar::CConnection& connection) const;

    int lockCount = 0;
    CString userId; // empty: no lock
    bool m_hasOwnRow = false;
    Shellkit::ProcessMark m_mark;
};

class MORVUT_API CMorvLockFile : public CUserLockFile
{
public:
    const char* GetTableName() const noexcept override;
};

class MORVUT_API CBTaxLockFile : public CUserLockFile
{
public:
    const char* GetTableName() const noexcept override;
};

class MORVUT_API CTrustTaxLockFile : public CUserLockFile
{
public:
    const char* GetTableName() const noexcept override;
};

// The one of each application in this process.
MORVUT_API CMorvLockFile& GetMorvLockFile(); // personal tax
MORVUT_API CBTaxLockFile& GetBTaxLockFile(); // business tax
MORVUT_API CTrustTaxLockFile& GetTrustTaxLockFile();

/// Not 0: a row for each session, so that one user may log in several times. 0 (at first): a row for each user.
MORVUT_API void SetUnlimitedSameUserLogin(int unlimited) noexcept;
