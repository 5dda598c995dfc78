#include "HmrcApi/answers/Retry.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "Afx/time/Clock.h"
#include "Shellkit/Random.h"

namespace HmrcApi
{
namespace
{

constexpr std::int64_t kMinute = 60'000, kDay = 24 * 60 * kMinute; // milliseconds
constexpr std::int64_t kLongestAsked = 3650 * kDay;                // more is as good as never

bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// `text` is of the form, in which 0 stands for a digit, A for a letter, and everything else for itself.
bool HasForm(std::string_view text, std::string_view form) noexcept
{
    const auto fits = [](char c, char wanted) {
        if (wanted == '0')
            return IsDigit(c);
        return wanted == 'A' ? (c | 0x20) >= 'a' && (c | 0x20) <= 'z' : c == wanted;
    };
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), fits);
}

/// The milliseconds from now to `Wed, 21 Oct 2015 07:28:00 GMT`; 0 when it is past or no such date.
std::int64_t UntilHttpDate(std::string_view text)
{
    constexpr std::string_view kMonths = "JanFebMarAprMayJunJulAugSepOctNovDec";
    if (!HasForm(text, "AAA, 00 AAA 0000 00:00:00 GMT"))
        return 0;
    const auto number = [&](std::size_t at, std::size_t count) {
        int value = 0;
        for (const char c : text.substr(at, count))
            value = value * 10 + (c - '0');
        return value;
    };
    const std::size_t month = kMonths.find(text.substr(8, 3));
    Afx::LocalTime when{};
    when.year = number(12, 4);
    when.month = static_cast<int>(month / 3) + 1;
    when.day = number(5, 2);
    when.hour = number(17, 2);
    when.minute = number(20, 2);
    when.second = number(23, 2);
    if (month == std::string_view::npos || month % 3 != 0 || when.year < 1970 || when.day < 1 || when.day > 31 ||
        when.hour > 23 || when.minute > 59 || when.second > 60)
        return 0;
    return std::max<std::int64_t>(0, Afx::ToUnixMilliseconds(when) - Afx::Clock::UnixMilliseconds());
}

/// Retry-After in milliseconds, at most kLongestAsked; 0 when it says nothing.
std::int64_t AskedWait(std::string_view retryAfter)
{
    if (retryAfter.empty() || !std::all_of(retryAfter.begin(), retryAfter.end(), IsDigit))
        return std::min(UntilHttpDate(retryAfter), kLongestAsked);
    std::int64_t seconds = kLongestAsked; // what the digits do not fit is longer still
    std::from_chars(retryAfter.data(), retryAfter.data() + retryAfter.size(), seconds);
    return std::min(seconds, kLongestAsked / 1000) * 1000;
}

std::string TwoDigits(int value)
{
    return {static_cast<char>('0' + value / 10 % 10), static_cast<char>('0' + value % 10)};
}

} // namespace

std::optional<unsigned> RetryWait(unsigned done, std::string_view retryAfter)
{
    const std::int64_t asked = AskedWait(retryAfter);
    if (asked > kMinute)
        return std::nullopt;
    const unsigned step = 500u << std::min(done > 0 ? done - 1 : 0u, 2u);
    const auto jitter = static_cast<unsigned>(g_RandomGenerator.NewRandomPositive()) % (step / 4 + 1);
    return std::max(step + jitter, static_cast<unsigned>(asked));
}

std::string TryAgainText(std::string_view retryAfter)
{
    const std::int64_t asked = AskedWait(retryAfter);
    if (asked <= kMinute)
        return {};
    const std::int64_t then = Afx::ToUnixMilliseconds(Afx::Clock::Local()) + asked + kMinute - 1;
    const Afx::LocalTime when = Afx::FromUnixMilliseconds(then);
    std::string text = "after " + TwoDigits(when.hour) + ':' + TwoDigits(when.minute);
    if (asked >= kDay)
        text += " on " + TwoDigits(when.day) + '/' + TwoDigits(when.month) + '/' + std::to_string(when.year);
    return text;
}

} // namespace HmrcApi
