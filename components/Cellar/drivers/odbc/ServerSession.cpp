#include "Cellar/drivers/odbc/ServerSession.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "Cellar/drivers/odbc/WideText.h"

namespace Cellar::Odbc
{
namespace
{

constexpr SQLULEN kLoginSeconds = 15;

SQLWCHAR* Wide(std::u16string& text) noexcept { return reinterpret_cast<SQLWCHAR*>(text.data()); }

/// Statements are sent as they stand: the driver is not to look for its own escapes in them.
SQLRETURN AsItStands(const StatementHandle& statement)
{
    return SQLSetStmtAttr(statement.Get(), SQL_ATTR_NOSCAN, reinterpret_cast<SQLPOINTER>(SQLULEN{SQL_NOSCAN_ON}), 0);
}

} // namespace

ServerSession::ServerSession(const ServerText& text) : m_environment(NewEnvironment())
{
    if (!IsDone(SQLAllocHandle(SQL_HANDLE_DBC, m_environment.Get(), &m_connection)))
        throw std::bad_alloc();
    try {
        Connect(text);
    } catch (...) {
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
        throw;
    }
}

ServerSession::~ServerSession()
{
    try {
        Rollback();                   // a driver may not let go of a connection with a transaction open
    } catch (const std::exception&) { // the server does it by itself
    }
    m_direct.Forget();
    for (StatementHandle& statement : m_retired)
        statement.Forget();
    SQLDisconnect(m_connection);
    SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
}

void ServerSession::Connect(const ServerText& text)
{
    SQLSetConnectAttrW(m_connection, SQL_ATTR_LOGIN_TIMEOUT, reinterpret_cast<SQLPOINTER>(kLoginSeconds), 0);
    std::u16string wide = ToWide(text.GetForDriver(SettingsFor(text)));
    if (!IsDone(SQLDriverConnectW(m_connection, nullptr, Wide(wide), static_cast<SQLSMALLINT>(wide.size()), nullptr, 0,
                                  nullptr, SQL_DRIVER_NOPROMPT)))
        throw CannotConnect(Diagnose(SQL_HANDLE_DBC, m_connection), text);
    const std::string product = GetInfo(SQL_DBMS_NAME);
    m_rules = FindServer(product);
    if (m_rules)
        return;
    SQLDisconnect(m_connection);
    throw DatabaseError(DatabaseError::Category::CannotOpen, "",
                        "cannot open " + text.GetShown() + ": it is a server of " + product +
                            ", which this program does not speak; name one of PostgreSQL or Microsoft SQL Server",
                        "");
}

std::string ServerSession::GetInfo(SQLUSMALLINT which) const
{
    SQLWCHAR info[128] = {};
    SQLSMALLINT bytes = 0;
    std::string text;
    if (IsDone(SQLGetInfoW(m_connection, which, info, sizeof info, &bytes)))
        AppendUtf8(text, {reinterpret_cast<const char16_t*>(info),
                          std::min<std::size_t>(static_cast<std::size_t>(bytes) / 2, 127)});
    return text;
}

StatementHandle ServerSession::NewStatement()
{
    RefuseUnlessUsable();
    m_retired.clear();
    StatementHandle statement(m_connection);
    if (!statement || !IsDone(AsItStands(statement)))
        throw ErrorOf(Diagnose(SQL_HANDLE_DBC, m_connection));
    return statement;
}

void ServerSession::Retire(StatementHandle statement) noexcept
{
    try {
        m_retired.push_back(std::move(statement));
    } catch (const std::bad_alloc&) { // freed at once
    }
}

void ServerSession::RefuseUnlessUsable() const
{
    if (m_isLost)
        throw WasLost();
}

void ServerSession::BeforeRun(std::string_view text)
{
    RefuseUnlessUsable();
    if (m_hasFailed)
        throw ErrorOf({"25P02", 0, "nothing of it can be saved"});
    if (!m_waiting.empty() || !m_toClose.empty())
        RunDirect({});
    if (m_sent)
        m_sent(text);
}

/// What waits, then `text`.
std::string ServerSession::TakeWaiting(const std::string& text)
{
    std::string whole;
    const auto add = [&whole](const std::string& each) {
        if (!each.empty())
            whole += (whole.empty() ? "" : ";") + each;
    };
    if (!m_hasFailed) {
        for (const Held& cursor : std::exchange(m_toClose, {}))
            add("CLOSE " + cursor.name);
    }
    add(std::exchange(m_waiting, {}));
    add(text);
    m_beginWaits = false;
    return whole;
}

void ServerSession::Fail(SQLHSTMT statement)
{
    Diagnosis diagnosis = Diagnose(SQL_HANDLE_STMT, statement);
    if (IsDead())
        diagnosis.state = "08S01"; // a driver may have another for the last words of the server
    m_isLost = m_isLost || ErrorOf(diagnosis).GetCategory() == DatabaseError::Category::LostConnection;
    m_hasFailed = m_hasFailed || (m_inTransaction && m_rules->failureEndsTransaction);
    SQLFreeStmt(statement, SQL_CLOSE);
    if (HasEndedTransaction())
        m_inTransaction = false; // otherwise what follows would be saved without what went before
    throw ErrorOf(diagnosis);
}

bool ServerSession::IsDead() const noexcept
{
    SQLUINTEGER dead = SQL_CD_FALSE;
    return IsDone(SQLGetConnectAttrW(m_connection, SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr)) &&
           dead == SQL_CD_TRUE;
}

bool ServerSession::HasEndedTransaction() noexcept
{
    if (!m_inTransaction || m_isLost || !m_rules->transactions)
        return false;
    try {
        const auto inTransaction = std::exchange(m_inTransaction, false); // a failure here does not ask again
        const bool hasEnded = ReadNumber(m_rules->transactions) == 0;
        m_inTransaction = inTransaction;
        return hasEnded;
    } catch (const DatabaseError&) { // not known: nothing more is to be saved
        return true;
    }
}

void ServerSession::RunDirect(SQLHSTMT statement, const std::string& text)
{
    RefuseUnlessUsable();
    const std::string whole = TakeWaiting(text);
    if (whole.empty())
        return;
    if (m_sent)
        m_sent(whole);
    std::u16string wide = ToWide(whole);
    const SQLRETURN result = SQLExecDirectW(statement, Wide(wide), static_cast<SQLINTEGER>(wide.size()));
    if (!IsDone(result) && result != SQL_NO_DATA)
        Fail(statement);
}

void ServerSession::RunDirect(const std::string& text)
{
    if (m_hasFailed)
        throw ErrorOf({"25P02", 0, "nothing of it can be saved"});
    if (!m_direct)
        m_direct = NewStatement();
    RunDirect(m_direct.Get(), text);
    // An error of a later one of several statements comes with its result.
    SQLRETURN more = SQL_SUCCESS;
    while ((more = SQLMoreResults(m_direct.Get())) != SQL_NO_DATA)
        if (!IsDone(more))
            Fail(m_direct.Get());
    SQLFreeStmt(m_direct.Get(), SQL_CLOSE);
}

std::int64_t ServerSession::ReadNumber(const std::string& query)
{
    StatementHandle statement = NewStatement();
    RunDirect(statement.Get(), query);
    SQLBIGINT number = 0;
    SQLLEN length = 0;
    while (true) {
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement.Get(), &columns);
        if (columns > 0)
            break;
        const SQLRETURN more = SQLMoreResults(statement.Get());
        if (!IsDone(more))
            Fail(statement.Get());
    }
    if (!IsDone(SQLFetch(statement.Get())) ||
        !IsDone(SQLGetData(statement.Get(), 1, SQL_C_SBIGINT, &number, sizeof number, &length)))
        Fail(statement.Get());
    return number;
}

