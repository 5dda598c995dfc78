#pragma once

// Whether a file can serve as the database, found out before the engine opens it.

#include <filesystem>
#include <memory>
#include <string>

#include "Cellar/Connection.h"
#include "Cellar/DatabaseError.h"
#include "Cellar/Export.h"

namespace Cellar::Sqlite
{

struct DatabaseFile
{
    std::string path;                // absolute, so that no name is special to the engine
    bool isNew;                      // was missing, or empty
    std::filesystem::path real;      // the file itself, where `path` is a link: the engine's files lie beside it
    std::shared_ptr<const void> use; // to be kept for as long as the engine has the file open
};

/// Looks at the file that `path` names, and makes an empty one where there is none and one is wanted. Inside it looks
/// only while no connection of this process has it open. Throws
/// DatabaseError (CannotOpen): no such file or folder, a folder, not a database, cut short, no permission, on a network
/// share.
DatabaseFile Look(const std::string& path, Create create);

/// Throws DatabaseError with one line: which file, why, how to mend it.
[[noreturn]] void FailOpen(const std::string& path, const std::string& why,
                           DatabaseError::Category category = DatabaseError::Category::CannotOpen);

} // namespace Cellar::Sqlite
