#pragma once

// One level of a transaction, as a scope.

#include <memory>

#include "Cellar/Connection.h"
#include "Cellar/Export.h"

namespace Cellar
{

/// Rolled back at the end of its scope unless committed, with any level that was begun in it and left open. Nothing
/// happens when its connection was closed meanwhile.
class CELLAR_API CTransaction
{
public:
    /// Throws DatabaseError (Busy) when the lock that Intent::Write asks for is not given; no level is open then.
    explicit CTransaction(CConnection& connection, Intent intent = Intent::Read, const Subject& subject = {});
    ~CTransaction();
    CTransaction(const CTransaction&) = delete;
    CTransaction& operator=(const CTransaction&) = delete;
    /// Throws std::logic_error when it is not the innermost open level.
    void Commit();
    void Rollback();

private:
    std::weak_ptr<CConnection*> m_connection; // it may be closed meanwhile
    int m_level;                              // 0: no longer open
};

} // namespace Cellar
