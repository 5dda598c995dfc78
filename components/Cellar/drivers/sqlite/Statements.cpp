#include "Cellar/drivers/sqlite/Statements.h"

#include <algorithm>

#include "Cellar/DatabaseError.h"
#include "Cellar/drivers/sqlite/SqliteError.h"

namespace Cellar::Sqlite
{
namespace
{

constexpr std::size_t kKeptStatements = 64;

void Assign(std::string& text, const void* bytes, int size) // bytes may be null when there are none
{
    if (bytes)
        text.assign(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
}

} // namespace

sqlite3_stmt* Statements::Get(std::string_view text)
{
    if (const auto found = m_byText.find(text); found != m_byText.end()) {
        m_entries.splice(m_entries.begin(), m_entries, found->second);
        return found->second->statement.get();
    }
    StatementPtr statement = Prepare(text);
    if (m_entries.size() >= kKeptStatements) {
        m_byText.erase(m_entries.back().text);
        m_entries.pop_back();
    }
    m_entries.push_front({std::string(text), std::move(statement)});
    m_byText.emplace(m_entries.front().text, m_entries.begin());
    return m_entries.front().statement.get();
}

StatementPtr Statements::Prepare(std::string_view text) const
{
    sqlite3_stmt* raw = nullptr;
    const char* rest = nullptr;
    const int result = sqlite3_prepare_v3(m_database, text.data(), static_cast<int>(text.size()),
                                          SQLITE_PREPARE_PERSISTENT, &raw, &rest);
    StatementPtr statement(raw);
    if (result != SQLITE_OK)
        Throw(m_database, Doing::Preparing);
    const char* const end = text.data() + text.size();
    const bool isAlone =
        std::all_of(rest, end, [](char c) { return c == ';' || c == ' ' || (c >= '\t' && c <= '\r'); });
    if (!statement || !isAlone)
        throw DatabaseError(DatabaseError::Category::Syntax, "", "there must be one statement", "");
    return statement;
}

Run::~Run()
{
    sqlite3_reset(m_statement); // its result repeats the error of the last step
    sqlite3_clear_bindings(m_statement);
}

void Run::Bind(const std::vector<Value>& values)
{
    int place = 0;
    for (const Value& value : values) {
        ++place;
        int result = SQLITE_OK;
        switch (value.kind) {
        case Value::Kind::Null:
            result = sqlite3_bind_null(m_statement, place);
            break;
        case Value::Kind::Integer:
        case Value::Kind::Money:
            result = sqlite3_bind_int64(m_statement, place, value.integer);
            break;
        case Value::Kind::Real:
            result = sqlite3_bind_double(m_statement, place, value.real);
            break;
        case Value::Kind::Binary:
            result = sqlite3_bind_blob64(m_statement, place, value.text.data(), value.text.size(), SQLITE_STATIC);
            break;
        case Value::Kind::Text:
        case Value::Kind::Date:
        case Value::Kind::DateTime:
            result = sqlite3_bind_text64(m_statement, place, value.text.data(), value.text.size(), SQLITE_STATIC,
                                         SQLITE_UTF8);
            break;
        }
        if (result != SQLITE_OK)
            Throw(m_database, Doing::Running);
    }
}

bool Run::Step()
{
    const int result = sqlite3_step(m_statement);
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        Throw(m_database, Doing::Running);
    return false;
}

std::string Run::GetColumnName(int column) const
{
    const char* const name = sqlite3_column_name(m_statement, column);
    return name ? name : "";
}

void Run::Read(int column, Value& value) const
{
    switch (sqlite3_column_type(m_statement, column)) {
    case SQLITE_INTEGER:
        value.kind = Value::Kind::Integer;
        value.integer = sqlite3_column_int64(m_statement, column);
        break;
    case SQLITE_FLOAT:
        value.kind = Value::Kind::Real;
        value.real = sqlite3_column_double(m_statement, column);
        break;
    case SQLITE_TEXT:
        value.kind = Value::Kind::Text;
        Assign(value.text, sqlite3_column_text(m_statement, column), sqlite3_column_bytes(m_statement, column));
        break;
    case SQLITE_BLOB:
        value.kind = Value::Kind::Binary;
        Assign(value.text, sqlite3_column_blob(m_statement, column), sqlite3_column_bytes(m_statement, column));
        break;
    default:
        break;
    }
}

} // namespace Cellar::Sqlite
