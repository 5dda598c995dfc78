#include "Quarry/detail/TableText.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>

#include "Afx/text/Ascii.h"

namespace Quarry::Detail
{

using Cellar::ColumnType;
using Cellar::SqlText;
using Cellar::Value;

namespace
{

TableText MakeText(const Table& table)
{
    TableText text;
    for (const std::string_view name : SplitNames(table.key)) {
        const Column* const column = table.Find(name);
        if (!column)
            throw std::logic_error(std::string(table.sqlName) + " has no key column " + std::string(name));
        text.key.push_back(static_cast<std::size_t>(column - table.columns.data()));
    }
    const SqlText name = Bracketed(table.sqlName);
    SqlText names;
    SqlText placeholders;
    for (const Column& column : table.columns) {
        if (!names.IsEmpty()) {
            names += ", ";
            placeholders += ", ";
        }
        names += Bracketed(column.name);
        placeholders += PlaceholderOf(column.type);
    }
    if (table.versioned) {
        names += ", [nVersion]";
        placeholders += ", 0";
    }
    text.select = SqlText("SELECT ") + names + " FROM " + name;
    text.insert = SqlText("INSERT INTO ") + name + " (" + names + ") VALUES (" + placeholders + ")";
    text.update = SqlText("UPDATE ") + name + " SET ";
    text.remove = SqlText("DELETE FROM ") + name;
    if (text.key.size() == 1 && table.columns[text.key[0]].type == ColumnType::Int) {
        const SqlText largest =
            SqlText("(SELECT MAX(") + Bracketed(table.columns[text.key[0]].name) + ") FROM " + name + ")";
        text.countUp = SqlText("UPDATE [BRIXNextID] SET [lNext] = CASE WHEN [lNext] < ") + largest + " THEN " +
                       largest + " + %ld ELSE [lNext] + %ld END WHERE [strTable] = %s";
        text.startCount =
            SqlText("INSERT INTO [BRIXNextID] ([strTable], [lNext]) SELECT %s, COALESCE(") + largest + ", 0) + %ld";
    }
    return text;
}

bool HasShape(std::string_view text, std::string_view shape) noexcept
{
    return text.size() == shape.size() && std::equal(text.begin(), text.end(), shape.begin(), [](char c, char s) {
               return s == '0' ? Afx::IsDigit(c) : c == s;
           });
}

Value CanonicalInteger(Value value)
{
    if (value.kind == Value::Kind::Integer)
        return value;
    const std::int64_t integer = Cellar::ToInt64(value, -1);
    return integer == Cellar::ToInt64(value, 0) ? Value(static_cast<long long>(integer)) : value;
}

Value CanonicalDate(Value value)
{
    if (value.kind == Value::Kind::Text && HasShape(value.text, "0000-00-00"))
        value.kind = Value::Kind::Date;
    if (value.kind == Value::Kind::Date)
        return value;
    const Kiln::CDate date = Cellar::ToDate(value);
    return date.IsValid() ? Value(date) : value;
}

Value CanonicalDateTime(Value value)
{
    if (value.kind == Value::Kind::Text && HasShape(value.text, "0000-00-00 00:00:00.000"))
        value.kind = Value::Kind::DateTime;
    if (value.kind == Value::Kind::DateTime)
        return value;
    const COleDateTime time = Cellar::ToDateTime(value);
    return time.GetStatus() == COleDateTime::valid ? Value(time) : value;
}

Value CanonicalMoney(Value value)
{
    if (value.kind == Value::Kind::Integer)
        value.kind = Value::Kind::Money;
    if (value.kind == Value::Kind::Money)
        return value;
    const Kiln::CAmt amount = Cellar::ToAmount(value);
    return amount.IsValid() ? Value(amount) : value;
}

Value CanonicalDouble(Value value)
{
    if (value.kind == Value::Kind::Real)
        return value;
    const double real = Cellar::ToDouble(value, -1.0);
    return real < Cellar::ToDouble(value, 0.0) || real > Cellar::ToDouble(value, 0.0) ? value : Value(real);
}

} // namespace

const TableText& TextOf(const Table& table)
{
    static std::mutex& guard = *new std::mutex;
    static auto& texts = *new std::map<const Table*, std::unique_ptr<TableText>>;
    const std::lock_guard lock(guard);
    std::unique_ptr<TableText>& text = texts[&table];
    if (!text)
        text = std::make_unique<TableText>(MakeText(table));
    return *text;
}

SqlText Bracketed(std::string_view name) { return SqlText("[") + SqlText::Identifier(name) + "]"; }

SqlText PlaceholderOf(ColumnType type)
{
    switch (type) {
    case ColumnType::Int:
        return "%ld";
    case ColumnType::SmallInt:
    case ColumnType::Bit:
        return "%d";
    case ColumnType::Text:
        return "%s";
    case ColumnType::Binary:
        return "%b";
    case ColumnType::Date:
    case ColumnType::DateTime:
        return "%t";
    case ColumnType::Money:
        return "%m";
    case ColumnType::Double:
        return "%f";
    }
    throw std::logic_error("unknown column type");
}

Value Canonical(ColumnType type, Value value)
{
    if (value.IsNull())
        return value;
    switch (type) {
    case ColumnType::Int:
    case ColumnType::SmallInt:
    case ColumnType::Bit:
        return CanonicalInteger(std::move(value));
    case ColumnType::Text:
        if (value.kind == Value::Kind::Text)
            return value;
        return Cellar::ToText(value);
    case ColumnType::Binary:
        if (value.kind == Value::Kind::Binary)
            return value;
        return Cellar::ToBytes(value);
    case ColumnType::Date:
        return CanonicalDate(std::move(value));
    case ColumnType::DateTime:
        return CanonicalDateTime(std::move(value));
    case ColumnType::Money:
        return CanonicalMoney(std::move(value));
    case ColumnType::Double:
        return CanonicalDouble(std::move(value));
    }
    throw std::logic_error("unknown column type");
}

std::vector<std::string_view> SplitNames(std::string_view names)
{
    std::vector<std::string_view> split;
    while (!names.empty()) {
        const std::size_t comma = std::min(names.find(','), names.size());
        split.push_back(names.substr(0, comma));
        names.remove_prefix(std::min(comma + 1, names.size()));
    }
    return split;
}

} // namespace Quarry::Detail
