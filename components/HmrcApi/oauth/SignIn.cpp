#include "HmrcApi/oauth/SignIn.h"

#include "Afx/windows/WindowSystem.h"
#include "HmrcApi/answers/AnswerTable.h"
#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/answers/Mask.h"
#include "HmrcApi/http/Http.h"
#include "HmrcApi/oauth/TokenRequest.h"
#include "HmrcApi/redirect/RedirectListener.h"
#include "HmrcApi/transport/Uri.h"
#include "HmrcApi/transport/Waiting.h"
#include "Shellkit/Base64Url.h"
#include "Shellkit/Bytes.h"
#include "Shellkit/Digest.h"
#include "Shellkit/Random.h"

namespace HmrcApi
{
namespace
{

constexpr std::size_t kSecretBytes = 32; // of the state and of the verifier, before Base64

std::string RandomText() { return Shellkit::Base64Url(Shellkit::RandomBytes(kSecretBytes)); }

bool OpenInBrowser(const std::string& address)
{
    Afx::WindowSystem* system = Afx::WindowSystem::Current();
    return system && system->OpenBrowser(address);
}

[[noreturn]] void Fail(const char* code, std::string text) { throw HmrcApiErrorException(code, std::move(text), {}); }

[[noreturn]] void FailWithoutListener()
{
    if (HttpProblem().empty())
        Fail("NO_REDIRECT_PORT", "No port is free on which HMRC's answer could arrive");
    const HttpAnswer nothing = MakeHttpTransport()->Send({});
    throw ErrorOf(nothing, RuleFor(nothing, {}), {});
}

std::string CodeOf(const RedirectAnswer& answer)
{
    using Kind = RedirectAnswer::Kind;
    switch (answer.kind) {
    case Kind::Code:
        return answer.code;
    case Kind::Denied:
        Fail("ACCESS_DENIED", answer.description.empty() ? "Authority was not given"
                                                         : "Authority was not given: " + Mask(answer.description));
    case Kind::TimedOut:
        Fail("AUTHORISATION_TIMED_OUT", "Nobody completed the sign-in on HMRC's page in time");
    case Kind::Cancelled:
        break;
    }
    Fail("CANCELLED", "The authorisation was cancelled");
}

} // namespace

SignIn::SignIn() : browser(&OpenInBrowser) {}
SignIn::~SignIn() { Wipe(m_verifier); }

std::string SignIn::PageAddress(const Service& service, const std::string& scope, const std::string& state) const
{
    const std::string challenge = Shellkit::Base64Url(Shellkit::Sha256(m_verifier));
    return AuthoriseAddress(service.base) + '?' +
           EncodeForm({{"response_type", "code"},
                       {"client_id", service.id},
                       {"scope", scope},
                       {"redirect_uri", m_redirectAddress},
                       {"state", state},
                       {"code_challenge", challenge},
                       {"code_challenge_method", "S256"}});
}

std::string SignIn::RequestCode(const Service& service, const std::string& scope, const std::function<void()>& begin,
                                const std::function<bool()>& cancelled)
{
    const std::string state = RandomText();
    const std::unique_ptr<IRedirectListener> listener = OpenRedirectListener(ports, state);
    if (!listener)
        FailWithoutListener();
    m_redirectAddress = "http://localhost:" + std::to_string(listener->Port()) + "/callback";
    m_verifier = RandomText();
    if (begin)
        begin();
    const WaitWindow window("Waiting for you to sign in on HMRC's page in the browser");
    if (!browser || !browser(PageAddress(service, scope, state)))
        Fail("BROWSER_NOT_OPENED", "HMRC's page could not be opened in a browser");
    return CodeOf(listener->Wait(browserTimeout, cancelled));
}

COAuth2Tokens SignIn::Exchange(const std::string& code, ITransport& transport, const Service& service,
                               const std::function<bool()>& cancelled, IChainLogger* logger)
{
    const FormFields fields{{"grant_type", "authorization_code"},
                            {"code", code},
                            {"redirect_uri", m_redirectAddress},
                            {"code_verifier", m_verifier}};
    const TokenAnswer answer = RequestTokens(transport, service, fields, cancelled, GetTimeouts().totalMilliseconds);
    Wipe(m_verifier);
    Trace(logger, "Token", answer);
    if (!answer.tokens)
        throw ErrorOf(answer);
    return *answer.tokens;
}

} // namespace HmrcApi
