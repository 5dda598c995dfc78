#include "Fixture.h"

#include "hmrc-sandbox/Crypto.h"

namespace Sandbox
{

namespace
{

constexpr char kVerifier[] = "dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk";
constexpr char kChallenge[] = "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"; // published with RFC 7636

Parameters ChallengedQuery()
{
    return With(With(AuthoriseQuery(), "code_challenge", kChallenge), "code_challenge_method", "S256");
}

} // namespace

class OAuthTest : public SandboxTest
{
protected:
    void ExpectError(const Answer& answer, int status, const std::string& error, const std::string& description)
    {
        EXPECT_EQ(answer.status, status);
        const auto body = nlohmann::json::parse(answer.body);
        EXPECT_EQ(body["error"], error);
        EXPECT_EQ(body["error_description"], description);
    }
};

TEST_F(OAuthTest, AuthoriseReturnsCodeAndStateToTheRedirectAddress)
{
    const Answer answer = Authorise(AuthoriseQuery());
    EXPECT_EQ(answer.status, 302);
    const std::string to = Header(answer, "Location");
    EXPECT_EQ(to.find(std::string(kCallback) + "?code="), 0U) << to;
    EXPECT_EQ(QueryValue(to, "code").size(), 40U);
    EXPECT_EQ(QueryValue(to, "state"), "s%261") << "comes back unchanged, encoded for the address";
}

TEST_F(OAuthTest, AuthoriseShowsAFaultAsAPageAndDoesNotRedirect)
{
    const struct
    {
        const char* name;
        const char* value; // empty: left out
        const char* error;
        const char* description;
    } rows[] = {
        {"client_id", "", "invalid_request", "client_id is required"},
        {"client_id", "other", "invalid_request", "client_id is invalid"},
        {"redirect_uri", "", "invalid_request", "redirect_uri is required"},
        {"redirect_uri", "http://127.0.0.1:8080/", "invalid_request", "redirect_uri is invalid"},
        {"response_type", "", "invalid_request", "response_type is required"},
        {"response_type", "token", "unsupported_response_type", "response_type must be 'code'"},
        {"scope", "", "invalid_request", "scope is required"},
        {"scope", "hello read:everything", "invalid_scope", "scope is invalid"},
        {"client_secret", kClientSecret, "invalid_request", "client_secret should NOT be present"},
        {"code_challenge", kChallenge, "invalid_request", "code_challenge_method is required"},
        {"code_challenge_method", "S256", "invalid_request", "code_challenge is required"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.name) + "=" + row.value);
        const Answer answer = Authorise(With(AuthoriseQuery(), row.name, row.value));
        EXPECT_EQ(answer.status, 400);
        EXPECT_EQ(answer.contentType, "text/html");
        EXPECT_EQ(Header(answer, "Location"), "");
        EXPECT_NE(answer.body.find(row.error), std::string::npos) << answer.body;
        EXPECT_NE(answer.body.find(row.description), std::string::npos) << answer.body;
    }
}

TEST_F(OAuthTest, OutOfBandPageHasTheCodeInItsTitle)
{
    for (const char* uri : {"urn:ietf:wg:oauth:2.0:oob", "urn:ietf:wg:oauth:2.0:oob:auto"}) {
        SCOPED_TRACE(uri);
        const Answer page = Authorise(With(AuthoriseQuery(), "redirect_uri", uri));
        const std::string before = "<title>Success code=";
        const auto at = page.body.find(before);
        ASSERT_NE(at, std::string::npos) << page.body;
        const auto code = page.body.substr(at + before.size(), 40);
        EXPECT_EQ(Token(With(CodeForm(code), "redirect_uri", uri)).status, 200);
    }
}

TEST_F(OAuthTest, DeniedAuthorisationComesBackAsAccessDenied)
{
    Send("POST", "/sandbox/token", R"({"authorise":"deny"})");
    const std::string to = Header(Authorise(AuthoriseQuery()), "Location");
    EXPECT_EQ(QueryValue(to, "error"), "access_denied");
    EXPECT_EQ(QueryValue(to, "error_code"), "USER_DENIED_AUTHORIZATION");
    EXPECT_EQ(QueryValue(to, "state"), "s%261");
    EXPECT_EQ(QueryValue(to, "code"), "");
}

TEST_F(OAuthTest, TokenAnswerHasThePair)
{
    const auto pair = Dialogue("hello read:individual-paye");
    EXPECT_EQ(pair["token_type"], "bearer");
    EXPECT_EQ(pair["expires_in"], 14400);
    EXPECT_EQ(pair["scope"], "hello read:individual-paye");
    EXPECT_NE(pair["access_token"], pair["refresh_token"]);
    EXPECT_EQ(Get("/hello/user", pair["access_token"]).status, 200);
}

