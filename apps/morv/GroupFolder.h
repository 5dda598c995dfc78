#pragma once

// The folder of a practice that a group shares.

#include <string>

namespace Morv
{

/// Makes the folder of the file, belonging to `group` and handing that on to what is made in it (2770); one that is
/// there must be so already, since the database engine gives its own files whatever group they get. Throws
/// CommandError with the line that mends it.
void PrepareGroupFolder(const std::string& file, const std::string& group);

} // namespace Morv
