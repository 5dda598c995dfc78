#pragma once

// Numbers from text and from floating point.

#include <cstdint>
#include <optional>

#include "Afx/Export.h"

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

/// 64-bit `atoi`: blanks, a sign, digits; stops at the first other character; 0 when there is no digit; saturates.
/// Null reads as the empty text.
AFX_API std::int64_t AtoI64(const char* text) noexcept;

} // namespace Afx
