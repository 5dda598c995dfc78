#pragma once

// Single characters of ASCII: tests and conversions that know no locale and take any char. Bytes of other characters
// are neither digits, letters nor blanks.

#include <string_view>

namespace Afx
{

constexpr bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// Of either case.
constexpr bool IsLetter(char c) noexcept { return static_cast<unsigned>((c | 0x20) - 'a') < 26; }

/// A blank, a tab or one of the line ends.
constexpr bool IsBlank(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// One digit at least, and nothing else.
constexpr bool AreDigits(std::string_view text) noexcept
{
    for (const char c : text)
        if (!IsDigit(c))
            return false;
    return !text.empty();
}

/// A letter in the other case; any other character as it is.
constexpr char LowerAscii(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }
constexpr char UpperAscii(char c) noexcept { return c >= 'a' && c <= 'z' ? static_cast<char>(c & ~0x20) : c; }

/// 0 to 15 for a hexadecimal digit of either case; -1 for any other character.
constexpr int HexValue(char c) noexcept
{
    if (IsDigit(c))
        return c - '0';
    const char small = LowerAscii(c);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

/// The digits by their value, 0 to 15.
inline constexpr char kHexDigits[] = "0123456789abcdef", kCapitalHexDigits[] = "0123456789ABCDEF";

} // namespace Afx
