#include "MorvUt/hmrc/access/AuthorisationStore.h"

#include "Afx/Computer.h"
#include "Cellar/BufferedRowList.h"
#include "MorvUt/hmrc/access/Logger.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"
#include "Shellkit/Random.h"

namespace HmrcApi
{
namespace
{

constexpr double kStaleSeconds = 150; // twice the time-outs of a token request
constexpr double kSecondsADay = 86'400;

constexpr char kSelectId[] = "SELECT [lID] FROM [MTDAuthorisation] WHERE strGatewayID = %s";
constexpr char kSelectGatewayId[] = "SELECT [strGatewayID] FROM [MTDAuthorisation] WHERE strGatewayID = %s";
constexpr char kSelectStatus[] = "SELECT [nAuthorisedStatus] FROM [MTDAuthorisation] WHERE strGatewayID = %s";
constexpr char kSelectRow[] =
    "SELECT [lID], [strGatewayID], [nAuthorisedStatus], [vbAccessToken], [vbRefreshToken], [nExpiresIn], [strScope], "
    "[strTokenType], [dtAuthenticated] FROM [MTDAuthorisation] WHERE strGatewayID = %s";
constexpr char kInsertRow[] =
    "INSERT INTO [MTDAuthorisation] ( [lID], [strGatewayID], [nAuthorisedStatus], [vbAccessToken], [vbRefreshToken], "
    "[nExpiresIn], [strScope], [strTokenType], [dtAuthenticated] ) VALUES ( %ld, %s, %d, %b, %b, %ld, %s, %s, %t)";
constexpr char kUpdateRow[] =
    "UPDATE [MTDAuthorisation] SET [nAuthorisedStatus] = %d, [vbAccessToken] = %b, [vbRefreshToken] = %b, "
    "[nExpiresIn] = %ld, [strScope] = %s, [strTokenType] = %s, [dtAuthenticated] = %t WHERE strGatewayID = %s";
constexpr char kUpdateGranted[] = "UPDATE [MTDAuthorisation] SET [dtGranted] = %t WHERE strGatewayID = %s";
constexpr char kInsertGatewayId[] =
    "INSERT INTO [MTDAuthorisation] ( lID, [strGatewayID],  [nAuthorisedStatus] ) VALUES (%ld, '%s', %d)";
constexpr char kDeleteRow[] = "DELETE FROM [MTDAuthorisation] WHERE [strGatewayID] = %s";
constexpr char kInsertLock[] =
    "INSERT INTO MTDAuthorisationLock ( lMTDAuthorisationID, strUserID, strWorkstation ) VALUES ( %ld, %s, %s )";
constexpr char kSelectLock[] = "SELECT [strUserID], [strWorkstation], [dtLocked], [ConnectionID], GETDATE() AS [dtNow] "
                               "FROM MTDAuthorisationLock WHERE lMTDAuthorisationID = %ld";
constexpr char kDeleteLock[] = "DELETE FROM MTDAuthorisationLock WHERE lMTDAuthorisationID = %ld";
// The very lock that was looked at: another workstation may have replaced it meanwhile. A date-time that another
// program wrote compares as the text it was written as.
constexpr char kDeleteLockOfTime[] =
    "DELETE FROM MTDAuthorisationLock WHERE lMTDAuthorisationID = %ld AND dtLocked = %t";
constexpr char kDeleteLockOfText[] =
    "DELETE FROM MTDAuthorisationLock WHERE lMTDAuthorisationID = %ld AND dtLocked = %s";

/// Runs `work`, which may fail with the database: that is false.
template<class Work>
bool Try(Work work)
{
    try {
        const Quarry::CIgnoreDirectSQL ignore;
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

/// Of the session that locks the row, on its own workstation.
std::string MarkName(long rowId, std::int64_t session)
{
    return "MorvUt.TokenLock." + std::to_string(rowId) + '.' + std::to_string(session);
}

bool IsInTransaction() { return Quarry::GetTransactionLevel() > 0; }

} // namespace

CAuthorisationStore::CAuthorisationStore(const std::string& gatewayId) : m_gatewayId(gatewayId) {}

CAuthorisationStore::~CAuthorisationStore() = default;

bool CAuthorisationStore::LoadTokens()
{
    m_accessToken.clear();
    m_refreshToken.clear();
    m_isLoaded = false;
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
        m_authenticated = rows.IsNull("dtAuthenticated") ? COleDateTime() : rows.GetDateTime("dtAuthenticated");
        m_status = static_cast<AuthorisationStatus>(rows.GetShort("nAuthorisedStatus"));
        m_isLoaded = true;
        return true;
    });
}

bool CAuthorisationStore::UpdateTokens()
{
    if (m_gatewayId.empty() || IsInTransaction())
        return false;
    return Try([&](Cellar::CConnection& connection) {
        const bool isConsent = m_status == Authorised && !HasAuthenticatedGatewayID();
        const bool isThere = IsRowThere(connection, m_gatewayId);
        const auto writeConsent = [&] {
            if (isConsent)
                connection.ExecuteDirectf(kUpdateGranted, m_authenticated, m_gatewayId);
        };
        if (isThere)
            writeConsent(); // before the tokens: lost in between, the row still says "not authorised"
        const short status = m_status;
        const long expiresIn = m_expiresIn;
        if (isThere)
            connection.ExecuteDirectf(kUpdateRow, status, m_accessToken, m_refreshToken, expiresIn, m_scope,
                                      m_tokenType, m_authenticated, m_gatewayId);
        else
            connection.ExecuteDirectf(kInsertRow, NewRowId(), m_gatewayId, status, m_accessToken, m_refreshToken,
                                      expiresIn, m_scope, m_tokenType, m_authenticated);
        if (!isThere)
            writeConsent();
        return true;
    });
}

bool CAuthorisationStore::FindRowId()
{
    if (m_rowId == 0) {
        Cellar::CBufferedRowList rows(Quarry::GetConnection(), kSelectId, m_gatewayId);
        if (rows.MoveFirst())
            m_rowId = rows.GetLong(0);
    }
    return m_rowId != 0;
}

bool CAuthorisationStore::LockStore()
{
    if (m_lock.isHeld || IsInTransaction())
        return false;
    m_lock.isHeld =
        Try([&](Cellar::CConnection&) { return FindRowId() && (InsertLock() || (ClearStaleLock() && InsertLock())); });
    return m_lock.isHeld;
}

/// False when another holds it.
bool CAuthorisationStore::InsertLock()
{
    try {
        m_lock.mark.Set(MarkName(m_rowId, Quarry::GetConnection().GetSessionId())); // before the row is seen
        Quarry::GetConnection().ExecuteDirectf(kInsertLock, m_rowId, CUserData::m_strUser, Afx::GetComputerName());
        return true;
    } catch (const Cellar::DatabaseError& error) {
        m_lock.mark.Clear();
        if (error.GetCategory() != Cellar::DatabaseError::Category::DuplicateKey)
            throw;
        return false;
    }
}

/// A killed program of this workstation is known by its mark, which it no longer has; elsewhere only time tells. Rows
/// of other programs name no session.
bool CAuthorisationStore::IsLeftBehind(Cellar::CBufferedRowList& lock) const
{
    const std::int64_t session = lock.GetLong("ConnectionID");
    if (session != 0 && lock.GetText("strWorkstation") == Afx::GetComputerName() &&
        !Shellkit::ProcessMark::IsSet(MarkName(m_rowId, session)))
        return true;
    const COleDateTime since = lock.GetDateTime("dtLocked");
    const COleDateTime now = lock.GetDateTime("dtNow"); // of the database, as dtLocked: workstations' clocks differ
    return since.GetStatus() == COleDateTime::valid && now.GetStatus() == COleDateTime::valid &&
           (now.GetOleDate() - since.GetOleDate()) * kSecondsADay > kStaleSeconds;
}

/// True when the lock is worth another try: it was left behind and is cleared now, or gone meanwhile.
bool CAuthorisationStore::ClearStaleLock() const
{
    Cellar::CConnection& connection = Quarry::GetConnection();
    Cellar::CBufferedRowList lock(connection, kSelectLock, m_rowId);
    if (!lock.MoveFirst())
        return true;
    if (!IsLeftBehind(lock))
        return false;
    const Cellar::Value& written = lock.Get("dtLocked");
    const long cleared = written.kind == Cellar::Value::Kind::Text
                             ? connection.ExecuteDirectf(kDeleteLockOfText, m_rowId, written.text)
                             : connection.ExecuteDirectf(kDeleteLockOfTime, m_rowId, lock.GetDateTime("dtLocked"));
    if (cleared != 0)
        LogClearedLock(lock.GetText("strWorkstation").Str(), lock.GetText("strUserID").Str());
    return true;
}

void CAuthorisationStore::LogClearedLock(const std::string& workstation, const std::string& user) const
{
    Logger own;
    IChainLogger& log = m_logger ? *m_logger : own;
    log.Log("LockCleared", "Authorisation", {}, {},
            "A lock on the HMRC tokens was left behind by " + user + " at " + workstation + " and has been cleared");
}

bool CAuthorisationStore::UnlockStore()
{
    if (m_rowId == 0 || !m_lock.isHeld)
        return true;
    if (IsInTransaction())
        return false;
    return Try([&](Cellar::CConnection& connection) {
        connection.ExecuteDirectf(kDeleteLock, m_rowId);
        m_lock.isHeld = false;
        m_lock.mark.Clear();
        return true;
    });
}

bool CAuthorisationStore::GetLockHolder(std::string& workstation, std::string& user)
{
    return Try([&](Cellar::CConnection& connection) {
        if (!FindRowId())
            return false;
        Cellar::CBufferedRowList lock(connection, kSelectLock, m_rowId);
        if (!lock.MoveFirst())
            return false;
        workstation = lock.GetText("strWorkstation").Str();
        user = lock.GetText("strUserID").Str();
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
    if (gatewayId.empty() || gatewayId.find('\'') != std::string::npos)
        return false;
    return Try([&](Cellar::CConnection& connection) {
        if (IsRowThere(connection, gatewayId))
            return false;
        connection.ExecuteDirectf(kInsertGatewayId, NewRowId(), gatewayId, 0);
        return true;
    });
}

bool CAuthorisationStore::DeleteGatewayId(const std::string& gatewayId)
{
    return Try([&](Cellar::CConnection& connection) {
        if (!IsRowThere(connection, gatewayId))
            return false;
        connection.ExecuteDirectf(kDeleteRow, gatewayId);
        return true;
    });
}

} // namespace HmrcApi
