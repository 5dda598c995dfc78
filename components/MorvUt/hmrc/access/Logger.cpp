#include "MorvUt/hmrc/access/Logger.h"

#include <iostream>

#include "Afx/system/Computer.h"
#include "Cellar/Connection.h"
#include "HmrcApi/answers/Mask.h"
#include "MorvUt/hmrc/access/PracticeOptions.h"
#include "MorvUt/users/locks/AsideIfPossible.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"
#include "Shellkit/Registry.h"

namespace HmrcApi
{
namespace
{

constexpr char kWrite[] = "EXEC MTDLogWrite %s, %s, %s, %s, %s, %s, %s, %s, %s";

/// The current connection, or one of its own that lasts as long as this object.
class LogConnection
{
public:
    LogConnection()
    {
        if (Quarry::HasConnection())
            return;
        const CRegistry registry;
        CString text = registry.GetString("DataSource");
        if (text.IsEmpty())
            text = registry.GetString("Datasource"); // older programs; the same where names ignore case
        m_own = Cellar::CConnection::Open(text);
    }
    Cellar::CConnection& Get() const { return m_own ? *m_own : Quarry::GetConnection(); }

private:
    std::unique_ptr<Cellar::CConnection> m_own;
};

void Report(const std::exception& problem)
{
    const auto* const database = dynamic_cast<const Cellar::DatabaseError*>(&problem);
    if (database && database->GetCategory() == Cellar::DatabaseError::Category::LostConnection)
        return; // whatever is done next is told so
    const std::string reason =
        database ? database->GetReason() : problem.what(); // the statement says nothing to a user
    std::cerr << "HMRC log line not written: " << Mask(reason) << '\n';
}

} // namespace

Logger::~Logger() = default;

bool Logger::IsDebugLogging()
{
    try {
        return (m_debugLevel ? *m_debugLevel : GetDebugLevel()) > 0;
    } catch (const std::exception& problem) {
        Report(problem);
        return false;
    }
}

void Logger::Log(const std::string& a1, const std::string& a2, const std::string& a3, const std::string& a4,
                 const std::string& a5)
{
    try {
        const LogConnection connection;
        const Cellar::SuspendDirectSQLEvents suspend(connection.Get());
        const AsideIfPossible aside(connection.Get());
        connection.Get().ExecuteDirectf(kWrite, CUserData::m_strUser, Afx::GetComputerName(),
                                        CApplicationSessionId::GetSessionId(), GetChainIdString(), a1, a2, a3, a4, a5);
    } catch (const std::exception& problem) {
        Report(problem);
    }
}

} // namespace HmrcApi
