#pragma once

// The key of the practice that this process works on.

#include <cstddef>
#include <cstdint>
#include <span>

#include "Shellkit/Export.h"

namespace Shellkit
{

inline constexpr std::size_t kKeySize = 32; // bytes: AES-256

/// Sets the practice's key (32 bytes) for this process; an empty span forgets it. False for another length.
SHELLKIT_API bool SetPracticeKey(std::span<const std::uint8_t> key);
SHELLKIT_API bool HasPracticeKey() noexcept;

} // namespace Shellkit
