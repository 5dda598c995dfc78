#pragma once

// What the browser's request says.

#include <optional>
#include <string_view>

#include "HmrcApi/Export.h"
#include "HmrcApi/redirect/RedirectListener.h"

namespace HmrcApi
{

/// HMRC's answer from the query of the redirect address (what stands behind its question mark), a code or that
/// authority was denied. Nothing when it does not belong to the sign-in of this `state` (which is not empty): another
/// state or none, neither a code nor an error, one of these members twice, or an escape that is none. Other members are
/// ignored. A code is visible ASCII; a description may hold anything.
HMRCAPI_API std::optional<RedirectAnswer> ReadRedirect(std::string_view query, std::string_view state);

} // namespace HmrcApi
