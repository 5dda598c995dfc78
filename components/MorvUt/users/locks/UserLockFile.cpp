#include "MorvUt/users/locks/UserLockFile.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <vector>

#include "Afx/system/Computer.h"
#include "Cellar/BufferedRowList.h"
#include "MorvUt/users/locks/Holder.h"

using Cellar::CConnection;
using Cellar::SqlText;

namespace
{

int unlimitedSameUserLogin = 0;

std::weak_ptr<CConnection*>& Watched() noexcept
{
    static auto& watched = *new std::weak_ptr<CConnection*>;
    return watched;
}

} // namespace

CConnection* CUserLockFile::m_pConn = nullptr;

CUserLockFile::~CUserLockFile() = default;

void CUserLockFile::InitUserLocking(CConnection& conn)
{
    m_pConn = &conn;
    Watched() = conn.Watch();
}

/// Null when there is none, or when it was closed meanwhile.
CConnection* CUserLockFile::OpenConnection() noexcept
{
    if (Watched().expired())
        m_pConn = nullptr;
    return m_pConn;
}

/// The id as a row has it in another case of its letters. Databases differ in the letters whose cases they know.
CString CUserLockFile::AsStored(CConnection& connection, const CString& user) const
{
    for (Cellar::CBufferedRowList rows(connection,
                                       SqlText("SELECT UserId FROM ") + SqlText::Identifier(GetTableName()));
         !rows.IsEOL(); rows.MoveNext())
        if (const CString stored = rows.GetText("UserId"); stored.CompareNoCase(user) == 0)
            return stored;
    return user;
}

/// Without a mark the row has no workstation: nobody can be asked whether its session lives.
long CUserLockFile::Insert(CConnection& connection, const CString& user, bool isMarked) const
{
    const SqlText table = SqlText::Identifier(GetTableName());
    std::vector<Cellar::Value> values;
    values.reserve(3);
    values.emplace_back(user);
    if (isMarked)
        values.emplace_back(Afx::GetComputerName());
    if (unlimitedSameUserLogin != 0)
        return connection.Execute(SqlText("INSERT INTO ") + table +
                                      (isMarked ? SqlText(" (UserID, strWorkstation ) VALUES('%s', '%s')")
                                                : SqlText(" (UserID ) VALUES('%s')")),
                                  values);
    values.emplace_back(user);
    return connection.Execute(
        SqlText("INSERT ") + table +
            (isMarked ? SqlText(" ( UserId, strWorkstation ) SELECT '%s', '%s'") : SqlText(" ( UserId ) SELECT '%s'")) +
            " WHERE NOT EXISTS( SELECT userid FROM " + table + " WHERE userid = '%s' ) ",
        values);
}

CUserLockFile::Result CUserLockFile::AddLock(CString user)
{
    if (lockCount > 0) {
        assert(user.CompareNoCase(userId) == 0 && "the lock is held for another user");
        ++lockCount;
        return Held;
    }
    CConnection* const connection = OpenConnection();
    if (!connection || user.Find("'") >= 0) // the statement has the id between quotes
        return Failed;
    const CConnection::Aside aside(*connection);
    try {
        const std::int64_t session = connection->GetSessionId();
        const bool isMarked = m_mark.Set(Locks::MarkName(*connection, Locks::kUserMark, GetTableName(), session));
        connection->RunAlone(SqlText::Identifier(GetTableName()), [&] {
            user = AsStored(*connection, user);
            m_hasOwnRow = Insert(*connection, user, isMarked) > 0;
        });
        if (!m_hasOwnRow)
            m_mark.Clear();
    } catch (const Cellar::DatabaseError&) {
        m_mark.Clear();
        m_hasOwnRow = false;
        return Failed;
    }
    userId = user;
    lockCount = 1;
    return Held;
}

void CUserLockFile::RemoveLock()
{
    if (lockCount == 0)
        return;
    if (lockCount > 1) {
        --lockCount;
        return;
    }
    if (CConnection* const connection = OpenConnection()) {
        const CConnection::Aside aside(*connection);
        try {
            Locks::Insist([&] {
                connection->ExecuteDirectf(SqlText("DELETE FROM ") + SqlText::Identifier(GetTableName()) +
                                               " where userid = '%s' AND ConnectionID=@@SPID",
                                           userId);
            });
        } catch (const Cellar::DatabaseError&) { // the row stays; others see that its holder has ended
        }
    }
    lockCount = 0;
    userId.Empty();
    m_hasOwnRow = false;
    m_mark.Clear();
}

int CUserLockFile::GetNumUsers() const
{
    CConnection* const connection = OpenConnection();
    if (!connection)
        return 0;
    const SqlText count = SqlText("SELECT Count(*) FROM ") + SqlText::Identifier(GetTableName()) + " ";
    return static_cast<int>(Cellar::ToLong(connection->Query(count, {}).rows.at(0).at(0)));
}

/// In any case of its letters. Of other letters than ASCII's not every database knows the cases.
long CUserLockFile::CountOwn(CConnection& connection) const
{
    const SqlText table = SqlText::Identifier(GetTableName());
    const std::string_view id = userId.View();
    if (std::all_of(id.begin(), id.end(), [](char c) { return (c & 0x80) == 0; }))
        return Cellar::ToLong(
            connection.Query(SqlText("SELECT Count(*) FROM ") + table + " WHERE UserId = '%s'", {userId})
                .rows.at(0)
                .at(0));
    long count = 0;
    for (Cellar::CBufferedRowList rows(connection, SqlText("SELECT UserId FROM ") + table); !rows.IsEOL();
         rows.MoveNext())
        count += rows.GetText("UserId").CompareNoCase(userId) == 0 ? 1 : 0;
    return count;
}

bool CUserLockFile::IsValidState() const
{
    if (lockCount == 0)
        return true;
    CConnection* const connection = OpenConnection();
    return connection && CountOwn(*connection) == 1;
}

const char* CMorvLockFile::GetTableName() const noexcept { return "MorvUserLocks"; }
const char* CBTaxLockFile::GetTableName() const noexcept { return "BTaxUserLocks"; }
const char* CTrustTaxLockFile::GetTableName() const noexcept { return "TrustTaxUserLocks"; }

CMorvLockFile& GetMorvLockFile()
{
    static auto& file = *new CMorvLockFile;
    return file;
}

CBTaxLockFile& GetBTaxLockFile()
{
    static auto& file = *new CBTaxLockFile;
    return file;
}

CTrustTaxLockFile& GetTrustTaxLockFile()
{
    static auto& file = *new CTrustTaxLockFile;
    return file;
}

void SetUnlimitedSameUserLogin(int unlimited) noexcept { unlimitedSameUserLogin = unlimited; }
