#include "MorvUt/hmrc/access/AuthorisationStore.h"

#include "Brix/Subjects.h"
#include "Cellar/BufferedRowList.h"
#include "MorvUt/hmrc/access/Logger.h"
#include "MorvUt/users/locks/AsideIfPossible.h"
#include "MorvUt/users/locks/Holder.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"
#include "Shellkit/Random.h"

namespace HmrcApi
{
namespace
{

constexpr std::size_t kRoom = 32 * 1024; // bytes; a pair of tokens of several thousand characters each, and log lines

constexpr char kSelectId[] = "SELECT [lID] FROM [MTDAuthorisation] WHERE strGatewayID = %s";
constexpr char kSelectGatewayId[] = "SELECT [strGatewayID] FROM [MTDAuthorisation] WHERE strGatewayID = %s";
constexpr char kSelectStatus[] = "SELECT [nAuthorisedStatus] FROM [MTDAuthorisation] WHERE strGatewayID = %s";
constexpr char kSelectConsent[] =
    "SELECT [nAuthorisedStatus], [strService] FROM [MTDAuthorisation] WHERE strGatewayID = %s";
constexpr char kSelectRow[] =
    "SELECT [lID], [strGatewayID], [nAuthorisedStatus], [vbAccessToken], [vbRefreshToken], [nExpiresIn], [strScope], "
    "[strTokenType], [dtAuthenticated], [strService] FROM [MTDAuthorisation] WHERE strGatewayID = %s";
constexpr char kInsertRow[] =
    "INSERT INTO [MTDAuthorisation] ( [lID], [strGatewayID], [nAuthorisedStatus], [vbAccessToken], [vbRefreshToken], "
    "[nExpiresIn], [strScope], [strTokenType], [dtAuthenticated] ) VALUES ( %ld, %s, %d, %b, %b, %ld, %s, %s, %t)";
constexpr char kUpdateRow[] =
    "UPDATE [MTDAuthorisation] SET [nAuthorisedStatus] = %d, [vbAccessToken] = %b, [vbRefreshToken] = %b, "
    "[nExpiresIn] = %ld, [strScope] = %s, [strTokenType] = %s, [dtAuthenticated] = %t WHERE strGatewayID = %s";
constexpr char kWithStatus[] = " AND COALESCE([nAuthorisedStatus], 0) = %d";
constexpr char kWithTokens[] = " AND [vbAccessToken] = %b AND [vbRefreshToken] = %b";
constexpr char kDateConsent[] = "UPDATE [MTDAuthorisation] SET [dtGranted] = %t WHERE strGatewayID = %s";
constexpr char kSetService[] = "UPDATE [MTDAuthorisation] SET [strService] = %s WHERE strGatewayID = %s";
constexpr char kUpdateRoom[] = "UPDATE [MTDAuthorisation] SET [vbRoom] = %b WHERE strGatewayID = %s";
constexpr char kInsertGatewayId[] =
    "INSERT INTO [MTDAuthorisation] ( lID, [strGatewayID],  [nAuthorisedStatus] ) VALUES (%ld, '%s', %d)";
constexpr char kDeleteRow[] = "DELETE FROM [MTDAuthorisation] WHERE [strGatewayID] = %s";

constexpr LockTable kLocks = {
    .mark = Locks::kTokenMark,
    .insert =
        "INSERT INTO MTDAuthorisationLock ( lMTDAuthorisationID, strUserID, strWorkstation ) VALUES ( %ld, %s, %s )",
    .insertMarked = "INSERT INTO MTDAuthorisationLock ( lMTDAuthorisationID, strUserID, strWorkstation, ConnectionID ) "
                    "VALUES ( %ld, %s, %s, %I64d )",
    .select = "SELECT [strUserID], [strWorkstation], [dtLocked], [ConnectionID], GETUTCDATE() AS [dtNow] "
              "FROM MTDAuthorisationLock WHERE lMTDAuthorisationID = %ld",
    .remove = "DELETE FROM MTDAuthorisationLock WHERE lMTDAuthorisationID = %ld",
    .staleSeconds = 150, // a refresh ends within 120
};

/// Runs `work` on the row of a gateway, which may fail with the database: that is false.
template<class Work>
bool TryRow(Work work)
{
    try {
        const Quarry::CIgnoreDirectSQL ignore;
        const AsideIfPossible aside(Quarry::GetConnection());
        return work(Quarry::GetConnection());
    } catch (const std::exception&) {
        return false;
    }
}

long NewRowId()
{
    long id = 0;
    while (id == 0)
        id = g_RandomGenerator.NewRandomPositive();
    return id;
}

bool IsRowThere(Cellar::CConnection& connection, const std::string& gatewayId)
{
    return !Cellar::CBufferedRowList(connection, kSelectGatewayId, gatewayId).IsEOL();
}

} // namespace

CAuthorisationStore::CAuthorisationStore(const std::string& gatewayId) : m_gatewayId(gatewayId), m_lock(kLocks) {}

CAuthorisationStore::~CAuthorisationStore() = default;

/// Runs `work`, whose failure is false and the problem.
template<class Work>
bool CAuthorisationStore::Try(Work work)
{
    m_problem.clear();
    m_isBusy = false;
    try {
        const Quarry::CIgnoreDirectSQL ignore;
        return work(Quarry::GetConnection());
    } catch (const Cellar::DatabaseError& error) {
        m_isBusy = error.GetCategory() == Cellar::DatabaseError::Category::Busy;
        if (!m_isBusy)
            m_problem = error.GetReason();
    } catch (const std::exception& problem) {
        m_problem = problem.what();
    } catch (...) {
        m_problem = "an unknown fault";
    }
    return false;
}

template<class Work>
bool CAuthorisationStore::TryAside(Work work)
{
    return Try([&](Cellar::CConnection& connection) {
        const Cellar::CConnection::Aside aside(connection);
        return work(connection);
    });
}

/// As TryAside, and nobody writes between its statements, unless levels are open: no transaction stands aside from
/// them.
template<class Work>
bool CAuthorisationStore::TryInOneStep(Work work)
{
    return Try([&](Cellar::CConnection& connection) {
        if (connection.GetLevel() > 0) {
            const Cellar::CConnection::Aside aside(connection);
            return work(connection);
        }
        Cellar::CTransaction transaction(connection, Cellar::Intent::Write, Brix::kAuthorisations);
        const bool isDone = work(connection);
        transaction.Commit();
        return isDone;
    });
}

void CAuthorisationStore::Remember() { m_row = {m_status, m_accessToken, m_refreshToken}; }

bool CAuthorisationStore::LoadTokens()
{
    m_accessToken.clear();
    m_refreshToken.clear();
    m_row.reset();
    if (m_gatewayId.empty())
        return false;
    return Try([&](Cellar::CConnection& connection) {
        Cellar::CBufferedRowList rows(connection, kSelectRow, m_gatewayId);
        if (!rows.MoveFirst())
            return false;
        m_rowId = rows.GetLong("lID");
        m_accessToken = rows.GetBinary("vbAccessToken");
        m_refreshToken = rows.GetBinary("vbRefreshToken");
        m_expiresIn = static_cast<std::int32_t>(rows.GetLong("nExpiresIn"));
        m_scope = rows.GetText("strScope").Str();
        m_tokenType = rows.GetText("strTokenType").Str();
        m_service = rows.GetText("strService").Str();
        m_authenticated = rows.IsNull("dtAuthenticated") ? COleDateTime() : rows.GetDateTime("dtAuthenticated");
        m_status = static_cast<AuthorisationStatus>(rows.GetShort("nAuthorisedStatus"));
        Remember();
        return true;
    });
}

void CAuthorisationStore::TakeRow(const CAuthorisationStore& other)
{
    IChainLogger* const logger = m_logger;
    *this = other;
    m_logger = logger;
}

bool CAuthorisationStore::IsNewConsent(Cellar::CConnection& connection) const
{
    if (m_status != Authorised)
        return false;
    Cellar::CBufferedRowList rows(connection, kSelectConsent, m_gatewayId);
    if (!rows.MoveFirst() || rows.GetShort("nAuthorisedStatus") != Authorised)
        return true;
    const std::string stored = rows.GetText("strService").Str();
    return !m_service.empty() && m_service != (stored.empty() ? kProductionService : stored);
}

bool CAuthorisationStore::UpdateTokens()
{
    return UpdateRow([this](Cellar::CConnection& connection) { return IsNewConsent(connection); });
}

bool CAuthorisationStore::UpdateConsent()
{
    return UpdateRow([](Cellar::CConnection&) { return true; });
}

template<class IsConsent>
bool CAuthorisationStore::UpdateRow(IsConsent isConsent)
{
    const bool isWritten = !m_gatewayId.empty() && TryInOneStep([&](Cellar::CConnection& connection) {
        Write(connection, isConsent(connection));
        return true;
    });
    if (isWritten)
        Remember();
    return isWritten;
}

/// The row, whether it is there or not. A consent's tokens are authorised last of all: lost in between, the row still
/// says "not authorised".
void CAuthorisationStore::Write(Cellar::CConnection& connection, bool isConsent)
{
    const short status = m_status, first = isConsent ? short{NotAuthorised} : status;
    const long expiresIn = m_expiresIn;
    const auto update = [&](short with) {
        return connection.ExecuteDirectf(kUpdateRow, with, m_accessToken, m_refreshToken, expiresIn, m_scope,
                                         m_tokenType, m_authenticated, m_gatewayId);
    };
    if (!IsRowThere(connection, m_gatewayId))
        connection.ExecuteDirectf(kInsertRow, NewRowId(), m_gatewayId, first, m_accessToken, m_refreshToken, expiresIn,
                                  m_scope, m_tokenType, m_authenticated);
    else
        update(first);
    if (isConsent) {
        connection.ExecuteDirectf(kDateConsent, m_authenticated, m_gatewayId);
        if (!m_service.empty())
            connection.ExecuteDirectf(kSetService, m_service, m_gatewayId);
        update(status);
    }
}

HmrcApi::IGrantStore::Update CAuthorisationStore::UpdateLoaded()
{
    if (!m_row)
        return Update::Replaced; // or unreadable, which the next LoadTokens tells
    long changed = 0;
    const bool isSent = TryAside([&](Cellar::CConnection& connection) {
        Cellar::SqlText statement = Cellar::SqlText(kUpdateRow) + kWithStatus;
        std::vector<Cellar::Value> values{short{m_status},   m_accessToken, m_refreshToken,
                                          long{m_expiresIn}, m_scope,       m_tokenType,
                                          m_authenticated,   m_gatewayId,   short{m_row->status}};
        if (!m_row->accessToken.empty() && !m_row->refreshToken.empty()) {
            statement += kWithTokens;
            values.insert(values.end(), {m_row->accessToken, m_row->refreshToken});
        }
        changed = connection.Execute(statement, values);
        return true;
    });
    if (!isSent)
        return Update::Failed;
    if (changed == 0)
        return Update::Replaced;
    Remember();
    return Update::Done;
}

/// What was written once and given back can be written again: the file keeps its length, and the log is written from
/// its beginning. One durable write, two where levels are open.
bool CAuthorisationStore::Rehearse()
{
    const bool isTaken = TryInOneStep([&](Cellar::CConnection& connection) {
        connection.ExecuteDirectf(kUpdateRoom, Cellar::Bytes(kRoom), m_gatewayId);
        connection.ExecuteDirectf(kUpdateRoom, nullptr, m_gatewayId);
        return true;
    });
    return isTaken && TryAside([&](Cellar::CConnection& connection) {
               const Cellar::SqlText reuse = connection.GetDialect().ReuseLog();
               if (reuse.IsEmpty())
                   return true;
               const Cellar::RowSet answer = connection.Query(reuse, {});
               m_isBusy =
                   !answer.rows.empty() && Cellar::ToLong(answer.rows[0][0]) != 0; // somebody still reads the old log
               return !m_isBusy;
           });
}

bool CAuthorisationStore::FindRowId(Cellar::CConnection& connection)
{
    if (m_rowId == 0) {
        Cellar::CBufferedRowList rows(connection, kSelectId, m_gatewayId);
        if (rows.MoveFirst())
            m_rowId = rows.GetLong(0);
    }
    return m_rowId != 0;
}

bool CAuthorisationStore::LockStore()
{
    const bool isTaken = Try([&](Cellar::CConnection& connection) {
        return FindRowId(connection) && m_lock.Take(connection, m_rowId, CUserData::m_strUser.Str());
    });
    if (const auto cleared = m_lock.TakeCleared())
        LogClearedLock(*cleared);
    return isTaken;
}

void CAuthorisationStore::LogClearedLock(const LockHolder& holder) const
{
    Logger own;
    IChainLogger& log = m_logger ? *m_logger : own;
    log.Log("LockCleared", "Authorisation", {}, {},
            "A lock on the HMRC tokens was left behind by " + holder.user + " at " + holder.workstation +
                " and has been cleared");
}

bool CAuthorisationStore::UnlockStore()
{
    if (m_rowId == 0 || !m_lock.IsHeld())
        return true;
    return Try([&](Cellar::CConnection& connection) {
        m_lock.Release(connection);
        return true;
    });
}

bool CAuthorisationStore::GetLockHolder(std::string& workstation, std::string& user)
{
    return Try([&](Cellar::CConnection& connection) {
        const auto holder = FindRowId(connection) ? LockRow::FindHolder(connection, kLocks, m_rowId) : std::nullopt;
        if (!holder)
            return false;
        workstation = holder->workstation;
        user = holder->user;
        return true;
    });
}

bool CAuthorisationStore::HasAuthenticatedGatewayID() const
{
    if (m_gatewayId.empty())
        return false;
    const Quarry::CIgnoreDirectSQL ignore;
    Cellar::CBufferedRowList rows(Quarry::GetConnection(), kSelectStatus, m_gatewayId);
    return rows.MoveFirst() && rows.GetShort("nAuthorisedStatus") == Authorised;
}

bool CAuthorisationStore::CreateGatewayID(const std::string& gatewayId)
{
    // The statement has the id between quotes.
    if (gatewayId.find('\'') != std::string::npos)
        return false;
    return TryRow([&](Cellar::CConnection& connection) {
        if (IsRowThere(connection, gatewayId))
            return false;
        connection.ExecuteDirectf(kInsertGatewayId, NewRowId(), gatewayId, 0);
        return true;
    });
}

bool CAuthorisationStore::DeleteGatewayId(const std::string& gatewayId)
{
    return TryRow([&](Cellar::CConnection& connection) {
        if (!IsRowThere(connection, gatewayId))
            return false;
        connection.ExecuteDirectf(kDeleteRow, gatewayId);
        return true;
    });
}

} // namespace HmrcApi
