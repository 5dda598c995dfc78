// A number of pounds, read and rounded as a double, to pence.

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <system_error>

#include "Afx/text/Numbers.h"
#include "MorvUt/money/Pence.h"

namespace
{

constexpr bool IsBlank(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// Up to this many digits, a decimal number is a double divided by a power of ten: rounded once, so exactly.
constexpr int kExactDigits = 15;
constexpr double kPowersOfTen[kExactDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

struct Number
{
    bool isNegative = false;
    bool isPlain = false;    // `digits` and `decimals` say it all
    std::int64_t digits = 0; // without the point
    int decimals = 0;        // digits behind the point
    const char* rest = "";   // from the first digit or point on
};

/// Reads up to the first character that does not belong. Commas count for nothing.
Number ReadNumber(const char* at) noexcept
{
    Number number;
    while (*at == ',' || IsBlank(*at))
        ++at;
    if (*at == '-' || *at == '+')
        number.isNegative = *at++ == '-';
    number.rest = at;
    bool hasPoint = false;
    for (int count = 0; count <= kExactDigits; ++at) {
        if (IsDigit(*at)) {
            number.digits = number.digits * 10 + (*at - '0');
            number.decimals += hasPoint;
            count += number.digits != 0;
        } else if (*at == '.' && !hasPoint) {
            hasPoint = true;
        } else if (*at != ',') {
            number.isPlain = number.decimals <= kExactDigits && *at != 'e' && *at != 'E';
            break;
        }
    }
    return number;
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

std::int64_t PenceOf(const Number& number)
{
    constexpr std::int64_t kAligned = 100'000'000'000'000; // pence of £10^12, from which the printed text is too long
    if (!number.isPlain)
        return ReadPrinted(ReadLong(number.rest));
    if (number.decimals <= 2) {
        constexpr int kPence[] = {100, 10, 1};
        // A double of fifteen digits prints as the same digits.
        if (const std::int64_t pence = number.digits * kPence[number.decimals]; pence < kAligned)
            return pence;
    }
    return ReadPrinted(static_cast<double>(number.digits) / kPowersOfTen[number.decimals]);
}

} // namespace

__int64 PoundsToPence(const char* text)
{
    const Number number = ReadNumber(text ? text : "");
    const std::int64_t pence = PenceOf(number);
    return number.isNegative ? -pence : pence;
}
