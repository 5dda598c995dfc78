// A number of pounds, read and rounded as a double, to pence.

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <system_error>

#include "Afx/text/Ascii.h"
#include "Afx/text/Numbers.h"
#include "MorvUt/money/Pence.h"

namespace
{

using Afx::IsBlank;
using Afx::IsDigit;

/// A number of two decimals at most, commas anywhere, below £10^12: a double of so few digits prints as they stand.
/// Nothing for any other text.
std::optional<std::int64_t> ReadUsual(const char* at) noexcept
{
    constexpr std::int64_t kAligned = 100'000'000'000'000; // pence, from which the printed text is too long
    constexpr int kPence[] = {100, 10, 1};
    std::int64_t digits = 0;
    int decimals = 0;
    bool hasPoint = false;
    for (;; ++at) {
        if (IsDigit(*at)) {
            digits = digits * 10 + (*at - '0');
            decimals += hasPoint;
            if (decimals > 2 || digits >= kAligned)
                return std::nullopt;
        } else if (*at == '.' && !hasPoint) {
            hasPoint = true;
        } else if (*at != ',') {
            break;
        }
    }
    const std::int64_t pence = digits * kPence[decimals];
    return *at == 'e' || *at == 'E' || pence >= kAligned ? std::nullopt : std::optional(pence);
}

/// The magnitude of any other number: more digits, or an exponent. 0 when the text begins with no number.
double ReadLong(const char* text)
{
    std::string cleaned;
    for (; *text; ++text)
        if (*text != ',')
            cleaned += *text;
    if (cleaned.empty() || (!IsDigit(cleaned[0]) && cleaned[0] != '.'))
        return 0; // also the words for infinity and NaN, and a second sign
    double value = 0;
    const auto read = std::from_chars(cleaned.data(), cleaned.data() + cleaned.size(), value);
    if (read.ec == std::errc::result_out_of_range) // infinity or next to nothing; both give no pence
        return 0;
    return value;
}

/// `pounds`, not negative, printed right-aligned in fifteen characters with two decimals, and read again: the pounds up
/// to the point, the pence from the fourteenth character on. From 10^12 on the text is longer than that, so the pence
/// begin too early; callers know it so.
std::int64_t ReadPrinted(double pounds) noexcept
{
    constexpr std::size_t kWidth = 15, kPenceAt = 13;
    char printed[kWidth + std::numeric_limits<double>::max_exponent10 + 5];
    std::memset(printed, ' ', kWidth);
    char* const end = std::to_chars(printed + kWidth, std::end(printed) - 1, pounds, std::chars_format::fixed, 2).ptr;
    *end = '\0';
    const auto length = static_cast<std::size_t>(end - (printed + kWidth));
    const char* const text = length < kWidth ? end - kWidth : printed + kWidth;
    std::int64_t pence = 0;
    if (__builtin_mul_overflow(Afx::AtoI64(text), std::int64_t{100}, &pence) ||
        __builtin_add_overflow(pence, Afx::AtoI64(text + kPenceAt), &pence))
        return std::numeric_limits<std::int64_t>::max();
    return pence;
}

} // namespace

__int64 PoundsToPence(const char* text)
{
    const char* at = text ? text : "";
    while (*at == ',' || IsBlank(*at))
        ++at;
    const bool isNegative = *at == '-';
    at += isNegative || *at == '+';
    const std::optional<std::int64_t> usual = ReadUsual(at);
    const std::int64_t pence = usual ? *usual : ReadPrinted(ReadLong(at));
    return isNegative ? -pence : pence;
}
