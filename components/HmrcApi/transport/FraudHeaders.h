#pragma once

// HMRC's fraud prevention headers, connection method DESKTOP_APP_DIRECT.

#include <string>
#include <utility>
#include <vector>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// The headers that this program can collect: connection method, device id, addresses and when they were read, time
/// zone, device, users, product and version. Those that it cannot (screens, window, licence, second factor) are left
/// out, as HMRC's guide asks. None when the registry value "HMRCFraudPreventionHeaders" is off (default on).
/// `applicationUser`: who is logged in to this program; empty: nobody.
HMRCAPI_API std::vector<std::pair<std::string, std::string>>
FraudPreventionHeaders(const std::string& applicationUser = {});

} // namespace HmrcApi
