#include "Cellar/drivers/sqlite/SqliteDriver.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <new>

#include "Cellar/DatabaseError.h"
#include "Cellar/Dialect.h"
#include "Cellar/drivers/sqlite/DatabaseFile.h"
#include "Cellar/drivers/sqlite/FileRights.h"
#include "Cellar/drivers/sqlite/SqliteError.h"
#include "Cellar/drivers/sqlite/Statements.h"

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

class SqliteDriver final : public Driver
{
public:
    explicit SqliteDriver(const DatabaseFile& file)
        : m_use(file.use), m_real(file.real), m_database(OpenFile(file.path)), m_statements(m_database.get())
    {
        SetUp();
        CheckUsable(file.path);
        // FULL: a token is good for one use, so a commit must outlast a power cut.
        Exec("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL; PRAGMA secure_delete = ON");
        if (file.isNew)
            TakeSessionId();
    }

    long Execute(std::string_view statement, const std::vector<Value>& values) override
    {
        Run run(m_database.get(), Ready(statement));
        run.Bind(values);
        const std::int64_t before = sqlite3_total_changes64(m_database.get());
        while (run.Step())
            ;
        if (sqlite3_total_changes64(m_database.get()) == before)
            return 0; // the engine still counts the changes of the statement before
        const std::int64_t changed = sqlite3_changes64(m_database.get());
        return static_cast<long>(std::min<std::int64_t>(changed, std::numeric_limits<std::int32_t>::max()));
    }

    RowSet Query(std::string_view statement, const std::vector<Value>& values) override
    {
        Run run(m_database.get(), Ready(statement));
        run.Bind(values);
        RowSet set;
        bool more = run.Step(); // before the columns are read: the engine may prepare the statement anew
        const int columns = run.GetColumnCount();
        set.columns.reserve(static_cast<std::size_t>(columns));
        for (int column = 0; column < columns; ++column)
            set.columns.push_back(run.GetColumnName(column));
        for (; more; more = run.Step()) {
            std::vector<Value>& row = set.rows.emplace_back();
            row.reserve(static_cast<std::size_t>(columns));
            for (int column = 0; column < columns; ++column)
                run.Read(column, row.emplace_back());
        }
        return set;
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

    void BeginWrite() override { Execute("BEGIN IMMEDIATE", {}); } // a plain one fails at its first write when busy
    void Commit() override { Execute("COMMIT", {}); }
    void Rollback() override
    {
        if (InTransaction())
            Execute("ROLLBACK", {});
    }
    bool InTransaction() override { return sqlite3_get_autocommit(m_database.get()) == 0; }
    std::string KeepPrivate() override { return NarrowFiles(m_real); }
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
        if (sqlite3_exec(m_database.get(), "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr) ==
            SQLITE_OK)
            return;
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

    sqlite3_stmt* Ready(std::string_view text)
    {
        sqlite3_stmt* const statement = m_statements.Get(text);
        if (m_sessionId == 0 && !sqlite3_stmt_readonly(statement) && !InTransaction())
            TakeSessionId(); // now: the statement, or one after it in the same transaction, may ask for it
        return statement;
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
    Statements m_statements;      // closed before the database
    std::int64_t m_sessionId = 0; // 0: not taken yet
    std::function<void(std::string_view)> m_sent;
};

} // namespace

OpenedDriver Open(const std::string& path, Create create)
{
    return {std::make_unique<SqliteDriver>(Look(path, create)), "sqlite:" + path};
}

} // namespace Cellar::Sqlite
