#pragma once

// Amounts for the tests of money.

#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "MorvUt/money/Pence.h"

namespace Test
{

inline constexpr __int64 kMinPence = std::numeric_limits<__int64>::min(),
                         kMaxPence = std::numeric_limits<__int64>::max();
/// The largest amount in pence that ten-thousandths of a pound can hold.
inline constexpr __int64 kMaxAmountPence = kMaxPence / 100;
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN(),
                        kInfinity = std::numeric_limits<double>::infinity();

constexpr bool IsAmount(__int64 pence) { return pence >= -kMaxAmountPence && pence <= kMaxAmountPence; }

/// Switches the thousands separators on while it lives; any number but 0 does.
struct CommaScope
{
    explicit CommaScope(int show = 1) { SetShowCommaSeparators(show); }
    ~CommaScope() { SetShowCommaSeparators(0); }
};

/// The ends of every power of ten, and amounts of every size, the same ones in every run.
inline std::vector<__int64> SampleOfPence()
{
    std::vector<__int64> sample{0, kMinPence, kMaxPence, kMinPence + 1};
    for (__int64 power = 1; power < kMaxPence / 10; power *= 10)
        for (const __int64 pence : {power - 1, power, power + 1})
            sample.insert(sample.end(), {pence, -pence});
    std::mt19937_64 random(2024);
    for (int i = 0; i < 2'000; ++i)
        sample.push_back(static_cast<__int64>(random()) >> (random() % 63));
    return sample;
}

} // namespace Test
