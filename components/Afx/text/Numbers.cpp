#include "Afx/text/Numbers.h"

#include <limits>

#include "Afx/text/Ascii.h"

namespace Afx
{

std::int64_t AtoI64(const char* text) noexcept
{
    if (!text)
        return 0;
    while (IsBlank(*text))
        ++text;
    const bool negative = *text == '-';
    if (negative || *text == '+')
        ++text;
    // Built on the negative side, which reaches one further.
    constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    std::int64_t value = 0;
    for (; IsDigit(*text); ++text) {
        const int digit = *text - '0';
        if (value < (kMin + digit) / 10)
            return negative ? kMin : kMax;
        value = value * 10 - digit;
    }
    if (negative)
        return value;
    return value == kMin ? kMax : -value;
}

} // namespace Afx
