#pragma once

// HMRC's published examples, as answers that need no network.

#include <string_view>

#include "HmrcApi/Export.h"
#include "HmrcApi/Host.h"

namespace HmrcApi
{

/// The JSON of an example; empty for `Live` and what is no example.
HMRCAPI_API std::string_view CannedPayeAnswer(IEndpointOverride::ResponseType type) noexcept;
HMRCAPI_API std::string_view CannedNationalInsuranceAnswer(IEndpointOverride::ResponseType type) noexcept;

} // namespace HmrcApi
