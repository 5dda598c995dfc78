#pragma once

// From T-SQL to what another engine speaks.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Cellar/Export.h"
#include "Cellar/SqlText.h"
#include "Cellar/Value.h"

namespace Cellar
{

/// The type, order and quoting of one placeholder of a statement.
struct Placeholder
{
    enum class Type : std::uint8_t
    {
        Text,     // %s, also '%s'
        Int,      // %d
        Long,     // %ld
        Int64,    // %I64d
        Binary,   // %b
        DateTime, // %t: a date-time or a date
        Money,    // %m: an amount
        Real      // %f: a finite double
    };
    Type type;
};

/// What a statement may do to the data.
enum class Effect : std::uint8_t
{
    Read,
    Write,
    Call // EXEC: writes, and engines do not tell how many rows
};

/// A statement ready for an engine: its own dialect, '?' for each value.
struct PreparedText
{
    std::string text;
    std::vector<Placeholder> placeholders;
    Effect effect = Effect::Read;
    bool usesSessionId = false; // names @@SPID
};

/// One database's way of writing what the library writes in T-SQL. The rules work on tokens, not on text.
class CELLAR_API Dialect
{
public:
    virtual ~Dialect();
    virtual const char* GetName() const noexcept = 0;
    /// One statement, placeholders as in CConnection; `%%` is a per cent sign. Throws DatabaseError (Syntax) for an
    /// unknown placeholder, a placeholder inside a longer string, an open string or comment, an unknown @@name, a
    /// variable, more than one statement, and none.
    virtual PreparedText Translate(std::string_view tsql) const = 0;
    /// Several new rows are sent as one statement (Together).
    virtual bool SendsTogether() const noexcept = 0;
    /// One statement that does what these do, INSERTs into different rows, with the values of all, in their order.
    virtual PreparedText Together(std::span<const PreparedText> statements) const = 0;
    /// The column type as this database declares it, e.g. "TEXT COLLATE NOCASE".
    virtual std::string TypeName(ColumnType type) const = 0;
    /// One connection writes at a time, and all others wait for it, whatever they write.
    virtual bool HasOneWriter() const noexcept = 0;
    /// Server dialects lock a table against other writers with this; empty where a write transaction suffices.
    virtual std::string LockTable(std::string_view table) const = 0;
    /// How a column with this default (T-SQL) is declared; empty where the database has no such thing. @@SPID on SQLite
    /// means the same to Cellar, and 0 to ordinary tools, so that they can add and mend rows too.
    virtual std::string Default(std::string_view tsql) const = 0;
    /// What follows the type of a column that the database counts up by itself when it is left out; may be empty.
    virtual const char* Identity() const noexcept = 0;
    /// How many ids one number of a table's sequence stands for: itself and those behind it; 0 where ids are counted in
    /// a row, since the database has no sequences.
    static constexpr long kBlock = 32;
    virtual long IdsOfSequence() const noexcept = 0;
    /// The statements that make the sequence of a table, and the default of the column that it counts.
    virtual std::string CreateSequence(std::string_view table) const = 0;
    virtual std::string SequenceDefault(std::string_view table) const = 0;
    /// A query for the first ids of as many blocks as its one argument (%ld) says.
    virtual SqlText NextBlocks(std::string_view table) const = 0;
    /// A query for the column's largest id, with a row only when the sequence would give ids that rows have already.
    virtual SqlText SequenceIsBehind(std::string_view table, std::string_view column) const = 0;
    /// Statements after which it gives ids that no row has, above `last`, and those for a column that the database
    /// counts (Identity).
    virtual std::string MoveSequence(std::string_view table, std::string_view column, std::int64_t last) const = 0;
    virtual std::string MoveIdentity(std::string_view table, std::string_view column, std::int64_t last) const = 0;
    /// Queries for the largest id that either has given so far, or may have; 0 or null: none. Empty where there is
    /// none.
    virtual SqlText LastOfSequence(std::string_view table) const = 0;
    virtual SqlText LastOfIdentity(std::string_view table, std::string_view column) const = 0;
    /// A table that has rows may be given a column whose default is computed.
    virtual bool AddsComputedDefaults() const noexcept = 0;
    /// In a unique index a null equals another: rows that may have it must be left out of the index.
    virtual bool AreNullsEqual() const noexcept = 0;
    /// The statements that make a procedure which inserts its texts into these columns of a table.
    virtual std::string InsertProcedure(std::string_view name, std::string_view table,
                                        std::span<const char* const> columns) const = 0;
    /// A query for the names of all tables with those of their columns.
    virtual const SqlText& TableColumns() const noexcept = 0;
    /// A query whose one row "ok" means that the file is not damaged; empty where the server sees to it.
    virtual const SqlText& FileIntegrity() const noexcept = 0;
    /// A query for the path of the database's file; empty for a server's.
    virtual const SqlText& FilePath() const noexcept = 0;
    /// A query for the sessions that there are: column nSession, their number, and dtBegan, at which they began by the
    /// clock of GETUTCDATE(). Empty where the database does not tell.
    virtual const SqlText& Sessions() const noexcept = 0;
    /// A query whose one number says whether the server's end of this connection is encrypted (column bEncrypted).
    /// Empty where the database does not tell.
    virtual const SqlText& IsEncrypted() const noexcept = 0;
    /// A condition that every value of the column fulfils which may not read as its type, and few others; empty where
    /// the database lets none in.
    virtual SqlText MayNotRead(ColumnType type, const SqlText& column) const = 0;
    /// The moment of a column that GETDATE() filled, by the clock of GETUTCDATE(). Of the hour that comes twice in
    /// autumn it may be the later one.
    virtual SqlText LocalToUtc(const SqlText& column) const = 0;
    /// What follows a column in ORDER BY so that nulls come before everything else, and in descending order behind it;
    /// empty where they do so by themselves. A column that is never null needs it nowhere.
    virtual const SqlText& NullsFirst(bool descending) const noexcept = 0;
    /// Statements that a schema begins with, so that the types it names exist; may be empty.
    virtual std::string SchemaStart() const = 0;
    /// After this statement the next ones write where the last ones wrote, so that what has fitted once fits again;
    /// empty where the database sees to it by itself.
    virtual SqlText ReuseLog() const = 0;
};

CELLAR_API const Dialect& SqliteDialect();
CELLAR_API const Dialect& PostgresDialect();
CELLAR_API const Dialect& SqlServerDialect();

} // namespace Cellar
