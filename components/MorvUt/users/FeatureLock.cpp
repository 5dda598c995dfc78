#include "MorvUt/users/FeatureLock.h"

#include <cstdio>
#include <exception>

#include "Afx/system/Computer.h"
#include "Afx/windows/MessageBox.h"
#include "Brix/Records.h"
#include "Cellar/BufferedRowList.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/locks/Holder.h"
#include "MorvUt/users/StaffRights.h"
#include "MorvUt/users/UserData.h"
#include "Shellkit/ProcessMark.h"

namespace
{

/// "full name (id)", or the id of a user without a name.
CString NameOfHolder(Cellar::CConnection& connection, const CString& id)
{
    Brix::CUser user;
    user.Use(connection);
    CString name = FindUser(user, id) ? user.GetFullName() : CString();
    if (name.IsEmpty())
        return id;
    CString shown;
    shown.Format("%s (%s)", name, id);
    return shown;
}

} // namespace

struct CFeatureLock::Row
{
    Row(Cellar::CConnection& conn, int featureNumber) noexcept : connection(conn), feature(featureNumber) {}
    /// False when it must be tried again.
    bool Remove(bool isLast) noexcept;

    Cellar::CConnection& connection;
    int feature;
    std::int64_t session = 0; // 0: it has none
    Shellkit::ProcessMark mark;
    bool isGivenUp = false;
    bool hadToWait = false; // meanwhile it may have been cleared, and the row be another's
};

bool CFeatureLock::Row::Remove(bool isLast) noexcept
{
    if (!isGivenUp && !isLast)
        return false;
    try {
        const Cellar::CConnection::Aside aside(connection);
        Locks::Insist([this] {
            if (hadToWait)
                connection.ExecuteDirectf(
                    "DELETE FROM FeatureLocks WHERE nFeature = %d AND COALESCE([ConnectionID], 0) = %I64d", feature,
                    session);
            else
                connection.ExecuteDirectf("DELETE FROM FeatureLocks WHERE nFeature=%d;", feature);
        });
        isLast = true;
    } catch (const std::exception& problem) {
        const auto* const error = dynamic_cast<const Cellar::DatabaseError*>(&problem);
        isLast = isLast || (error && error->GetCategory() == Cellar::DatabaseError::Category::LostConnection);
        std::fprintf(stderr, "the lock on feature %d %s: %s\n", feature, isLast ? "is left behind" : "stays for now",
                     problem.what());
        hadToWait = true;
    }
    if (isLast)
        mark.Clear(); // others see that its holder has ended
    return isLast;
}

CFeatureLock::CFeatureLock(int featureNumber, Cellar::CConnection& conn) noexcept
    : feature(featureNumber), connection(conn), m_open(conn.Watch())
{}

CFeatureLock::~CFeatureLock()
{
    if (!locked || m_open.expired())
        return;
    m_row->isGivenUp = true;
    m_row->hadToWait = connection.HasBegun();
    connection.RunWaiting();
}

int CFeatureLock::Lock(CString* holder)
{
    const Afx::ResourceContextGuard resources(MorvUtResources());
    return Lock(IDS_FEATURE_RELEASED, IDS_FEATURE_HELD, holder);
}

int CFeatureLock::Lock(unsigned int noHolderMessageId, unsigned int heldMessageId, CString* holder)
{
    if (!locked)
        locked = Insert();
    if (locked) {
        if (holder)
            holder->Empty();
    } else if (!TellHolder(heldMessageId, holder)) {
        AfxMessageBox(noHolderMessageId);
    }
    return locked;
}

/// False when another has the lock. A row without a mark has no session: nobody can be asked whether it lives.
bool CFeatureLock::Insert()
{
    const Cellar::CConnection::Aside aside(connection);
    connection.RunWaiting(); // a row of this feature that this connection could not remove
    const auto row = std::make_shared<Row>(connection, feature);
    const std::int64_t session = connection.GetSessionId();
    const bool isMarked = row->mark.Set( // before the row is seen
        Locks::MarkName(connection, Locks::kFeatureMark, std::to_string(feature), session));
    if (!connection.AddUnlessThere(
            isMarked ? Cellar::SqlText("INSERT INTO FeatureLocks ( nFeature, strUserID, strWorkstation ) "
                                       "VALUES ( %d, %s, %s );")
                     : Cellar::SqlText("INSERT INTO FeatureLocks ( nFeature, strUserID, strWorkstation, ConnectionID ) "
                                       "VALUES ( %d, %s, %s, NULL );"),
            feature, CUserData::m_strUser, Afx::GetComputerName()))
        return false;
    row->session = isMarked ? session : 0;
    m_row = row;
    connection.WaitForLevels([row](bool isLast) { return row->Remove(isLast); });
    return true;
}

/// False when nobody has the lock any more.
bool CFeatureLock::TellHolder(unsigned int heldMessageId, CString* holder)
{
    Cellar::CBufferedRowList rows(
        connection, "SELECT nFeature, strUserID, strWorkstation, dtLocked FROM FeatureLocks WHERE nFeature = %d;",
        feature);
    if (!rows.MoveFirst())
        return false;
    const CString id = rows.GetText(1);
    if (holder)
        *holder = id;
    CString text;
    AfxFormatString2(text, heldMessageId, NameOfHolder(connection, CString(id).TrimRight()).TrimRight(),
                     rows.GetText(2).TrimRight());
    AfxMessageBox(text);
    return true;
}
