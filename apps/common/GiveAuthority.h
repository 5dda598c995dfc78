#pragma once

// Asking HMRC for authority in the user's browser.

#include <functional>
#include <optional>
#include <string>

#include "HmrcApi/oauth/Authorisation.h"

namespace Morv
{

/// Why a text is no Government Gateway user ID, for people; empty when it may be one.
std::string WhyNotGateway(const std::string& gateway);

/// Registers the gateway id where it is not there, and asks HMRC for its authority; `open` opens the address that it is
/// given (null: the window system's browser). Nothing when authority was given. Throws Cellar::DatabaseError before
/// anything is asked when the practice cannot be written: nobody signs in for what could not be kept.
std::optional<HmrcApi::CAuthorisation::Error>
GiveAuthority(const std::string& gateway, const std::function<bool(const std::string& address)>& open = nullptr);

} // namespace Morv
