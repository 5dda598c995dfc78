#pragma once

// What only the user can decide.

#include <string>

namespace Morv
{

/// Asks on the terminal; without one (a script, a pipe) the answer is no. `isYes`: the user has answered already, by
/// --yes. Throws CommandError for a no: `refused` says what was not done.
void NeedYes(bool isYes, const std::string& question, const std::string& refused);

} // namespace Morv
