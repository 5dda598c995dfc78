#include <nlohmann/json.hpp>
#include <optional>

#include "Errors.h"
#include "Handlers.h"
#include "Interfaces.h"
#include "Scenarios.h"

namespace Sandbox
{

namespace
{

/// HMRC wants the version here too. A request without a wish, as plain tools send it, is taken; a wrong wish is not.
const char* CheckSupportAccept(const Interface& interface, const std::string& accept)
{
    if (accept.empty() || accept == "*/*")
        return nullptr;
    const auto version = AcceptedVersion(accept);
    if (!version)
        return "ACCEPT_HEADER_INVALID";
    return HasVersion(interface.supportVersions, *version) ? nullptr : "MATCHING_RESOURCE_NOT_FOUND";
}

/// The data of the scenario that a body asks for: `{"scenario":"…"}`, the default one for an empty body or object;
/// empty for an unknown one. Where there are no scenarios the body is the data. Nothing when the body is something
/// else.
std::optional<std::string> AskedScenario(const Interface& interface, const std::string& body)
{
    const auto json = body.empty() ? nlohmann::json::object() : nlohmann::json::parse(body, nullptr, false);
    if (!json.is_object())
        return std::nullopt;
    if (interface.scenarios.empty())
        return json.empty() ? std::string(interface.defaultScenario) : body;
    const auto text = [](const char* scenario) { return std::string(scenario ? scenario : ""); };
    const auto name = json.find("scenario");
    if (name == json.end())
        return text(FindScenario(interface.scenarios, interface.defaultScenario));
    if (!name->is_string())
        return std::nullopt;
    return text(FindScenario(interface.scenarios, name->get<std::string>()));
}

} // namespace

Handled HandleSupport(State& state, const Call& call)
{
    const bool authorised = FindBearer(state.tokens, call.authorization) != nullptr;
    const auto refuse = [&](const char* code) { return Handled{ErrorAnswer(code), authorised}; };

    const auto route = FindSupportRoute(call.path);
    if (!route)
        return refuse("MATCHING_RESOURCE_NOT_FOUND");
    if (call.method != "POST")
        return refuse("METHOD_NOT_ALLOWED");
    if (const char* fault = CheckSupportAccept(*route->interface, call.accept))
        return refuse(fault);
    if (const char* fault = CheckRoute(*route))
        return refuse(fault);
    const auto scenario = AskedScenario(*route->interface, call.body);
    if (!scenario)
        return refuse("BAD_REQUEST");
    if (scenario->empty())
        return refuse("UNKNOWN_SCENARIO");
    state.primed[DataPath(*route)] = *scenario;
    Answer answer;
    answer.status = 201;
    answer.body = route->interface->supportEchoes ? *scenario : "{}";
    return {answer, authorised};
}

} // namespace Sandbox
