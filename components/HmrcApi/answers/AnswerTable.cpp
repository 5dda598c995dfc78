#include "HmrcApi/answers/AnswerTable.h"

#include <algorithm>
#include <charconv>

#include "Afx/Clock.h"
#include "HmrcApi/answers/Mask.h"
#include "HmrcApi/json/Json.h"
#include "Shellkit/Random.h"

namespace HmrcApi
{
namespace
{

using Outcome = HttpAnswer::Outcome;

// The first row that fits decides.
constexpr AnswerRule kRules[] = {
    {Outcome::Answered, 200, "", 0, Verdict::Success, "", ""},
    {Outcome::Answered, 401, "INVALID_CREDENTIALS", 0, Verdict::Refresh, "", ""},
    {Outcome::Answered, 404, "NOT_FOUND", 0, Verdict::NothingYet, "", ""},
    {Outcome::Answered, 429, "", 3, Verdict::Error, "", ""},
    {Outcome::Answered, 500, "", 1, Verdict::Error, "", ""},
    {Outcome::Answered, 503, "SCHEDULED_MAINTENANCE", 0, Verdict::Error, "", ""},
    {Outcome::Answered, 503, "", 3, Verdict::Error, "", ""},
    {Outcome::Answered, 504, "", 3, Verdict::Error, "", ""},
    {Outcome::Answered, 0, "", 0, Verdict::Error, "", ""},
    {Outcome::NoConnection, 0, "", 3, Verdict::Error, "NO_CONNECTION", "HMRC cannot be reached"},
    {Outcome::Incomplete, 0, "", 3, Verdict::Error, "ANSWER_INCOMPLETE", "HMRC's answer broke off"},
    {Outcome::TimedOut, 0, "", 0, Verdict::Error, "TIMED_OUT", "HMRC did not answer in time"},
    {Outcome::TooLarge, 0, "", 0, Verdict::Error, "ANSWER_TOO_LARGE", "HMRC's answer is too large"},
    {Outcome::Cancelled, 0, "", 0, Verdict::Error, "CANCELLED", "The request was cancelled"},
};
constexpr AnswerRule kAnyOther{Outcome::Answered, 0, "", 0, Verdict::Error, "", ""};

constexpr unsigned kLongestWait = 60'000; // milliseconds

std::string TextOf(const JsonValue& value, std::string_view name)
{
    const JsonValue* member = value.Find(name);
    return member && member->Is(JsonValue::Kind::Text) ? member->text : std::string();
}

std::string UpperAscii(std::string text)
{
    for (char& c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return text;
}

/// Appends the listed errors to the message: "Bad request: Date is invalid (INVALID_DATE, /dateOfBirth)".
void AddListed(const JsonValue& errors, ErrorBody& body)
{
    constexpr std::size_t kShown = 10;
    for (std::size_t i = 0; i < std::min(errors.items.size(), kShown); ++i) {
        const JsonValue& error = errors.items[i];
        const std::string path = TextOf(error, "path");
        if (body.path.empty())
            body.path = path;
        if (body.code.empty())
            body.code = TextOf(error, "code");
        body.message += (i > 0                  ? "; "
                         : body.message.empty() ? ""
                                                : ": ") +
                        TextOf(error, "message") + " (" + TextOf(error, "code") + (path.empty() ? "" : ", " + path) +
                        ')';
    }
}

/// The milliseconds from now to `Wed, 21 Oct 2015 07:28:00 GMT`; 0 when it is past or no such date.
std::int64_t UntilHttpDate(std::string_view text)
{
    constexpr std::string_view kMonths = "JanFebMarAprMayJunJulAugSepOctNovDec";
    constexpr std::size_t kLength = 29;
    const auto number = [&](std::size_t at, std::size_t count) {
        int value = -1;
        const char* end = text.data() + at + count;
        return std::from_chars(text.data() + at, end, value).ptr == end ? value : -1;
    };
    if (text.size() != kLength || !text.ends_with(" GMT"))
        return 0;
    const std::size_t month = kMonths.find(text.substr(8, 3));
    Afx::LocalTime when{};
    when.year = number(12, 4);
    when.month = static_cast<int>(month / 3) + 1;
    when.day = number(5, 2);
    when.hour = number(17, 2);
    when.minute = number(20, 2);
    when.second = number(23, 2);
    if (month == std::string_view::npos || month % 3 != 0 || when.year < 1970 || when.day < 1 || when.day > 31 ||
        when.hour < 0 || when.minute < 0 || when.second < 0)
        return 0;
    return std::max<std::int64_t>(0, Afx::ToUnixMilliseconds(when) - Afx::Clock::UnixMilliseconds());
}

/// Retry-After in milliseconds, at most kLongestWait; 0 when it says nothing.
std::int64_t AskedWait(std::string_view retryAfter)
{
    std::int64_t seconds = 0;
    const char* end = retryAfter.data() + retryAfter.size();
    const auto [read, error] = std::from_chars(retryAfter.data(), end, seconds);
    if (retryAfter.empty() || read != end)
        return std::min<std::int64_t>(UntilHttpDate(retryAfter), kLongestWait);
    if (error != std::errc() || seconds > kLongestWait / 1000)
        return kLongestWait;
    return std::max<std::int64_t>(seconds, 0) * 1000;
}

} // namespace

const AnswerRule& RuleFor(const HttpAnswer& answer, std::string_view code) noexcept
{
    for (const AnswerRule& rule : kRules)
        if (rule.outcome == answer.outcome && (rule.status == 0 || rule.status == answer.status) &&
            (rule.code.empty() || rule.code == code))
            return rule;
    return kAnyOther;
}

ErrorBody ReadErrorBody(const HttpAnswer& answer)
{
    ErrorBody body;
    const std::optional<JsonValue> json = ParseJson(answer.body);
    if (json && json->Is(JsonValue::Kind::Object)) {
        body.code = TextOf(*json, "code");
        body.message = TextOf(*json, "message");
        if (const JsonValue* errors = json->Find("errors"); errors && errors->Is(JsonValue::Kind::Array))
            AddListed(*errors, body);
        if (body.code.empty()) {
            body.code = UpperAscii(TextOf(*json, "error"));
            body.message = body.message.empty() ? TextOf(*json, "error_description") : body.message;
        }
    }
    if (body.code.empty())
        body.code = "HTTP_" + std::to_string(answer.status);
    if (body.message.empty())
        body.message = "HMRC answered with HTTP status " + std::to_string(answer.status);
    body.message = Mask(body.message);
    return body;
}

unsigned RetryWait(unsigned done, const std::string& retryAfter)
{
    const unsigned step = 500u << std::min(done > 0 ? done - 1 : 0u, 2u);
    const auto jitter = static_cast<unsigned>(g_RandomGenerator.NewRandomPositive()) % (step / 4 + 1);
    return std::max(step + jitter, static_cast<unsigned>(AskedWait(retryAfter)));
}

HmrcApiErrorException ErrorOf(const HttpAnswer& answer, const AnswerRule& rule, const ErrorBody& body)
{
    if (rule.entry.empty())
        return {body.code, body.message, body.path, std::to_string(answer.status)};
    std::string text(rule.text);
    if (!answer.problem.empty())
        text += ": " + Mask(answer.problem);
    return {std::string(rule.entry), std::move(text), {}, answer.status > 0 ? std::to_string(answer.status) : ""};
}

std::string DescribeAnswer(const HttpAnswer& answer, const ErrorBody& body)
{
    if (answer.outcome != Outcome::Answered)
        return std::string(RuleFor(answer, {}).entry);
    std::string text = std::to_string(answer.status);
    if (answer.status != 200)
        text += ' ' + body.code;
    return text + ", " + std::to_string(answer.body.size()) + " bytes";
}

} // namespace HmrcApi
