#include "Cellar/drivers/odbc/OdbcDriver.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "Cellar/drivers/odbc/OdbcStatement.h"
#include "Cellar/drivers/odbc/ServerSession.h"
#include "Cellar/drivers/odbc/WideText.h"

namespace Cellar::Odbc
{
namespace
{

constexpr unsigned kBusyTimeout = 5000; // milliseconds

class OdbcDriver final : public Detail::Driver
{
public:
    explicit OdbcDriver(const ServerText& text) : m_session(std::make_shared<ServerSession>(text))
    {
        OdbcDriver::SetBusyTimeout(kBusyTimeout);
    }

    std::unique_ptr<Detail::CompiledStatement> Compile(const PreparedText& prepared) override
    {
        return std::make_unique<OdbcStatement>(m_session, prepared);
    }
    void Script(std::string_view statements) override { m_session->RunDirect(std::string(statements)); }
    std::int64_t GetSessionId() override
    {
        if (m_sessionId == 0)
            m_sessionId = m_session->ReadNumber(m_session->GetRules().session);
        return m_sessionId;
    }
    const Dialect& GetDialect() const noexcept override { return m_session->GetRules().dialect(); }
    ServerProduct GetServer() override
    {
        return {m_session->GetInfo(SQL_DRIVER_NAME), m_session->GetInfo(SQL_DRIVER_VER),
                m_session->GetInfo(SQL_DBMS_NAME), m_session->GetInfo(SQL_DBMS_VER)};
    }
    void SetBusyTimeout(unsigned milliseconds) override
    {
        // The server takes 0 for no limit.
        m_session->RunDirect(m_session->GetRules().waitFor(milliseconds == 0 ? 1 : milliseconds));
    }

    void BeginWrite() override { m_session->Begin(); }
    void LockForWriting(const Subject& subject) override { m_session->LockForWriting(subject); }
    void BeginMoment() override { m_session->BeginMoment(); }
    void EndMoment() override { m_session->Rollback(); }
    void Commit() override { m_session->Commit(); }
    void Rollback() override { m_session->Rollback(); }
    void SetSavepoint(int level) override { m_session->SetSavepoint(level); }
    void ReleaseSavepoint(int level) override { m_session->ReleaseSavepoint(level); }
    void RollbackToSavepoint(int level) override { m_session->RollbackToSavepoint(level); }
    bool InTransaction() override { return m_session->InTransaction(); }
    void CopyTo(const std::string&) override
    {
        throw DatabaseError(DatabaseError::Category::Other, "",
                            "a practice on a server is copied by the server's own tools (pg_dump, BACKUP DATABASE): "
                            "ask its administrator for a backup",
                            "");
    }
    void OnSent(std::function<void(std::string_view statement)> hook) override { m_session->OnSent(std::move(hook)); }

private:
    std::shared_ptr<ServerSession> m_session;
    std::int64_t m_sessionId = 0; // 0: not asked yet
};

} // namespace

Detail::OpenedDriver Open(const std::string& connectionText)
{
    const ServerText text(connectionText);
    return {std::make_unique<OdbcDriver>(text), text.GetShown()};
}

std::vector<std::string> InstalledDrivers()
{
    const EnvironmentHandle environment = NewEnvironment();
    std::vector<std::string> names;
    std::array<SQLWCHAR, 256> name{};
    SQLSMALLINT length = 0;
    SQLUSMALLINT which = SQL_FETCH_FIRST;
    while (environment && IsDone(SQLDriversW(environment.Get(), which, name.data(),
                                             static_cast<SQLSMALLINT>(name.size()), &length, nullptr, 0, nullptr))) {
        AppendUtf8(names.emplace_back(), {reinterpret_cast<const char16_t*>(name.data()),
                                          std::min(static_cast<std::size_t>(length), name.size() - 1)});
        which = SQL_FETCH_NEXT;
    }
    return names;
}

} // namespace Cellar::Odbc
