#include "Cellar/drivers/sqlite/SqliteStatement.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "Cellar/DatabaseError.h"
#include "Cellar/drivers/sqlite/SqliteError.h"

namespace Cellar::Sqlite
{
namespace
{

int Bind(sqlite3_stmt* statement, int place, const Value& value)
{
    const std::string_view text = value.View();
    switch (value.GetKind()) {
    case Value::Kind::Null:
        return SQLITE_OK; // as it is after Close
    case Value::Kind::Integer:
    case Value::Kind::Money:
        return sqlite3_bind_int64(statement, place, value.GetInteger());
    case Value::Kind::Real:
        return sqlite3_bind_double(statement, place, value.GetReal());
    case Value::Kind::Binary:
        return sqlite3_bind_blob64(statement, place, text.data(), text.size(), SQLITE_STATIC);
    default:
        return sqlite3_bind_text64(statement, place, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
    }
}

std::string_view Bytes(const void* bytes, int size) // null when there are none
{
    return bytes ? std::string_view(static_cast<const char*>(bytes), static_cast<std::size_t>(size))
                 : std::string_view();
}

void ReadColumn(sqlite3_stmt* statement, int column, Value& value)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        value.SetInteger(Value::Kind::Integer, sqlite3_column_int64(statement, column));
        break;
    case SQLITE_FLOAT:
        value = Value(sqlite3_column_double(statement, column));
        break;
    case SQLITE_TEXT: {
        const unsigned char* const text = sqlite3_column_text(statement, column);
        value.SetText(Value::Kind::Text, Bytes(text, sqlite3_column_bytes(statement, column)));
        break;
    }
    case SQLITE_BLOB: {
        const void* const blob = sqlite3_column_blob(statement, column);
        value.SetText(Value::Kind::Binary, Bytes(blob, sqlite3_column_bytes(statement, column)));
        break;
    }
    default:
        value = Value();
    }
}

} // namespace

StatementPtr Prepare(sqlite3* database, std::string_view text)
{
    sqlite3_stmt* raw = nullptr;
    const char* rest = nullptr;
    const int result = sqlite3_prepare_v3(database, text.data(), static_cast<int>(text.size()),
                                          SQLITE_PREPARE_PERSISTENT, &raw, &rest);
    StatementPtr statement(raw);
    if (result != SQLITE_OK)
        Throw(database, Doing::Preparing);
    const char* const end = text.data() + text.size();
    const bool isAlone =
        std::all_of(rest, end, [](char c) { return c == ';' || c == ' ' || (c >= '\t' && c <= '\r'); });
    if (!statement || !isAlone)
        throw DatabaseError(DatabaseError::Category::Syntax, "", "there must be one statement", "");
    return statement;
}

SqliteStatement::SqliteStatement(sqlite3* database, std::string_view text, std::function<void(sqlite3_stmt*)> beforeRun)
    : m_database(database), m_statement(Prepare(database, text)), m_beforeRun(std::move(beforeRun))
{}

long SqliteStatement::Execute(std::span<const Value> values)
{
    Open(values, Reading::Whole);
    const std::int64_t before = sqlite3_total_changes64(m_database);
    while (Step())
        ;
    if (sqlite3_total_changes64(m_database) == before)
        return 0; // the engine still counts the changes of the statement before
    const std::int64_t changed = sqlite3_changes64(m_database);
    return static_cast<long>(std::min<std::int64_t>(changed, std::numeric_limits<std::int32_t>::max()));
}

void SqliteStatement::Open(std::span<const Value> values, Reading)
{
    m_beforeRun(m_statement.get());
    int place = 0;
    for (const Value& value : values)
        if (Bind(m_statement.get(), ++place, value) != SQLITE_OK)
            Throw(m_database, Doing::Running);
}

bool SqliteStatement::Step()
{
    const int result = sqlite3_step(m_statement.get());
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        Throw(m_database, Doing::Running);
    return false;
}

std::string SqliteStatement::GetColumnName(int column)
{
    const char* const name = sqlite3_column_name(m_statement.get(), column);
    return name ? name : "";
}

void SqliteStatement::Read(std::span<Value* const> row)
{
    int column = 0;
    for (Value* const value : row)
        ReadColumn(m_statement.get(), column++, *value);
}

void SqliteStatement::Close() noexcept
{
    sqlite3_reset(m_statement.get()); // its result repeats the error of the last step
    sqlite3_clear_bindings(m_statement.get());
}

} // namespace Cellar::Sqlite
