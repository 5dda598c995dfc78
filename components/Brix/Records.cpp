#include "Brix/Records.h"

#include <algorithm>

#include "Afx/text/TextFold.h"
#include "Brix/detail/TableBuilder.h"
#include "Brix/Schema.h"

namespace Brix
{

using Cellar::ColumnType;

#define RECORD(name, number, sqlName)                                                                                  \
    const Quarry::Table& name::Declaration() noexcept                                                                  \
    {                                                                                                                  \
        static const Quarry::Table& table = Detail::TableBuilder(#name, number, sqlName)
#define KEY(columns) .Key(columns)
#define NULLABLE_KEY(columns) .NullableKey(columns)
#define PARENT(column, sqlTable) .Parent(column, sqlTable)
#define PARENT_BY(column, sqlTable, parentColumn) .Parent(column, sqlTable, parentColumn)
#define TAX_FORM_CHILD                                                                                                 \
    PARENT("lTaxFormID", "BRIXTaxForm")                                                                                \
    LONG(1, TaxFormID, "lTaxFormID") LONG(2, ClientID, "lClientID") SHORT(3, Year, "nYear")
#define LONG(ordinal, name, sql) .Column(ordinal, sql, ColumnType::Int)
#define INT(ordinal, name, sql) .Column(ordinal, sql, ColumnType::Int)
#define SHORT(ordinal, name, sql) .Column(ordinal, sql, ColumnType::SmallInt)
#define BIT(ordinal, name, sql, initial) .Column(ordinal, sql, ColumnType::Bit, initial)
#define TEXT(ordinal, name, sql) .Column(ordinal, sql, ColumnType::Text)
#define BINARY(ordinal, name, sql) .Column(ordinal, sql, ColumnType::Binary)
#define DATE(ordinal, name, sql) .Column(ordinal, sql, ColumnType::Date)
#define DATETIME(ordinal, name, sql) .Column(ordinal, sql, ColumnType::DateTime)
#define MONEY(ordinal, name, sql) .Column(ordinal, sql, ColumnType::Money)
#define DOUBLE(ordinal, name, sql) .Column(ordinal, sql, ColumnType::Double)
#define END_RECORD                                                                                                     \
    .Done();                                                                                                           \
    return table;                                                                                                      \
    }
#include "Brix/records.def"

namespace
{

std::vector<const Quarry::Table*> RecordTables()
{
    return {
#define RECORD(name, number, sqlName) &name::Declaration(),
#define KEY(columns)
#define NULLABLE_KEY(columns)
#define PARENT(column, sqlTable)
#define PARENT_BY(column, sqlTable, parentColumn)
#define TAX_FORM_CHILD
#define LONG(ordinal, name, sql)
#define INT(ordinal, name, sql)
#define SHORT(ordinal, name, sql)
#define BIT(ordinal, name, sql, initial)
#define TEXT(ordinal, name, sql)
#define BINARY(ordinal, name, sql)
#define DATE(ordinal, name, sql)
#define DATETIME(ordinal, name, sql)
#define MONEY(ordinal, name, sql)
#define DOUBLE(ordinal, name, sql)
#define END_RECORD
#include "Brix/records.def"
    };
}

void AppendDirectTables(std::vector<const Quarry::Table*>& tables)
{
#define DIRECT(sqlName) tables.push_back(&Detail::TableBuilder("", 0, sqlName)
#define KEY(columns) .Key(columns)
#define UNIQUE(column) .Unique(column)
#define LONG(sql) .Next(sql, ColumnType::Int)
#define INT(sql, initial) .Next(sql, ColumnType::Int, initial)
#define SHORT(sql, initial) .Next(sql, ColumnType::SmallInt, initial)
#define TEXT(sql, length) .Next(sql, ColumnType::Text, nullptr, length)
#define BINARY(sql) .Next(sql, ColumnType::Binary)
#define DATETIME(sql) .Next(sql, ColumnType::DateTime)
#define NOW(sql) .Next(sql, ColumnType::DateTime, "GETDATE()")
#define NOW_UTC(sql) .Next(sql, ColumnType::DateTime, "GETUTCDATE()")
#define SESSION(sql) .Next(sql, ColumnType::Int, "@@SPID")
#define IDENTITY(sql) .Next(sql, ColumnType::Int, nullptr, 0, true)
#define USER_LOCKS                                                                                                     \
    TEXT("UserId", 100)                                                                                                \
    SESSION("ConnectionID") NOW("dtLocked").Next("strWorkstation", ColumnType::Text, "HOST_NAME()", 128)
#define END_DIRECT .Done());
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