void ServerSession::SendLater(std::string_view text)
{
    if (!m_waiting.empty())
        m_waiting += ';';
    m_waiting += text;
}

void ServerSession::Begin()
{
    RefuseUnlessUsable();
    SendLater(m_rules->begin);
    m_inTransaction = m_beginWaits = true;
    m_level = m_saved = 1;
}

void ServerSession::BeginMoment()
{
    RunDirect(m_rules->beginMoment);
    m_inTransaction = true;
    m_level = m_saved = 1;
}

void ServerSession::Commit()
{
    RefuseUnlessUsable();
    if (m_hasFailed) // the server would roll back without a word
        throw ErrorOf({"25P02", 0, "nothing of it was saved"});
    if (std::exchange(m_beginWaits, false))
        m_waiting.clear(); // nothing has happened
    else
        RunDirect(m_rules->commit);
    Ended(1);
    m_inTransaction = false;
}

void ServerSession::Rollback()
{
    if (!m_inTransaction)
        return;
    const bool hasBegun = !std::exchange(m_beginWaits, false);
    m_waiting.clear();
    m_inTransaction = m_hasFailed = false;
    Undone(1);
    if (hasBegun && !m_isLost)
        RunDirect(m_rules->rollback);
}

void ServerSession::SetSavepoint(int level)
{
    RefuseUnlessUsable();
    m_level = level;
    if (m_hasFailed) // the server takes none; it goes back to an outer one
        return;
    SendLater(m_rules->savepoint + LevelName(level));
    m_saved = level;
}

