#include "Cellar/Connection.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include "Cellar/detail/ConnectionState.h"

namespace Cellar
{

CConnection::CConnection(std::shared_ptr<State> state)
    : m_state(std::move(state)), m_self(std::make_shared<CConnection*>(this))
{}

CConnection::~CConnection()
{
    if (m_state->waiting.empty())
        return;
    while (GetLevel() > 0)
        try {
            m_state->levels.Rollback();
        } catch (const std::exception&) { // the engine does it when the connection ends
        }
    RunWaiting(true);
}

std::unique_ptr<CConnection> CConnection::Open(const CString& connectionText, Create create)
{
    auto state = std::make_shared<State>(Detail::OpenDriver(connectionText.View(), create));
    return std::unique_ptr<CConnection>(new CConnection(std::move(state)));
}

long CConnection::Execute(const SqlText& statement, std::span<const Value> values)
{
    State& state = *m_state;
    Effect effect = Effect::Read;
    const long changed = state.Reporting(statement.View(), [&] {
        const Detail::UsedStatement used = state.Ready(statement.View(), values);
        effect = used.GetPrepared().effect;
        const long rows = used->Execute(values);
        if (effect != Effect::Read)
            state.levels.AfterWrite();
        return rows;
    });
    if (state.hook && state.suspended == 0 && (effect == Effect::Call || (effect == Effect::Write && changed > 0)))
        state.hook(statement.View());
    return changed;
}

void CConnection::ExecuteLater(const SqlText& statement, std::span<const Value> values)
{
    State& state = *m_state;
    if (!HasBegun() || IsAside() || !GetDialect().SendsTogether()) {
        const SuspendDirectSQLEvents quiet(*this);
        Execute(statement, values);
        return;
    }
    state.Reporting(statement.View(), [&] {
        Detail::CheckArguments(state.statements.Use(statement.View()).GetPrepared(), values);
        if (state.unsent.values.size() + values.size() > kMostValues)
            state.SendUnsent();
        state.levels.BeforeWrite();
        state.unsent.statements.emplace_back(statement.View());
        state.unsent.values.insert(state.unsent.values.end(), values.begin(), values.end());
        state.levels.AfterWrite();
    });
}

RowSet CConnection::Query(const SqlText& statement, std::span<const Value> values)
{
    State& state = *m_state;
    return state.Reporting(statement.View(), [&] {
        const Detail::UsedStatement used = state.Ready(statement.View(), values);
        RowSet rows = used.ReadAll(values);
        if (used.GetPrepared().effect != Effect::Read)
            state.levels.AfterWrite();
        return rows;
    });
}

void CConnection::Script(std::string_view statements)
{
    State& state = *m_state;
    state.Reporting(statements, [&] {
        state.SendUnsent();
        state.levels.BeforeWrite();
        state.driver->Script(statements);
        state.levels.AfterWrite();
    });
}

void CConnection::LockTable(const SqlText& table)
{
    State& state = *m_state;
    if (IsAside())
        throw std::logic_error("a table is locked by a statement that stands aside from the transaction");
    state.Reporting("", [&] {
        if (state.levels.GetCount() == 0)
            throw DatabaseError(DatabaseError::Category::Other, "", "a table is locked within a transaction only", "");
        const std::string lock = GetDialect().LockTable(table.View());
        state.SendUnsent();
        state.levels.BeforeWrite();
        if (!lock.empty())
            state.driver->Script(lock);
    });
}

void CConnection::RunAlone(const SqlText& table, const std::function<void()>& work)
{
    const Aside aside(*this);
    const std::string lock = table.IsEmpty() ? std::string() : GetDialect().LockTable(table.View());
    Detail::Driver& driver = *m_state->driver;
    m_state->Reporting("BEGIN", [&] {
        driver.GetSessionId(); // it may write, in a transaction of its own
        driver.BeginWrite();
    });
    try {
        if (!lock.empty())
            m_state->Reporting(lock, [&] { driver.Script(lock); });
        work();
        m_state->Reporting("COMMIT", [&] { driver.Commit(); });
    } catch (...) {
        try {
            driver.Rollback();
        } catch (const DatabaseError&) { // the connection is gone, and the transaction with it
        }
        throw;
    }
}

void CConnection::SetBusyTimeout(unsigned milliseconds) { m_state->driver->SetBusyTimeout(milliseconds); }

void CConnection::Begin(Intent intent, const Subject& subject)
{
    State& state = *m_state;
    state.SendUnsent();
    if (intent == Intent::Read)
        state.levels.Begin();
    else
        state.Reporting("BEGIN", [&] {
            state.driver->GetSessionId(); // it may write, in a transaction of its own
            state.levels.BeginWrite(subject);
        });
}

void CConnection::Commit()
{
    m_state->SendUnsent();
    m_state->levels.Commit();
    if (GetLevel() == 0)
        RunWaiting();
}

void CConnection::Rollback() { RollbackTo(GetLevel()); }

void CConnection::RollbackTo(int level)
{
    const std::shared_ptr<State> state = m_state; // the hook may close the connection
    if (level < 1 || level > state->levels.GetCount())
        return;
    state->unsent = {};
    std::exception_ptr problem;
    while (state->levels.GetCount() >= level)
        try {
            state->levels.Rollback();
        } catch (...) {
            if (!problem)
                problem = std::current_exception();
        }
    if (state->levels.GetCount() == 0)
        RunWaiting();
    if (state->rollbackHook)
        state->rollbackHook();
    if (problem)
        std::rethrow_exception(problem);
}

void CConnection::WaitForLevels(std::function<bool(bool isLast)> work) { m_state->waiting.push_back(std::move(work)); }
void CConnection::RunWaiting() noexcept { RunWaiting(false); }

void CConnection::RunWaiting(bool isLast) noexcept
{
    State& state = *m_state;
    if (state.waiting.empty() || HasBegun())
        return;
    auto waiting = std::exchange(state.waiting, {}); // it may grow meanwhile
    std::erase_if(waiting, [&](const auto& work) { return work(isLast); });
    waiting.insert(waiting.end(), state.waiting.begin(), state.waiting.end());
    state.waiting = std::move(waiting);
}

std::vector<Begun> CConnection::GetLevels() const { return m_state->levels.GetAll(); }
int CConnection::GetLevel() const noexcept { return m_state->levels.GetCount(); }
bool CConnection::HasUnsavedWrites() const noexcept { return m_state->levels.HasWrites(); }
bool CConnection::HasBegun() const noexcept { return m_state->levels.HasBegun(); }
bool CConnection::IsAside() const noexcept { return m_state->levels.IsAside(); }
std::uint64_t CConnection::GetEpoch() const noexcept { return m_state->levels.GetEpoch(); }

std::int64_t CConnection::GetSessionId() { return m_state->driver->GetSessionId(); }
const Dialect& CConnection::GetDialect() const noexcept { return m_state->driver->GetDialect(); }
const CString& CConnection::GetConnectionText() const noexcept { return m_state->connectionText; }
ServerProduct CConnection::GetServer() const { return m_state->driver->GetServer(); }
std::string CConnection::KeepPrivate() { return m_state->driver->KeepPrivate(); }
void CConnection::CopyTo(const std::string& file)
{
    m_state->Reporting("", [&] { m_state->driver->CopyTo(file); });
}

void CConnection::OnDirectStatement(std::function<void(std::string_view statement)> hook)
{
    m_state->hook = std::move(hook);
}
void CConnection::OnRollback(std::function<void()> hook) { m_state->rollbackHook = std::move(hook); }
void CConnection::OnSent(std::function<void(std::string_view statement)> hook)
{
    m_state->driver->OnSent(std::move(hook));
}
bool CConnection::AreDirectEventsSuspended() const noexcept { return m_state->suspended > 0; }

CConnection::Aside::Aside(CConnection& connection) : m_state(connection.m_state) { m_state->levels.StandAside(); }
CConnection::Aside::~Aside() { m_state->levels.StepBack(); }

CConnection::Moment::Moment(CConnection& connection) : m_state(connection.m_state)
{
    if (connection.GetLevel() > 0)
        throw std::logic_error("one moment is to be read within an open transaction");
    m_state->driver->BeginMoment();
}

CConnection::Moment::~Moment()
{
    try {
        m_state->driver->EndMoment();
    } catch (...) { // a lost connection: the moment is over
    }
}

SuspendDirectSQLEvents::SuspendDirectSQLEvents(CConnection& connection) noexcept : m_connection(connection)
{
    ++m_connection.m_state->suspended;
}
SuspendDirectSQLEvents::~SuspendDirectSQLEvents() { --m_connection.m_state->suspended; }

} // namespace Cellar
