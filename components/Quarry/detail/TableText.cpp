#include "Quarry/detail/TableText.h"

#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>

#include "Afx/text/Numbers.h"
#include "Cellar/ValueTypes.h"

namespace Quarry::Detail
{

using Cellar::SqlText;
using Cellar::Value;

namespace
{

/// The default of a column in a row that is not in the database yet. Those of record classes are whole numbers.
Value DefaultOf(const Column& column)
{
    const auto number = Afx::ParseWhole<long>(column.defaultValue ? column.defaultValue : "");
    return number ? Value(*number) : Value();
}

void AddCounter(TableText& text)
{
    const SqlText largest = SqlText("(SELECT MAX(") + text.columns[text.key[0]].name + ")" + text.from + ")";
    text.countUp = SqlText("UPDATE [BRIXNextID] SET [lNext] = CASE WHEN [lNext] < ") + largest + " THEN " + largest +
                   " + %ld ELSE [lNext] + %ld END WHERE [strTable] = %s";
    text.startCount =
        SqlText("INSERT INTO [BRIXNextID] ([strTable], [lNext]) SELECT %s, COALESCE(") + largest + ", 0) + %ld";
}

TableText MakeText(const Table& table)
{
    TableText text(table);
    for (const std::string_view name : SplitNames(table.key)) {
        const Column* const column = table.Find(name);
        if (!column)
            throw std::logic_error(std::string(table.sqlName) + " has no key column " + std::string(name));
        text.key.push_back(static_cast<std::size_t>(column - table.columns.data()));
    }
    const SqlText name = SqlText::Bracketed(table.sqlName);
    for (const Column& column : table.columns) {
        const SqlText& placeholder = Cellar::PlaceholderOf(column.type);
        const SqlText columnName = SqlText::Bracketed(column.name);
        text.columns.push_back({columnName, columnName + " = " + placeholder});
        text.allColumns += (text.allColumns.IsEmpty() ? SqlText() : SqlText(", ")) + columnName;
        text.insertRow += (text.insertRow.IsEmpty() ? SqlText("(") : SqlText(", ")) + placeholder;
        text.newRow.Set(column.ordinal, DefaultOf(column));
    }
    if (table.versioned) {
        text.allColumns += ", [nVersion]";
        text.insertRow += ", 0";
    }
    text.insertRow += ")";
    text.from = SqlText(" FROM ") + name;
    text.insert = SqlText("INSERT INTO ") + name + " (" + text.allColumns + ") VALUES ";
    text.insertOne = text.insert + text.insertRow;
    text.update = SqlText("UPDATE ") + name + " SET ";
    if (table.GetCounted())
        AddCounter(text);
    return text;
}

} // namespace

const TableText& TextOf(const Table& table)
{
    static thread_local const Table* lastTable = nullptr; // mostly one table is worked on
    static thread_local const TableText* lastText = nullptr;
    if (lastTable == &table)
        return *lastText;
    static std::mutex& guard = *new std::mutex;
    static auto& texts = *new std::map<const Table*, std::unique_ptr<TableText>>;
    const std::lock_guard lock(guard);
    std::unique_ptr<TableText>& text = texts[&table];
    if (!text)
        text = std::make_unique<TableText>(MakeText(table));
    lastTable = &table;
    lastText = text.get();
    return *text;
}

} // namespace Quarry::Detail
