#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "MorvUt/money/Pence.h"
#include "Subject.h"
#include "Values.h"

namespace Rules
{
namespace
{

// As with ours, a text that is no amount is 0.

__int64 FromCharsOfDouble(const std::string& text)
{
    const char* const end = text.data() + text.size();
    double pounds = 0;
    const auto read = std::from_chars(text.data(), end, pounds);
    return read.ptr == end && read.ec == std::errc() ? std::llround(pounds * 100) : 0;
}

/// Pounds and pence apart; one digit of pence is tens.
__int64 FromCharsOfTwoIntegers(const std::string& text)
{
    const char* const end = text.data() + text.size();
    const bool minus = text.starts_with('-');
    __int64 pounds = 0, pence = 0;
    auto read = std::from_chars(text.data() + minus, end, pounds);
    if (read.ec == std::errc() && read.ptr != end && *read.ptr == '.') {
        const char* const decimals = read.ptr + 1;
        read = std::from_chars(decimals, end, pence);
        if (read.ptr - decimals == 1)
            pence *= 10;
        else if (read.ptr - decimals != 2)
            return 0;
    }
    if (read.ptr != end || read.ec != std::errc())
        return 0;
    pounds = pounds * 100 + pence;
    return minus ? -pounds : pounds;
}

__int64 Strtod(const std::string& text)
{
    char* end = nullptr;
    const double pounds = std::strtod(text.c_str(), &end);
    return *end ? 0 : std::llround(pounds * 100);
}

/// The rule of PoundsToPence step by step, by the C library.
__int64 PrintAndReadAgain(const std::string& text)
{
    std::string plain = text;
    plain.erase(std::remove(plain.begin(), plain.end(), ','), plain.end());
    double pounds = 0;
    std::sscanf(plain.c_str(), "%lf", &pounds);
    const int sign = pounds < 0 ? -1 : 1;
    char printed[400];
    std::snprintf(printed, sizeof printed, "%15.2f", pounds * sign);
    return (std::atoll(printed) * 100 + std::atoll(printed + 13)) * sign;
}

} // namespace

void RegisterMoneyFromText()
{
    Subject("text to pence", AmountTexts(), [](const std::string& text) { return StrToCurrency(text.c_str()); })
        .Against("from_chars of a double", FromCharsOfDouble)
        .Against("from_chars of two integers", FromCharsOfTwoIntegers)
        .Against("strtod", Strtod)
        .Slower("ours reads whatever users type (pound signs, brackets, commas, a sign behind) and measures the text "
                "first; the peer knows the length and reads digits, one point and a minus");
    Subject("pounds to pence", PoundTexts(), [](const std::string& text) {
        return PoundsToPence(text.c_str());
    }).Against("sscanf, snprintf, atoll", PrintAndReadAgain);
}

} // namespace Rules
