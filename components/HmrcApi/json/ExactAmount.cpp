#include "HmrcApi/json/ExactAmount.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "Afx/text/Ascii.h"

namespace HmrcApi
{
namespace
{

constexpr int kDecimals = 4;
constexpr int kFarExponent = 1'000'000; // beyond every text that the size bound lets through

std::string_view TakeDigits(std::string_view& text) noexcept
{
    std::size_t count = 0;
    while (count < text.size() && Afx::IsDigit(text[count]))
        ++count;
    const std::string_view digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

bool Take(std::string_view& text, std::string_view set) noexcept
{
    if (text.empty() || set.find(text.front()) == std::string_view::npos)
        return false;
    text.remove_prefix(1);
    return true;
}

/// `e` or `E`, a sign, digits; 0 when there is no exponent, nothing when it is malformed.
std::optional<int> TakeExponent(std::string_view& text) noexcept
{
    if (!Take(text, "eE"))
        return 0;
    const bool isNegative = !text.empty() && text.front() == '-';
    Take(text, "+-");
    const std::string_view digits = TakeDigits(text);
    if (digits.empty())
        return std::nullopt;
    int exponent = 0;
    for (const char c : digits)
        exponent = std::min(exponent * 10 + (c - '0'), kFarExponent);
    return isNegative ? -exponent : exponent;
}

bool Append(std::uint64_t& value, unsigned digit) noexcept
{
    constexpr std::uint64_t kMost = std::uint64_t{1} << 63; // the magnitude of the smallest 64-bit number
    if (value > (kMost - digit) / 10)
        return false;
    value = value * 10 + digit;
    return true;
}

/// The digits `whole` and `fraction`, read as one row, times 10 to the power `shift`.
std::optional<std::uint64_t> Scale(std::string_view whole, std::string_view fraction, long long shift) noexcept
{
    std::uint64_t value = 0;
    const long long count = std::ssize(whole) + std::ssize(fraction);
    for (long long i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const char c = at < whole.size() ? whole[at] : fraction[at - whole.size()];
        const bool isBeyond = i >= count + shift; // a place below the ten-thousandth
        if (isBeyond ? c != '0' : !Append(value, static_cast<unsigned>(c - '0')))
            return std::nullopt;
    }
    for (long long i = 0; i < shift && value != 0; ++i)
        if (!Append(value, 0))
            return std::nullopt;
    return value;
}

struct NumberParts
{
    bool isNegative;
    std::string_view whole, fraction; // digits
    int exponent;
};

std::optional<NumberParts> SplitNumber(std::string_view text) noexcept
{
    NumberParts parts{};
    parts.isNegative = Take(text, "-");
    parts.whole = TakeDigits(text);
    if (parts.whole.empty() || (parts.whole.size() > 1 && parts.whole.front() == '0'))
        return std::nullopt;
    if (Take(text, ".")) {
        parts.fraction = TakeDigits(text);
        if (parts.fraction.empty())
            return std::nullopt;
    }
    const std::optional<int> exponent = TakeExponent(text);
    if (!exponent || !text.empty())
        return std::nullopt;
    parts.exponent = *exponent;
    return parts;
}

} // namespace

bool IsJsonNumber(std::string_view text) noexcept { return SplitNumber(text).has_value(); }

std::optional<std::int64_t> ExactTenThousandths(std::string_view number) noexcept
{
    const std::optional<NumberParts> parts = SplitNumber(number);
    if (!parts)
        return std::nullopt;
    const auto shift = static_cast<long long>(parts->exponent) - std::ssize(parts->fraction) + kDecimals;
    const std::optional<std::uint64_t> magnitude = Scale(parts->whole, parts->fraction, shift);
    constexpr auto kLargest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (!magnitude || *magnitude > kLargest + (parts->isNegative ? 1u : 0u))
        return std::nullopt;
    return static_cast<std::int64_t>(parts->isNegative ? std::uint64_t{0} - *magnitude : *magnitude);
}

} // namespace HmrcApi
