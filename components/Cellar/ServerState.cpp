#include "Cellar/ServerState.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <utility>

#include "Afx/text/Ascii.h"
#include "Afx/text/TextFold.h"
#include "Afx/time/Clock.h"
#include "Cellar/Connection.h"
#include "Cellar/ConnectionText.h"

namespace Cellar
{
namespace
{

using Names = std::initializer_list<const char*>;

/// The first of the attributes that the text gives, and its value.
std::pair<std::string, std::string> Given(const ServerText& text, Names names)
{
    for (const char* const name : names)
        if (std::string value = text.Get(name); !value.empty())
            return {name, std::move(value)};
    return {};
}

bool IsAnyOf(std::string_view value, Names values)
{
    return std::any_of(values.begin(), values.end(), [&](auto each) { return Afx::EqualNoCase(value, each); });
}

/// "tcp:host,port" and "host\instance" are ways of one server's driver to write a host.
std::string_view HostOf(std::string_view server)
{
    constexpr std::string_view kTcp = "tcp:";
    if (Afx::EqualNoCase(server.substr(0, kTcp.size()), kTcp))
        server.remove_prefix(kTcp.size());
    return server.substr(0, server.find_first_of(",\\"));
}

bool IsThisComputer(std::string_view host)
{
    const bool isNumber = std::all_of(host.begin(), host.end(), [](char c) { return c == '.' || Afx::IsDigit(c); });
    return (isNumber && host.starts_with("127.")) || host.starts_with('/') || // a socket's folder
           IsAnyOf(host, {"", "localhost", "::1", "(local)", "."});
}

/// The one value that a query gives.
Value Ask(CConnection& connection, const SqlText& statement)
{
    const RowSet set = connection.Query(statement, {});
    if (set.rows.empty())
        throw DatabaseError(DatabaseError::Category::Other, "", "the server gives no answer",
                            std::string(statement.View()));
    return set.rows[0].at(0);
}

std::int64_t SessionOf(CConnection& connection) { return ToInt64(Ask(connection, "SELECT @@SPID AS [nSession]")); }

} // namespace

bool IsDriverInstalled(const ServerText& text)
{
    const std::string driver = text.Get("Driver");
    std::error_code none;
    if (driver.find('/') != std::string::npos)
        return std::filesystem::exists(driver, none);
    const std::vector<std::string> installed = InstalledServerDrivers();
    return std::any_of(installed.begin(), installed.end(),
                       [&](const std::string& each) { return Afx::EqualNoCase(each, driver); });
}

bool AreSessionsLent(CConnection& connection, CConnection& other)
{
    constexpr int kTries = 3;
    const std::int64_t session = SessionOf(connection);
    // A pooler lends the session that came back last. This transaction keeps it, so that `connection` gets another.
    const CConnection::Moment kept(other);
    if (SessionOf(other) == session)
        return true;
    for (int i = 0; i < kTries; ++i)
        if (SessionOf(connection) != session)
            return true;
    return false;
}

std::int64_t ServerClockAhead(CConnection& connection)
{
    const std::int64_t before = Afx::Clock::UnixMilliseconds();
    const Value answer = Ask(connection, "SELECT GETUTCDATE() AS [dtNow]");
    const std::int64_t after = Afx::Clock::UnixMilliseconds();
    return ToDateTime(answer).ToMilliseconds() - (before + after) / 2;
}

std::optional<bool> IsServerEndEncrypted(CConnection& connection)
{
    const SqlText& statement = connection.GetDialect().IsEncrypted();
    if (statement.IsEmpty())
        return std::nullopt;
    return ToLong(Ask(connection, statement)) != 0;
}

ServerProtection ProtectionOf(const ServerText& text)
{
    const bool isSqlServer = text.IsForSqlServer();
    const std::string server = Given(text, {"Servername", "Server", "Address"}).second;
    const auto [name, value] = Given(text, isSqlServer ? Names{"Encrypt"} : Names{"SSLmode"});
    ServerProtection protection;
    protection.staysHere = IsThisComputer(HostOf(server));
    protection.said = name.empty() ? name : name + '=' + value;
    if (isSqlServer) {
        const std::string trust = text.Get("TrustServerCertificate");
        if (!trust.empty())
            protection.said += (protection.said.empty() ? "" : ";") + ("TrustServerCertificate=" + trust);
        protection.checksHost =
            IsAnyOf(value, {"yes", "true", "mandatory", "strict"}) && IsAnyOf(trust, {"", "no", "false"});
        protection.wanted = "Encrypt=yes;TrustServerCertificate=no";
        protection.trusted = "the certificates that this computer trusts";
    } else {
        protection.checksHost = IsAnyOf(value, {"verify-full"});
        protection.wanted = "SSLmode=verify-full";
        protection.trusted = "~/.postgresql/root.crt, or the file that PGSSLROOTCERT names";
    }
    return protection;
}

} // namespace Cellar
