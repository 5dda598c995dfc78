#include "MorvUt/users/locks/LockList.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <map>
#include <string>

#include "Cellar/BufferedRowList.h"
#include "MorvUt/users/locks/Holder.h"
#include "Trailmark/MTDAudit.h"

using Cellar::CBufferedRowList;
using Cellar::CConnection;
using Cellar::SqlText;

namespace
{

/// One table of locks.
struct LockSource
{
    LockKind kind;
    const char* words;       // what it is, for the audit
    const char* application; // null: the key stands for itself
    const char* mark;
    const char* markKey; // null: the row's key
    bool isUtc;          // dtLocked; otherwise local time, and what is worked out from it is worked out in UTC
    SqlText select;      // lockKey, lockName, the four columns of every table
    SqlText from;        // oldest first
    SqlText remove;      // lockKey; further conditions follow
};

#define MORVUT_USER_LOCKS(name, table)                                                                                 \
    {                                                                                                                  \
        .kind = LockKind::User, .words = "User lock ", .application = name, .mark = Locks::kUserMark,                  \
        .markKey = table, .isUtc = false,                                                                              \
        .select = "SELECT UserId AS lockKey, UserId AS lockName, UserId AS strUserID, strWorkstation, dtLocked, "      \
                  "ConnectionID",                                                                                      \
        .from = " FROM " table " ORDER BY dtLocked, UserId", .remove = "DELETE FROM " table " WHERE UserId = %s",      \
    }

constexpr LockSource kSources[] = {
    MORVUT_USER_LOCKS("Morv", "MorvUserLocks"),
    MORVUT_USER_LOCKS("BTax", "BTaxUserLocks"),
    MORVUT_USER_LOCKS("TrustTax", "TrustTaxUserLocks"),
    {
        .kind = LockKind::Feature,
        .words = "Lock on feature ",
        .application = nullptr,
        .mark = Locks::kFeatureMark,
        .markKey = nullptr,
        .isUtc = false,
        .select = "SELECT nFeature AS lockKey, nFeature AS lockName, strUserID, strWorkstation, dtLocked, ConnectionID",
        .from = " FROM FeatureLocks ORDER BY dtLocked, nFeature",
        .remove = "DELETE FROM FeatureLocks WHERE nFeature = %d",
    },
    {
        .kind = LockKind::Token,
        .words = "Lock on the HMRC tokens of ",
        .application = nullptr,
        .mark = Locks::kTokenMark,
        .markKey = nullptr,
        .isUtc = true,
        .select = "SELECT l.lMTDAuthorisationID AS lockKey, a.strGatewayID AS lockName, l.strUserID, "
                  "l.strWorkstation, l.dtLocked, l.ConnectionID",
        .from = " FROM MTDAuthorisationLock l LEFT JOIN MTDAuthorisation a ON a.lID = l.lMTDAuthorisationID "
                "ORDER BY l.dtLocked, l.lMTDAuthorisationID",
        .remove = "DELETE FROM MTDAuthorisationLock WHERE lMTDAuthorisationID = %ld",
    },
};

#undef MORVUT_USER_LOCKS

/// Sessions that set a mark: those of token locks are negative (LockRow.h); a user lock has a workstation then.
bool IsMarkedHolder(const LockSource& source, const HeldLock& lock)
{
    switch (source.kind) {
    case LockKind::Token:
        return lock.row.session < 0;
    case LockKind::User:
        return lock.row.session > 0 && !lock.workstation.IsEmpty();
    default:
        return lock.row.session > 0;
    }
}

/// What all locks of a practice are judged by.
struct Surroundings
{
    explicit Surroundings(CConnection& connection)
        : names(connection), isServer(connection.GetDialect().FilePath().IsEmpty())
    {
        const SqlText& query = connection.GetDialect().Sessions();
        if (query.IsEmpty())
            return;
        sessions.emplace();
        for (CBufferedRowList rows(connection, query); !rows.IsEOL(); rows.MoveNext())
            sessions->insert_or_assign(Cellar::ToInt64(rows.Get("nSession")), rows.GetDateTime("dtBegan"));
    }

