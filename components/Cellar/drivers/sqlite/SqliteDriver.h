#pragma once

// The embedded database: one file on a disk of this computer.

#include <memory>
#include <string>

#include "Cellar/detail/Driver.h"

namespace Cellar::Sqlite
{

/// Write-ahead log, foreign keys on, each commit on the disk before it returns. A new file gets the session counter at
/// once; any other file is left as it is until the first write. Throws DatabaseError
/// (CannotOpen, ReadOnly).
Detail::OpenedDriver Open(const std::string& path, Create create);

} // namespace Cellar::Sqlite
