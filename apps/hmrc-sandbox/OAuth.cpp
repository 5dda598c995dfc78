#include "OAuth.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

#include "Crypto.h"
#include "Errors.h"
#include "Handlers.h"
#include "RedirectUri.h"
#include "Text.h"

namespace Sandbox
{

namespace
{

/// A refusal of the OAuth endpoints.
struct Refusal
{
    int status;
    const char* error;
    const char* description;
};

using Checked = std::optional<Refusal>;

Refusal InvalidRequest(const char* description) { return {400, "invalid_request", description}; }

bool Has(const Call& call, const char* name) { return Find(call.parameters, name).has_value(); }

std::string Get(const Call& call, const char* name) { return Find(call.parameters, name).value_or(""); }

bool AreUnreserved(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
               c == '_' || c == '~';
    });
}

// ---- authorise

/// The challenge and its method come together or not at all. HMRC publishes no texts for these.
Checked CheckChallenge(const Call& call)
{
    const bool hasChallenge = Has(call, "code_challenge");
    const bool hasMethod = Has(call, "code_challenge_method");
    if (hasChallenge != hasMethod)
        return InvalidRequest(hasMethod ? "code_challenge is required" : "code_challenge_method is required");
    if (hasMethod && Get(call, "code_challenge_method") != "S256")
        return InvalidRequest("code_challenge_method must be 'S256'");
    if (hasChallenge && (Get(call, "code_challenge").size() != 43 || !AreUnreserved(Get(call, "code_challenge"))))
        return InvalidRequest("code_challenge is invalid");
    return std::nullopt;
}

Checked CheckScope(const Call& call)
{
    const Scopes scopes = ParseScopes(Get(call, "scope"));
    if (scopes.empty())
        return InvalidRequest("scope is required");
    const Scopes& known = KnownScopes();
    if (!std::includes(known.begin(), known.end(), scopes.begin(), scopes.end()))
        return Refusal{400, "invalid_scope", "scope is invalid"};
    return std::nullopt;
}

Checked CheckAuthorise(const Call& call)
{
    if (!Has(call, "client_id"))
        return InvalidRequest("client_id is required");
    if (Get(call, "client_id") != kClientId)
        return InvalidRequest("client_id is invalid");
    if (!Has(call, "redirect_uri"))
        return InvalidRequest("redirect_uri is required");
    if (!IsRedirectUri(Get(call, "redirect_uri")))
        return InvalidRequest("redirect_uri is invalid");
    if (!Has(call, "response_type"))
        return InvalidRequest("response_type is required");
    if (Get(call, "response_type") != "code")
        return Refusal{400, "unsupported_response_type", "response_type must be 'code'"};
    if (const auto refusal = CheckScope(call))
        return refusal;
    if (Has(call, "client_secret"))
        return InvalidRequest("client_secret should NOT be present");
    return CheckChallenge(call);
}

Answer Page(int status, const std::string& title, const std::string& text)
{
    Answer answer;
    answer.status = status;
    answer.contentType = "text/html";
    answer.body = "<!DOCTYPE html>\n<html lang=\"en\"><head><title>" + HtmlEscape(title) + "</title></head><body><h1>" +
                  HtmlEscape(title) + "</h1><p>" + HtmlEscape(text) + "</p></body></html>\n";
    return answer;
}

/// Faults of the request are shown to the user and never redirected to the application.
Answer FaultPage(const Refusal& refusal)
{
    Answer answer = Page(refusal.status, refusal.error, refusal.description);
    answer.code = refusal.error;
    return answer;
}

/// A fault on demand is shown to the user too, as HMRC's own are.
Answer OnAPage(Answer answer)
{
    const auto body = answer.contentType == "application/json" ? nlohmann::json::parse(answer.body, nullptr, false)
                                                               : nlohmann::json();
    if (answer.status < 400 || !body.is_object())
        return answer;
    Answer page = Page(answer.status, body.value("error", ""), body.value("error_description", ""));
    page.code = answer.code;
    page.headers = answer.headers;
    page.delay = answer.delay;
    return page;
}

Answer RedirectTo(const std::string& uri, const std::string& query)
{
    Answer answer;
    answer.status = 302;
    answer.contentType = "text/html";
    answer.headers.emplace_back("Location", uri + (uri.find('?') == std::string::npos ? "?" : "&") + query);
    return answer;
}

Answer Denied(const std::string& uri, const std::string& state)
{
    constexpr char kDenied[] =
        "error=access_denied&error_description=user+denied+the+authorization&error_code=USER_DENIED_AUTHORIZATION";
    Answer answer = uri == kOutOfBand || uri == kOutOfBandAuto
                        ? Page(200, "Denied error=access_denied", "You have not given authority.")
                        : RedirectTo(uri, kDenied + state);
    answer.code = "access_denied";
    return answer;
}

Answer Granted(const std::string& uri, const std::string& code, const std::string& state)
{
    if (uri == kOutOfBand)
        return Page(200, "Success code=" + code, "Copy this code into your software: " + code);
    if (uri == kOutOfBandAuto)
        return Page(200, "Success code=" + code, "You can close this window.");
    return RedirectTo(uri, "code=" + code + state);
}

