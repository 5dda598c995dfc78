#include "Quarry/DataList.h"

#include <algorithm>

#include "Afx/text/Numbers.h"
#include "Quarry/detail/Notify.h"
#include "Quarry/detail/TableText.h"
#include "Quarry/NewId.h"
#include "Quarry/Session.h"

namespace Quarry
{

using Cellar::SqlText;
using Cellar::Value;
using Detail::Bracketed;
using Detail::Canonical;
using Detail::DataEvent;
using Detail::Notify;
using Detail::PlaceholderOf;
using Detail::TableText;
using Detail::TextOf;

namespace
{

const Column& ColumnOf(const Table& table, int ordinal)
{
    const Column* const column = table.Find(ordinal);
    if (!column)
        throw std::logic_error(std::string(table.sqlName) + " has no column of ordinal " + std::to_string(ordinal));
    return *column;
}

/// Statements of the lists themselves are no direct statements.
class Statement
{
public:
    Statement() : m_connection(GetConnection()), m_quiet(m_connection) {}
    Cellar::CConnection& operator*() const noexcept { return m_connection; }
    Cellar::CConnection* operator->() const noexcept { return &m_connection; }

private:
    Cellar::CConnection& m_connection;
    Cellar::SuspendDirectSQLEvents m_quiet;
};

/// " WHERE [a]" or " AND [a]".
void AppendColumn(SqlText& statement, const Column& column, bool first)
{
    statement += first ? SqlText(" WHERE ") : SqlText(" AND ");
    statement += Bracketed(column.name);
}

/// " = %ld" with the value that it binds, or " IS NULL".
void AppendEqual(SqlText& statement, std::vector<Value>& bound, const Column& column, const Value& value)
{
    if (value.IsNull()) {
        statement += " IS NULL";
        return;
    }
    statement += " = ";
    statement += PlaceholderOf(column.type);
    bound.push_back(value);
}

/// Appends ORDER BY: what was asked for, then the key.
void AppendOrder(SqlText& statement, const Table& table, std::span<const Sort> sort, const Cellar::Dialect& dialect)
{
    // The embedded database and SQL Server have nulls before everything else, PostgreSQL after it.
    const bool sayWhereNullsGo = &dialect == &Cellar::PostgresDialect();
    SqlText before = " ORDER BY ";
    const auto append = [&](const Column& column, bool descending) {
        const SqlText name = Bracketed(column.name);
        const SqlText direction = descending ? SqlText(" DESC") : SqlText();
        statement += before;
        before = ", ";
        if (sayWhereNullsGo)
            statement += SqlText("CASE WHEN ") + name + " IS NULL THEN 0 ELSE 1 END" + direction + ", ";
        statement += name + direction;
    };
    for (auto by = sort.begin(); by != sort.end(); ++by)
        if (std::none_of(sort.begin(), by, [&](const Sort& one) { return one.ordinal == by->ordinal; }))
            append(ColumnOf(table, by->ordinal), by->descending);
    for (const std::size_t position : TextOf(table).key) {
        const Column& column = table.columns[position];
        if (std::none_of(sort.begin(), sort.end(), [&](const Sort& by) { return by.ordinal == column.ordinal; }))
            append(column, false);
    }
}

/// The default of a column in a row that is not in the database yet. Those of record classes are whole numbers.
Value DefaultOf(const Column& column)
{
    const auto number = Afx::ParseWhole<long>(column.defaultValue ? column.defaultValue : "");
    return number ? Value(*number) : Value();
}

bool IsRowId(const Table& table, const Column& column) noexcept
{
    return column.ordinal == 0 && std::string_view(table.key) == "lID";
}

[[noreturn]] void ThrowChanged(const Row& row)
{
    throw ChangedByAnotherUser("Another user has changed or deleted this record since it was read (" +
                               std::string(row.GetTable().sqlName) + " " + std::to_string(row.GetLong(0)) +
                               "). Open it again and repeat the change.");
}

} // namespace

ChangedByAnotherUser::ChangedByAnotherUser(const std::string& message) : std::runtime_error(message) {}
ChangedByAnotherUser::~ChangedByAnotherUser() = default;

Row::Row(const Table& table) : m_table(&table), m_values(table.columns.size()) {}

const Value& Row::Get(int ordinal) const noexcept
{
    static const Value null;
    const Column* const column = m_table->Find(ordinal);
    return column ? m_values[static_cast<std::size_t>(column - m_table->columns.data())] : null;
}

void Row::Set(int ordinal, Value value)
{
    const Column& column = ColumnOf(*m_table, ordinal);
    m_values[static_cast<std::size_t>(&column - m_table->columns.data())] = Canonical(column.type, std::move(value));
}

Where::Where(int ordinal, Value value) : Where(ordinal, Kind::Equal) { m_values.push_back(std::move(value)); }

Where Where::In(int ordinal, const std::vector<long>& numbers)
{
    constexpr std::size_t kMost = 1000; // SQL Server takes 2100 parameters
    if (numbers.size() > kMost)
        throw std::logic_error("more than 1000 values in one condition");
    Where where(ordinal, Kind::In);
    where.m_values.assign(numbers.begin(), numbers.end());
    return where;
}

Where Where::Under(int ordinal, const Table& parent, std::initializer_list<Where> conditions)
{
    if (std::string_view(parent.key) != "lID")
        throw std::logic_error(std::string(parent.sqlName) + ": its rows are not told apart by lID");
    Where where(ordinal, Kind::Under);
    where.m_parent = &parent;
    where.m_conditions = conditions;
    return where;
}

void Where::AppendTo(SqlText& statement, std::vector<Value>& bound, const Table& table, bool first) const
{
    const Column& column = ColumnOf(table, m_ordinal);
    if (m_kind == Kind::In && m_values.empty()) {
        statement += first ? SqlText(" WHERE 1 = 0") : SqlText(" AND 1 = 0");
        return;
    }
    AppendColumn(statement, column, first);
    if (m_kind == Kind::Under) {
        statement += SqlText(" IN (SELECT [lID] FROM ") + Bracketed(m_parent->sqlName);
        for (std::size_t i = 0; i < m_conditions.size(); ++i)
            m_conditions[i].AppendTo(statement, bound, *m_parent, i == 0);
        statement += ")";
        return;
    }
    if (m_values.size() == 1) {
        AppendEqual(statement, bound, column, Canonical(column.type, m_values[0]));
        return;
    }
    for (std::size_t i = 0; i < m_values.size(); ++i) {
        statement += i == 0 ? SqlText(" IN (") : SqlText(", ");
        statement += PlaceholderOf(column.type);
        bound.push_back(Canonical(column.type, m_values[i]));
    }
    statement += ")";
}

CDataList::CDataList(const Table& table) noexcept : m_table(&table) {}
CDataList::~CDataList() = default;

bool CDataList::Open(std::initializer_list<Where> where, std::initializer_list<Sort> sort)
{
    const Statement connection;
    SqlText statement = TextOf(*m_table).select;
    std::vector<Value> values;
    bool isFirst = true;
    for (const Where& condition : where) {
        condition.AppendTo(statement, values, *m_table, isFirst);
        isFirst = false;
    }
    AppendOrder(statement, *m_table, {sort.begin(), sort.size()}, connection->GetDialect());
    Cellar::RowSet set = connection->Query(statement, values);

    const std::size_t columns = m_table->columns.size();
    std::vector<Entry> rows;
    rows.reserve(set.rows.size());
    for (std::vector<Value>& read : set.rows) {
        Row row(*m_table);
        for (std::size_t i = 0; i < columns; ++i)
            row.m_values[i] = Canonical(m_table->columns[i].type, std::move(read[i]));
        if (m_table->versioned)
            row.m_version = Cellar::ToLong(read[columns]); // NULL in a row that another program wrote
        rows.push_back({std::move(row), {}, false});
    }
    m_where = where;
    m_rows = std::move(rows);
    return MoveFirst();
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

CDataList::Entry& CDataList::At()
{
    if (IsEOL())
        throw std::logic_error(std::string(m_table->sqlName) + ": there is no current row");
    return m_rows[m_at];
}

const Row& CDataList::Current() const { return const_cast<CDataList*>(this)->At().row; }
bool CDataList::IsNew() const { return const_cast<CDataList*>(this)->At().isNew; }

bool CDataList::IsDirty() const noexcept { return !IsEOL() && (m_rows[m_at].isNew || m_rows[m_at].stored); }

void CDataList::AddNew()
{
    Row row(*m_table);
    for (const Column& column : m_table->columns)
        row.Set(column.ordinal, IsRowId(*m_table, column) ? Value(NewId(*m_table)) : DefaultOf(column));
    for (const Where& condition : m_where)
        if (condition.m_values.size() == 1 && !IsRowId(*m_table, ColumnOf(*m_table, condition.m_ordinal)))
            row.Set(condition.m_ordinal, condition.m_values[0]);
    m_rows.push_back({std::move(row), {}, true});
    m_at = m_rows.size() - 1;
}

void CDataList::CopyRow()
{
    Row row = At().row;
    row.m_version = 0;
    if (IsRowId(*m_table, m_table->columns[0]))
        row.Set(0, NewId(*m_table));
    m_rows.push_back({std::move(row), {}, true});
    m_at = m_rows.size() - 1;
}

void CDataList::Set(int ordinal, Value value)
{
    Entry& entry = At();
    const Column& column = ColumnOf(*m_table, ordinal);
    value = Canonical(column.type, std::move(value));
    if (entry.row.Get(ordinal) == value)
        return;
    if (!entry.isNew) {
        if (IsRowId(*m_table, column))
            throw std::logic_error(std::string(m_table->sqlName) + ": the id of a saved row stays");
        if (!entry.stored)
            entry.stored = entry.row;
    }
    entry.row.m_values[static_cast<std::size_t>(&column - m_table->columns.data())] = std::move(value);
}

void CDataList::Update()
{
    Entry& entry = At();
    if (entry.isNew)
        Insert(entry);
    else if (entry.stored)
        UpdateChanged(entry);
}

void CDataList::Insert(Entry& entry)
{
    const TableText& text = TextOf(*m_table);
    for (const std::size_t position : text.key) {
        if (entry.row.m_values[position].IsNull() && !m_table->keyMayBeNull)
            throw std::logic_error(std::string(m_table->sqlName) + ": a row needs its " +
                                   m_table->columns[position].name);
    }
    Statement()->Execute(text.insert, entry.row.m_values);
    entry.isNew = false;
    const Row saved = entry.row; // a listener may do anything to this list
    Notify(DataEvent::Insert, {nullptr, &saved});
}

void CDataList::UpdateChanged(Entry& entry)
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
        statement += Bracketed(m_table->columns[i].name) + " = " + PlaceholderOf(m_table->columns[i].type);
        values.push_back(entry.row.m_values[i]);
    }
    if (values.empty()) {
        entry.stored.reset();
        return;
    }
    if (m_table->versioned) {
        statement += ", [nVersion] = %ld";
        values.emplace_back(stored.m_version + 1);
    }
    AppendIdentity(statement, values, stored);
    if (Statement()->Execute(statement, values) == 0)
        ThrowChanged(stored);
    if (m_table->versioned)
        ++entry.row.m_version;
    const Row before = std::move(*entry.stored);
    entry.stored.reset();
    const Row saved = entry.row;
    Notify(DataEvent::Update, {&before, &saved});
}

void CDataList::Delete()
{
    Entry& entry = At();
    if (entry.isNew) {
        m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(m_at));
        return;
    }
    const Row stored = entry.stored ? *entry.stored : entry.row;
    SqlText statement = TextOf(*m_table).remove;
    std::vector<Value> values;
    AppendIdentity(statement, values, stored);
    if (Statement()->Execute(statement, values) == 0)
        ThrowChanged(stored);
    m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(m_at));
    Notify(DataEvent::Delete, {&stored, nullptr});
}

void CDataList::AppendIdentity(SqlText& statement, std::vector<Value>& values, const Row& row)
{
    const Table& table = row.GetTable();
    bool first = true;
    for (const std::size_t position : TextOf(table).key) {
        AppendColumn(statement, table.columns[position], first);
        AppendEqual(statement, values, table.columns[position], row.m_values[position]);
        first = false;
    }
    if (!table.versioned)
        return;
    statement += row.m_version == 0 ? SqlText(" AND ([nVersion] = %ld OR [nVersion] IS NULL)")
                                    : SqlText(" AND [nVersion] = %ld");
    values.emplace_back(row.m_version);
}

} // namespace Quarry
