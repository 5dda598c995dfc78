#pragma once

// The current connection, and transactions as scopes.

#include <functional>
#include <memory>

#include "Cellar/Connection.h"
#include "Cellar/Transaction.h"
#include "Quarry/Export.h"

namespace Quarry
{

/// The process's connection to the practice. GetConnection throws Cellar::DatabaseError (LostConnection) when none is
/// open.
QUARRY_API Cellar::CConnection& GetConnection();
QUARRY_API bool HasConnection() noexcept;
/// Takes the connection over; null closes the one before. Tells caches to reload.
QUARRY_API void SetConnection(std::unique_ptr<Cellar::CConnection> connection);

/// Gives the practice of a connection besides the current one a name: from now on listeners that were added for that
/// database hear of its changes, rollbacks and direct statements. Without a name lists, ids and transactions work there
/// all the same, and nobody is told. "BRIX" is always the current connection: std::logic_error.
QUARRY_API void SetDatabase(Cellar::CConnection& connection, const char* database);

// Levels of the current connection.
QUARRY_API void BeginTransaction();
/// With no level open: nothing; in a debug build throws std::logic_error.
QUARRY_API void Commit();
QUARRY_API void Rollback();
QUARRY_API int GetTransactionLevel() noexcept;

/// One level of the connection that is current now, or of another.
class CTransaction : public Cellar::CTransaction
{
public:
    using Cellar::CTransaction::CTransaction;
    explicit CTransaction(Cellar::Intent intent = Cellar::Intent::Read, const Cellar::Subject& subject = {})
        : Cellar::CTransaction(GetConnection(), intent, subject)
    {}
};

/// Told when caches must reload: after every rollback, after a direct statement that names a table of the data model
/// and is not kept back by CIgnoreDirectSQL, and when another connection, or none, has become the current one. Returns
/// a number for RemoveRollbackListener. Listeners may be added and removed meanwhile. `database` as in SetDatabase.
QUARRY_API int AddRollbackListener(std::function<void()> listener, const char* database = "BRIX");
QUARRY_API void RemoveRollbackListener(int number);

/// While it lives, direct statements on the connection, or on the one that is current now, make no cache reload. (They
/// carry no rows, so the listeners of changed rows never hear of them.)
class QUARRY_API CIgnoreDirectSQL
{
public:
    CIgnoreDirectSQL();
    explicit CIgnoreDirectSQL(Cellar::CConnection& connection);
    ~CIgnoreDirectSQL();
    CIgnoreDirectSQL(const CIgnoreDirectSQL&) = delete;
    CIgnoreDirectSQL& operator=(const CIgnoreDirectSQL&) = delete;

private:
    Cellar::SuspendDirectSQLEvents m_suspend;
};

} // namespace Quarry
