#pragma once

// What the module of the embedded database, which holds the adapter of SQLite, has to give.

#include "Afx/system/LoadedModule.h"
#include "Cellar/drivers/sqlite/SqliteDriver.h"

namespace Cellar::Sqlite
{

/// The functions behind the port.
struct SqliteFunctions
{
    decltype(&Open) open;
};

} // namespace Cellar::Sqlite

/// The module's one symbol.
extern "C" AFX_MODULE_ENTRY const Cellar::Sqlite::SqliteFunctions* MorvUtSqlite();
