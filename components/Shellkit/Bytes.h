#pragma once

// Bytes, and how secret ones end.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Shellkit/Export.h"

namespace Shellkit
{

using Bytes = std::vector<std::uint8_t>;

/// Overwrites a secret before its memory is given back.
SHELLKIT_API void Wipe(void* data, std::size_t size) noexcept;

} // namespace Shellkit
