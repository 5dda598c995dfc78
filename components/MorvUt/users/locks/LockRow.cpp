#include "MorvUt/users/locks/LockRow.h"

#include <cmath>
#include <limits>

#include "Afx/system/Computer.h"
#include "Cellar/BufferedRowList.h"

using Cellar::CConnection;
using Cellar::Value;

namespace
{

constexpr double kSecondsADay = 86'400;
constexpr std::size_t kLongestName = 15; // of a computer; what is longer is cut

/// Tells the files of this computer apart, however a program names them: their sessions have the same numbers. Those of
/// a server are the server's, and different texts may lead to it.
std::string DatabaseDigest(CConnection& connection)
{
    const Cellar::SqlText& file = connection.GetDialect().FilePath();
    if (file.IsEmpty())
        return "server";
    const Cellar::RowSet files = connection.Query(file, {});
    std::uint64_t hash = 14695981039346656037u; // FNV-1a: the same in every build
    for (const char c : files.rows.empty() ? std::string() : Cellar::ToText(files.rows[0].at(0)).Str())
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    return std::to_string(hash);
}

/// The very row that was looked at: its key may have another one by now. Times compare as what they were stored as.
Cellar::SqlText SameRow(const Value& locked)
{
    const Cellar::SqlText session = " AND COALESCE([ConnectionID], 0) = %I64d AND [dtLocked] ";
    if (locked.IsNull())
        return session + "IS NULL";
    return session + (locked.GetKind() == Value::Kind::Text ? Cellar::SqlText("= %s") : Cellar::SqlText("= %t"));
}

double SecondsBetween(const COleDateTime& from, const COleDateTime& to)
{
    if (from.GetStatus() != COleDateTime::valid || to.GetStatus() != COleDateTime::valid)
        return std::numeric_limits<double>::quiet_NaN();
    return (to.GetOleDate() - from.GetOleDate()) * kSecondsADay;
}

} // namespace

LockRow& LockRow::operator=(const LockRow& other) noexcept
{
    m_table = other.m_table;
    m_own.reset();
    m_isGivenUp = false;
    m_mark.Clear();
    return *this;
}

LockRow::~LockRow() = default;

std::optional<LockRow::Row> LockRow::Read(CConnection& connection, const LockTable& table, const Value& key)
{
    Cellar::CBufferedRowList rows(connection, table.select, key);
    if (!rows.MoveFirst())
        return std::nullopt;
    return Row{{rows.GetText("strUserID").Str(), rows.GetText("strWorkstation").Str()},
               Cellar::ToInt64(rows.Get("ConnectionID")),
               rows.Get("dtLocked"),
               SecondsBetween(rows.GetDateTime("dtLocked"), rows.GetDateTime("dtNow"))};
}

std::optional<LockHolder> LockRow::FindHolder(CConnection& connection, const LockTable& table, const Value& key)
{
    const std::optional<Row> row = Read(connection, table, key);
    return row ? std::optional(row->holder) : std::nullopt;
}

std::string LockRow::MarkName(CConnection& connection, const char* mark, const Value& key, std::int64_t session)
{
    return std::string(mark) + '.' + DatabaseDigest(connection) + '.' + Cellar::ToText(key).Str() + '.' +
           std::to_string(session);
}

bool LockRow::Take(CConnection& connection, const Value& key, const std::string& user)
{
    m_cleared.reset();
    if (m_own && m_isGivenUp)
        Release(connection);
    if (m_own)
        return false;
    const CConnection::Aside aside(connection);
    return Insert(connection, key, user) || (ClearLeftBehind(connection, key) && Insert(connection, key, user));
}

/// False when another holds it.
bool LockRow::Insert(CConnection& connection, const Value& key, const std::string& user)
{
    const std::int64_t session = connection.GetSessionId();
    const bool isMarked = m_mark.Set(MarkName(connection, m_table->mark, key, session)); // before the row is seen
    try {
        if (isMarked)
            connection.ExecuteDirectf(m_table->insertMarked, key, user, Afx::GetComputerName(), -session);
        else
            connection.ExecuteDirectf(m_table->insert, key, user, Afx::GetComputerName());
        m_own = Read(connection, *m_table, key);
    } catch (const Cellar::DatabaseError& error) {
        m_mark.Clear();
        if (error.GetCategory() != Cellar::DatabaseError::Category::DuplicateKey)
            throw;
        return false;
    }
    m_key = key;
    m_isGivenUp = false;
    return m_own.has_value();
}

bool LockRow::IsLeftBehind(CConnection& connection, const Value& key, const Row& row) const
{
    const std::string& workstation = row.holder.workstation;
    if (row.session < 0 && workstation == Afx::GetComputerName().Str()) {
        if (Shellkit::ProcessMark::IsSet(MarkName(connection, m_table->mark, key, -row.session)))
            return false;
        if (workstation.size() < kLongestName && workstation != "Unknown")
            return true;
    }
    return row.age > m_table->staleSeconds;
}

/// True when the lock is worth another try: it was left behind and is cleared now, or gone meanwhile.
bool LockRow::ClearLeftBehind(CConnection& connection, const Value& key)
{
    const std::optional<Row> row = Read(connection, *m_table, key);
    if (!row)
        return true;
    if (!IsLeftBehind(connection, key, *row))
        return false;
    if (Remove(connection, key, *row) != 0)
        m_cleared = row->holder;
    return true;
}

long LockRow::Remove(CConnection& connection, const Value& key, const Row& row) const
{
    const Cellar::SqlText statement = m_table->remove + SameRow(row.locked);
    return row.locked.IsNull() ? connection.ExecuteDirectf(statement, key, row.session)
                               : connection.ExecuteDirectf(statement, key, row.session, row.locked);
}

void LockRow::Release(CConnection& connection)
{
    if (!m_own)
        return;
    m_isGivenUp = true;
    m_mark.Clear(); // should the row stay, others clear it
    const CConnection::Aside aside(connection);
    Remove(connection, m_key, *m_own);
    m_own.reset();
}
