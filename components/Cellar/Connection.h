#pragma once

// A connection to the practice's database.

#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Cellar/DatabaseError.h"
#include "Cellar/Dialect.h"
#include "Cellar/Export.h"
#include "Cellar/RowSet.h"
#include "Cellar/SqlText.h"
#include "Cellar/Value.h"

namespace Cellar
{

struct ServerProduct; // ServerState.h

enum class Create
{
    No,
    IfMissing, // a missing or empty file becomes a new database, its owner's alone
    ForGroup   // the same, and the folder's group reads and writes it
};

/// What a transaction is begun for.
enum class Intent : bool
{
    Read, // a write may follow: the lock is taken then
    Write // the lock is taken before anything is read, so that what is read still holds when it is written
};

/// What a transaction with the intent to write reads and writes: the practice, or all that belongs to one row (a
/// client). On a server two that name different rows do not wait for each other, and whoever names none waits for
/// everybody. The embedded database has one lock for all.
struct Subject
{
    int table = 0; // its number, 1 to 65535; 0: the practice
    long id = 0;
    bool IsPractice() const noexcept { return table == 0; }
};

/// What an open level was begun for.
struct Begun
{
    Intent intent = Intent::Read;
    Subject subject;
};

/// How the rows of a result come from a server.
enum class Reading : bool
{
    Whole,  // at once, with the statement: for results that are kept anyway
    InParts // some at a time, however many there are: bounded memory, and one round trip more
};

/// One open connection. Statements are T-SQL; each %s (text), %d (int, short), %ld (long), %I64d (__int64), %b
/// (binary), %t (date-time or date), %m (amount), %f (double) becomes a bound parameter, never pasted text; '%s' in
/// quotes means %s; %% is a per cent sign. Number, type and range of the arguments are checked before anything is sent
/// (%d and %ld take 32 bits); a NULL fits every placeholder. Errors are DatabaseError.
///
/// Transactions are levels: no BEGIN is sent before the first write or the first level with the intent to write, then
/// one write transaction with a savepoint for each further level. A first write that is refused as busy leaves the
/// levels as they were: try again. Outside any level each statement is durable by itself. Used by one thread.
///
/// When the engine ends the transaction by itself (disk full, connection lost), the levels stay counted for those who
/// opened them, but writes and commits on them are refused until all have been rolled back. PostgreSQL spoils the
/// innermost level when one of its statements fails (but for an INSERT of one row, or of a query, that is refused as
/// DuplicateKey): its statements and its commit are refused until it has been rolled back; the levels around it are
/// whole. On a lost connection everything is refused (LostConnection).
class CELLAR_API CConnection
{
    struct State;

public:
    using Create = Cellar::Create;

    /// Opens what the text names: `sqlite:path` or a bare path, or a server's database that is there, with `odbc:` (see
    /// ConnectionText.h). Throws DatabaseError (CannotOpen, ReadOnly) with a message that says what is wrong and how to
    /// mend it.
    static std::unique_ptr<CConnection> Open(const CString& connectionText, Create create = Create::No);
    ~CConnection();
    CConnection(const CConnection&) = delete;
    CConnection& operator=(const CConnection&) = delete;

    /// Rows changed. A statement that touches no row is a success.
    template<class... Args>
    long ExecuteDirectf(const SqlText& statement, const Args&... args)
    {
        return Execute(statement, Values(args...));
    }
    long ExecuteDirect(const SqlText& statement) { return Execute(statement, {}); }
    template<class... Args>
    RowSet Queryf(const SqlText& statement, const Args&... args)
    {
        return Query(statement, Values(args...));
    }
    long Execute(const SqlText& statement, std::span<const Value> values);
    RowSet Query(const SqlText& statement, std::span<const Value> values);
    long Execute(const SqlText& statement, std::initializer_list<Value> values)
    {
        return Execute(statement, std::span(values.begin(), values.size()));
    }
    RowSet Query(const SqlText& statement, std::initializer_list<Value> values)
    {
        return Query(statement, std::span(values.begin(), values.size()));
    }
    /// Adds the row of an INSERT; false, and nothing happens, when there is one of that key already.
    template<class... Args>
    bool AddUnlessThere(const SqlText& insert, const Args&... args)
    {
        try {
            Execute(insert, Values(args...));
            return true;
        } catch (const DatabaseError& error) {
            if (error.GetCategory() != DatabaseError::Category::DuplicateKey)
                throw;
            return false;
        }
    }
    /// One new row or several (an INSERT) whose number nobody asks for. Within levels that have begun a server gets it
    /// together with others that wait, in one round trip: with the next statement of any other kind, and before a level
    /// begins or is committed. What is wrong with it is told there, as a failure of the level. Elsewhere, and on the
    /// embedded database, it is sent at once. It is no direct statement (OnDirectStatement).
    void ExecuteLater(const SqlText& statement, std::span<const Value> values);
    /// Statements of the database's own dialect (the schema). Counts as a write.
    void Script(std::string_view statements);
    /// Keeps other connections from writing to the table until the outermost level ends. Needs an open level.
    void LockTable(const SqlText& table);
    /// Runs `work` in a transaction of its own, aside from open levels (see Aside): what it writes is saved together,
    /// or not at all when it throws. With a table no other connection writes to that meanwhile: what is read there
    /// still holds when it is written. `work` begins no levels and reserves no ids.
    void RunAlone(const SqlText& table, const std::function<void()>& work);
    /// How long a statement waits for another connection before it is refused as busy; 5000 unless told.
    void SetBusyTimeout(unsigned milliseconds);

