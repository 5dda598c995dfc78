#pragma once

// A database on a server, through ODBC.

#include <string>
#include <vector>

#include "Cellar/detail/Driver.h"

namespace Cellar::Odbc
{

/// Texts compare without regard to case, transactions read what is committed, a statement waits 5 seconds for another's
/// lock. The database must be there: its administrator makes it. Throws DatabaseError (CannotOpen).
Detail::OpenedDriver Open(const std::string& connectionText);
/// The names of the drivers that the driver manager lists.
std::vector<std::string> InstalledDrivers();

} // namespace Cellar::Odbc
