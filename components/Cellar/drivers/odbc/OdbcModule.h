#pragma once

// What the module of the servers' databases, which holds the adapter of ODBC, has to give.

#include "Afx/system/LoadedModule.h"
#include "Cellar/drivers/odbc/OdbcDriver.h"

namespace Cellar::Odbc
{

/// The functions behind the port.
struct OdbcFunctions
{
    decltype(&Open) open;
    decltype(&InstalledDrivers) installedDrivers;
};

} // namespace Cellar::Odbc

/// The module's one symbol.
extern "C" AFX_MODULE_ENTRY const Cellar::Odbc::OdbcFunctions* MorvUtOdbc();
