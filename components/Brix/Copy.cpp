#include "Brix/Copy.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "Brix/PracticeKey.h"
#include "Brix/Schema.h"
#include "Cellar/RowCursor.h"
#include "Cellar/Transaction.h"
#include "Cellar/ValueTypes.h"
#include "Quarry/NewId.h"
#include "Quarry/Table.h"
#include "Shellkit/Envelope.h"

namespace Brix
{
namespace
{

using Cellar::ColumnType;
using Cellar::DatabaseError;
using Cellar::SqlText;
using Cellar::Value;
using Quarry::Column;
using Quarry::Table;

// In one statement. What drivers keep for each value of each table's statement is most of the memory that a copy takes.
constexpr std::size_t kMostRows = 200, kMostValues = 500;

[[noreturn]] void ThrowCopy(const std::string& why)
{
    throw DatabaseError(DatabaseError::Category::Other, "", why, "");
}

/// Sessions' rows say nothing in another database; the schema's own row and the counters are made there.
bool IsCopied(const Table& table)
{
    const std::string_view name = table.sqlName;
    return std::none_of(table.columns.begin(), table.columns.end(), std::mem_fn(&Column::IsSession)) &&
           name != "BRIXSchema" && name != "BRIXNextID";
}

/// The ids that a practice has given, also those whose rows are gone: a copy gives none of them again.
class GivenIds
{
public:
    explicit GivenIds(Cellar::CConnection& practice)
    {
        for (const Table* const table : AllTables()) {
            if (table->GetCounted())
                Add(*table, nullptr, Quarry::LastId(*table, practice));
            for (const Column& column : table->columns)
                if (column.identity)
                    Add(*table, &column, LastOfIdentity(practice, *table, column));
        }
    }

    void PutInto(Cellar::CConnection& practice) const
    {
        PutIdsBehindRows(practice);
        for (const auto& [table, column, last] : m_given)
            if (!column)
                Quarry::SkipIds(*table, last, practice);
            else if (practice.GetDialect().IdsOfSequence() > 0)
                practice.Script(practice.GetDialect().MoveIdentity(table->sqlName, column->name, last));
    }

private:
    struct Given
    {
        const Table* table;
        const Column* column; // that the database counts by itself; null: NewId does
        long last;
    };
    void Add(const Table& table, const Column* column, long last)
    {
        if (last > 0)
            m_given.push_back({&table, column, last});
    }
    static long LastOfIdentity(Cellar::CConnection& practice, const Table& table, const Column& column)
    {
        const SqlText last = practice.GetDialect().LastOfIdentity(table.sqlName, column.name);
        return last.IsEmpty() ? 0 : Cellar::ToLong(practice.Query(last, {}).rows.at(0).at(0));
    }

    std::vector<Given> m_given;
};

/// The statements and the columns of one table's copy.
class TableCopy
{
public:
    TableCopy(const Table& table, const Cellar::Dialect& from, const Cellar::Dialect& to)
        : m_table(table), m_columns(table.columns.begin(), table.columns.end())
    {
        if (table.versioned)
            m_columns.push_back({-1, "nVersion", ColumnType::Int});
        SqlText names, row;
        for (const Column& column : m_columns) {
            names += (names.IsEmpty() ? SqlText() : SqlText(", ")) + SqlText::Bracketed(column.name);
            row += (row.IsEmpty() ? SqlText("(") : SqlText(", ")) + Cellar::PlaceholderOf(column.type);
        }
        m_row = row + ")";
        m_insert = SqlText("INSERT INTO ") + SqlText::Bracketed(table.sqlName) + " (" + names + ") VALUES ";
        m_selectFrom = SqlText("SELECT ") + names + " FROM " + SqlText::Bracketed(table.sqlName) + OrderBy(from);
        m_selectTo = SqlText("SELECT ") + names + " FROM " + SqlText::Bracketed(table.sqlName) + OrderBy(to);
        m_rowsAtOnce = std::clamp<std::size_t>(kMostValues / m_columns.size(), 1, kMostRows);
    }

    const Table& GetTable() const noexcept { return m_table; }
    std::size_t RowsAtOnce() const noexcept { return m_rowsAtOnce; }
    std::size_t GetWidth() const noexcept { return m_columns.size(); }
    const SqlText& SelectFrom() const noexcept { return m_selectFrom; }
    const SqlText& SelectTo() const noexcept { return m_selectTo; }

    /// The insert of as many rows; that of a full batch is made once.
    const SqlText& Insert(std::size_t rows)
    {
        if (rows != m_insertRows) {
            m_insertMany = m_insert + m_row;
            for (std::size_t i = 1; i < rows; ++i)
                m_insertMany += SqlText(", ") + m_row;
            m_insertRows = rows;
        }
        return m_insertMany;
    }