/// The page on which the user would sign in and agree; here the answer comes at once, by the test's switch.
Answer Authorise(State& state, const Call& call)
{
    if (const auto refusal = CheckAuthorise(call))
        return FaultPage(*refusal);
    const std::string uri = Get(call, "redirect_uri");
    const std::string returned = Has(call, "state") ? "&state=" + PercentEncode(Get(call, "state")) : "";
    if (state.switches.denyAuthorisation)
        return Denied(uri, returned);
    const auto code = state.tokens.IssueCode({uri, ParseScopes(Get(call, "scope")), Get(call, "code_challenge")});
    return Granted(uri, code, returned);
}

// ---- token

/// Whether the verifier proves the challenge that the code was given for.
Checked CheckVerifier(const Call& call, const std::string& challenge)
{
    const std::string verifier = Get(call, "code_verifier");
    if (challenge.empty())
        return verifier.empty() ? Checked() : InvalidRequest("code_verifier is not expected");
    if (verifier.empty())
        return InvalidRequest("code_verifier is expected when code_challenge was supplied");
    if (verifier.size() < 43 || verifier.size() > 128 || !AreUnreserved(verifier))
        return InvalidRequest("code_verifier must contain valid characters of length between 43 and 128");
    if (S256Challenge(verifier) != challenge)
        return Refusal{400, "invalid_grant", "code_verifier is invalid"};
    return std::nullopt;
}

Answer Refused(const Refusal& refusal) { return OAuthError(refusal.status, refusal.error, refusal.description); }

/// `scope` is left out of a refresh answer: the grant keeps what it had.
Answer TokenAnswer(const Tokens::Pair& pair, bool withScope)
{
    nlohmann::ordered_json json{{"access_token", pair.access}, {"token_type", "bearer"}, {"expires_in", pair.lifetime}};
    if (!pair.refresh.empty())
        json["refresh_token"] = pair.refresh;
    if (withScope && !pair.scopes.empty())
        json["scope"] = JoinScopes(pair.scopes);
    Answer answer;
    answer.body = json.dump();
    answer.headers.emplace_back("Cache-Control", "no-store");
    return answer;
}

Answer ExchangeCode(State& state, const Call& call)
{
    if (!Has(call, "redirect_uri"))
        return Refused(InvalidRequest("redirect_uri is required"));
    if (!Has(call, "code"))
        return Refused(InvalidRequest("code is required for given grant_type"));
    const std::string code = Get(call, "code");
    const auto grant = state.tokens.FindCode(code);
    if (!grant)
        return Refused(InvalidRequest("code is invalid"));
    if (Get(call, "redirect_uri") != grant->redirectUri)
        return Refused(InvalidRequest("redirect_uri is invalid"));
    if (const auto refusal = CheckVerifier(call, grant->challenge))
        return Refused(*refusal);
    state.tokens.UseCode(code);
    return TokenAnswer(state.tokens.Issue(grant->scopes), true);
}

Answer RefreshTokens(State& state, const Call& call)
{
    if (!Has(call, "refresh_token"))
        return Refused(InvalidRequest("refresh_token is required"));
    if (state.switches.refreshInProgress)
        return Refused(InvalidRequest("refresh operation is already in progress"));
    const auto pair = state.switches.refuseRefresh ? std::nullopt : state.tokens.Refresh(Get(call, "refresh_token"));
    return pair ? TokenAnswer(*pair, false) : Refused({400, "invalid_grant", "refresh_token is invalid"});
}

Answer GrantApplication(State& state, const Call& call)
{
    return TokenAnswer(state.tokens.IssueApplication(ParseScopes(Get(call, "scope"))), true);
}

Checked CheckClient(const Call& call)
{
    // Secrets in an address end up in logs: HMRC takes them in the body only.
    if (call.hasQuery || call.contentType.rfind("application/x-www-form-urlencoded", 0) != 0)
        return InvalidRequest("parameters must be in a body of type application/x-www-form-urlencoded");
    if (!Has(call, "client_id"))
        return InvalidRequest("client_id is required");
    if (!Has(call, "client_secret"))
        return InvalidRequest("client_secret is required");
    if (Get(call, "client_id") != kClientId || Get(call, "client_secret") != kClientSecret)
        return Refusal{401, "invalid_client", "invalid client id or secret"};
    return std::nullopt;
}

Answer GiveToken(State& state, const Call& call)
{
    constexpr struct
    {
        std::string_view type;
        Answer (*give)(State&, const Call&);
    } kGrants[] = {{"authorization_code", ExchangeCode},
                   {"refresh_token", RefreshTokens},
                   {"client_credentials", GrantApplication}};

    if (!Has(call, "grant_type"))
        return Refused(InvalidRequest("grant_type is required"));
    const std::string type = Get(call, "grant_type");
    const auto grant =
        std::find_if(std::begin(kGrants), std::end(kGrants), [&](const auto& row) { return row.type == type; });
    return grant == std::end(kGrants) ? Refused(InvalidRequest("unsupported grant_type")) : grant->give(state, call);
}

} // namespace

Handled HandleOAuth(State& state, const Call& call)
{
    const bool isToken = call.path == "/oauth/token";
    if (!isToken && call.path != "/oauth/authorize")
        return {ErrorAnswer("MATCHING_RESOURCE_NOT_FOUND")};
    if (call.method != (isToken ? "POST" : "GET"))
        return {ErrorAnswer("METHOD_NOT_ALLOWED")};
    if (!isToken)
        return {OnAPage(AnswerWithFaults(state.faults, call, [&] { return Authorise(state, call); }))};
    if (const auto refusal = CheckClient(call))
        return {Refused(*refusal)};
    return {AnswerWithFaults(state.faults, call, [&] { return GiveToken(state, call); }), true};
}

} // namespace Sandbox
