#pragma once

// Where a practice is about to be made.

#include <string>

#include "Cellar/Connection.h"
#include "Shellkit/Bytes.h"
#include "Shellkit/KeyFile.h"

namespace Morv
{

/// Throws CommandError when the database holds tables already.
void RequireEmptyPlace(Cellar::CConnection& connection, const std::string& practice);
/// The new practice's key. One that is left from a creation that was cut short serves again: nothing was enciphered
/// with it yet. Throws CommandError when there is none and none can be made.
Shellkit::Bytes MakeKey(const std::string& practice, Shellkit::KeyReaders readers);

} // namespace Morv
