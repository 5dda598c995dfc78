#pragma once

// Numbers from text and from floating point.

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>
#include <type_traits>

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

/// The whole of `text` as a number of base ten: digits, zeros in front among them, behind a minus at most where
/// `Number` has one; a floating-point number may have decimals and an exponent, and be inf or nan. Nothing for any
/// other text (a plus, a blank, nothing at all) and for what `Number` cannot hold.
template<class Number>
requires std::is_arithmetic_v<Number> std::optional<Number> ParseWhole(std::string_view text)
noexcept
{
    Number value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

/// 64-bit `atoi`: blanks, a sign, digits; stops at the first other character; 0 when there is no digit; saturates.
/// Null reads as the empty text.
AFX_API std::int64_t AtoI64(const char* text) noexcept;

} // namespace Afx