    /// Reads the cursor's row into `row`, each value in the one form of its column.
    void Read(Cellar::CRowCursor& cursor, std::span<Value> row)
    {
        m_pointers.clear();
        for (Value& value : row)
            m_pointers.push_back(&value);
        cursor.ReadInto(m_pointers);
        for (std::size_t i = 0; i < row.size(); ++i)
            Cellar::MakeCanonical(m_columns[i].type, row[i]);
    }

    bool IsBinary(std::size_t column) const noexcept { return m_columns[column].type == ColumnType::Binary; }

    /// "BRIXClient 12", for a message.
    std::string NameOf(std::span<const Value> row) const
    {
        return std::string(m_table.sqlName) + (*m_table.key ? " " + Cellar::ToText(row[0]).Str() : "");
    }
    const char* NameOfColumn(std::size_t column) const noexcept { return m_columns[column].name; }

private:
    /// By the key, which is numbers, so that both databases walk alike. One table alone has a text: its order is that
    /// of the tables' names, of which no two are alike.
    SqlText OrderBy(const Cellar::Dialect& dialect) const
    {
        SqlText order;
        for (const std::string_view name : Quarry::SplitNames(m_table.key)) {
            order += (order.IsEmpty() ? SqlText(" ORDER BY ") : SqlText(", ")) + SqlText::Bracketed(name);
            if (m_table.keyMayBeNull)
                order += dialect.NullsFirst(false);
        }
        return order;
    }

    const Table& m_table;
    std::vector<Column> m_columns;
    SqlText m_row, m_insert, m_selectFrom, m_selectTo, m_insertMany;
    std::size_t m_rowsAtOnce = 1, m_insertRows = 0;
    std::vector<Value*> m_pointers;
};

/// Secrets on their way from one key to the other.
class Resealing
{
public:
    Resealing(std::span<const std::uint8_t> from, std::span<const std::uint8_t> to) noexcept : m_from(from), m_to(to) {}

    /// Seals what is a secret under the new key.
    void Reseal(Value& value, Copied& copied) const
    {
        const auto sealed = Sealed(value);
        if (sealed.empty())
            return;
        auto plain = Shellkit::OpenWith(m_from, sealed);
        if (!plain) {
            ++copied.unopened;
            return;
        }
        const auto again = Shellkit::SealWith(m_to, *plain);
        Shellkit::Wipe(plain->data(), plain->size());
        if (!again)
            ThrowCopy("the new practice's key cannot be used");
        value = Value(*again);
        ++copied.resealed;
    }

    /// Whether both hold the same, each under its key.
    bool AreEqual(const Value& from, const Value& to) const
    {
        if (from == to)
            return true;
        auto before = Shellkit::OpenWith(m_from, Sealed(from));
        auto after = Shellkit::OpenWith(m_to, Sealed(to));
        const bool isEqual = before && after && *before == *after;
        for (auto* const plain : {&before, &after})
            if (*plain)
                Shellkit::Wipe((*plain)->data(), (*plain)->size());
        return isEqual;
    }

private:
    static std::span<const std::uint8_t> Sealed(const Value& value) noexcept
    {
        const auto bytes = Shellkit::AsBytes(value.View());
        return Shellkit::IsEnvelope(bytes, Shellkit::KeyId::Practice) ? bytes : std::span<const std::uint8_t>();
    }
    std::span<const std::uint8_t> m_from, m_to;
};

class Copy
{
public:
    Copy(const CopySide& from, const CopySide& to, const CopyProgress& progress)
        : m_from(from), m_to(to), m_secrets(from.key, to.key), m_progress(progress)
    {}

    Copied Run()
    {
        if (ReadSchemaVersion(m_from.practice).state != SchemaState::Current)
            ThrowCopy("what is to be copied is no practice of this version");
        const Cellar::CConnection::Moment moment(m_from.practice);
        std::vector<TableCopy> tables = FindTables();
        const GivenIds given(m_from.practice);
        Cellar::CTransaction transaction(m_to.practice, Cellar::Intent::Write);
        MakeSchema();
        for (TableCopy& table : tables)
            CopyRows(table);
        for (TableCopy& table : tables)
            CompareRows(table);
        given.PutInto(m_to.practice);
        transaction.Commit();
        return m_copied;
    }

private:
    /// Those with rows; counts all of them.
    std::vector<TableCopy> FindTables()
    {
        std::vector<TableCopy> tables;
        for (const Table* const table : AllTables()) {
            if (!IsCopied(*table))
                continue;
            const auto count =
                m_from.practice.Query(SqlText("SELECT COUNT(*) FROM ") + SqlText::Bracketed(table->sqlName), {});
            const std::int64_t rows = Cellar::ToInt64(count.rows.at(0).at(0));
            if (rows == 0)
                continue;
            tables.emplace_back(*table, m_from.practice.GetDialect(), m_to.practice.GetDialect());
            m_copied.rows += rows;
        }
        m_copied.tables = static_cast<int>(tables.size());
        return tables;
    }

