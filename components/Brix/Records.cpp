#include "Brix/Records.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "Afx/text/TextFold.h"
#include "Brix/detail/TableBuilder.h"
#include "Brix/Schema.h"

namespace Brix
{

using Cellar::ColumnType;

void Detail::RequireTable(const Quarry::Row& row, const Quarry::Table& table)
{
    if (&row.GetTable() != &table)
        throw std::logic_error(std::string("a row of ") + row.GetTable().sqlName + " is read as one of " +
                               table.sqlName);
}

#define BRIX_RECORD(record, number, sqlName)                                                                           \
    const Quarry::Table& record::Declaration() noexcept                                                                \
    {                                                                                                                  \
        static const Quarry::Table& table = Detail::TableBuilder(#record, number, sqlName)
#define BRIX_KEY(...) .Key({__VA_ARGS__})
#define BRIX_NULLABLE_KEY(...) .NullableKey({__VA_ARGS__})
#define BRIX_PARENT(column, sqlTable) .Parent(column, sqlTable)
#define BRIX_PARENT_BY(column, sqlTable, parentColumn) .Parent(column, sqlTable, parentColumn)
#define BRIX_COLUMN(kind, ordinal, name, sqlName, initial) .Column(ordinal, sqlName, Kinds::kind::kStored, initial)
#define BRIX_END_RECORD                                                                                                \
    .Done();                                                                                                           \
    return table;                                                                                                      \
    }
#include "Brix/records.def"

namespace
{

std::vector<const Quarry::Table*> RecordTables()
{
    return {
#define BRIX_RECORD(record, number, sqlName) &record::Declaration(),
#define BRIX_COLUMN(kind, ordinal, name, sqlName, initial)
#define BRIX_END_RECORD
#include "Brix/records.def"
    };
}

void AppendDirectTables(std::vector<const Quarry::Table*>& tables)
{
#define BRIX_DIRECT(sqlName) tables.push_back(&Detail::TableBuilder("", 0, sqlName)
#define BRIX_KEY(ordinal) .Key({ordinal})
#define BRIX_UNIQUE(column) .Unique(column)
#define BRIX_LONG(sql) .Next(sql, ColumnType::Int)
#define BRIX_INT(sql, initial) .Next(sql, ColumnType::Int, initial)
#define BRIX_SHORT(sql, initial) .Next(sql, ColumnType::SmallInt, initial)
#define BRIX_TEXT(sql, length) .Next(sql, ColumnType::Text, nullptr, length)
#define BRIX_BINARY(sql) .Next(sql, ColumnType::Binary)
#define BRIX_DATETIME(sql) .Next(sql, ColumnType::DateTime)
#define BRIX_NOW(sql) .Next(sql, ColumnType::DateTime, "GETDATE()")
#define BRIX_NOW_UTC(sql) .Next(sql, ColumnType::DateTime, "GETUTCDATE()")
#define BRIX_SESSION(sql) .Next(sql, ColumnType::Int, "@@SPID")
#define BRIX_IDENTITY(sql) .Next(sql, ColumnType::Int, nullptr, 0, true)
#define BRIX_USER_LOCKS                                                                                                \
    BRIX_TEXT("UserId", 100)                                                                                           \
    BRIX_SESSION("ConnectionID")                                                                                       \
    BRIX_NOW("dtLocked").Next("strWorkstation", ColumnType::Text, "HOST_NAME()", 128)
#define BRIX_END_DIRECT .Done());
#include "Brix/direct.def"
}

} // namespace

const std::vector<const Quarry::Table*>& AllTables()
{
    static const auto& tables = *[] {
        auto* const all = new std::vector<const Quarry::Table*>(RecordTables());
        AppendDirectTables(*all);
        return all;
    }();
    return tables;
}

const Quarry::Table* FindTable(std::string_view sqlName) noexcept
{
    const auto& tables = AllTables();
    const auto found = std::find_if(tables.begin(), tables.end(), [&](const Quarry::Table* table) {
        return Afx::EqualNoCase(table->sqlName, sqlName);
    });
    return found == tables.end() ? nullptr : *found;
}

} // namespace Brix
