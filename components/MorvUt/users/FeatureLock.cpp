#include "MorvUt/users/FeatureLock.h"

#include <cstdio>
#include <exception>

#include "Afx/system/Computer.h"
#include "Afx/windows/MessageBox.h"
#include "Brix/Records.h"
#include "Cellar/BufferedRowList.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/locks/AsideIfPossible.h"
#include "MorvUt/users/locks/Holder.h"
#include "MorvUt/users/UserData.h"

namespace
{

/// "full name (id)", or the id of a user without a name.
CString NameOfHolder(Cellar::CConnection& connection, const CString& id)
{
    Brix::CUser user;
    user.Use(connection);
    CString name = user.Open({{Brix::CUser::kUserID, id}}) ? user.GetFullName() : CString();
    if (name.IsEmpty())
        return id;
    CString shown;
    shown.Format("%s (%s)", name, id);
    return shown;
}

} // namespace

CFeatureLock::CFeatureLock(int featureNumber, Cellar::CConnection& conn) noexcept
    : feature(featureNumber), connection(conn), m_open(conn.Watch())
{}

CFeatureLock::~CFeatureLock()
{
    if (!locked || m_open.expired())
        return;
    try {
        const AsideIfPossible aside(connection);
        Locks::Insist([this] { connection.ExecuteDirectf("DELETE FROM FeatureLocks WHERE nFeature=%d;", feature); });
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "the lock on feature %d is left behind: %s\n", feature, problem.what());
    }
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
    const std::string mark =
        Locks::MarkName(connection, Locks::kFeatureMark, std::to_string(feature), connection.GetSessionId());
    const bool isMarked = m_mark.Set(mark); // before the row is seen
    try {
        connection.ExecuteDirectf(
            isMarked ? Cellar::SqlText("INSERT INTO FeatureLocks ( nFeature, strUserID, strWorkstation ) "
                                       "VALUES ( %d, %s, %s );")
                     : Cellar::SqlText("INSERT INTO FeatureLocks ( nFeature, strUserID, strWorkstation, ConnectionID ) "
                                       "VALUES ( %d, %s, %s, NULL );"),
            feature, CUserData::m_strUser, Afx::GetComputerName());
        return true;
    } catch (const Cellar::DatabaseError& error) {
        m_mark.Clear();
        if (error.GetCategory() != Cellar::DatabaseError::Category::DuplicateKey)
            throw;
        return false;
    }
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
