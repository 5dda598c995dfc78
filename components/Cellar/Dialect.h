#pragma once

// From T-SQL to what another engine speaks.

#include <cstdint>
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
    /// The column type as this database declares it, e.g. "TEXT COLLATE NOCASE".
    virtual std::string TypeName(ColumnType type) const = 0;
    /// Server dialects lock a table against other writers with this; empty where a write transaction suffices.
    virtual std::string LockTable(std::string_view table) const = 0;
    /// What a column that takes @@SPID by default is declared with, in brackets. On SQLite it means the same to Cellar,
    /// and 0 to ordinary tools, so that they can add and mend rows too.
    virtual std::string SessionIdDefault() const = 0;
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
