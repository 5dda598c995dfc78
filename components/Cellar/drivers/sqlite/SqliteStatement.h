#pragma once

// One compiled statement of the engine.

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <sqlite3.h>

#include "Cellar/detail/Driver.h"

namespace Cellar::Sqlite
{

struct FinalizeStatement
{
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
using StatementPtr = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// Throws DatabaseError (Syntax) also for more than one statement and for none.
StatementPtr Prepare(sqlite3* database, std::string_view text);

/// A statement behind the port. `beforeRun` is called before each run.
class SqliteStatement final : public Detail::CompiledStatement
{
public:
    SqliteStatement(sqlite3* database, std::string_view text, std::function<void(sqlite3_stmt*)> beforeRun);

    long Execute(std::span<const Value> values) override;
    void Open(std::span<const Value> values, Reading) override;
    bool Step() override;
    int GetColumnCount() override { return sqlite3_column_count(m_statement.get()); }
    std::string GetColumnName(int column) override;
    void Read(std::span<Value* const> row) override;
    void Close() noexcept override;

private:
    sqlite3* m_database;
    StatementPtr m_statement;
    std::function<void(sqlite3_stmt*)> m_beforeRun;
};

} // namespace Cellar::Sqlite
