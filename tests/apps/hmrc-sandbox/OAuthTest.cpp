#include "Fixture.h"

namespace Sandbox
{

namespace
{

constexpr char kVerifier[] = "dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk";
constexpr char kChallenge[] = "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"; // published with RFC 7636
constexpr char kBadClient[] = "401 invalid_client: invalid client id or secret";
constexpr auto kMoment = std::chrono::milliseconds(1);

struct Spoilt
{
    const char* name;
    const char* value; // empty: left out
    const char* refusal;
};

std::string Between(const std::string& text, const std::string& before, const std::string& behind)
{
    const auto start = text.find(before);
    return start == text.npos ? "" : text.substr(start + before.size(), text.find(behind) - start - before.size());
}

class OAuthTest : public SandboxTest
{
protected:
    /// "status error: description" of the answer to a token request; "200" when it was granted.
    std::string Ask(const Parameters& form)
    {
        const Answer answer = Token(form);
        const auto body = nlohmann::json::parse(answer.body);
        return std::to_string(answer.status) +
               (answer.status == 200
                    ? ""
                    : ' ' + body["error"].get<std::string>() + ": " + body["error_description"].get<std::string>());
    }
};

} // namespace

TEST_F(OAuthTest, AuthoriseReturnsCodeAndStateToTheRedirectAddress)
{
    const Answer answer = Authorise(AuthoriseQuery());
    EXPECT_EQ(answer.status, 302);
    std::string to = Header(answer, "Location");
    EXPECT_EQ(to.find(std::string(kCallback) + "?code="), 0U) << to;
    EXPECT_EQ(QueryValue(to, "code").size(), 40U);
    EXPECT_EQ(QueryValue(to, "state"), "s%261") << "comes back unchanged, encoded for the address";
    Send("POST", "/sandbox/token", R"({"authorise":"deny"})");
    to = Header(Authorise(AuthoriseQuery()), "Location");
    EXPECT_EQ(QueryValue(to, "error"), "access_denied");
    EXPECT_EQ(QueryValue(to, "state"), "s%261");
    EXPECT_EQ(QueryValue(to, "code"), "");
}

TEST_F(OAuthTest, AuthoriseShowsAFaultAsAPageAndDoesNotRedirect)
{
    const Spoilt rows[] = {
        {"client_id", "", "invalid_request: client_id is required"},
        {"client_id", "other", "invalid_request: client_id is invalid"},
        {"redirect_uri", "", "invalid_request: redirect_uri is required"},
        {"redirect_uri", "http://127.0.0.1:8080/", "invalid_request: redirect_uri is invalid"},
        {"response_type", "", "invalid_request: response_type is required"},
        {"response_type", "token", "unsupported_response_type: response_type must be 'code'"},
        {"scope", "", "invalid_request: scope is required"},
        {"scope", "hello read:everything", "invalid_scope: scope is invalid"},
        {"client_secret", kClientSecret, "invalid_request: client_secret should NOT be present"},
        {"code_challenge", kChallenge, "invalid_request: code_challenge_method is required"},
        {"code_challenge_method", "S256", "invalid_request: code_challenge is required"},
    };
    for (const auto& row : rows) {
        const Answer answer = Authorise(With(AuthoriseQuery(), row.name, row.value));
        EXPECT_EQ(answer.status, 400) << row.refusal;
        EXPECT_EQ(Header(answer, "Location"), "") << row.refusal;
        EXPECT_EQ(answer.code + ": " + Between(answer.body, "<p>", "</p>"), row.refusal);
    }
}

TEST_F(OAuthTest, OutOfBandPageHasTheCodeInItsTitle)
{
    for (const char* uri : {"urn:ietf:wg:oauth:2.0:oob", "urn:ietf:wg:oauth:2.0:oob:auto"}) {
        const Answer page = Authorise(With(AuthoriseQuery(), "redirect_uri", uri));
        const std::string code = Between(page.body, "<title>Success code=", "</title>");
        EXPECT_EQ(Ask(With(CodeForm(code), "redirect_uri", uri)), "200") << page.body;
    }
}

TEST_F(OAuthTest, TokenRequestsAreRefusedOneFaultAtATime)
{
    const Parameters good = CodeForm(Code());
    const Spoilt rows[] = {
        {"client_id", "", "400 invalid_request: client_id is required"},
        {"client_secret", "", "400 invalid_request: client_secret is required"},
        {"client_id", "other", kBadClient},
        {"client_secret", "other", kBadClient},
        {"grant_type", "", "400 invalid_request: grant_type is required"},
        {"grant_type", "password", "400 invalid_request: unsupported grant_type"},
        {"redirect_uri", "", "400 invalid_request: redirect_uri is required"},
        {"redirect_uri", "http://localhost:53682/callback", "400 invalid_request: redirect_uri is invalid"},
        {"code", "", "400 invalid_request: code is required for given grant_type"},
        {"code", "unknown", "400 invalid_request: code is invalid"},
        {"code_verifier", kVerifier, "400 invalid_request: code_verifier is not expected"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Ask(With(good, row.name, row.value)), row.refusal) << row.name << '=' << row.value;
    const Call inAddress{"POST", "/oauth/token", "*/*", "", "application/x-www-form-urlencoded", "", good, true};
    EXPECT_EQ(m_service.Handle(inAddress).status, 400) << "a secret in the address";
    EXPECT_EQ(Ask(good), "200") << "none of the refusals used the code up";
    EXPECT_EQ(Ask(good), "400 invalid_request: code is invalid") << "it is taken once";
}

TEST_F(OAuthTest, VerifierMustProveTheChallenge)
{
    const Parameters form =
        CodeForm(Code(With(With(AuthoriseQuery(), "code_challenge", kChallenge), "code_challenge_method", "S256")));
    EXPECT_EQ(Ask(form), "400 invalid_request: code_verifier is expected when code_challenge was supplied");
    EXPECT_EQ(Ask(With(form, "code_verifier", std::string(42, 'a'))),
              "400 invalid_request: code_verifier must contain valid characters of length between 43 and 128");
    EXPECT_EQ(Ask(With(form, "code_verifier", std::string(43, 'a'))), "400 invalid_grant: code_verifier is invalid");
    EXPECT_EQ(Ask(With(form, "code_verifier", kVerifier)), "200");
}

TEST_F(OAuthTest, CodeHoldsForTenMinutesAndATokenForFourHours)
{
    const Parameters early = CodeForm(Code()), late = CodeForm(Code());
    m_time += std::chrono::minutes(10) - kMoment;
    EXPECT_EQ(Ask(early), "200");
    m_time += kMoment;
    EXPECT_EQ(Ask(late), "400 invalid_request: code is invalid");

    const auto pair = Dialogue("hello read:individual-paye");
    EXPECT_EQ(pair["token_type"], "bearer");
    EXPECT_EQ(pair["expires_in"], 14400);
    EXPECT_EQ(pair["scope"], "hello read:individual-paye");
    m_time += std::chrono::hours(4) - kMoment;
    EXPECT_EQ(Get("/hello/user", pair["access_token"]).status, 200);
    m_time += kMoment;
    EXPECT_EQ(Get("/hello/user", pair["access_token"]).code, "INVALID_CREDENTIALS");
    EXPECT_EQ(Ask(RefreshForm(pair["refresh_token"])), "200");
}

TEST_F(OAuthTest, RefreshEndsTheOldPairAtOnceAndDoesNotExtendTheGrant)
{
    const auto old = Dialogue();
    auto pair = nlohmann::json::parse(Token(RefreshForm(old["refresh_token"])).body);
    EXPECT_FALSE(pair.contains("scope"));
    EXPECT_EQ(Get("/hello/user", old["access_token"]).code, "INVALID_CREDENTIALS");
    EXPECT_EQ(Get("/hello/user", pair["access_token"]).status, 200) << "the grant keeps its scopes";
    EXPECT_EQ(Token(RefreshForm(old["refresh_token"])).code, "invalid_grant") << "used once";
    for (int month = 0; month < 17; ++month) {
        m_time += std::chrono::hours(24 * 31);
        pair = nlohmann::json::parse(Token(RefreshForm(pair["refresh_token"])).body);
    }
    m_time += std::chrono::hours(24 * 31);
    EXPECT_EQ(Token(RefreshForm(pair["refresh_token"])).code, "invalid_grant");
}

TEST_F(OAuthTest, ApplicationTokenOpensNoUserInterface)
{
    const auto body = nlohmann::json::parse(Token(With(RefreshForm("none"), "grant_type", "client_credentials")).body);
    EXPECT_FALSE(body.contains("refresh_token"));
    EXPECT_EQ(Get("/hello/user", body["access_token"]).code, "INCORRECT_ACCESS_TOKEN_TYPE");
}

} // namespace Sandbox
