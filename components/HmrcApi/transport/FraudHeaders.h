#pragma once

// HMRC's fraud prevention headers, connection method DESKTOP_APP_DIRECT.

#include <string>
#include <utility>
#include <vector>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// The headers that this program can collect: connection method, device id, time zone, device, operating-system user,
/// product and version. Those that it cannot (addresses, screens, window, licence, second factor) are left out, as
/// HMRC's guide asks. None when the registry value "HMRCFraudPreventionHeaders" is off (default on).
HMRCAPI_API std::vector<std::pair<std::string, std::string>> FraudPreventionHeaders();

} // namespace HmrcApi
