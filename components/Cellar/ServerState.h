#pragma once

// What stands between this computer and a practice's server, for whoever looks after it.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Cellar/Export.h"

namespace Cellar
{

class CConnection;
class ServerText;

/// The drivers that this computer's driver manager lists, by the names that a connection text gives for them; one may
/// also be named by its file. Empty when there is no driver manager.
CELLAR_API std::vector<std::string> InstalledServerDrivers();
/// The connection text names an installed driver, or the file of one.
CELLAR_API bool IsDriverInstalled(const ServerText& text);

/// The driver and the server of a connection, as they name themselves; all empty for an embedded database.
struct ServerProduct
{
    std::string driver, driverVersion; // "psqlodbcw.so", "13.02.0000"
    std::string server, serverVersion; // "PostgreSQL", "15.14"
};

/// Whether a session of the server is lent to one connection after another, as by a pooler in transaction or statement
/// mode: then the session's number marks nobody's locks, and settings of a session are others' too. Both are
/// connections to one database, outside levels. False: it could not be made to show. A pooler in session mode is not
/// seen, nor is one whose other users keep its sessions busy all the while. Throws DatabaseError, as when the pooler
/// refuses transactions.
CELLAR_API bool AreSessionsLent(CConnection& connection, CConnection& other);

/// Milliseconds by which the server's clock is ahead of this computer's; negative when it is behind. Right within half
/// the time that the server took to answer. Throws DatabaseError.
CELLAR_API std::int64_t ServerClockAhead(CConnection& connection);

/// The server's own end of the connection is encrypted; nothing where it does not tell. With a pooler between it is the
/// pooler that it speaks of. Throws DatabaseError.
CELLAR_API std::optional<bool> IsServerEndEncrypted(CConnection& connection);

/// How a connection text has the way to the server protected.
struct ServerProtection
{
    bool staysHere = false;   // the server, or what leads to it, is on this computer
    bool checksHost = false;  // the driver is told to encrypt and to check that the certificate is the host's
    std::string said;         // "SSLmode=require"; empty: nothing
    const char* wanted = "";  // what makes it check, "SSLmode=verify-full"
    const char* trusted = ""; // where those stand whose certificates are believed
};
CELLAR_API ServerProtection ProtectionOf(const ServerText& text);

} // namespace Cellar
