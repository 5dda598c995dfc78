#pragma once

// Whether HTTP is at hand. Its adapters, which stand on the web libraries, are a module that is loaded when the first
// of them is asked for: those libraries and what they need in turn cost a program's start more than everything else
// together, and most runs send nothing.

#include <string>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// Why this installation cannot send: the module is missing or cannot be loaded; with its path. Empty when it can. What
/// MakeHttpTransport makes answers NoTransport otherwise, and OpenRedirectListener gives nothing.
HMRCAPI_API std::string HttpProblem();

} // namespace HmrcApi
