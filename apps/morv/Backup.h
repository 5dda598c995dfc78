#pragma once

// A copy of a practice in use.

#include <cstdint>
#include <string>

#include "Cellar/Connection.h"

namespace Morv
{

/// Copies the database into a new file, as it is at one moment; others write on meanwhile. Only its owner may read the
/// copy, and it has its name only once it is whole and on the disk. Its pages. Throws CommandError.
std::int64_t BackUp(Cellar::CConnection& practice, const std::string& file);

} // namespace Morv
