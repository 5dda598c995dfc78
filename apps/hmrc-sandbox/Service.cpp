#include "Service.h"

#include <string_view>
#include <utility>

#include "ControlError.h"
#include "Errors.h"
#include "FraudHeaders.h"
#include "Handlers.h"
#include "Interfaces.h"
#include "Text.h"

namespace Sandbox
{

namespace
{

constexpr char kValidate[] = "/test/fraud-prevention-headers/validate";

Answer PlainRefusal(const std::string& why)
{
    Answer answer;
    answer.status = 400;
    answer.contentType = "text/plain; charset=utf-8";
    answer.body = why + "\n";
    return answer;
}

Answer Greeting()
{
    Answer answer;
    answer.contentType = "text/plain; charset=utf-8";
    answer.body = "HMRC sandbox: made-up figures for trying out and for tests.\n\n";
    for (const Interface& interface : Interfaces())
        answer.body += "GET " + std::string(interface.path) + "\n";
    answer.body += "GET /oauth/authorize\nPOST /oauth/token\nPOST /create-test-user/individuals\nGET " +
                   std::string(kValidate) + '\n';
    return answer;
}

Handled ValidateHeaders(const Call& call)
{
    if (call.method != "GET")
        return {ErrorAnswer("METHOD_NOT_ALLOWED")};
    if (AcceptedVersion(call.accept) != "1.0")
        return {ErrorAnswer("ACCEPT_HEADER_INVALID")};
    Answer answer;
    answer.body = CheckFraudHeaders(call.fraudHeaders).dump();
    return {answer};
}

Handled Dispatch(State& state, const Options& options, const Call& call)
{
    if (IsBelow(call.path, "/oauth"))
        return HandleOAuth(state, call);
    const auto first = std::string_view(call.path).substr(0, call.path.find('/', 1));
    if (IsBelow(call.path, "/create-test-user"))
        return HandleTestUser(state, call);
    if (call.path == kValidate)
        return ValidateHeaders(call);
    const std::string_view support = "-test-support";
    if (first.size() > support.size() && first.substr(first.size() - support.size()) == support)
        return HandleSupport(state, call);
    return HandleApi(state, options, call);
}

} // namespace

Service::Service(Options options) : m_options(std::move(options)), m_state(m_options) {}

Answer Service::Handle(const Call& call)
{
    const std::lock_guard lock(m_mutex);
    if (call.path == "/" && call.method == "GET")
        return Greeting();
    if (IsBelow(call.path, "/sandbox")) {
        try {
            return HandleControl(m_state, m_options, call);
        } catch (const ControlError& error) {
            return PlainRefusal(error.what());
        }
    }
    Handled handled = Dispatch(m_state, m_options, call);
    m_state.requests.Add(call, handled.answer, handled.authorised);
    return std::move(handled.answer);
}

} // namespace Sandbox
