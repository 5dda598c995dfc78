#include "Errors.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace Sandbox
{

namespace
{

// `code` and `status` are HMRC's and fixed. The messages of HTTPS_REQUIRED, FORBIDDEN, METHOD_NOT_ALLOWED,
// INTERNAL_SERVER_ERROR, NOT_IMPLEMENTED, SCHEDULED_MAINTENANCE and GATEWAY_TIMEOUT are not published; ours stand in.
constexpr ErrorCode kErrors[] = {
    {"ACCEPT_HEADER_INVALID", 406, "The accept header is missing or invalid", false},
    {"BAD_REQUEST", 400, "Bad request", false},
    {"FORBIDDEN", 403, "The token is not authorised for this tax identifier", true},
    {"GATEWAY_TIMEOUT", 504, "Gateway timeout", false},
    {"HTTPS_REQUIRED", 403, "HTTPS is required", true},
    {"INCORRECT_ACCESS_TOKEN_TYPE", 401, "The access token type used is not supported when invoking the API", true},
    {"INTERNAL_SERVER_ERROR", 500, "Internal server error", false},
    {"INVALID_CREDENTIALS", 401, "Invalid Authentication information provided", true},
    {"INVALID_SCOPE", 403, "Cannot access the required resource. Ensure this token has all the required scopes.", true},
    {"MATCHING_RESOURCE_NOT_FOUND", 404, "A resource with the name in the request can not be found in the API", false},
    {"MESSAGE_THROTTLED_OUT", 429, "The request for the API is throttled as you have exceeded your quota.", false},
    {"METHOD_NOT_ALLOWED", 405, "Method not allowed", false},
    {"MISSING_CREDENTIALS", 401, "Authentication information is not provided", true},
    {"NINO_INVALID", 400, "The provided NINO is invalid", false},
    {"NOT_FOUND", 404, "Resource was not found", false},
    {"NOT_IMPLEMENTED", 501, "Not implemented", false},
    {"RESOURCE_FORBIDDEN", 403, "The application is not subscribed to the API which it is attempting to invoke", true},
    {"SA_UTR_INVALID", 400, "The provided SA UTR is invalid", false},
    {"SCHEDULED_MAINTENANCE", 503, "The service is down for planned maintenance", false},
    {"SERVER_ERROR", 503, "A temporary problem occurred", false},
    {"TAX_YEAR_INVALID", 400, "The provided Tax Year is invalid", false},
    {"UNAUTHORIZED", 401, "Bearer token is missing or not authorized", false},
    {"UNKNOWN_SCENARIO", 400, "Unknown test scenario", false},
};

} // namespace

std::span<const ErrorCode> ErrorCodes() { return kErrors; }

const ErrorCode* FindError(std::string_view code)
{
    const auto at =
        std::find_if(std::begin(kErrors), std::end(kErrors), [&](const ErrorCode& row) { return row.code == code; });
    return at == std::end(kErrors) ? nullptr : at;
}

Answer ErrorAnswer(std::string_view code)
{
    const ErrorCode* row = FindError(code);
    if (row == nullptr)
        throw std::logic_error("no such error code: " + std::string(code));
    Answer answer;
    answer.status = row->status;
    answer.code = row->code;
    answer.body = nlohmann::ordered_json{{"code", row->code}, {"message", row->message}}.dump();
    if (row->challenge)
        answer.headers.emplace_back("WWW-Authenticate", "Bearer realm=\"HMRC API Platform\"");
    return answer;
}

Answer OAuthError(int status, std::string_view error, std::string_view description)
{
    Answer answer;
    answer.status = status;
    answer.code = error;
    answer.body = nlohmann::ordered_json{{"error", error}, {"error_description", description}}.dump();
    return answer;
}

} // namespace Sandbox
