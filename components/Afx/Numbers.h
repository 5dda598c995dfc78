#pragma once

// The one way from floating point to integer.

#include <cstdint>
#include <optional>

namespace Afx
{

/// `value` truncated toward zero; nothing for NaN, infinity and what 64 bits cannot hold.
constexpr std::optional<std::int64_t> ToInt64(double value) noexcept
{
    constexpr double kTwoTo63 = 9223372036854775808.0;
    if (!(value >= -kTwoTo63 && value < kTwoTo63)) // false for NaN
        return std::nullopt;
    return static_cast<std::int64_t>(value);
}

} // namespace Afx
