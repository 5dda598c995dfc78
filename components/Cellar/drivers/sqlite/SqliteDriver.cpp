#include "Cellar/drivers/sqlite/SqliteDriver.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <new>
#include <string>
#include <utility>

#include "Afx/system/FilePath.h"
#include "Afx/system/SignalGuard.h"
#include "Cellar/DatabaseError.h"
#include "Cellar/Dialect.h"
#include "Cellar/drivers/sqlite/DatabaseFile.h"
#include "Cellar/drivers/sqlite/FileRights.h"
#include "Cellar/drivers/sqlite/SqliteError.h"
#include "Cellar/drivers/sqlite/SqliteStatement.h"

namespace Cellar::Sqlite
{
namespace
{

constexpr int kBusyTimeout = 5000; // milliseconds

/// The session id is a number that no other session of this file ever had: ids of processes and of threads come back,
/// and a lock row that a dead session left behind would then look like ours.
constexpr char kTakeSessionId[] =
    "CREATE TABLE IF NOT EXISTS CellarSession(nNext INTEGER NOT NULL);"
    "INSERT INTO CellarSession(nNext) SELECT 1 WHERE NOT EXISTS(SELECT 1 FROM CellarSession);"
    "UPDATE CellarSession SET nNext = nNext + 1;";

constexpr char kSessionOption[] = "CELLAR_SESSION"; // as SqliteDialect().SessionIdDefault() names it

struct CloseDatabase
{
    void operator()(sqlite3* database) const noexcept { sqlite3_close_v2(database); }
};
using DatabasePtr = std::unique_ptr<sqlite3, CloseDatabase>;

DatabasePtr OpenFile(const std::string& path)
{
    sqlite3* raw = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    DatabasePtr database(raw);
    if (!database)
        throw std::bad_alloc();
    if (result != SQLITE_OK)
        FailOpen(path, std::string("the system does not let it be opened (") + sqlite3_errmsg(raw) +
                           "); check the rights to the file and its folder");
    return database;
}

class SqliteDriver final : public Detail::Driver
{
public:
    explicit SqliteDriver(const DatabaseFile& file)
        : m_use(file.use), m_real(file.real), m_database(OpenFile(file.path))
    {
        SetUp();
        CheckUsable(file.path);
        // FULL: a token is good for one use, so a commit must outlast a power cut.
        Exec("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL; PRAGMA secure_delete = ON");
        if (file.isNew) {
            TakeSessionId();
            // What a full disk ends from here on leaves nothing in the journal that needs room in the file, so that the
            // journal goes when the file is closed.
            sqlite3_wal_checkpoint_v2(m_database.get(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
        }
    }

    std::unique_ptr<Detail::CompiledStatement> Compile(const PreparedText& prepared) override
    {
        return std::make_unique<SqliteStatement>(m_database.get(), prepared.text,
                                                 [this](sqlite3_stmt* statement) { BeforeRun(statement); });
    }

    void Script(std::string_view statements) override
    {
        if (!InTransaction())
            TakeSessionId();
        Exec(std::string(statements).c_str());
    }

    std::int64_t GetSessionId() override
    {
        TakeSessionId();
        return m_sessionId;
    }
    const Dialect& GetDialect() const noexcept override { return SqliteDialect(); }
    void SetBusyTimeout(unsigned milliseconds) override
    {
        constexpr unsigned kMost = 1U << 30;
        sqlite3_busy_timeout(m_database.get(), static_cast<int>(std::min(milliseconds, kMost)));
    }

    void BeginWrite() override { Control("BEGIN IMMEDIATE"); } // a plain one fails at its first write when busy
    void BeginMoment() override { Exec("BEGIN; SELECT 1 FROM sqlite_schema LIMIT 1"); } // begins with its first read
    void EndMoment() override { Rollback(); }
    void Commit() override { Control("COMMIT"); }
    void Rollback() override
    {
        if (InTransaction())
            Control("ROLLBACK");
    }
    void SetSavepoint(int level) override { Control("SAVEPOINT level" + std::to_string(level)); }
    void ReleaseSavepoint(int level) override { Control("RELEASE SAVEPOINT level" + std::to_string(level)); }
    void RollbackToSavepoint(int level) override
    {
        Control("ROLLBACK TO SAVEPOINT level" + std::to_string(level));
        ReleaseSavepoint(level);
    }
    bool InTransaction() override { return sqlite3_get_autocommit(m_database.get()) == 0; }
    std::string KeepPrivate() override { return NarrowFiles(m_real); }
    void CopyTo(const std::string& file) override
    {
        // From the root on: the engine takes a text that begins with "file:" for an address, and writes elsewhere.
        const std::string path = Afx::FromPath(std::filesystem::absolute(Afx::ToPath(file)));
        const std::unique_ptr<char, decltype(&sqlite3_free)> statement(sqlite3_mprintf("VACUUM INTO %Q", path.c_str()),
                                                                       &sqlite3_free);
        if (!statement)
            throw std::bad_alloc();
        const auto isGivenUp = [](void*) -> int { return Afx::SignalGuard::IsSignalWaiting(); };
        constexpr int kSteps = 1000; // of the engine between two looks: less than a millisecond
        const std::unique_ptr<sqlite3, void (*)(sqlite3*)> whileCopying(
            m_database.get(), [](sqlite3* database) { sqlite3_progress_handler(database, 0, nullptr, nullptr); });
        sqlite3_progress_handler(m_database.get(), kSteps, isGivenUp, nullptr);
        Exec(statement.get());
    }
    void OnSent(std::function<void(std::string_view statement)> hook) override
    {
        m_sent = std::move(hook);
        sqlite3_trace_v2(m_database.get(), m_sent ? SQLITE_TRACE_STMT : 0, m_sent ? &Sent : nullptr, this);
    }

private:
    /// The statements of triggers come as comments: they are not sent.
    static int Sent(unsigned, void* self, void*, void* text)
    {
        const std::string_view statement = static_cast<const char*>(text);
        if (!statement.starts_with("--"))
            static_cast<SqliteDriver*>(self)->m_sent(statement);
        return 0;
    }

    void Exec(const char* statements)
    {
        if (sqlite3_exec(m_database.get(), statements, nullptr, nullptr, nullptr) != SQLITE_OK)
            Throw(m_database.get(), Doing::Preparing);
    }

    void SetUp()
    {
        sqlite3* const database = m_database.get();
        sqlite3_extended_result_codes(database, 1);
        sqlite3_busy_timeout(database, kBusyTimeout);
        sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr); // "name" is never a string
        sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        // Innocuous, so that a column's default may call them.
        constexpr int kInnocuous = SQLITE_UTF8 | SQLITE_INNOCUOUS;
        sqlite3_create_function_v2(database, "spid", 0, kInnocuous, this, Spid, nullptr, nullptr, nullptr);
        sqlite3_create_function_v2(database, "sqlite_compileoption_used", 1, kInnocuous, this, CompileOptionUsed,
                                   nullptr, nullptr, nullptr);
    }

    /// The engine's own function, which knows one option more here: the session id. A default that called spid()
    /// would keep ordinary tools from adding a row; this one they all have, and it gives them 0, nobody's id.
    static void CompileOptionUsed(sqlite3_context* context, int count, sqlite3_value** arguments)
    {
        const auto* const option = reinterpret_cast<const char*>(sqlite3_value_text(arguments[0]));
        if (!option)
            sqlite3_result_null(context);
        else if (sqlite3_stricmp(option, kSessionOption) == 0)
            Spid(context, count, arguments);
        else
            sqlite3_result_int(context, sqlite3_compileoption_used(option));
    }

    static void Spid(sqlite3_context* context, int, sqlite3_value**)
    {
        const auto* const self = static_cast<const SqliteDriver*>(sqlite3_user_data(context));
        if (self->m_sessionId != 0)
            sqlite3_result_int64(context, self->m_sessionId);
        else
            sqlite3_result_error(context, "this session has no id before its first write", -1);
    }

    /// The engine opens files only when it reads, and falls back to reading when it may not write.
    void CheckUsable(const std::string& path)
    {
        if (sqlite3_db_readonly(m_database.get(), "main") == 1)
            FailOpen(path, "it can only be read; ask for the right to write to it and its folder",
                     DatabaseError::Category::ReadOnly);
        if (sqlite3_exec(m_database.get(), "PRAGMA table_info(sqlite_schema)", nullptr, nullptr, nullptr) == SQLITE_OK)
            return;                                         // it has read the schema
        switch (sqlite3_errcode(m_database.get()) & 0xFF) { // extended codes are on
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            FailOpen(path, "it is no database, or damaged; check the name, or go back to a copy of it");
        case SQLITE_CANTOPEN:
        case SQLITE_READONLY:
        case SQLITE_PERM:
            FailOpen(path, "its folder does not let files be made beside it; ask for the right to write to the folder",
                     DatabaseError::Category::ReadOnly);
        default:
            Throw(m_database.get(), Doing::Running);
        }
    }

    /// Runs a statement of the levels, of which there are few.
    void Control(const std::string& text)
    {
        StatementPtr& statement = m_control[text];
        if (!statement)
            statement = Prepare(m_database.get(), text);
        BeforeRun(statement.get());
        const int result = sqlite3_step(statement.get());
        if (sqlite3_reset(statement.get()) != SQLITE_OK || result != SQLITE_DONE)
            Throw(m_database.get(), Doing::Running);
    }

    void BeforeRun(sqlite3_stmt* statement)
    {
        if (m_sessionId == 0 && !sqlite3_stmt_readonly(statement) && !InTransaction())
            TakeSessionId(); // now: the statement, or one after it in the same transaction, may ask for it
    }

    /// In a transaction of its own, before any other, so that no rollback gives the number back.
    void TakeSessionId()
    {
        if (m_sessionId != 0)
            return;
        sqlite3_exec(m_database.get(), "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr); // busy: next session
        Exec("BEGIN IMMEDIATE");
        try {
            Exec(kTakeSessionId);
            const std::int64_t id = ReadNumber("SELECT max(nNext) - 1 FROM CellarSession");
            Exec("COMMIT");
            m_sessionId = id;
        } catch (...) {
            if (InTransaction())
                sqlite3_exec(m_database.get(), "ROLLBACK", nullptr, nullptr, nullptr);
            throw;
        }
    }

    std::int64_t ReadNumber(const char* query)
    {
        sqlite3_stmt* raw = nullptr;
        const int result = sqlite3_prepare_v2(m_database.get(), query, -1, &raw, nullptr);
        const StatementPtr statement(raw);
        if (result != SQLITE_OK || sqlite3_step(raw) != SQLITE_ROW)
            Throw(m_database.get(), Doing::Running);
        return sqlite3_column_int64(raw, 0);
    }

    std::shared_ptr<const void> m_use; // first, so that it ends last
    std::filesystem::path m_real;      // the file itself, where its name is a link's
    DatabasePtr m_database;
    std::map<std::string, StatementPtr> m_control; // closed before the database
    std::int64_t m_sessionId = 0;                  // 0: not taken yet
    std::function<void(std::string_view)> m_sent;
};

} // namespace

Detail::OpenedDriver Open(const std::string& path, Create create)
{
    return {std::make_unique<SqliteDriver>(Look(path, create)), "sqlite:" + path};
}

} // namespace Cellar::Sqlite
