#include "HmrcApi/answers/Retry.h"

#include <algorithm>
#include <cstdint>

#include "Afx/text/Ascii.h"
#include "Afx/text/Numbers.h"
#include "Afx/time/Clock.h"
#include "Afx/time/FormatTime.h"
#include "Shellkit/Random.h"

namespace HmrcApi
{
namespace
{

constexpr std::int64_t kMinute = 60'000, kDay = 24 * 60 * kMinute; // milliseconds
constexpr std::int64_t kLongestAsked = 3650 * kDay;                // more is as good as never

/// `text` is of the form, in which 0 stands for a digit, A for a letter, and everything else for itself.
bool HasForm(std::string_view text, std::string_view form) noexcept
{
    const auto fits = [](char c, char wanted) {
        if (wanted == '0')
            return Afx::IsDigit(c);
        return wanted == 'A' ? Afx::IsLetter(c) : c == wanted;
    };
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), fits);
}

/// The milliseconds from now to `Wed, 21 Oct 2015 07:28:00 GMT`; 0 when it is past or no such date.
std::int64_t UntilHttpDate(std::string_view text)
{
    if (!HasForm(text, "AAA, 00 AAA 0000 00:00:00 GMT"))
        return 0;
    const auto number = [&](std::size_t at, std::size_t count) {
        return Afx::ParseWhole<int>(text.substr(at, count)).value_or(0);
    };
    Afx::LocalTime when{};
    when.year = number(12, 4);
    when.month = Afx::MonthOf(text.substr(8, 3));
    when.day = number(5, 2);
    when.hour = number(17, 2);
    when.minute = number(20, 2);
    when.second = number(23, 2);
    if (when.month == 0 || when.year < 1970 || when.day < 1 || when.day > 31 || when.hour > 23 || when.minute > 59 ||
        when.second > 60)
        return 0;
    return std::max<std::int64_t>(0, Afx::ToUnixMilliseconds(when) - Afx::Clock::UnixMilliseconds());
}

/// Retry-After in milliseconds, at most kLongestAsked; 0 when it says nothing.
std::int64_t AskedWait(std::string_view retryAfter)
{
    if (!Afx::AreDigits(retryAfter))
        return std::min(UntilHttpDate(retryAfter), kLongestAsked);
    const auto seconds = Afx::ParseWhole<std::int64_t>(retryAfter);
    return std::min(seconds.value_or(kLongestAsked), kLongestAsked / 1000) * 1000; // what does not fit is longer still
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
