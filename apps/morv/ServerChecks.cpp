#include "ServerChecks.h"

#include <cstdint>
#include <cstdlib>
#include <optional>

#include "Afx/text/CString.h"
#include "Cellar/Connection.h"
#include "Cellar/ConnectionText.h"
#include "Cellar/ServerState.h"
#include "Quarry/Session.h"
#include "Session.h"

namespace Morv
{

namespace
{

using Cellar::CConnection;

Finding CheckServer(CConnection& connection, const std::string&)
{
    const Cellar::ServerProduct product = connection.GetServer();
    return {"server", true,
            product.server + ' ' + product.serverVersion + " by " + product.driver + ' ' + product.driverVersion, ""};
}

Finding CheckPooler(CConnection& connection, const std::string& practice)
{
    const auto other = CConnection::Open(CString(practice));
    if (Cellar::AreSessionsLent(connection, *other))
        return {"pooler", false, "a pooler lends one session of the server to several programs",
                "Set it to session mode (pool_mode = session), or name the server itself: locks of users and features "
                "are told apart by their sessions."};
    return {"pooler", true, "each connection keeps a session of its own, as far as two of them show", ""};
}

Finding CheckServerClock(CConnection& connection, const std::string&)
{
    constexpr std::int64_t kMost = 60'000; // milliseconds
    const std::int64_t ahead = Cellar::ServerClockAhead(connection);
    const std::int64_t apart = std::llabs(ahead);
    CString found;
    found.Format("the server's clock is %.1f s %s this machine's", static_cast<double>(apart) / 1000.0,
                 ahead < 0 ? "behind" : "ahead of");
    if (apart <= kMost)
        return {"server clock", true, found.Str(), ""};
    return {"server clock", false, found.Str(),
            "Set the one that is wrong, and let both follow a time server: the server's says how old a lock is, this "
            "machine's when tokens lapse and which day and tax year it is."};
}

Finding CheckEncryption(CConnection& connection, const std::string& practice)
{
    const Cellar::ServerProtection protection = Cellar::ProtectionOf(Cellar::ServerText(practice));
    const std::optional<bool> isEncrypted = Cellar::IsServerEndEncrypted(connection);
    const std::string state = !isEncrypted   ? "whether the connection is encrypted the server does not tell"
                              : *isEncrypted ? "the connection is encrypted"
                                             : "the connection is not encrypted";
    if (protection.staysHere)
        return {"encryption", true, state + "; it stays on this machine", ""};
    if (protection.checksHost && isEncrypted.value_or(true))
        return {"encryption", true, state + ", and the certificate is checked to be the host's", ""};
    const std::string advice = std::string("Add ") + protection.wanted +
                               " to the practice's text; whoever issued the server's certificate stands in " +
                               protection.trusted + '.';
    if (protection.checksHost) // a pooler has a server behind it that is not asked for a certificate
        return {"encryption", false, state + " all the way to the server: something stands between",
                "Let the pooler encrypt its connections to the server too, or name the server itself."};
    return {"encryption", false,
            state + ", and nobody checks that the certificate is the host's (" +
                (protection.said.empty() ? "the text does not ask for it" : protection.said) +
                "): another computer could take its place and read everything",
            advice};
}

constexpr struct
{
    const char* name;
    Finding (*check)(CConnection& connection, const std::string& practice);
} kChecks[] = {
    {"server", CheckServer},
    {"pooler", CheckPooler},
    {"server clock", CheckServerClock},
    {"encryption", CheckEncryption},
};

} // namespace

Finding CheckServerDriver(const std::string& practice)
{
    const Cellar::ServerText text(practice);
    const std::string driver = text.Get("Driver");
    if (Cellar::IsDriverInstalled(text) || driver.empty()) // a data source may name it
        return {"driver", true, driver.empty() ? "the practice's text names none" : driver + " is installed", ""};
    return {"driver", false, driver + " is not installed",
            "Install it (for PostgreSQL the package odbc-postgresql), or name one that odbcinst -q -d lists."};
}

void ExamineServer(const std::string& practice, std::vector<Finding>& findings)
{
    for (const auto& [name, check] : kChecks)
        try {
            findings.push_back(check(Quarry::GetConnection(), practice));
        } catch (const Cellar::DatabaseError& error) {
            findings.push_back({name, false, error.GetReason(), "Ask the server's administrator."});
        }
}

} // namespace Morv
