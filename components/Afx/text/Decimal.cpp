#include "Afx/text/Decimal.h"

#include <limits>

namespace Afx
{
namespace
{

constexpr int kCurrencyScale = 4, kLargestScale = 28;
constexpr unsigned kNegative = 0x80;

/// An unsigned number of 128 bits in words of 32, lowest first, enough for 96 bits times 10,000.
struct Wide
{
    std::uint32_t words[4];

    void Multiply(std::uint32_t by) noexcept
    {
        std::uint64_t carry = 0;
        for (std::uint32_t& word : words) {
            carry += std::uint64_t{word} * by;
            word = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }
    /// Divides and answers the remainder.
    std::uint32_t Divide(std::uint32_t by) noexcept
    {
        std::uint64_t rest = 0;
        for (int i = 3; i >= 0; --i) {
            rest = rest << 32 | words[i];
            words[i] = static_cast<std::uint32_t>(rest / by);
            rest %= by;
        }
        return static_cast<std::uint32_t>(rest);
    }
    bool FitsInt64() const noexcept { return words[2] == 0 && words[3] == 0; }
    std::uint64_t Low() const noexcept { return std::uint64_t{words[1]} << 32 | words[0]; }
};

} // namespace

std::optional<std::int64_t> DecimalToCy(const DECIMAL& value) noexcept
{
    if (value.scale > kLargestScale)
        return std::nullopt;
    Wide number{{static_cast<std::uint32_t>(value.Lo64), static_cast<std::uint32_t>(value.Lo64 >> 32),
                 static_cast<std::uint32_t>(value.Hi32), 0}};
    int scale = value.scale;
    for (; scale < kCurrencyScale; ++scale)
        number.Multiply(10);
    std::uint32_t dropped = 0; // the highest decimal that goes
    bool lowerDropped = false; // whether one below it was not 0
    for (; scale > kCurrencyScale; --scale) {
        lowerDropped |= dropped != 0;
        dropped = number.Divide(10);
    }
    if (!number.FitsInt64())
        return std::nullopt;
    std::uint64_t magnitude = number.Low();
    const bool roundUp = dropped > 5 || (dropped == 5 && (lowerDropped || magnitude % 2 == 1));
    const bool negative = value.sign == kNegative;
    const std::uint64_t limit = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) + negative;
    if (magnitude > limit - roundUp)
        return std::nullopt;
    magnitude += roundUp;
    return static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
}

} // namespace Afx
