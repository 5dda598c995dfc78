#pragma once

// Which redirect addresses can be registered.

#include <string_view>

namespace Sandbox
{

/// The two addresses by which the code is shown on a page instead of being sent to a listener.
constexpr std::string_view kOutOfBand = "urn:ietf:wg:oauth:2.0:oob";
constexpr std::string_view kOutOfBandAuto = "urn:ietf:wg:oauth:2.0:oob:auto";

/// Whether HMRC would let `uri` be registered: https with a DNS name, http for localhost only, no IP address,
/// no fragment, absolute; or one of the out-of-band names. Every such address counts as registered here.
bool IsRedirectUri(std::string_view uri);

} // namespace Sandbox
