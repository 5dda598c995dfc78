#pragma once

// One session of a server, with what is open in it.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Cellar/ConnectionText.h"
#include "Cellar/drivers/odbc/Handles.h"
#include "Cellar/drivers/odbc/OdbcError.h"
#include "Cellar/drivers/odbc/ServerRules.h"

namespace Cellar::Odbc
{

/// What a server holds for a transaction level, so that it is gone when that is undone.
struct Held
{
    std::string name;
    int level; // 0: for no transaction
};

/// A connection to a server. Statements that only steer (BEGIN, savepoints) wait for the next one that does something
/// and are sent with it: each statement is one round trip, and a level costs none. Every operation throws
/// DatabaseError; once the connection is lost, all do.
class ServerSession
{
public:
    explicit ServerSession(const ServerText& text);
    ~ServerSession();
    ServerSession(const ServerSession&) = delete;
    ServerSession& operator=(const ServerSession&) = delete;

    const ServerRules& GetRules() const noexcept { return *m_rules; }
    /// A text that the driver has about itself or its server (SQL_DBMS_NAME ...).
    std::string GetInfo(SQLUSMALLINT which) const;
    void OnSent(std::function<void(std::string_view)> hook) { m_sent = std::move(hook); }

    /// A new statement of the connection. Those that were retired before are freed now: each costs a round trip, which
    /// none is worth when the connection ends anyway.
    StatementHandle NewStatement();
    void Retire(StatementHandle statement) noexcept;
    /// Before `text` is sent: sends what waits; refuses on a lost connection, and in a transaction that has failed.
    void BeforeRun(std::string_view text);
    /// After a call on the statement failed: throws what that means.
    [[noreturn]] void Fail(SQLHSTMT statement);
    /// Sends `text`, which has no values, with what waits in front of it. The statement has the result.
    void RunDirect(SQLHSTMT statement, const std::string& text);
    void RunDirect(const std::string& text);
    /// The number that a query of one gives.
    std::int64_t ReadNumber(const std::string& query);

    // The transaction.
    void Begin();
    void BeginMoment(); // a transaction that reads one moment; rolled back in the end
    void Commit();
    void Rollback();
    void SetSavepoint(int level);
    void ReleaseSavepoint(int level);
    void RollbackToSavepoint(int level);
    /// To a savepoint within the innermost level, which the failed statement before stood in.
    void GoBack(const std::string& savepoint);
    bool InTransaction() const noexcept { return m_inTransaction && !m_isLost; }
    bool HasFailed() const noexcept { return m_hasFailed; }
    void LockForWriting(const Subject& subject);

    /// A cursor of the server by that name is there from now on.
    void OpenedCursor(std::string name) { m_cursors.push_back({std::move(name), m_level}); }
    /// Closes it with the next statement that is sent, if it is there still.
    void CloseCursor(const std::string& name);

    /// Sends this, without an answer of interest, in front of the next statement.
    void SendLater(std::string_view text);

private:
    void Connect(const ServerText& text);
    bool IsDead() const noexcept;        // as far as the driver knows
    bool HasEndedTransaction() noexcept; // after a failed statement
    std::string TakeWaiting(const std::string& text);
    void RefuseUnlessUsable() const;
    void Undone(int level) noexcept; // that one and all within it
    void Ended(int level) noexcept;  // its part belongs to the level around it
    static std::string LevelName(int level) { return "level" + std::to_string(level); }

    EnvironmentHandle m_environment;
    SQLHDBC m_connection = nullptr;
    const ServerRules* m_rules = nullptr;
    std::function<void(std::string_view)> m_sent;
    std::vector<StatementHandle> m_retired;
    StatementHandle m_direct;
    std::string m_waiting;       // to be sent with the next statement
    std::vector<Held> m_toClose; // cursors, likewise
    std::vector<Held> m_locks, m_cursors;
    int m_level = 0; // of the transaction's savepoints, the transaction itself being 1
    int m_saved = 0; // the innermost one that the server knows
    bool m_inTransaction = false;
    bool m_beginWaits = false; // to be sent
    bool m_hasFailed = false;  // the transaction, up to a savepoint that is gone back to
    bool m_isLost = false;
};

} // namespace Cellar::Odbc
