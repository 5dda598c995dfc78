#pragma once

// The check of fraud prevention headers, as HMRC's test interface does it (connection method DESKTOP_APP_DIRECT).

#include <map>
#include <nlohmann/json.hpp>
#include <string>

namespace Sandbox
{

/// `headers` by their names in lower case. The answer has a code (VALID_HEADERS, POTENTIALLY_INVALID_HEADERS,
/// INVALID_HEADERS), a message, and the headers that are wrong (errors: missing though every desktop program has it,
/// empty, malformed) or doubtful (warnings: missing, which must be agreed with HMRC).
nlohmann::ordered_json CheckFraudHeaders(const std::map<std::string, std::string>& headers);

} // namespace Sandbox
