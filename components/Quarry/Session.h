#pragma once

// The current connection, and transactions as scopes.

#include <functional>
#include <memory>

#include "Cellar/Connection.h"
#include "Quarry/Export.h"

namespace Quarry
{

/// The process's connection to the practice. GetConnection throws Cellar::DatabaseError (LostConnection) when none is
/// open.
QUARRY_API Cellar::CConnection& GetConnection();
QUARRY_API bool HasConnection() noexcept;
/// Takes the connection over; null closes the one before.
QUARRY_API void SetConnection(std::unique_ptr<Cellar::CConnection> connection);

QUARRY_API void BeginTransaction();
QUARRY_API void Commit();
QUARRY_API void Rollback();
QUARRY_API int GetTransactionLevel() noexcept;

/// One level: rolled back at the end of the scope unless committed.
class QUARRY_API CTransaction
{
public:
    CTransaction();
    ~CTransaction();
    CTransaction(const CTransaction&) = delete;
    CTransaction& operator=(const CTransaction&) = delete;
    void Commit();
    void Rollback();

private:
    bool m_open = true;
};

/// Told after every rollback, so that caches reload. Returns a number for RemoveRollbackListener.
QUARRY_API int AddRollbackListener(std::function<void()> listener);
QUARRY_API void RemoveRollbackListener(int number);

/// While it lives, direct statements on the current connection reach no listener.
class QUARRY_API CIgnoreDirectSQL
{
public:
    CIgnoreDirectSQL();
    ~CIgnoreDirectSQL();
    CIgnoreDirectSQL(const CIgnoreDirectSQL&) = delete;
    CIgnoreDirectSQL& operator=(const CIgnoreDirectSQL&) = delete;

private:
    Cellar::SuspendDirectSQLEvents m_suspend;
};

} // namespace Quarry
