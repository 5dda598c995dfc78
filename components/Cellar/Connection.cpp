#include "Cellar/Connection.h"

#include <unordered_map>
#include <utility>

#include "Cellar/detail/Arguments.h"
#include "Cellar/detail/Levels.h"

namespace Cellar
{
namespace
{

struct TextHash
{
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>{}(text); }
};

/// Statements are written in the program and thus few; those with numbers put in are not.
constexpr std::size_t kKeptTranslations = 512;

} // namespace

struct CConnection::State
{
    explicit State(OpenedDriver opened)
        : driver(std::move(opened.driver)), connectionText(opened.connectionText), levels(*driver)
    {}

    std::unique_ptr<Driver> driver;
    CString connectionText;
    Detail::Levels levels;
    std::unordered_map<std::string, PreparedText, TextHash, std::equal_to<>> translations;
    std::function<void(std::string_view)> hook;
    std::function<void()> rollbackHook;
    int suspended = 0;

    const PreparedText& Translated(std::string_view statement)
    {
        if (const auto found = translations.find(statement); found != translations.end())
            return found->second;
        PreparedText prepared = driver->GetDialect().Translate(statement);
        if (translations.size() >= kKeptTranslations)
            translations.clear();
        return translations.emplace(std::string(statement), std::move(prepared)).first->second;
    }

    /// Runs `action`; its errors get the statement.
    template<class Action>
    auto Reporting(std::string_view statement, Action action)
    {
        try {
            return action();
        } catch (const DatabaseError& error) {
            levels.AfterFailure();
            throw DatabaseError(error.GetCategory(), error.GetCode(), error.GetReason(), std::string(statement));
        }
    }

    /// What both kinds of statement have before them.
    void Prepare(const PreparedText& prepared, const std::vector<Value>& values)
    {
        Detail::CheckArguments(prepared, values);
        if (prepared.usesSessionId)
            driver->GetSessionId(); // it may write, which must not happen within the statement
        if (prepared.effect != Effect::Read)
            levels.BeforeWrite();
    }
};

CConnection::CConnection(std::shared_ptr<State> state) : m_state(std::move(state)) {}
CConnection::~CConnection() = default;

std::unique_ptr<CConnection> CConnection::Open(const CString& connectionText, Create create)
{
    auto state = std::make_shared<State>(OpenDriver(connectionText.View(), create));
    return std::unique_ptr<CConnection>(new CConnection(std::move(state)));
}

long CConnection::Execute(const SqlText& statement, const std::vector<Value>& values)
{
    State& state = *m_state;
    Effect effect = Effect::Read;
    const long changed = state.Reporting(statement.View(), [&] {
        const PreparedText& prepared = state.Translated(statement.View());
        effect = prepared.effect;
        state.Prepare(prepared, values);
        const long rows = state.driver->Execute(prepared.text, values);
        if (effect != Effect::Read)
            state.levels.AfterWrite();
        return rows;
    });
    if (state.hook && state.suspended == 0 && (effect == Effect::Call || (effect == Effect::Write && changed > 0)))
        state.hook(statement.View());
    return changed;
}

RowSet CConnection::Query(const SqlText& statement, const std::vector<Value>& values)
{
    State& state = *m_state;
    return state.Reporting(statement.View(), [&] {
        const PreparedText& prepared = state.Translated(statement.View());
        state.Prepare(prepared, values);
        RowSet rows = state.driver->Query(prepared.text, values);
        if (prepared.effect != Effect::Read)
            state.levels.AfterWrite();
        return rows;
    });
}

void CConnection::Script(std::string_view statements)
{
    State& state = *m_state;
    state.Reporting(statements, [&] {
        state.levels.BeforeWrite();
        state.driver->Script(statements);
        state.levels.AfterWrite();
    });
}

void CConnection::LockTable(const SqlText& table)
{
    State& state = *m_state;
    state.Reporting("", [&] {
        if (state.levels.GetCount() == 0)
            throw DatabaseError(DatabaseError::Category::Other, "", "a table is locked within a transaction only", "");
        const std::string lock = GetDialect().LockTable(table.View());
        state.levels.BeforeWrite();
        if (!lock.empty())
            state.driver->Script(lock);
    });
}

void CConnection::SetBusyTimeout(unsigned milliseconds) { m_state->driver->SetBusyTimeout(milliseconds); }

void CConnection::Begin(Intent intent)
{
    State& state = *m_state;
    if (intent == Intent::Read)
        state.levels.Begin();
    else
        state.Reporting("BEGIN", [&] {
            state.driver->GetSessionId(); // it may write, in a transaction of its own
            state.levels.BeginWrite();
        });
}

void CConnection::Commit() { m_state->levels.Commit(); }
void CConnection::Rollback() { RollbackTo(GetLevel()); }

void CConnection::RollbackTo(int level)
{
    const std::shared_ptr<State> state = m_state; // the hook may close the connection
    if (level < 1 || level > state->levels.GetCount())
        return;
    while (state->levels.GetCount() >= level)
        state->levels.Rollback();
    if (state->rollbackHook)
        state->rollbackHook();
}

int CConnection::GetLevel() const noexcept { return m_state->levels.GetCount(); }
bool CConnection::HasUnsavedWrites() const noexcept { return m_state->levels.HasWrites(); }
bool CConnection::HasBegun() const noexcept { return m_state->levels.HasBegun(); }
std::uint64_t CConnection::GetEpoch() const noexcept { return m_state->levels.GetEpoch(); }

std::int64_t CConnection::GetSessionId() { return m_state->driver->GetSessionId(); }
const Dialect& CConnection::GetDialect() const noexcept { return m_state->driver->GetDialect(); }
const CString& CConnection::GetConnectionText() const noexcept { return m_state->connectionText; }
std::string CConnection::KeepPrivate() { return m_state->driver->KeepPrivate(); }

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

SuspendDirectSQLEvents::SuspendDirectSQLEvents(CConnection& connection) noexcept : m_connection(connection)
{
    ++m_connection.m_state->suspended;
}
SuspendDirectSQLEvents::~SuspendDirectSQLEvents() { --m_connection.m_state->suspended; }

} // namespace Cellar
