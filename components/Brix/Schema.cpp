#include "Brix/Schema.h"

#include <algorithm>

#include "Afx/text/TextFold.h"
#include "Brix/detail/Catalog.h"
#include "Brix/PracticeKey.h"
#include "Cellar/Transaction.h"

namespace Brix
{
namespace
{

using Cellar::DatabaseError;
using Cellar::Dialect;
using Quarry::Column;
using Quarry::Table;

/// Since then the time of a token lock is UTC.
constexpr int kUtcLocksVersion = 2;
/// Since then every table's session column has a default that ordinary tools have too.
constexpr int kToolsVersion = 4;

/// Texts that a server is to index must have a length there.
constexpr int kIndexedLength = 100;

std::string Name(const Dialect& dialect, std::string_view name)
{
    return dialect.Translate("[" + std::string(name) + "]").text;
}

/// A comma separated list of names.
std::string Names(const Dialect& dialect, std::string_view names)
{
    std::string list;
    for (const std::string_view name : Quarry::SplitNames(names))
        list += (list.empty() ? "" : ", ") + Name(dialect, name);
    return list;
}

bool IsInKey(const Table& table, std::string_view column)
{
    const std::string key = "," + std::string(table.key) + ",";
    return key.find("," + std::string(column) + ",") != std::string::npos;
}

bool IsIndexed(const Table& table, const Column& column)
{
    const auto named = [&](const char* name) { return Afx::EqualNoCase(column.name, name); };
    return IsInKey(table, column.name) || (table.unique && named(table.unique)) ||
           std::any_of(table.parents.begin(), table.parents.end(), [&](const auto& p) { return named(p.column); });
}

std::string TypeOf(const Dialect& dialect, const Table& table, const Column& column)
{
    std::string type = dialect.TypeName(column.type);
    const int length = column.length != 0 ? column.length : IsIndexed(table, column) ? kIndexedLength : 0;
    const std::size_t any = type.find("(max)");
    if (column.type == Cellar::ColumnType::Text && length != 0 && any != std::string::npos)
        type.replace(any, 5, "(" + std::to_string(length) + ")");
    return type;
}

/// " DEFAULT …"; empty when there is none in this database.
std::string DefaultOf(const Dialect& dialect, const Column& column)
{
    const std::string value = dialect.Default(column.defaultValue ? column.defaultValue : "");
    return value.empty() ? value : " DEFAULT " + value;
}

/// Of the column whose ids a sequence counts: rows of other programs get theirs of it too.
std::string CountedDefault(const Dialect& dialect, const Table& table)
{
    const std::string value = dialect.SequenceDefault(table.sqlName);
    return value.empty() ? value : " DEFAULT " + value;
}

std::string ColumnText(const Dialect& dialect, const Table& table, const Column& column)
{
    const bool inKey = IsInKey(table, column.name) && !table.keyMayBeNull;
    const bool isWholeKey = inKey && Afx::EqualNoCase(table.key, column.name);
    return Name(dialect, column.name) + " " + TypeOf(dialect, table, column) +
           (column.identity ? dialect.Identity() : "") + (inKey ? " NOT NULL" : "") +
           (&column == table.GetCounted() ? CountedDefault(dialect, table) : DefaultOf(dialect, column)) +
           (isWholeKey ? " PRIMARY KEY" : "");
}

constexpr Column kVersion{-1, "nVersion", Cellar::ColumnType::Int, "0"};

/// Leaves rows with a null out of a unique index. Its columns may all be null: those that may not are the primary key.
std::string WithoutNulls(const Dialect& dialect, const char* columns)
{
    std::string condition;
    for (const std::string_view name : Quarry::SplitNames(columns))
        condition += (condition.empty() ? " WHERE " : " AND ") + Name(dialect, name) + " IS NOT NULL";
    return condition;
}

std::string Index(const Dialect& dialect, const Table& table, const char* columns, bool unique)
{
    std::string name = (unique ? "UX_" : "IX_") + std::string(table.sqlName) + "_" + columns;
    std::replace(name.begin(), name.end(), ',', '_');
    return std::string(unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") + Name(dialect, name) + " ON " +
           Name(dialect, table.sqlName) + " (" + Names(dialect, columns) + ")" +
           (unique && dialect.AreNullsEqual() ? WithoutNulls(dialect, columns) : "") + ";\n";
}

std::string CreateTable(const Dialect& dialect, const Table& table)
{
    std::string text = (table.GetCounted() ? dialect.CreateSequence(table.sqlName) : std::string()) + "CREATE TABLE " +
                       Name(dialect, table.sqlName) + " (";
    const char* before = "\n    ";
    for (const Column& column : table.columns) {
        text += before + ColumnText(dialect, table, column);
        before = ",\n    ";
    }
    if (table.versioned)
        text += before + ColumnText(dialect, table, kVersion);
    const bool severalKeyColumns = std::string_view(table.key).find(',') != std::string_view::npos;
    if (severalKeyColumns && !table.keyMayBeNull)
        text += std::string(before) + "PRIMARY KEY (" + Names(dialect, table.key) + ")";
    text += "\n);\n";
    if (table.keyMayBeNull)
        text += Index(dialect, table, table.key, true);
    if (table.unique)
        text += Index(dialect, table, table.unique, true);
    for (const Table::Parent& parent : table.parents)
        text += Index(dialect, table, parent.column, false);
    return text;
}

/// MTDLogWrite: nine texts into the log.
std::string LogProcedure(const Dialect& dialect)
{
    const Table& log = *FindTable("MTDLog");
    std::vector<const char*> texts;
    for (const Column& column : log.columns)
        if (column.type == Cellar::ColumnType::Text)
            texts.push_back(column.name);
    return dialect.InsertProcedure("MTDLogWrite", log.sqlName, texts);
}

using Columns = Detail::Catalog::mapped_type;

bool HasColumn(const Columns& there, const char* column) { return there.contains(Afx::FoldLower(column)); }

bool IsComputed(const Dialect& dialect, const Column& column)
{
    return DefaultOf(dialect, column).find('(') != std::string::npos;
}

std::string AddColumn(const Dialect& dialect, const Table& table, const Column& column)
{
    Column added = column;
    if (!dialect.AddsComputedDefaults() && IsComputed(dialect, column))
        added.defaultValue = nullptr; // refused otherwise
    return "ALTER TABLE " + Name(dialect, table.sqlName) + " ADD " + ColumnText(dialect, table, added) + ";\n";
}

/// The embedded database neither adds a column whose default is computed nor changes a default. A table that lacks such
/// a column, or has a session's from before ordinary tools knew it, is made anew when all its columns are ours; in its
/// rows the new column is null.
bool MustBeMadeAnew(const Dialect& dialect, const Table& table, const Columns& there, int version)
{
    const auto isOutdated = [&](const Column& c) {
        return (c.IsSession() && version < kToolsVersion) || (!HasColumn(there, c.name) && IsComputed(dialect, c));
    };
    const auto isOurs = [&](const std::string& name) { return table.Find(name) != nullptr; };
    return !dialect.AddsComputedDefaults() && std::any_of(table.columns.begin(), table.columns.end(), isOutdated) &&
           std::all_of(there.begin(), there.end(), isOurs);
}

std::string MakeAnew(const Dialect& dialect, const Table& table, const Columns& there)
{
    std::string columns, values;
    for (const Column& column : table.columns) {
        const bool isThere = HasColumn(there, column.name);
        if (!isThere && !IsComputed(dialect, column))
            continue; // its default fills it
        const std::string separator = columns.empty() ? "" : ", ";
        columns += separator + Name(dialect, column.name);
        values += separator + (isThere ? Name(dialect, column.name) : "NULL");
    }
    const std::string name = Name(dialect, table.sqlName);
    return "CREATE TEMP TABLE BRIXKept AS SELECT * FROM " + name + ";\nDROP TABLE " + name + ";\n" +
           CreateTable(dialect, table) + "INSERT INTO " + name + " (" + columns + ") SELECT " + values +
           " FROM BRIXKept;\nDROP TABLE BRIXKept;\n";
}

/// What an older table lacks.
std::string Complete(const Dialect& dialect, const Table& table, const Columns& there, int version)
{
    if (MustBeMadeAnew(dialect, table, there, version))
        return MakeAnew(dialect, table, there);
    std::string script;
    for (const Column& column : table.columns) {
        if (!HasColumn(there, column.name))
            script += AddColumn(dialect, table, column);
    }
    if (table.versioned && !HasColumn(there, kVersion.name))
        script += AddColumn(dialect, table, kVersion);
    for (const Table::Parent& parent : table.parents) {
        if (!HasColumn(there, parent.column))
            script += Index(dialect, table, parent.column, false);
    }
    return script;
}

/// The statements that a practice of an older version lacks.
std::string UpgradeScript(const Dialect& dialect, const Detail::Catalog& catalog, int version)
{
    std::string script;
    for (const Table* const table : AllTables()) {
        const auto there = catalog.find(Afx::FoldLower(table->sqlName));
        if (there == catalog.end()) {
            script += CreateTable(dialect, *table);
            if (Afx::EqualNoCase(table->sqlName, "MTDLog"))
                script += LogProcedure(dialect);
            continue;
        }
        script += Complete(dialect, *table, there->second, version);
    }
    return script;
}

} // namespace

std::string SchemaScript(const Dialect& dialect)
{
    std::string script = dialect.SchemaStart();
    for (const Table* const table : AllTables())
        script += CreateTable(dialect, *table);
    return script + LogProcedure(dialect);
}

void CreateSchema(Cellar::CConnection& connection)
{
    Cellar::CTransaction transaction(connection, Cellar::Intent::Write);
    if (Detail::ReadCatalog(connection).contains("brixschema"))
        throw DatabaseError(DatabaseError::Category::Other, "", "there is a practice in this database already", "");
    connection.Script(SchemaScript(connection.GetDialect()));
    connection.ExecuteDirectf("INSERT INTO [BRIXSchema] ([nVersion], [vbKeyCheck]) VALUES (%d, %b)", kSchemaVersion,
                              MakeKeyCheck());
    transaction.Commit();
}

SchemaVersion ReadSchemaVersion(Cellar::CConnection& connection)
{
    SchemaVersion read{SchemaState::NotAPractice, 0, {}};
    Cellar::RowSet set;
    try {
        set = connection.Query("SELECT * FROM [BRIXSchema]", {}); // an older practice lacks columns
    } catch (const DatabaseError& error) {
        if (error.GetCategory() != DatabaseError::Category::Syntax)
            throw;
        return read; // no such table
    }
    for (const auto& row : set.rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (Afx::EqualNoCase(set.columns[i], "nVersion"))
                read.version = std::max(read.version, static_cast<int>(Cellar::ToLong(row[i])));
            else if (Afx::EqualNoCase(set.columns[i], "vbKeyCheck"))
                read.keyCheck = Cellar::ToBytes(row[i]);
        }
    }
    if (read.version > kSchemaVersion)
        read.state = SchemaState::Newer;
    else if (read.version > 0)
        read.state = read.version < kSchemaVersion ? SchemaState::Older : SchemaState::Current;
    return read;
}

void PutIdsBehindRows(Cellar::CConnection& connection)
{
    const Dialect& dialect = connection.GetDialect();
    if (dialect.IdsOfSequence() == 0)
        return;
    std::string script;
    for (const Table* const table : AllTables()) {
        if (const Column* const counted = table->GetCounted())
            script += dialect.MoveSequence(table->sqlName, counted->name, 0) + ";\n";
        for (const Column& column : table->columns)
            if (column.identity)
                script += dialect.MoveIdentity(table->sqlName, column.name, 0) + ";\n";
    }
    connection.Script(script);
}

void UpgradeSchema(Cellar::CConnection& connection)
{
    Cellar::CTransaction transaction(connection, Cellar::Intent::Write);
    const SchemaVersion version = ReadSchemaVersion(connection);
    if (version.state == SchemaState::NotAPractice)
        throw DatabaseError(DatabaseError::Category::Other, "", "there is no practice in this database", "");
    if (version.state == SchemaState::Newer)
        throw DatabaseError(DatabaseError::Category::Other, "",
                            "the practice was made by a newer version of the suite: update this one", "");
    if (version.version < kUtcLocksVersion) // made anew below; it holds nothing that lasts
        connection.Script("DROP TABLE IF EXISTS MTDAuthorisationLock");
    if (const std::string script =
            UpgradeScript(connection.GetDialect(), Detail::ReadCatalog(connection), version.version);
        !script.empty())
        connection.Script(script);
    PutIdsBehindRows(connection);
    if (version.state == SchemaState::Older)
        connection.ExecuteDirectf("UPDATE [BRIXSchema] SET [nVersion] = %d", kSchemaVersion);
    transaction.Commit();
}

} // namespace Brix
