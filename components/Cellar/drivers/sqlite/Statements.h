#pragma once

// Prepared statements, kept by their text.

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <sqlite3.h>

#include "Cellar/Value.h"

namespace Cellar::Sqlite
{

struct CloseStatement
{
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
using StatementPtr = std::unique_ptr<sqlite3_stmt, CloseStatement>;

/// The statements used last. A statement that Get returned stays alive until the next Get.
class Statements
{
public:
    explicit Statements(sqlite3* database) noexcept : m_database(database) {}

    /// Prepares the text or finds it prepared. Throws DatabaseError (Syntax) also for more than one statement.
    sqlite3_stmt* Get(std::string_view text);

private:
    struct Entry
    {
        std::string text;
        StatementPtr statement;
    };
    StatementPtr Prepare(std::string_view text) const;

    sqlite3* m_database;
    std::list<Entry> m_entries;                                                // the one used last in front
    std::unordered_map<std::string_view, std::list<Entry>::iterator> m_byText; // views into the entries
};

/// One use of a prepared statement, from binding to its end; then it is reset and holds no value any more.
class Run
{
public:
    Run(sqlite3* database, sqlite3_stmt* statement) noexcept : m_database(database), m_statement(statement) {}
    ~Run();
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// The values must live as long as this object.
    void Bind(const std::vector<Value>& values);
    /// Goes to the next row; false at the end.
    bool Step();
    int GetColumnCount() const noexcept { return sqlite3_column_count(m_statement); }
    std::string GetColumnName(int column) const;
    /// Fills a new value.
    void Read(int column, Value& value) const;

private:
    sqlite3* m_database;
    sqlite3_stmt* m_statement;
};

} // namespace Cellar::Sqlite
