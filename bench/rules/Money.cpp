#include "MorvUt/money/Pence.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#ifdef BENCH_HAS_FMT
#include <fmt/compile.h>
#endif

#include "Subject.h"
#include "Values.h"

namespace Rules
{
namespace
{

CString OurText(__int64 pence)
{
    CString text;
    CurrencyToCStr(pence, text);
    return text;
}

std::uint64_t SizeOf(__int64 pence) { return static_cast<std::uint64_t>(pence < 0 ? -pence : pence); }

std::string ToCharsText(__int64 pence)
{
    char buffer[32];
    char* at = buffer;
    if (pence < 0)
        *at++ = '-';
    const std::uint64_t size = SizeOf(pence);
    at = std::to_chars(at, std::end(buffer), size / 100).ptr;
    *at++ = '.';
    if (size % 100 < 10)
        *at++ = '0';
    at = std::to_chars(at, std::end(buffer), size % 100).ptr;
    return std::string(buffer, at);
}

std::string PrintfText(__int64 pence)
{
    char buffer[32];
    const unsigned long long size = SizeOf(pence);
    const int length =
        std::snprintf(buffer, sizeof buffer, "%s%llu.%02llu", pence < 0 ? "-" : "", size / 100, size % 100);
    return std::string(buffer, static_cast<std::size_t>(length));
}

#ifdef BENCH_HAS_FMT
std::string FmtText(__int64 pence)
{
    const std::uint64_t size = SizeOf(pence);
    return fmt::format(FMT_COMPILE("{}{}.{:02}"), pence < 0 ? "-" : "", size / 100, size % 100);
}
#endif

/// The same with a comma before every three digits of the pounds.
template<class Plain>
auto WithCommas(Plain plain)
{
    return [plain](__int64 pence) {
        std::string text = plain(pence);
        const std::size_t skip = text[0] == '-';
        for (std::size_t at = text.size() - 3; at > skip + 3;)
            text.insert(at -= 3, 1, ',');
        return text;
    };
}

void RegisterPenceToText()
{
    Subject plain("pence to text", Amounts(), OurText, [] { SetShowCommaSeparators(0); });
    plain.Against("to_chars", [](__int64 pence) { return ToCharsText(pence); });
    plain.Against("snprintf", [](__int64 pence) { return PrintfText(pence); });
    Subject commas("pence to text with commas", Amounts(), OurText, [] { SetShowCommaSeparators(1); });
    commas.Against("to_chars, insert", WithCommas([](__int64 pence) { return ToCharsText(pence); }));
    commas.Against("snprintf, insert", WithCommas([](__int64 pence) { return PrintfText(pence); }));
#ifdef BENCH_HAS_FMT
    plain.Against("fmt, compiled format", [](__int64 pence) { return FmtText(pence); });
    commas.Against("fmt, compiled format, insert", WithCommas([](__int64 pence) { return FmtText(pence); }));
#endif
}

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

void RegisterTextToPence()
{
    Subject("text to pence", AmountTexts(), [](const std::string& text) { return StrToCurrency(text.c_str()); })
        .Against("from_chars of a double", FromCharsOfDouble)
        .Against("from_chars of two integers", FromCharsOfTwoIntegers)
        .Against("strtod", Strtod);
    Subject("pounds to pence", PoundTexts(), [](const std::string& text) {
        return PoundsToPence(text.c_str());
    }).Against("sscanf, snprintf, atoll", PrintAndReadAgain);
}

} // namespace

void RegisterMoney()
{
    RegisterPenceToText();
    RegisterTextToPence();
}

} // namespace Rules
