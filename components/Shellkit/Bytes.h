#pragma once

// Bytes, and how secret ones end.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "Shellkit/Export.h"

namespace Shellkit
{

using Bytes = std::vector<std::uint8_t>;

/// The bytes of a text, which must outlive what is made of them.
inline std::span<const std::uint8_t> AsBytes(std::string_view text) noexcept
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Overwrites a secret before its memory is given back.
SHELLKIT_API void Wipe(void* data, std::size_t size) noexcept;

} // namespace Shellkit
