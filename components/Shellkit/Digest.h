#pragma once

// Digests, and keys derived from passwords.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "Shellkit/Bytes.h"
#include "Shellkit/Export.h"

namespace Shellkit
{

/// Throws std::runtime_error when the cipher is not there; DeriveKey too.
SHELLKIT_API Bytes Sha256(std::string_view text);
/// PBKDF2-HMAC-SHA256. Throws std::invalid_argument for 0 rounds.
SHELLKIT_API Bytes DeriveKey(std::string_view password, std::span<const std::uint8_t> salt, unsigned rounds,
                             std::size_t size);

} // namespace Shellkit
