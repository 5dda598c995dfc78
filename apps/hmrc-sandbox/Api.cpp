#include <algorithm>
#include <chrono>
#include <regex>

#include "Errors.h"
#include "Handlers.h"
#include "Interfaces.h"
#include "Scenarios.h"

namespace Sandbox
{

namespace
{

constexpr std::size_t kRequestsPerSecond = 3;

/// The token of "Bearer <token>", the scheme in any case; nothing when there is no such token.
std::string BearerToken(const std::string& authorization)
{
    constexpr std::string_view kScheme = "bearer ";
    const bool isBearer = authorization.size() > kScheme.size() &&
                          std::equal(kScheme.begin(), kScheme.end(), authorization.begin(),
                                     [](char wanted, char given) { return wanted == (given | 0x20); });
    if (!isBearer)
        return {};
    const auto start = authorization.find_first_not_of(' ', kScheme.size());
    return start == std::string::npos ? std::string() : authorization.substr(start);
}

/// The code of what is wrong with the Accept header, null when it names a version of the interface.
const char* CheckAccept(const Interface& interface, const std::string& accept)
{
    const auto version = AcceptedVersion(accept);
    if (!version)
        return "ACCEPT_HEADER_INVALID";
    return HasVersion(interface.versions, *version) ? nullptr : "MATCHING_RESOURCE_NOT_FOUND";
}

/// The code of what is wrong with the token, null when it opens the interface.
const char* CheckToken(const Interface& interface, const std::string& authorization, const Tokens::Access* access)
{
    if (interface.scope.empty() && !interface.isForApplications)
        return nullptr;
    if (BearerToken(authorization).empty())
        return "MISSING_CREDENTIALS";
    if (access == nullptr)
        return "INVALID_CREDENTIALS";
    if (access->application != interface.isForApplications)
        return "INCORRECT_ACCESS_TOKEN_TYPE";
    return interface.isForApplications || access->scopes.count(std::string(interface.scope)) != 0 ? nullptr
                                                                                                  : "INVALID_SCOPE";
}

/// Whether this request is one too many for the last second. A refused one does not count.
bool IsThrottled(State& state, TimePoint now)
{
    if (!state.switches.throttle)
        return false;
    while (!state.recent.empty() && now - state.recent.front() >= std::chrono::seconds(1))
        state.recent.pop_front();
    if (state.recent.size() >= kRequestsPerSecond)
        return true;
    state.recent.push_back(now);
    return false;
}

/// The body for a route that has passed every check; null when there is no data.
const char* StartBody(const Interface& interface, const Options& options)
{
    if (options.scenario.empty())
        return nullptr;
    const auto name = interface.startScenario.empty() ? std::string_view(options.scenario) : interface.startScenario;
    return FindScenario(interface.scenarios, name);
}

Answer JsonAnswer(std::string body)
{
    Answer answer;
    answer.body = std::move(body);
    return answer;
}

/// The data as a version has it: older ones lack the newest member, which always stands behind another.
std::string InVersion(const std::string& body, const Interface& interface, const std::string& accept)
{
    if (interface.newestMember.empty() || interface.versions.ends_with(*AcceptedVersion(accept)))
        return body;
    const std::regex member(",\\s*\"" + std::string(interface.newestMember) + "\":\\s*[^,}\\s]+");
    return std::regex_replace(body, member, "");
}

/// The interface's own checks, which follow the platform's.
Answer AnswerRecord(const State& state, const Options& options, const Route& route, const std::string& accept)
{
    if (const char* fault = CheckRoute(route))
        return ErrorAnswer(fault);
    const bool hasId = route.interface->id != IdKind::None;
    if (hasId && state.switches.maySee && state.switches.maySee->count(route.identifier) == 0)
        return ErrorAnswer("UNAUTHORIZED");
    const std::string path = DataPath(route);
    if (const auto put = state.answers.find(path); put != state.answers.end())
        return JsonAnswer(put->second);
    if (!hasId)
        return JsonAnswer(std::string(route.interface->body));
    if (const auto primed = state.primed.find(path); primed != state.primed.end())
        return JsonAnswer(InVersion(primed->second, *route.interface, accept));
    const char* body = StartBody(*route.interface, options);
    return body == nullptr ? ErrorAnswer("NOT_FOUND") : JsonAnswer(InVersion(body, *route.interface, accept));
}

} // namespace

const Tokens::Access* FindBearer(const Tokens& tokens, const std::string& authorization)
{
    const std::string token = BearerToken(authorization);
    return token.empty() ? nullptr : tokens.FindAccess(token);
}

Handled HandleApi(State& state, const Options& options, const Call& call)
{
    const Tokens::Access* access = FindBearer(state.tokens, call.authorization);
    const bool authorised = access != nullptr;
    const auto refuse = [&](const char* code) { return Handled{ErrorAnswer(code), authorised}; };

    const auto route = FindRoute(call.path, call.parameters);
    if (!route)
        return refuse("MATCHING_RESOURCE_NOT_FOUND");
    if (call.method != "GET")
        return refuse("METHOD_NOT_ALLOWED");
    if (const char* fault = CheckAccept(*route->interface, call.accept))
        return refuse(fault);
    if (const char* fault = CheckToken(*route->interface, call.authorization, access))
        return refuse(fault);
    if (IsThrottled(state, options.now()))
        return refuse("MESSAGE_THROTTLED_OUT");
    return {AnswerWithFaults(state.faults, call, [&] { return AnswerRecord(state, options, *route, call.accept); }),
            authorised};
}

} // namespace Sandbox
