#pragma once

// Bytes as text that can stand in an address.

#include <cstdint>
#include <span>
#include <string>

#include "Shellkit/Export.h"

namespace Shellkit
{

/// Base64 with the URL alphabet and no padding (RFC 4648 section 5).
SHELLKIT_API std::string Base64Url(std::span<const std::uint8_t> data);

} // namespace Shellkit
