#pragma once

// Tests of single characters that know no locale and take any char.

#include <string_view>

namespace Identifiers::Detail
{

constexpr bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(char c) noexcept { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/// Characters of a UTF-8 text, as its reader counts them.
constexpr int CountCharacters(std::string_view text) noexcept
{
    int count = 0;
    for (const char c : text)
        count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return count;
}

} // namespace Identifiers::Detail