    Locks::MarkNames names;
    bool isServer;
    std::optional<std::map<std::int64_t, COleDateTime>>
        sessions; // when each began; nothing: the database does not tell
};

/// By its mark, else by what the database knows. Never "ended" of a session that the database still has, or may have:
/// its program may be one that sets no mark. (A server fills in what tells such a row of others; a file does not.)
std::optional<bool> IsHolderAlive(const Surroundings& around, const LockSource& source, const HeldLock& lock,
                                  const COleDateTime& locked)
{
    const std::int64_t session = std::abs(lock.row.session);
    std::optional<bool> runs;
    if (IsMarkedHolder(source, lock)) {
        const std::string key = source.markKey ? source.markKey : Cellar::ToText(lock.row.key).Str();
        runs = Locks::RunsHere(around.names.Of(source.mark, key, session), lock.workstation.Str());
    }
    if (session == 0 || runs == true)
        return runs;
    if (!around.sessions)
        return around.isServer && lock.row.session > 0 ? std::nullopt : runs;
    const auto found = around.sessions->find(session);
    if (found == around.sessions->end())
        return false;
    const double held = Locks::SecondsBetween(found->second, locked);
    return std::isnan(held) ? std::nullopt : std::optional(held >= 0); // a later session has the same number
}

CString KeyOf(const LockSource& source, const CBufferedRowList& row)
{
    const CString name = row.IsNull("lockName") ? row.GetText("lockKey") : row.GetText("lockName");
    return source.application ? CString(source.application) + "/" + name + "/" + row.GetText("ConnectionID") : name;
}

CBufferedRowList Select(CConnection& connection, const LockSource& source)
{
    const SqlText locked = source.isUtc ? SqlText("l.dtLocked") : connection.GetDialect().LocalToUtc("dtLocked");
    return {connection,
            source.select + ", " + locked + " AS dtUtc, GETUTCDATE() AS dtNow, GETDATE() AS dtLocal" + source.from};
}

HeldLock ReadLock(const Surroundings& around, int table, const CBufferedRowList& row)
{
    const LockSource& source = kSources[table];
    const COleDateTime locked = row.GetDateTime("dtUtc");
    const double age = Locks::SecondsBetween(locked, row.GetDateTime("dtNow"));
    HeldLock lock;
    lock.kind = source.kind;
    lock.key = KeyOf(source, row);
    lock.user = row.GetText("strUserID");
    lock.workstation = row.GetText("strWorkstation");
    lock.row = {table, row.Get("lockKey"), row.Get("dtLocked"), Cellar::ToInt64(row.Get("ConnectionID"))};
    if (!std::isnan(age)) {
        constexpr double kSecondsADay = 86'400;
        lock.age = std::max(age, 0.0); // a clock that was set back, or the hour that comes twice
        lock.since = source.isUtc ? COleDateTime(row.GetDateTime("dtLocal").GetOleDate() - age / kSecondsADay)
                                  : row.GetDateTime("dtLocked");
    }
    lock.isAlive = IsHolderAlive(around, source, lock, locked);
    return lock;
}

bool RemoveAndTell(CConnection& connection, const HeldLock& lock, const CString& user)
{
    const LockSource& source = kSources[lock.row.table];
    std::vector<Cellar::Value> values{lock.row.key, lock.row.session};
    if (!lock.row.locked.IsNull())
        values.push_back(lock.row.locked);
    if (connection.Execute(source.remove + Locks::SameRow(lock.row.locked), values) == 0)
        return false;
    Trailmark::CMTDAuditCache audit(ClientId(), connection);
    audit.Add("clear lock", 0, user, CString(source.words) + lock.key,
              lock.workstation.IsEmpty() ? lock.user : lock.user + " at " + lock.workstation,
              lock.since.GetStatus() == COleDateTime::valid ? "since " + lock.since.FormatIso() : CString());
    audit.Flush();
    return true;
}

} // namespace

const char* LockKindName(LockKind kind) noexcept
{
    constexpr const char* kNames[] = {"user", "feature", "token"};
    return kNames[static_cast<int>(kind)];
}

std::vector<HeldLock> ListLocks(CConnection& connection)
{
    std::vector<CBufferedRowList> tables;
    for (const LockSource& source : kSources)
        tables.push_back(Select(connection, source));
    const Surroundings around(connection); // after the rows: a session that took one since is there
    std::vector<HeldLock> locks;
    for (std::size_t table = 0; table < tables.size(); ++table)
        for (; !tables[table].IsEOL(); tables[table].MoveNext())
            locks.push_back(ReadLock(around, static_cast<int>(table), tables[table]));
    return locks;
}

bool ClearLock(CConnection& connection, const HeldLock& lock, const CString& user)
{
    bool isRemoved = false;
    connection.RunAlone({}, [&] { isRemoved = RemoveAndTell(connection, lock, user); });
    return isRemoved;
}