void ServerSession::ReleaseSavepoint(int level)
{
    RefuseUnlessUsable();
    if (m_hasFailed)
        throw ErrorOf({"25P02", 0, "nothing of it was saved"});
    if (m_rules->release)
        SendLater(m_rules->release + LevelName(level));
    Ended(level);
}

void ServerSession::RollbackToSavepoint(int level)
{
    RefuseUnlessUsable();
    const bool isSaved = level <= m_saved;
    Undone(level);
    if (!isSaved)
        return;
    GoBack(LevelName(level));
}

void ServerSession::GoBack(const std::string& savepoint)
{
    if (m_isLost)
        return;
    std::string text = m_rules->rollbackTo + savepoint;
    if (m_rules->release)
        text += std::string(";") + m_rules->release + savepoint;
    m_hasFailed = false;
    RunDirect(text);
}

void ServerSession::LockForWriting(const Subject& subject)
{
    const std::string lock = m_rules->lock(subject);
    const auto isHeld = [&](const std::string& name) {
        return std::any_of(m_locks.begin(), m_locks.end(), [&](const Held& held) { return held.name == name; });
    };
    if (isHeld(lock) || isHeld(m_rules->lock({})))
        return;
    if (m_hasFailed)
        throw ErrorOf({"25P02", 0, "nothing of it can be saved"});
    RunDirect(lock);
    m_locks.push_back({lock, m_level});
}

void ServerSession::CloseCursor(const std::string& name)
{
    const auto cursor =
        std::find_if(m_cursors.begin(), m_cursors.end(), [&](const Held& held) { return held.name == name; });
    if (cursor == m_cursors.end())
        return;
    m_toClose.push_back(*cursor);
    m_cursors.erase(cursor);
}

void ServerSession::Undone(int level) noexcept
{
    for (auto* const list : {&m_locks, &m_cursors, &m_toClose})
        std::erase_if(*list, [&](const Held& held) { return held.level >= level; });
    m_level = level - 1;
    m_saved = std::min(m_saved, m_level);
}

void ServerSession::Ended(int level) noexcept
{
    if (level == 1)
        m_locks.clear();
    for (auto* const list : {&m_locks, &m_cursors, &m_toClose})
        for (Held& held : *list)
            held.level = std::min(held.level, level - 1);
    m_level = level - 1;
    m_saved = std::min(m_saved, m_level);
}

} // namespace Cellar::Odbc
