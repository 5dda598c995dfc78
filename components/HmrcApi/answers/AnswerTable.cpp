#include "HmrcApi/answers/AnswerTable.h"

#include <algorithm>

#include "Afx/text/TextFold.h"
#include "HmrcApi/answers/Mask.h"
#include "HmrcApi/answers/Retry.h"
#include "HmrcApi/json/Json.h"

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
    {Outcome::NoConnection, 0, "", 3, Verdict::Error, "NO_CONNECTION", "HMRC cannot be reached"},
    {Outcome::Incomplete, 0, "", 3, Verdict::Error, "ANSWER_INCOMPLETE", "HMRC's answer broke off"},
    {Outcome::TimedOut, 0, "", 0, Verdict::Error, "TIMED_OUT", "HMRC did not answer in time"},
    {Outcome::TooLarge, 0, "", 0, Verdict::Error, "ANSWER_TOO_LARGE", "HMRC's answer is too large"},
    {Outcome::Cancelled, 0, "", 0, Verdict::Error, "CANCELLED", "The request was cancelled"},
    {Outcome::NoTransport, 0, "", 0, Verdict::Error, "NO_HTTP_MODULE", "A part of this program cannot be loaded"},
};
// What another host says is not HMRC's word: no refresh, no "nothing yet".
constexpr AnswerRule kElsewhere{
    Outcome::Answered, 0, "", 0, Verdict::Error, "REDIRECTED", "HMRC's answer led elsewhere"};
constexpr AnswerRule kAnyOtherStatus{Outcome::Answered, 0, "", 0, Verdict::Error, "", ""};

std::string TextOf(const JsonValue& value, std::string_view name)
{
    const JsonValue* member = value.Find(name);
    return member && member->Is(JsonValue::Kind::Text) ? member->text : std::string();
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

} // namespace

const AnswerRule& RuleFor(const HttpAnswer& answer, std::string_view code) noexcept
{
    if (answer.isElsewhere && answer.outcome == Outcome::Answered && answer.status != 200)
        return kElsewhere;
    for (const AnswerRule& rule : kRules)
        if (rule.outcome == answer.outcome && (rule.status == 0 || rule.status == answer.status) &&
            (rule.code.empty() || rule.code == code))
            return rule;
    return kAnyOtherStatus;
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
            body.code = Afx::FoldUpper(TextOf(*json, "error"));
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

bool IsJsonType(std::string_view mediaType) noexcept
{
    constexpr std::string_view kBefore = "application/", kAfter = "+json";
    // Without a type the body speaks for itself: it is read strictly, and a page always says that it is one.
    return mediaType.empty() || mediaType == "application/json" ||
           (mediaType.size() > kBefore.size() + kAfter.size() && mediaType.starts_with(kBefore) &&
            mediaType.ends_with(kAfter));
}

std::string TakeJson(HttpAnswer& answer)
{
    if (!IsJsonType(answer.contentType))
        throw HmrcApiErrorException(
            "ANSWER_MALFORMED",
            "HMRC's answer is a page instead of data, usually the sign-in page of a proxy or of "
            "the network",
            "Content-Type", "200");
    if (answer.body.empty()) // not to be taken for "nothing yet"
        throw HmrcApiErrorException("ANSWER_MALFORMED", "HMRC's answer is empty", {}, "200");
    return std::move(answer.body);
}

HmrcApiErrorException ErrorOf(const HttpAnswer& answer, const AnswerRule& rule, const ErrorBody& body)
{
    if (rule.entry.empty()) {
        const std::string when = TryAgainText(answer.retryAfter);
        if (when.empty())
            return {body.code, body.message, body.path, std::to_string(answer.status)};
        return {body.code, body.message + "; HMRC asks to try again " + when, "Retry-After",
                std::to_string(answer.status)};
    }
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
