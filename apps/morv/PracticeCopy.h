#pragma once

// practice copy.

#include <string>

#include "Session.h"

namespace Morv
{

/// Copies the practice into a place that holds none, prints what was copied. Nothing is left there when it is refused.
/// Throws CommandError.
void CopyPractice(const std::string& from, const std::string& to, const CommonOptions& options);

} // namespace Morv