TEST_F(OAuthTest, TokenRequestsAreRefusedOneFaultAtATime)
{
    const Parameters good = CodeForm(Code());
    const struct
    {
        const char* name;
        const char* value;
        int status;
        const char* error;
        const char* description;
    } rows[] = {
        {"client_id", "", 400, "invalid_request", "client_id is required"},
        {"client_secret", "", 400, "invalid_request", "client_secret is required"},
        {"client_id", "other", 401, "invalid_client", "invalid client id or secret"},
        {"client_secret", "other", 401, "invalid_client", "invalid client id or secret"},
        {"grant_type", "", 400, "invalid_request", "grant_type is required"},
        {"grant_type", "password", 400, "invalid_request", "unsupported grant_type"},
        {"redirect_uri", "", 400, "invalid_request", "redirect_uri is required"},
        {"redirect_uri", "http://localhost:53682/callback", 400, "invalid_request", "redirect_uri is invalid"},
        {"code", "", 400, "invalid_request", "code is required for given grant_type"},
        {"code", "unknown", 400, "invalid_request", "code is invalid"},
        {"code_verifier", kVerifier, 400, "invalid_request", "code_verifier is not expected"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.name) + "=" + row.value);
        ExpectError(Token(With(good, row.name, row.value)), row.status, row.error, row.description);
    }
    EXPECT_EQ(Token(good).status, 200) << "none of the refusals used the code up";
}

TEST_F(OAuthTest, CodeIsTakenOnce)
{
    const Parameters form = CodeForm(Code());
    EXPECT_EQ(Token(form).status, 200);
    ExpectError(Token(form), 400, "invalid_request", "code is invalid");
}

TEST_F(OAuthTest, CodeHoldsForTenMinutes)
{
    const Parameters early = CodeForm(Code()), late = CodeForm(Code());
    m_time += std::chrono::minutes(10) - std::chrono::milliseconds(1);
    EXPECT_EQ(Token(early).status, 200);
    m_time += std::chrono::milliseconds(1);
    EXPECT_EQ(Token(late).status, 400);
}

TEST_F(OAuthTest, VerifierMustProveTheChallenge)
{
    const Parameters form = CodeForm(Code(ChallengedQuery()));
    ExpectError(Token(form), 400, "invalid_request", "code_verifier is expected when code_challenge was supplied");
    ExpectError(Token(With(form, "code_verifier", std::string(42, 'a'))), 400, "invalid_request",
                "code_verifier must contain valid characters of length between 43 and 128");
    ExpectError(Token(With(form, "code_verifier", std::string(43, 'a'))), 400, "invalid_grant",
                "code_verifier is invalid");
    EXPECT_EQ(Token(With(form, "code_verifier", kVerifier)).status, 200);
}

TEST_F(OAuthTest, SecretInTheAddressIsRefused)
{
    const Answer answer = m_service.Handle(
        {"POST", "/oauth/token", "*/*", "", "application/x-www-form-urlencoded", "", CodeForm(Code()), true});
    EXPECT_EQ(answer.status, 400);
}

TEST_F(OAuthTest, RefreshEndsTheOldPairAtOnce)
{
    const auto old = Dialogue();
    const auto fresh = nlohmann::json::parse(Token(RefreshForm(old["refresh_token"])).body);
    EXPECT_FALSE(fresh.contains("scope"));
    EXPECT_EQ(Get("/hello/user", old["access_token"]).code, "INVALID_CREDENTIALS");
    EXPECT_EQ(Get("/hello/user", fresh["access_token"]).status, 200) << "the grant keeps its scopes";
    EXPECT_EQ(Token(RefreshForm(old["refresh_token"])).code, "invalid_grant") << "used once";
    EXPECT_EQ(Token(RefreshForm(fresh["refresh_token"])).status, 200);
}

TEST_F(OAuthTest, AccessTokenHoldsForFourHoursAndThenRefreshes)
{
    const auto pair = Dialogue();
    m_time += std::chrono::seconds(14400) - std::chrono::milliseconds(1);
    EXPECT_EQ(Get("/hello/user", pair["access_token"]).status, 200);
    m_time += std::chrono::milliseconds(1);
    EXPECT_EQ(Get("/hello/user", pair["access_token"]).code, "INVALID_CREDENTIALS");
    EXPECT_EQ(Token(RefreshForm(pair["refresh_token"])).status, 200);
}

TEST_F(OAuthTest, RefreshingDoesNotExtendTheGrant)
{
    auto pair = Dialogue();
    for (int month = 0; month < 17; ++month) {
        m_time += std::chrono::hours(24 * 31);
        pair = nlohmann::json::parse(Token(RefreshForm(pair["refresh_token"])).body);
    }
    m_time += std::chrono::hours(24 * 31);
    EXPECT_EQ(Token(RefreshForm(pair["refresh_token"])).code, "invalid_grant");
}

TEST_F(OAuthTest, ApplicationTokenOpensNoUserInterface)
{
    const Answer answer =
        Token({{"grant_type", "client_credentials"}, {"client_id", kClientId}, {"client_secret", kClientSecret}});
    const auto body = nlohmann::json::parse(answer.body);
    EXPECT_FALSE(body.contains("refresh_token"));
    EXPECT_EQ(Get("/hello/user", body["access_token"]).code, "INCORRECT_ACCESS_TOKEN_TYPE");
}

} // namespace Sandbox
