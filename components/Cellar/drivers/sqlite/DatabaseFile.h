#pragma once

// Whether a file can serve as the database, found out before the engine opens it.

#include <cstdint>
#include <string>

#include "Cellar/Export.h"

namespace Cellar::Sqlite
{

struct DatabaseFile
{
    std::string path; // absolute, so that no name is special to the engine
    bool isNew;       // missing, or empty
};

/// Looks at the file that `path` names. Throws DatabaseError (CannotOpen): no such file or folder, a folder, not a
/// database, no permission, on a network share.
DatabaseFile Look(const std::string& path, bool createIfMissing);

/// Throws DatabaseError (CannotOpen) with one line: which file, why, how to mend it.
[[noreturn]] void FailOpen(const std::string& path, const std::string& why);

/// The name of a network file system by the number that statfs gives it; null for any other. Locks and shared memory
/// do not work across computers there.
CELLAR_API const char* NetworkFileSystem(std::uint32_t type) noexcept;

} // namespace Cellar::Sqlite
