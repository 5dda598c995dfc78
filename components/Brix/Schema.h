#pragma once

// The practice's schema, made from the declarations.

#include <string>
#include <string_view>
#include <vector>

#include "Brix/Export.h"
#include "Cellar/Connection.h"
#include "Quarry/Table.h"

namespace Brix
{

/// The version of the schema that this library reads and writes.
inline constexpr int kSchemaVersion = 6;

/// All declared tables, record classes first, then the tables that are reached by statements only.
BRIX_API const std::vector<const Quarry::Table*>& AllTables();
/// Null when nothing is declared under that SQL name; names ignore case.
BRIX_API const Quarry::Table* FindTable(std::string_view sqlName) noexcept;

/// The statements that make the whole schema in the dialect.
BRIX_API std::string SchemaScript(const Cellar::Dialect& dialect);

/// Makes the schema in an empty database, in one transaction; the key that is set (Shellkit::SetPracticeKey) becomes
/// the practice's own. Throws Cellar::DatabaseError (Other) when a practice is there already.
BRIX_API void CreateSchema(Cellar::CConnection& connection);

/// On a server: from now on new ids stand behind those of the rows that are there, whoever put them in (a copy). The
/// embedded database sees to it by itself.
BRIX_API void PutIdsBehindRows(Cellar::CConnection& connection);

enum class SchemaState
{
    Current,
    NotAPractice, // no schema of ours
    Older,
    Newer // made by a newer library: refused
};
struct SchemaVersion
{
    SchemaState state;
    int version;            // 0 when not a practice
    Cellar::Bytes keyCheck; // for IsPracticeKey (PracticeKey.h)
};
/// With one statement, of a practice of whatever version. Not within a transaction of a server, which it may end.
BRIX_API SchemaVersion ReadSchemaVersion(Cellar::CConnection& connection);
/// Brings an older practice up to date in one transaction: adds the tables and columns that it lacks (a current one
/// that lost some gets them back). Cut short at any moment it leaves the older practice whole. Throws
/// Cellar::DatabaseError (Other) when there is no practice, or a newer one.
BRIX_API void UpgradeSchema(Cellar::CConnection& connection);

} // namespace Brix
