#pragma once

// SQLite's result codes as DatabaseError.

#include <sqlite3.h>

namespace Cellar::Sqlite
{

enum class Doing
{
    Preparing,
    Running
};

/// Throws what the connection's last error says.
[[noreturn]] void Throw(sqlite3* database, Doing doing);

} // namespace Cellar::Sqlite
