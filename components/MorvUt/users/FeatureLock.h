#pragma once

// Features that only one user of the practice may use at a time.

#include <memory>

#include "Afx/text/CString.h"
#include "Cellar/Connection.h"
#include "MorvUt/Export.h"

/// The lock on one feature, for the life of the object: the row of the feature in the table FeatureLocks, whose key it
/// is. The row is seen by others at once, and no rollback takes it.
///
/// The row goes with the object; where the connection's levels have begun, once they have ended, saved or not; when the
/// database refuses, whenever levels end after that; and when the connection is closed before the object ends, then.
/// A process that is killed, or whose connection is lost, leaves it, and everybody is refused until somebody clears it
/// by hand (LockList.h). The lock on a feature that is cleared while its holder lives ends with that holder, whoever
/// has it then, unless the row had to wait.
class MORVUT_API CFeatureLock
{
public:
    CFeatureLock(int featureNumber, Cellar::CConnection& conn) noexcept;
    ~CFeatureLock(); // unlocks; never throws, and what goes wrong is told on standard error
    CFeatureLock(const CFeatureLock&) = delete;
    CFeatureLock& operator=(const CFeatureLock&) = delete;

    /// Takes the lock for the logged-in user at this workstation: 1, also when this object has it already. 0 when
    /// another has it, and the user is told: string `heldMessageId` of the current resources with the holder ("full
    /// name (id)") as %1 and the workstation as %2; or string `noHolderMessageId`, when the lock was released just
    /// then. `holder`, unless null: the holder's user id, empty after success.
    ///
    /// Throws Cellar::DatabaseError when the row cannot be written for another reason, and std::logic_error once the
    /// connection's levels have begun (Cellar::CConnection::Aside).
    int Lock(unsigned int noHolderMessageId, unsigned int heldMessageId, CString* holder);
    /// The same with the library's own messages (IDS_FEATURE_RELEASED, IDS_FEATURE_HELD).
    int Lock(CString* holder = nullptr);

private:
    struct Row; // of the feature, while it is locked
    bool Insert();
    bool TellHolder(unsigned int heldMessageId, CString* holder);

    int feature;
    int locked = 0;
    Cellar::CConnection& connection;
    std::weak_ptr<Cellar::CConnection*> m_open;
    std::shared_ptr<Row> m_row; // the connection has it, too, until the row is gone
};
