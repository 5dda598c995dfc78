#include "MorvUt/users/locks/LockRow.h"

#include "Afx/system/Computer.h"
#include "Cellar/BufferedRowList.h"
#include "MorvUt/users/locks/Holder.h"

using Cellar::CConnection;
using Cellar::Value;

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
               Locks::SecondsBetween(rows.GetDateTime("dtLocked"), rows.GetDateTime("dtNow"))};
}

std::optional<LockHolder> LockRow::FindHolder(CConnection& connection, const LockTable& table, const Value& key)
{
    const std::optional<Row> row = Read(connection, table, key);
    return row ? std::optional(row->holder) : std::nullopt;
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

std::string LockRow::MarkOf(CConnection& connection, const Value& key, std::int64_t session) const
{
    return Locks::MarkName(connection, m_table->mark, Cellar::ToText(key).View(), session);
}

/// False when another holds it.
bool LockRow::Insert(CConnection& connection, const Value& key, const std::string& user)
{
    const std::int64_t session = connection.GetSessionId();
    const bool isMarked = m_mark.Set(MarkOf(connection, key, session)); // before the row is seen
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
    if (row.session < 0)
        if (const auto runs = Locks::RunsHere(MarkOf(connection, key, -row.session), row.holder.workstation))
            return !*runs;
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
    const Cellar::SqlText statement = m_table->remove + Locks::SameRow(row.locked);
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