    // Transactions. A level that is not committed is rolled back; the outermost commit makes it durable.
    // A level begun with the intent to write that is refused as busy is not open.
    void Begin(Intent intent = Intent::Read, const Subject& subject = {});
    void Commit();              // nothing when no level is open
    void Rollback();            // the innermost level; nothing when no level is open
    void RollbackTo(int level); // this level and all within it, whatever the engine says; nothing when it is not open
    int GetLevel() const noexcept;
    /// The open levels, outermost first.
    std::vector<Begun> GetLevels() const;
    /// The open levels hold a write that is not durable yet.
    bool HasUnsavedWrites() const noexcept;
    /// The open levels are a transaction of the engine: something was written, or the intent to write declared.
    bool HasBegun() const noexcept;
    /// Another number whenever a level was rolled back or the outermost one ended: what was worked out from rows, or
    /// reserved, within the levels before is void then.
    std::uint64_t GetEpoch() const noexcept;

    /// While it lives, statements stand aside from the open levels: each commits by itself, is seen by others at once,
    /// and no rollback takes it. For what must outlast the user's Cancel: tokens, log lines, locks. Throws
    /// std::logic_error once the levels have begun, since the engine would take the statement into them; so do
    /// transactions, locks on tables and new ids inside it.
    class CELLAR_API Aside
    {
    public:
        explicit Aside(CConnection& connection);
        ~Aside();
        Aside(const Aside&) = delete;
        Aside& operator=(const Aside&) = delete;

    private:
        std::shared_ptr<State> m_state;
    };
    bool IsAside() const noexcept;

    /// Work that waits until no open level stands in its way: run whenever the outermost level has ended, saved or not,
    /// and by RunWaiting, until it answers true; a last time before the connection is closed, whose open levels are
    /// rolled back first. For what must be undone outside though nobody is there to do it again: locks. It must not
    /// throw, end levels or close the connection.
    void WaitForLevels(std::function<bool(bool isLast)> work);
    /// Runs what waits, unless levels have begun.
    void RunWaiting() noexcept;

    /// While it lives, everything that the connection reads is of one moment, whatever others write; they need not
    /// wait. Nothing may be written on the connection meanwhile. Throws std::logic_error within levels, and
    /// DatabaseError.
    class CELLAR_API Moment
    {
    public:
        explicit Moment(CConnection& connection);
        ~Moment();
        Moment(const Moment&) = delete;
        Moment& operator=(const Moment&) = delete;

    private:
        std::shared_ptr<State> m_state;
    };

    /// The number that marks this connection in lock rows (@@SPID); the first call may write.
    std::int64_t GetSessionId();
    const Dialect& GetDialect() const noexcept;
    ServerProduct GetServer() const;
    const CString& GetConnectionText() const noexcept; // without passwords
    /// Takes away what other users of the computer may do with the database's files, where these are this user's own.
    /// For practices: some were made readable by everybody. A line for the user when there was something to do, once.
    std::string KeepPrivate();

    /// Copies the database, as it is at one moment, into a file that is new or empty. It only reads: neither does it
    /// wait for whoever writes, nor do they for it. Not within levels that have begun. It throws, too, once a
    /// signal waits that an Afx::SignalGuard holds back. What was copied when it throws stays. A server refuses it:
    /// its own tools make backups.
    void CopyTo(const std::string& file);

    /// Told of each statement of Execute that changed something, in T-SQL, unless suspended; null removes the hook.
    void OnDirectStatement(std::function<void(std::string_view statement)> hook);
    bool AreDirectEventsSuspended() const noexcept;
    /// Told after a rollback, also one that threw, once for all levels that it undid; null removes the hook.
    void OnRollback(std::function<void()> hook);
    /// Told of everything that is sent to the engine, in its own dialect and without values, BEGIN, COMMIT and
    /// savepoints included; null removes the hook. For measuring.
    void OnSent(std::function<void(std::string_view statement)> hook);

    /// Leads here while the connection is open.
    std::weak_ptr<CConnection*> Watch() const noexcept { return m_self; }
    /// What the layer above keeps for as long as the connection is open; null until it puts something there.
    std::shared_ptr<void>& Companion() noexcept { return m_companion; }

private:
    friend class SuspendDirectSQLEvents;
    friend class CRowCursor;
    explicit CConnection(std::shared_ptr<State> state);
    void RunWaiting(bool isLast) noexcept;
    template<class... Args>
    static std::array<Value, sizeof...(Args)> Values(const Args&... args)
    {
        return {Value(args)...};
    }
    std::shared_ptr<State> m_state; // shared with guards and cursors, which may outlive it
    std::shared_ptr<CConnection*> m_self;
    std::shared_ptr<void> m_companion; // closed before the database
};

/// While it lives, direct statements of the connection are not reported.
class CELLAR_API SuspendDirectSQLEvents
{
public:
    explicit SuspendDirectSQLEvents(CConnection& connection) noexcept;
    ~SuspendDirectSQLEvents();
    SuspendDirectSQLEvents(const SuspendDirectSQLEvents&) = delete;
    SuspendDirectSQLEvents& operator=(const SuspendDirectSQLEvents&) = delete;

private:
    CConnection& m_connection;
};

} // namespace Cellar
