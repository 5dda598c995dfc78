#pragma once

// The grammar of amounts as users type them.

#include <cstdint>
#include <string_view>

namespace Kiln::Detail
{

enum class AmountFault : std::uint8_t
{
    None,
    Blank,
    NoDigits,
    Signs,     // more than one of: sign in front, sign behind, brackets
    Bracket,   // opened or closed alone
    Commas,    // not between groups of three digits
    Decimals,  // more than four
    TooLarge,  // beyond 64 bits of ten-thousandths
    Place,     // a character of amounts where it does not belong
    Character, // one that does not belong in an amount
};

struct AmountText
{
    AmountFault fault;
    std::int64_t value;       // ten-thousandths of a pound; 0 with a fault
    std::string_view badText; // with the faults Place and Character: the text from that character on
};

AmountText ReadAmount(std::string_view text) noexcept;

} // namespace Kiln::Detail
