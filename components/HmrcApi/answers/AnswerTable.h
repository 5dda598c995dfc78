#pragma once

// What each answer of HMRC means: repeated, refreshed, nothing yet, or an error entry.

#include <string>
#include <string_view>

#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/Export.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

enum class Verdict : unsigned char
{
    Success,
    NothingYet, // HMRC has no data for this person and year: no error
    Refresh,    // the access token has run out
    Error
};

/// One row: an answer, by outcome, status and code, and what follows from it.
struct AnswerRule
{
    HttpAnswer::Outcome outcome;
    int status;            // 0: any
    std::string_view code; // empty: any
    unsigned retries;      // further requests after the first
    Verdict verdict;
    std::string_view entry; // our code of the entry; empty: HMRC's
    std::string_view text;
};

/// What the body of an error answer says.
struct ErrorBody
{
    std::string code;    // HMRC's, or HTTP_nnn when the body does not tell
    std::string message; // for people, masked
    std::string path;    // of the first listed error; may be empty
};

/// The rule for an answer whose body gave `code` (empty when there was none).
HMRCAPI_API const AnswerRule& RuleFor(const HttpAnswer& answer, std::string_view code) noexcept;

/// Reads HMRC's `code` and `message`, its list of errors, or an OAuth `error` and `error_description` (the code then
/// in upper case). Whatever else comes, HTML and nothing included, is told by its HTTP status.
HMRCAPI_API ErrorBody ReadErrorBody(const HttpAnswer& answer);

/// A 200 with this media type (lower case, without parameters) is data: application/json, application/…+json, or none.
HMRCAPI_API bool IsJsonType(std::string_view mediaType) noexcept;

/// The body of a 200, moved out. Throws ANSWER_MALFORMED for a page instead of data (third text Content-Type), and for
/// an empty body.
HMRCAPI_API std::string TakeJson(HttpAnswer& answer);

/// The exception for an answer that is not repeated any more. Where HMRC asks for a wait of more than a minute the text
/// tells until when, and the third text is Retry-After.
HMRCAPI_API HmrcApiErrorException ErrorOf(const HttpAnswer& answer, const AnswerRule& rule, const ErrorBody& body);

/// "200", "503 SERVER_ERROR" or the outcome in a word, for log lines.
HMRCAPI_API std::string DescribeAnswer(const HttpAnswer& answer, const ErrorBody& body);

} // namespace HmrcApi
