#include "Quarry/DataList.h"

#include <algorithm>
#include <bit>
#include <map>
#include <span>
#include <string>

#include "Cellar/RowCursor.h"
#include "Cellar/Transaction.h"
#include "Cellar/ValueTypes.h"
#include "Quarry/detail/Notify.h"
#include "Quarry/detail/RowPlaces.h"
#include "Quarry/detail/Selection.h"
#include "Quarry/detail/TableText.h"
#include "Quarry/NewId.h"
#include "Quarry/Session.h"

namespace Quarry
{

using Cellar::SqlText;
using Cellar::Value;
using Detail::ColumnOf;
using Detail::DataEvent;
using Detail::IsRowId;
using Detail::TableText;
using Detail::TextOf;

namespace
{

/// Statements of the lists themselves are no direct statements.
class Statement
{
public:
    explicit Statement(Cellar::CConnection& connection) noexcept : m_connection(connection), m_quiet(connection) {}
    Cellar::CConnection* operator->() const noexcept { return &m_connection; }

private:
    Cellar::CConnection& m_connection;
    Cellar::SuspendDirectSQLEvents m_quiet;
};

[[noreturn]] void ThrowChanged(const Row& row)
{
    throw ChangedByAnotherUser("Another user has changed or deleted this record since it was read (" +
                               std::string(row.GetTable().sqlName) + " " + std::to_string(row.GetLong(0)) +
                               "). Open it again and repeat the change.");
}

/// How many of `count` rows the next statement takes: a few at once, else a power of two, so that there are not many
/// statements to prepare.
std::size_t RowsInOneStatement(std::size_t count, std::size_t columns)
{
    constexpr std::size_t kMostRows = 256, kFew = 16;
    const std::size_t most = std::min(std::max<std::size_t>(Cellar::kMostValues / columns, 1), kMostRows);
    return count <= std::min(most, kFew) ? count : std::bit_floor(std::min(count, most));
}

} // namespace

ChangedByAnotherUser::ChangedByAnotherUser(const std::string& message) : std::runtime_error(message) {}
ChangedByAnotherUser::~ChangedByAnotherUser() = default;

CDataList::CDataList(const Table& table) noexcept : m_table(&table) {}
CDataList::~CDataList() = default;

void CDataList::Use(Cellar::CConnection& connection) { m_connection = connection.Watch(); }

Cellar::CConnection& CDataList::Connection() const
{
    if (!m_connection)
        return GetConnection();
    const auto connection = m_connection->lock();
    if (!connection)
        throw Cellar::DatabaseError(Cellar::DatabaseError::Category::LostConnection, "",
                                    "the practice of this list was closed", "");
    return **connection;
}

bool CDataList::Open(Cellar::CConnection& connection, std::initializer_list<Where> where,
                     std::initializer_list<Sort> sort, const Take& take)
{
    Use(connection);
    return Open(where, sort, take);
}

bool CDataList::Open(std::initializer_list<Where> where, std::initializer_list<Sort> sort, const Take& take)
{
    Cellar::CConnection& connection = Connection();
    Detail::Selection selection(*m_table);
    selection.Read(where, sort, take, true, connection.GetDialect());
    Cellar::CRowCursor cursor(connection, selection.GetStatement(), selection.GetValues(), Cellar::Reading::Whole);
    Detail::RowPlaces places(*m_table, selection.GetPositions());
    std::vector<Entry> rows;
    while (cursor.Next()) {
        rows.push_back({Row(*m_table), {}, false, !take.columns.empty()});
        places.Read(cursor, rows.back().row.m_values);
    }
    m_given.clear();
    for (const Where& condition : where)
        if (const Value* const only = condition.OnlyValue();
            only && !IsRowId(*m_table, ColumnOf(*m_table, condition.m_ordinal)))
            m_given.emplace_back(condition.m_ordinal, *only);
    m_columns = take.columns;
    m_rows = std::move(rows);
    return MoveFirst();
}

long CDataList::Count(std::initializer_list<Where> where) const
{
    Detail::Selection selection(*m_table);
    selection.Count(where);
    Cellar::CRowCursor cursor(Connection(), selection.GetStatement(), selection.GetValues(), Cellar::Reading::Whole);
    cursor.Next();
    return cursor.GetLong(0);
}

void CDataList::CheckStored(std::initializer_list<Where> where) const
{
    const auto versionsOf = [](const std::vector<Entry>& rows) {
        std::map<long, long> versions;
        for (const Entry& entry : rows)
            if (!entry.isNew)
                versions[entry.row.GetLong(0)] = entry.row.GetVersion();
        return versions;
    };
    CDataList now(*m_table);
    now.Open(Connection(), where);
    if (versionsOf(now.m_rows) != versionsOf(m_rows))
        throw ChangedByAnotherUser("Another user has changed, added or deleted records since they were read (" +
                                   std::string(m_table->sqlName) + "). Open them again and repeat the change.");
}

bool CDataList::MoveFirst() noexcept
{
    m_at = 0;
    return !IsEOL();
}

bool CDataList::MoveNext() noexcept
{
    if (!IsEOL())
        ++m_at;
    return !IsEOL();
}

bool CDataList::MoveTo(int position) noexcept
{
    if (position < 0 || position >= GetCount())
        return false;
    m_at = static_cast<std::size_t>(position);
    return true;
}

bool CDataList::MoveToId(long id) noexcept
{
    const auto found =
        std::find_if(m_rows.begin(), m_rows.end(), [&](const Entry& e) { return e.row.GetLong(0) == id; });
    return found != m_rows.end() && MoveTo(static_cast<int>(found - m_rows.begin()));
}

void CDataList::FailNoRow() const
{
    throw std::logic_error(std::string(m_table->sqlName) + ": there is no current row");
}

bool CDataList::WasRead(const Column& column) const noexcept
{
    const std::vector<std::size_t>& key = TextOf(*m_table).key;
    const auto position = static_cast<std::size_t>(&column - m_table->columns.data());
    return std::find(m_columns.begin(), m_columns.end(), column.ordinal) != m_columns.end() ||
           std::find(key.begin(), key.end(), position) != key.end();
}

void CDataList::Append(Row row)
{
    m_rows.push_back({std::move(row), {}, true, false});
    m_at = m_rows.size() - 1;
}

void CDataList::AddNew()
{
    Row row = TextOf(*m_table).newRow;
    if (IsRowId(*m_table, m_table->columns[0]))
        row.Set(0, NewId(*m_table, Connection()));
    for (const auto& [ordinal, value] : m_given)
        row.Set(ordinal, value);
    Append(std::move(row));
}

void CDataList::CopyRow()
{
    if (At().isPart)
        throw std::logic_error(std::string(m_table->sqlName) + ": a row of chosen columns is copied");
    Row row = At().row;
    if (m_table->versioned)
        row.m_values.back() = Value();
    if (IsRowId(*m_table, m_table->columns[0]))
        row.Set(0, NewId(*m_table, Connection()));
    Append(std::move(row));
}

void CDataList::Set(int ordinal, Value value)
{
    Entry& entry = At();
    const Column& column = ColumnOf(*m_table, ordinal);
    Cellar::MakeCanonical(column.type, value);
    Value& held = entry.row.m_values[static_cast<std::size_t>(&column - m_table->columns.data())];
    if (entry.isPart && !WasRead(column))
        throw std::logic_error(std::string(m_table->sqlName) + ": " + column.name + " was not read");
    if (held == value)
        return;
    if (!entry.isNew) {
        if (IsRowId(*m_table, column))
            throw std::logic_error(std::string(m_table->sqlName) + ": the id of a saved row stays");
        if (!entry.stored)
            entry.stored = std::make_shared<const Row>(entry.row);
    }
    held = std::move(value);
}

void CDataList::Update(Saving saving)
{
    Entry& entry = At();
    Changes changes;
    if (entry.isNew) {
        InsertRows({&entry}, saving);
        Note(DataEvent::Insert, entry, changes);
    } else if (entry.stored) {
        Note(DataEvent::Update, entry, changes);
        if (!WriteChanged(entry))
            changes.clear();
    }
    Saved(entry);
    Tell(std::move(changes));
}

void CDataList::UpdateAll(Saving saving)
{
    std::vector<const Entry*> added;
    std::size_t changed = 0;
    for (const Entry& entry : m_rows)
        if (entry.isNew)
            added.push_back(&entry);
        else if (entry.stored)
            ++changed;
    if (added.empty() && changed == 0)
        return;
    Changes changes;
    if (!Connection().HasBegun())
        saving = Saving::Now;
    std::optional<Cellar::CTransaction> level; // one statement, and the caller's level, are all or nothing anyway
    const std::size_t inOne = added.empty() ? 1 : RowsInOneStatement(added.size(), m_table->columns.size());
    if (changed + added.size() > inOne && (saving == Saving::Now || changed > 0))
        level.emplace(Connection());
    InsertRows(added, saving);
    for (const Entry& entry : m_rows)
        if (entry.isNew) {
            Note(DataEvent::Insert, entry, changes);
        } else if (entry.stored) {
            const std::size_t before = changes.size();
            Note(DataEvent::Update, entry, changes);
            if (!WriteChanged(entry))
                changes.erase(changes.begin() + static_cast<std::ptrdiff_t>(before), changes.end());
        }
    if (level)
        level->Commit();
    for (Entry& entry : m_rows)
        Saved(entry);
    Tell(std::move(changes));
}

void CDataList::InsertRows(const std::vector<const Entry*>& entries, Saving saving) const
{
    const TableText& text = TextOf(*m_table);
    for (const Entry* const entry : entries)
        for (const std::size_t position : text.key)
            if (entry->row.m_values[position].IsNull() && !m_table->keyMayBeNull)
                throw std::logic_error(std::string(m_table->sqlName) + ": a row needs its " +
                                       m_table->columns[position].name);
    const Statement connection(Connection());
    const auto send = [&](const SqlText& statement, std::span<const Value> values) {
        if (saving == Saving::WithNext)
            connection->ExecuteLater(statement, values);
        else
            connection->Execute(statement, values);
    };
    const std::size_t columns = m_table->columns.size();
    for (std::size_t at = 0; at < entries.size();) {
        const std::size_t count = RowsInOneStatement(entries.size() - at, columns);
        if (count == 1) {
            send(text.insertOne, std::span(entries[at++]->row.m_values).first(columns));
            continue;
        }
        SqlText statement = text.insert;
        std::vector<Value> values;
        values.reserve(count * columns);
        for (std::size_t i = 0; i < count; ++i, ++at) {
            statement += i == 0 ? SqlText() : SqlText(", ");
            statement += text.insertRow;
            const auto first = entries[at]->row.m_values.begin();
            values.insert(values.end(), first, first + static_cast<std::ptrdiff_t>(columns));
        }
        send(statement, values);
    }
}

bool CDataList::WriteChanged(const Entry& entry) const
{
    const TableText& text = TextOf(*m_table);
    const Row& stored = *entry.stored;
    SqlText statement = text.update;
    std::vector<Value> values;
    for (std::size_t i = 0; i < m_table->columns.size(); ++i) {
        if (entry.row.m_values[i] == stored.m_values[i])
            continue;
        if (!values.empty())
            statement += ", ";
        statement += text.columns[i].equal;
        values.push_back(entry.row.m_values[i]);
    }
    if (values.empty())
        return false;
    if (m_table->versioned) {
        statement += ", [nVersion] = %ld";
        values.emplace_back(stored.GetVersion() + 1);
    }
    AppendIdentity(statement, values, stored);
    if (Statement(Connection())->Execute(statement, values) == 0)
        ThrowChanged(stored);
    return true;
}

void CDataList::Saved(Entry& entry) const noexcept
{
    if (m_table->versioned && entry.stored && !entry.isNew && !(entry.row.m_values == entry.stored->m_values))
        entry.row.m_values.back() = Value(entry.stored->GetVersion() + 1);
    entry.stored.reset();
    entry.isNew = false;
}

void CDataList::Delete()
{
    const Entry& entry = At();
    const auto at = m_rows.begin() + static_cast<std::ptrdiff_t>(m_at);
    if (entry.isNew) {
        m_rows.erase(at);
        return;
    }
    Changes changes;
    Note(DataEvent::Delete, entry, changes);
    const Row& stored = entry.stored ? *entry.stored : entry.row;
    SqlText statement = SqlText("DELETE") + TextOf(*m_table).from;
    std::vector<Value> values;
    AppendIdentity(statement, values, stored);
    if (Statement(Connection())->Execute(statement, values) == 0)
        ThrowChanged(stored);
    m_rows.erase(at);
    Tell(std::move(changes));
}

/// A row of chosen columns as it is in the database: listeners may look at any column.
Row CDataList::Whole(const Entry& entry) const
{
    const Row& stored = entry.stored ? *entry.stored : entry.row;
    if (!entry.isPart)
        return stored;
    const TableText& text = TextOf(*m_table);
    SqlText statement = SqlText("SELECT ") + text.allColumns + text.from;
    std::vector<Value> values;
    AppendIdentity(statement, values, stored);
    Cellar::CRowCursor cursor(Connection(), statement, std::move(values), Cellar::Reading::Whole);
    if (!cursor.Next())
        ThrowChanged(stored);
    Row row(*m_table);
    Detail::RowPlaces(*m_table).Read(cursor, row.m_values);
    return row;
}

void CDataList::Note(DataEvent event, const Entry& entry, Changes& changes) const
{
    if (!Detail::IsHeard(event, *m_table, Connection()))
        return;
    Change& change = changes.emplace_back(Change{event, {}, {}});
    if (event != DataEvent::Insert)
        change.before = Whole(entry);
    if (event == DataEvent::Delete)
        return;
    change.after = event == DataEvent::Update && entry.isPart ? change.before : entry.row;
    for (const int ordinal : m_columns)
        if (entry.isPart)
            change.after->Set(ordinal, entry.row.Get(ordinal));
}

void CDataList::Tell(Changes changes) const
{
    Cellar::CConnection* const connection = changes.empty() ? nullptr : &Connection();
    for (const Change& change : changes)
        Detail::Notify(change.event, {change.before ? &*change.before : nullptr,
                                      change.after ? &*change.after : nullptr, connection});
}

void CDataList::AppendIdentity(SqlText& statement, std::vector<Value>& values, const Row& row)
{
    const Table& table = row.GetTable();
    const TableText& text = TextOf(table);
    SqlText before = " WHERE ";
    for (const std::size_t position : text.key) {
        statement += before;
        before = " AND ";
        if (row.m_values[position].IsNull()) {
            statement += text.columns[position].name;
            statement += " IS NULL";
        } else {
            statement += text.columns[position].equal;
            values.push_back(row.m_values[position]);
        }
    }
    if (!table.versioned)
        return;
    statement += row.GetVersion() == 0 ? SqlText(" AND ([nVersion] = %ld OR [nVersion] IS NULL)")
                                       : SqlText(" AND [nVersion] = %ld");
    values.emplace_back(row.GetVersion());
}

} // namespace Quarry
