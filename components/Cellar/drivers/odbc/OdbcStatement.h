#pragma once

// One prepared statement of a server.

#include <memory>
#include <span>
#include <string>

#include "Cellar/detail/Driver.h"
#include "Cellar/drivers/odbc/Parameters.h"
#include "Cellar/drivers/odbc/ResultColumns.h"
#include "Cellar/drivers/odbc/ServerSession.h"

namespace Cellar::Odbc
{

/// A statement behind the port. It outlives its session only to be destroyed.
class OdbcStatement final : public Detail::CompiledStatement
{
public:
    OdbcStatement(std::shared_ptr<ServerSession> session, const PreparedText& prepared);
    ~OdbcStatement() override;

    long Execute(std::span<const Value> values) override;
    void Open(std::span<const Value> values, Reading reading) override;
    bool Step() override;
    int GetColumnCount() override { return m_columns.GetCount(); }
    std::string GetColumnName(int column) override { return m_columns.GetName(column); }
    void Read(std::span<Value* const> row) override;
    void Close() noexcept override;

private:
    void Prepare(StatementHandle& statement, const std::string& text) const;
    void Run(StatementHandle& statement, const std::string& text, std::span<const Value> values);
    bool MustBePreparedAnew(SQLHSTMT statement) const;
    SQLLEN CountChanged() const;
    void Describe(SQLHSTMT statement);
    void OpenCursor(std::span<const Value> values);
    bool FetchMore();
    SQLHSTMT Reads() const noexcept; // whose rows come

    std::shared_ptr<ServerSession> m_session;
    std::string m_text;
    Parameters m_parameters;
    StatementHandle m_statement; // prepared at its first run
    ResultColumns m_columns;

    /// An INSERT whose key may be there already, which would end the transaction. Several rows at once are no lock and
    /// no gateway: their ids are new, and each savepoint would cost a round trip.
    enum class Guard : std::uint8_t
    {
        None,
        UnlessThere, // the text says that such a row is left out
        Savepoint
    };
    Guard m_guard = Guard::None;

    bool m_isCopy = false; // the result, which the server keeps for m_part

    // A large result comes through a cursor of the server, some rows at a time.
    StatementHandle m_declaration, m_part;
    std::string m_cursor;     // its name; empty: none is open
    std::size_t m_wanted = 0; // rows of the part
    std::size_t m_had = 0;    // of them
};

} // namespace Cellar::Odbc
