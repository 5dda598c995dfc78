#pragma once

// Who may read a practice's files.

#include <filesystem>
#include <string>

namespace Cellar::Sqlite
{

enum class Readers
{
    Owner,
    Group // the folder's, which reads and writes
};

/// Makes an empty file with these rights, or gives them to the empty file that is there. False when it cannot be done.
/// On Windows the folder's rights are the file's.
bool MakeFile(const std::filesystem::path& file, Readers readers);

/// Takes away what others may do with the file and what lies beside it, when it is this user's. Its group keeps reading
/// and writing where the folder hands that group on (setgid): without that the engine's own files would shut it out.
/// One line for people; empty when there was nothing to do.
std::string NarrowFiles(const std::filesystem::path& file);

} // namespace Cellar::Sqlite