    void MakeSchema()
    {
        const Cellar::SuspendDirectSQLEvents quiet(m_to.practice);
        CreateSchema(m_to.practice);
        m_to.practice.ExecuteDirectf("UPDATE [BRIXSchema] SET [vbKeyCheck] = %b", MakeKeyCheck(m_to.key));
    }

    void CopyRows(TableCopy& table)
    {
        const std::size_t width = table.GetWidth();
        std::vector<Value> values(table.RowsAtOnce() * width);
        std::size_t rows = 0;
        const auto row = [&](std::size_t i) { return std::span(values).subspan(i * width, width); };
        Cellar::CRowCursor cursor(m_from.practice, table.SelectFrom());
        while (cursor.Next()) {
            table.Read(cursor, row(rows));
            for (std::size_t i = 0; i < width; ++i)
                if (table.IsBinary(i))
                    m_secrets.Reseal(row(rows)[i], m_copied);
            if (++rows == table.RowsAtOnce()) {
                Insert(table, values, rows);
                rows = 0;
            }
        }
        for (std::size_t i = 0; i < rows; ++i) // a statement for each number of rows would stay in memory
            Insert(table, row(i), 1);
    }

    void Insert(TableCopy& table, std::span<const Value> values, std::size_t rows)
    {
        const Cellar::SuspendDirectSQLEvents quiet(m_to.practice);
        try {
            Cellar::CTransaction level(m_to.practice); // so that a refused row can be found
            m_to.practice.Execute(table.Insert(rows), values);
            level.Commit();
        } catch (const DatabaseError& error) {
            using Category = DatabaseError::Category;
            if (error.GetCategory() != Category::LostConnection && error.GetCategory() != Category::ReadOnly)
                InsertOneByOne(table, values, rows);
            throw;
        }
        Done(rows);
    }

    /// Throws for the row that was refused with others, and names it.
    void InsertOneByOne(TableCopy& table, std::span<const Value> values, std::size_t rows)
    {
        for (std::size_t i = 0; i < rows; ++i) {
            const auto row = values.subspan(i * table.GetWidth(), table.GetWidth());
            try {
                m_to.practice.Execute(table.Insert(1), row);
            } catch (const DatabaseError& error) {
                throw DatabaseError(error.GetCategory(), error.GetCode(),
                                    table.NameOf(row) + " is refused: " + error.GetReason(), error.GetStatement());
            }
        }
    }

    void CompareRows(TableCopy& table)
    {
        const std::size_t width = table.GetWidth();
        std::vector<Value> before(width), after(width);
        Cellar::CRowCursor from(m_from.practice, table.SelectFrom());
        Cellar::CRowCursor to(m_to.practice, table.SelectTo());
        std::size_t rows = 0;
        for (bool more = from.Next(); more; more = from.Next()) {
            table.Read(from, before);
            if (!to.Next())
                ThrowCopy("the copy is not equal: " + table.NameOf(before) + " is missing in it");
            table.Read(to, after);
            CompareRow(table, before, after);
            if (++rows == table.RowsAtOnce()) {
                Done(rows);
                rows = 0;
            }
        }
        if (to.Next())
            ThrowCopy(std::string("the copy is not equal: it has more rows in ") + table.GetTable().sqlName);
        Done(rows);
    }

    void CompareRow(const TableCopy& table, std::span<const Value> before, std::span<const Value> after) const
    {
        for (std::size_t i = 0; i < before.size(); ++i) {
            const bool isEqual = table.IsBinary(i) ? m_secrets.AreEqual(before[i], after[i]) : before[i] == after[i];
            if (!isEqual)
                ThrowCopy("the copy is not equal: " + table.NameOf(before) + " differs in " + table.NameOfColumn(i));
        }
    }

    void Done(std::size_t rows)
    {
        m_done += static_cast<std::int64_t>(rows);
        if (m_progress && !m_progress(m_done, 2 * m_copied.rows))
            ThrowCopy("the copy was given up");
    }

    const CopySide& m_from;
    const CopySide& m_to;
    Resealing m_secrets;
    const CopyProgress& m_progress;
    Copied m_copied;
    std::int64_t m_done = 0;
};

} // namespace

Copied CopyPractice(const CopySide& from, const CopySide& to, const CopyProgress& progress)
{
    return Copy(from, to, progress).Run();
}

} // namespace Brix
