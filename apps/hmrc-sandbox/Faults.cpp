#include "Faults.h"

#include <algorithm>

#include "ControlBody.h"
#include "ControlError.h"
#include "Errors.h"
#include "Text.h"

namespace Sandbox
{

namespace
{

struct FaultKind
{
    const char* name;
    FaultAction action;
    int status;              // 0: the ordinary answer's, or that of `code`
    const char* code;        // of an error; null: none
    const char* description; // of an OAuth error
};

// Every code of the error table is a fault of its own name besides these.
constexpr FaultKind kKinds[] = {
    {"NOT_ACCEPTABLE", FaultAction::Error, 0, "ACCEPT_HEADER_INVALID", ""},
    {"REFRESH_IN_PROGRESS", FaultAction::OAuthError, 400, "invalid_request",
     "refresh operation is already in progress"},
    {"INVALID_GRANT", FaultAction::OAuthError, 400, "invalid_grant", "refresh_token is invalid"},
    {"INVALID_CLIENT", FaultAction::OAuthError, 401, "invalid_client", "invalid client id or secret"},
    {"HTML", FaultAction::Html, 502, nullptr, ""},
    {"EMPTY", FaultAction::Empty, 500, nullptr, ""},
    {"MALFORMED", FaultAction::Malformed, 200, nullptr, ""},
    {"TOO_LARGE", FaultAction::TooLarge, 200, nullptr, ""},
    {"TOO_DEEP", FaultAction::TooDeep, 200, nullptr, ""},
    {"CUT_OFF", FaultAction::CutOff, 0, nullptr, ""},
    {"DROPPED", FaultAction::Dropped, 0, nullptr, ""},
    {"SLOW", FaultAction::Slow, 0, nullptr, ""},
    {"REDIRECT", FaultAction::Redirect, 307, nullptr, ""},
};

constexpr int kSlowMs = 2000;
constexpr int kLongestDelayMs = 10 * 60 * 1000;
constexpr int kMostTimes = 1000000;
constexpr std::size_t kLargeBody = 8 * 1024 * 1024 + 1024; // the client's bound is 8 MiB
constexpr std::size_t kDeepLevels = 33;                    // the client's bound is 32 levels
constexpr char kRedirected[] = "redirected";               // the query that marks a request as redirected already

const FaultKind* FindKind(std::string_view name)
{
    const auto at =
        std::find_if(std::begin(kKinds), std::end(kKinds), [&](const FaultKind& kind) { return kind.name == name; });
    return at == std::end(kKinds) ? nullptr : at;
}

Answer Body(std::string body, const char* contentType = "application/json")
{
    Answer answer;
    answer.body = std::move(body);
    answer.contentType = contentType;
    return answer;
}

/// The OAuth endpoints have their own error body, whatever goes wrong.
Answer CodeAnswer(const Fault& fault, const Call& call)
{
    const Answer answer = ErrorAnswer(fault.code);
    if (!IsBelow(call.path, "/oauth"))
        return answer;
    Answer oauth = OAuthError(answer.status, "server_error", FindError(fault.code)->message);
    oauth.headers = answer.headers;
    return oauth;
}

Answer RedirectAnswer(const Fault& fault, const Call& call)
{
    Answer answer = Body("");
    answer.headers.emplace_back("Location",
                                fault.location.empty() ? call.path + "?" + kRedirected + "=1" : fault.location);
    return answer;
}

Answer CutOff(Answer answer)
{
    answer.body.resize(answer.body.size() / 2);
    return answer;
}

Answer Dropped(Answer answer)
{
    answer.dropped = true;
    return answer;
}

Answer Broken(const Fault& fault, const Call& call, const std::function<Answer()>& ordinary)
{
    switch (fault.action) {
    case FaultAction::Error:
        return CodeAnswer(fault, call);
    case FaultAction::OAuthError:
        return OAuthError(400, fault.code, fault.description);
    case FaultAction::Html:
        return Body("<html><head><title>Gateway error</title></head><body><h1>Gateway error</h1></body></html>",
                    "text/html");
    case FaultAction::Empty:
        return Body("");
    case FaultAction::Malformed:
        return Body("{\"employments\": [}");
    case FaultAction::TooLarge:
        return Body("{\"padding\":\"" + std::string(kLargeBody, 'x') + "\"}");
    case FaultAction::TooDeep:
        return Body(std::string(kDeepLevels, '[') + std::string(kDeepLevels, ']'));
    case FaultAction::CutOff:
        return CutOff(ordinary());
    case FaultAction::Dropped:
        return Dropped(ordinary());
    case FaultAction::Slow:
        return ordinary();
    case FaultAction::Redirect:
        return RedirectAnswer(fault, call);
    }
    return ordinary();
}

} // namespace

Fault ParseFault(const nlohmann::json& body)
{
    CheckMembers(body, {"path", "fault", "times", "status", "retryAfter", "delayMs", "location"});
    Fault fault;
    fault.path = TextMember(body, "path").value_or("");
    if (fault.path.empty() || fault.path[0] != '/')
        throw ControlError("path must be a path or its beginning, with a slash first: \"/individual-paye\"");
    fault.name = TextMember(body, "fault").value_or("");
    const FaultKind* kind = FindKind(fault.name);
    if (kind == nullptr && FindError(fault.name) == nullptr)
        throw ControlError("unknown fault \"" + fault.name + "\"");
    fault.action = kind != nullptr ? kind->action : FaultAction::Error;
    fault.code = kind == nullptr ? fault.name : kind->code != nullptr ? kind->code : "";
    fault.description = kind != nullptr ? kind->description : "";
    fault.times = IntMember(body, "times", -kMostTimes, kMostTimes).value_or(1);
    fault.always = fault.times <= 0;
    fault.status = IntMember(body, "status", 200, 599).value_or(kind != nullptr ? kind->status : 0);
    fault.retryAfter = IntMember(body, "retryAfter", 0, 86400).value_or(-1);
    fault.delayMs =
        IntMember(body, "delayMs", 0, kLongestDelayMs).value_or(fault.action == FaultAction::Slow ? kSlowMs : 0);
    fault.location = TextMember(body, "location").value_or("");
    return fault;
}

std::vector<std::string> FaultNames()
{
    std::vector<std::string> names;
    for (const FaultKind& kind : kKinds)
        names.emplace_back(kind.name);
    for (const ErrorCode& error : ErrorCodes())
        names.emplace_back(error.code);
    return names;
}

nlohmann::ordered_json FaultToJson(const Fault& fault)
{
    nlohmann::ordered_json json{{"path", fault.path}, {"fault", fault.name}, {"times", fault.always ? 0 : fault.times}};
    if (fault.status != 0)
        json["status"] = fault.status;
    if (fault.retryAfter >= 0)
        json["retryAfter"] = fault.retryAfter;
    if (fault.delayMs != 0)
        json["delayMs"] = fault.delayMs;
    if (!fault.location.empty())
        json["location"] = fault.location;
    return json;
}

std::optional<Fault> Faults::Take(const Call& call)
{
    const bool redirected = call.parameters.find(kRedirected) != call.parameters.end();
    const auto at = std::find_if(m_faults.begin(), m_faults.end(), [&](const Fault& fault) {
        return IsBelow(call.path, fault.path) && !(redirected && fault.action == FaultAction::Redirect);
    });
    if (at == m_faults.end())
        return std::nullopt;
    const Fault fault = *at;
    if (!at->always && --at->times == 0)
        m_faults.erase(at);
    return fault;
}

Answer AnswerWithFaults(Faults& faults, const Call& call, const std::function<Answer()>& ordinary)
{
    const auto fault = faults.Take(call);
    if (!fault)
        return ordinary();
    Answer answer = Broken(*fault, call, ordinary);
    if (fault->status != 0)
        answer.status = fault->status;
    if (fault->retryAfter >= 0)
        answer.headers.emplace_back("Retry-After", std::to_string(fault->retryAfter));
    answer.delay = std::chrono::milliseconds(fault->delayMs);
    return answer;
}

} // namespace Sandbox
