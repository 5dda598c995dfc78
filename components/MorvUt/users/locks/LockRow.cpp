#include "MorvUt/users/locks/LockRow.h"

#include <limits>

#include "Afx/Computer.h"
#include "Cellar/BufferedRowList.h"

using Cellar::CConnection;
using Cellar::Value;

namespace
{

constexpr double kSecondsADay = 86'400;

/// The very row that was looked at: its key may have another one by now. Times compare as what they were stored as.
Cellar::SqlText SameRow(const Value& locked)
{
    const Cellar::SqlText session = " AND COALESCE([ConnectionID], 0) = %I64d AND [dtLocked] ";
    if (locked.IsNull())
        return session + "IS NULL";
    return session + (locked.kind == Value::Kind::Text ? Cellar::SqlText("= %s") : Cellar::SqlText("= %t"));
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

std::string LockRow::MarkName(const Value& key, std::int64_t session) const
{
    return std::string(m_table->mark) + '.' + Cellar::ToText(key).Str() + '.' + std::to_string(session);
}

bool LockRow::Take(CConnection& connection, const Value& key, const std::string& user)
{
    if (m_own)
        return false;
    m_cleared.reset();
    const CConnection::Aside aside(connection);
    return Insert(connection, key, user) || (ClearLeftBehind(connection, key) && Insert(connection, key, user));
}

/// False when another holds it.
bool LockRow::Insert(CConnection& connection, const Value& key, const std::string& user)
{
    // Before the row is seen. A row must not name a session whose mark nobody has: it would be cleared at once.
    const bool isMarked = m_mark.Set(MarkName(key, connection.GetSessionId()));
    try {
        connection.ExecuteDirectf(isMarked ? m_table->insert : m_table->insertNobody, key, user,
                                  Afx::GetComputerName());
        m_own = Read(connection, *m_table, key);
    } catch (const Cellar::DatabaseError& error) {
        m_mark.Clear();
        if (error.GetCategory() != Cellar::DatabaseError::Category::DuplicateKey)
            throw;
        return false;
    }
    m_key = key;
    return m_own.has_value();
}

bool LockRow::IsLeftBehind(const Value& key, const Row& row) const
{
    if (row.session != 0 && row.holder.workstation == Afx::GetComputerName().Str())
        return !Shellkit::ProcessMark::IsSet(MarkName(key, row.session));
    return row.age > m_table->staleSeconds;
}

/// True when the lock is worth another try: it was left behind and is cleared now, or gone meanwhile.
bool LockRow::ClearLeftBehind(CConnection& connection, const Value& key)
{
    const std::optional<Row> row = Read(connection, *m_table, key);
    if (!row)
        return true;
    if (!IsLeftBehind(key, *row))
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
    const CConnection::Aside aside(connection);
    Remove(connection, m_key, *m_own);
    m_own.reset();
    m_mark.Clear();
}
