#pragma once

// What doctor looks at between this computer and a practice's server.

#include <string>
#include <vector>

#include "Finding.h"

namespace Morv
{

/// Whether the driver that the practice's text names is there; needs no connection.
Finding CheckServerDriver(const std::string& practice);
/// The server and its driver, the pooler, the clocks, the encryption: of the practice that is open, with a second
/// connection to it.
void ExamineServer(const std::string& practice, std::vector<Finding>& findings);

} // namespace Morv
