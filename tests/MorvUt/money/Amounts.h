#pragma once

// Amounts for the tests of money.

#include <limits>

#include "MorvUt/money/Pence.h"

namespace Test
{

inline constexpr __int64 kMinPence = std::numeric_limits<__int64>::min(),
                         kMaxPence = std::numeric_limits<__int64>::max();
/// The largest amount in pence that ten-thousandths of a pound can hold.
inline constexpr __int64 kMaxAmountPence = kMaxPence / 100;
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN(),
                        kInfinity = std::numeric_limits<double>::infinity();

/// Switches the thousands separators on while it lives; any number but 0 does.
struct CommaScope
{
    explicit CommaScope(int show = 1) { SetShowCommaSeparators(show); }
    ~CommaScope() { SetShowCommaSeparators(0); }
};

} // namespace Test
