#include <climits>
#include <iterator>
#include <string_view>

#include "ControlBody.h"
#include "ControlError.h"
#include "Handlers.h"
#include "Interfaces.h"
#include "Text.h"

namespace Sandbox
{

namespace
{

constexpr std::string_view kAnswerPath = "/sandbox/answer";
constexpr int kLongestLifetime = INT_MAX;

Answer JsonAnswer(const nlohmann::ordered_json& json)
{
    Answer answer;
    // Text from outside may be no good UTF-8: show what can be shown.
    answer.body = json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
    return answer;
}

// ---- answers

/// The data path that a path below /sandbox/answer stands for.
std::string AnswerTarget(const Call& call)
{
    const std::string path = call.path.substr(kAnswerPath.size());
    if (!FindRoute(path))
        throw ControlError("no interface has the path \"" + path + "\"");
    return path;
}

Answer PutAnswer(State& state, const Options&, const Call& call)
{
    state.answers[AnswerTarget(call)] = call.body;
    return JsonAnswer({{"set", true}});
}

Answer DeleteAnswer(State& state, const Options&, const Call& call)
{
    if (call.path == kAnswerPath)
        state.answers.clear();
    else
        state.answers.erase(AnswerTarget(call));
    return JsonAnswer({{"set", false}});
}

// ---- faults

Answer GetFaults(State& state, const Options&, const Call&)
{
    auto list = nlohmann::ordered_json::array();
    for (const Fault& fault : state.faults.Pending())
        list.push_back(FaultToJson(fault));
    return JsonAnswer(list);
}

Answer PostFault(State& state, const Options& options, const Call& call)
{
    state.faults.Add(ParseFault(
        ParseControlBody(call.body, {"path", "fault", "times", "status", "retryAfter", "delayMs", "location"})));
    return GetFaults(state, options, call);
}

Answer DeleteFaults(State& state, const Options& options, const Call& call)
{
    state.faults.Clear();
    return GetFaults(state, options, call);
}

// ---- tokens

Answer GetTokenSwitches(State& state, const Options&, const Call&)
{
    const Switches& switches = state.switches;
    nlohmann::ordered_json json{{"authorise", switches.denyAuthorisation ? "deny" : "grant"},
                                {"lifetime", state.tokens.GetLifetime()},
                                {"refuseRefresh", switches.refuseRefresh},
                                {"refreshInProgress", switches.refreshInProgress},
                                {"maySee", nullptr}};
    if (switches.maySee)
        json["maySee"] = *switches.maySee;
    return JsonAnswer(json);
}

/// The list in `maySee`, or null for everyone.
std::optional<std::set<std::string>> ParseMaySee(const nlohmann::json& value)
{
    constexpr char kRule[] = "maySee must be null or a list of identifiers";
    if (value.is_null())
        return std::nullopt;
    if (!value.is_array())
        throw ControlError(kRule);
    std::set<std::string> identifiers;
    for (const auto& item : value) {
        if (!item.is_string())
            throw ControlError(kRule);
        identifiers.insert(item.get<std::string>());
    }
    return identifiers;
}

/// The switches as the body asks for them; throws before anything has changed.
Switches ChangedSwitches(Switches switches, const nlohmann::json& body)
{
    if (const auto authorise = TextMember(body, "authorise")) {
        if (*authorise != "deny" && *authorise != "grant")
            throw ControlError("authorise must be \"deny\" or \"grant\"");
        switches.denyAuthorisation = *authorise == "deny";
    }
    switches.refuseRefresh = BoolMember(body, "refuseRefresh").value_or(switches.refuseRefresh);
    switches.refreshInProgress = BoolMember(body, "refreshInProgress").value_or(switches.refreshInProgress);
    if (body.contains("maySee"))
        switches.maySee = ParseMaySee(body["maySee"]);
    return switches;
}

Answer PostToken(State& state, const Options& options, const Call& call)
{
    const auto body = ParseControlBody(call.body, {"expire", "expireCodes", "revoke", "dropScope", "lifetime",
                                                   "authorise", "refuseRefresh", "refreshInProgress", "maySee"});
    const Switches switches = ChangedSwitches(state.switches, body);
    const auto expire = BoolMember(body, "expire");
    const auto expireCodes = BoolMember(body, "expireCodes");
    const auto revoke = BoolMember(body, "revoke");
    const auto lifetime = IntMember(body, "lifetime", 0, kLongestLifetime);
    const auto scope = TextMember(body, "dropScope");
    if (scope && KnownScopes().count(*scope) == 0)
        throw ControlError("unknown scope \"" + *scope + "\"");

    state.switches = switches;
    if (lifetime)
        state.tokens.SetLifetime(*lifetime);
    if (scope)
        state.tokens.DropScope(*scope);
    if (expire.value_or(false))
        state.tokens.ExpireAccess();
    if (expireCodes.value_or(false))
        state.tokens.ExpireCodes();
    if (revoke.value_or(false))
        state.tokens.RevokeAll();
    return GetTokenSwitches(state, options, call);
}

// ---- the rest

Answer PostThrottle(State& state, const Options&, const Call& call)
{
    const auto on = BoolMember(ParseControlBody(call.body, {"on"}), "on");
    if (!on)
        throw ControlError("on must be true or false");
    state.switches.throttle = *on;
    state.recent.clear();
    return JsonAnswer({{"on", *on}});
}

Answer GetRequests(State& state, const Options&, const Call&) { return JsonAnswer(state.requests.ToJson()); }

Answer DeleteRequests(State& state, const Options& options, const Call& call)
{
    state.requests.Clear();
    return GetRequests(state, options, call);
}

Answer PostReset(State& state, const Options& options, const Call&)
{
    state = State(options);
    return JsonAnswer({{"reset", true}});
}

struct Control
{
    std::string_view method;
    std::string_view path;
    bool below; // the path may go on
    Answer (*handle)(State&, const Options&, const Call&);
};

constexpr Control kControls[] = {
    {"PUT", kAnswerPath, true, PutAnswer},
    {"DELETE", kAnswerPath, true, DeleteAnswer},
    {"GET", "/sandbox/fault", false, GetFaults},
    {"POST", "/sandbox/fault", false, PostFault},
    {"DELETE", "/sandbox/fault", false, DeleteFaults},
    {"GET", "/sandbox/token", false, GetTokenSwitches},
    {"POST", "/sandbox/token", false, PostToken},
    {"POST", "/sandbox/throttle", false, PostThrottle},
    {"GET", "/sandbox/requests", false, GetRequests},
    {"DELETE", "/sandbox/requests", false, DeleteRequests},
    {"POST", "/sandbox/reset", false, PostReset},
};

bool IsPathOf(const Control& control, std::string_view path)
{
    return control.below ? IsBelow(path, control.path) : path == control.path;
}

std::string ControlList()
{
    std::string list;
    for (const Control& control : kControls)
        list += (list.empty() ? "" : ", ") + std::string(control.method) + " " + std::string(control.path) +
                (control.below ? "/PATH" : "");
    return list;
}

} // namespace

Answer HandleControl(State& state, const Options& options, const Call& call)
{
    for (const Control& control : kControls)
        if (control.method == call.method && IsPathOf(control, call.path))
            return control.handle(state, options, call);
    throw ControlError("no such switch; there are: " + ControlList());
}

} // namespace Sandbox
