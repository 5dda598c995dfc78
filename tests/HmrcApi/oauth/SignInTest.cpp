#include <csignal>
#include <thread>

#include "HmrcApi/Fakes.h"
#include "HmrcApi/LocalServer.h"
#include "Shellkit/Base64Url.h"
#include "Shellkit/Digest.h"
#include "support/DrippingCallers.h"

using namespace HmrcApi;

namespace
{

using Members = std::vector<std::pair<const char*, std::string>>;

/// A port that was free a moment ago.
unsigned short FreePort()
{
    Fakes::LocalServer probe;
    probe.Start();
    return probe.Port();
}

/// The value of a query member, decoded.
std::string QueryOf(const std::string& address, const std::string& name)
{
    httplib::Params params;
    httplib::detail::parse_query_text(address.substr(address.find('?') + 1), params);
    const auto found = params.find(name);
    return found == params.end() ? std::string() : found->second;
}

/// The browser's request to the redirect address, on one family of addresses; its status.
int Visit(const std::string& host, const std::string& redirect, const std::string& query)
{
    const std::size_t port = redirect.rfind(':');
    httplib::Client browser(host, std::stoi(redirect.substr(port + 1)));
    const auto answer = browser.Get((redirect.substr(redirect.find('/', port)) + query).c_str());
    return answer ? answer->status : 0;
}

class Dialogue : public Fakes::Plumbing
{
protected:
    Dialogue()
    {
        authorisation->SetRedirectPorts({FreePort(), FreePort(), FreePort()});
        authorisation->SetBrowserTimeout(5000);
        authorisation->SetCancel({});
    }

    /// The browser takes the user to the redirect address with `answer` and the state.
    void Answer(const std::string& answer)
    {
        authorisation->SetBrowser([this, answer](const std::string& address) {
            page = address;
            status = Stored("nAuthorisedStatus");
            return Visit("127.0.0.1", QueryOf(page, "redirect_uri"), answer + "&state=" + QueryOf(page, "state")) ==
                   200;
        });
    }
    void ExpectFailure(const char* code)
    {
        EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
        EXPECT_EQ(Code(), code);
    }

    std::string page, status; // at the browser
};

} // namespace

TEST_F(Dialogue, TurnsTheUsersConsentIntoStoredTokens)
{
    tokenEndpoint->Script(
        {{200, R"({"access_token":"new-a","refresh_token":"new-r","expires_in":"900","scope":"read:x"})"}});
    Answer("?code=the-code");
    static std::function<void()> arrived;
    arrived = [] { EXPECT_EQ(StoredToken(), "new-a") << "the code is spent"; };
    const auto before = std::signal(SIGHUP, [](int) { arrived(); });
    tokenEndpoint->onSend = [] { std::raise(SIGHUP); };
    SetService("https://api.service.hmrc.gov.uk"); // the consent before
    ASSERT_TRUE(authorisation->DoAuthorisation(&logger)) << Code();
    std::signal(SIGHUP, before);
    tokenEndpoint->onSend = {};

    EXPECT_EQ(page.substr(0, page.find('?')), "http://127.0.0.1:1/oauth/authorize");
    for (const auto& [name, value] : Members{{"response_type", "code"},
                                             {"client_id", "the-client"},
                                             {"scope", CScope().GetScope()},
                                             {"client_secret", ""},
                                             {"code_challenge_method", "S256"}})
        EXPECT_EQ(QueryOf(page, name), value) << name;
    EXPECT_GE(QueryOf(page, "state").size(), 22u) << "128 bits";
    const std::string form = '?' + tokenEndpoint->requests.at(0).body;
    for (const auto& [name, value] : Members{{"grant_type", "authorization_code"},
                                             {"code", "the-code"},
                                             {"redirect_uri", QueryOf(page, "redirect_uri")},
                                             {"client_secret", "the-client-secret"}})
        EXPECT_EQ(QueryOf(form, name), value) << name;
    const std::string verifier = QueryOf(form, "code_verifier"), challenge = QueryOf(page, "code_challenge");
    EXPECT_GE(verifier.size(), 43u);
    EXPECT_EQ(Shellkit::Base64Url(Shellkit::Sha256(verifier)), challenge);

    EXPECT_EQ(StoredToken(), "new-a");
    EXPECT_EQ(status, "0") << "while the browser shows HMRC's page";
    EXPECT_EQ(Stored("strScope, nExpiresIn, strService, nAuthorisedStatus"), "read:x|900|http://127.0.0.1:1|1");
    Fakes::ExpectNone(logger.text, {"the-code", "new-a", "new-r", "the-client-secret", verifier});

    const std::string state = QueryOf(page, "state");
    ASSERT_TRUE(authorisation->DoAuthorisation(nullptr));
    EXPECT_NE(QueryOf(page, "state"), state);
    EXPECT_NE(QueryOf(page, "code_challenge"), challenge);
}

TEST_F(Dialogue, StaysWithItsServiceStepByStep)
{
    Answer("?code=the-code");
    ASSERT_EQ(authorisation->RequestAuthCode(), "the-code");
    client->base = "https://other.example/";
    tokenEndpoint->Script({{400, R"({"error":"x","error_description":"the-code of another"})"}});
    EXPECT_FALSE(authorisation->RequestAccessToken("the-code"));
    Fakes::ExpectNone(authorisation->GetLastError().text, {"the-code"});
    tokenEndpoint->Script({{200, Fakes::kFreshTokens}});
    EXPECT_TRUE(authorisation->RequestAccessToken("the-code"));
    EXPECT_EQ(tokenEndpoint->requests.at(0).address, "http://127.0.0.1:1/oauth/token");
    EXPECT_EQ(AccessToken(), "") << "nothing for the other";
    StoreElsewhere();
    EXPECT_TRUE(authorisation->UpdateTokens());
    EXPECT_EQ(StoredToken(), "access-2");
    EXPECT_EQ(Stored("strService"), "http://127.0.0.1:1");
    EXPECT_EQ(Stored("dtGranted = dtAuthenticated"), "1") << "dated as a consent";
}

TEST_F(Dialogue, IgnoresAnswersThatAreNotItsOwnAndListensOnBothFamiliesOfAddresses)
{
    authorisation->SetBrowser([](const std::string& address) {
        const std::string redirect = QueryOf(address, "redirect_uri");
        const std::string state = QueryOf(address, "state");
        EXPECT_EQ(Visit("127.0.0.1", redirect, "?code=forged&state=guess"), 400);
        EXPECT_EQ(Visit("127.0.0.1", redirect, "?code=forged"), 400);
        EXPECT_EQ(Visit("127.0.0.1", redirect, "?error=access_denied"), 400) << "nobody else can end it";
        EXPECT_EQ(Visit("127.0.0.1", redirect, "?state=" + state), 400) << "neither code nor error";
        EXPECT_EQ(Visit("127.0.0.1", redirect + "/other", "?code=forged&state=" + state), 404);
        const bool hasIpv6 = Fakes::LocalServer(0, "::1").Port() != 0;
        EXPECT_EQ(Visit(hasIpv6 ? "::1" : "127.0.0.1", redirect, "?code=genuine&state=" + state), 200);
        return true;
    });
    EXPECT_EQ(authorisation->RequestAuthCode(), "genuine");
}

TEST_F(Dialogue, ShowsThePageThoughItListensNoMore)
{
    for (int i = 0; i < 20; ++i) {
        std::thread browser; // as a real one: on its own
        int answered = 0;
        authorisation->SetBrowser([&](const std::string& address) {
            browser = std::thread([&, address] {
                answered = Visit("127.0.0.1", QueryOf(address, "redirect_uri"),
                                 "?code=genuine&state=" + QueryOf(address, "state"));
            });
            return true;
        });
        EXPECT_EQ(authorisation->RequestAuthCode(), "genuine");
        browser.join();
        ASSERT_EQ(answered, 200) << i;
    }
}

TEST_F(Dialogue, SaysWhyNoAuthorityCame)
{
    Answer("?error=access_denied&error_description=user%20said%20no");
    ExpectFailure("ACCESS_DENIED");
    EXPECT_NE(authorisation->GetLastError().text.find("user said no"), std::string::npos);
    EXPECT_EQ(Stored("nAuthorisedStatus"), "0");
    EXPECT_TRUE(tokenEndpoint->requests.empty());

    tokenEndpoint->Script({{0, ""}});
    Answer("?code=c");
    ExpectFailure("ANSWER_INCOMPLETE");
    EXPECT_EQ(tokenEndpoint->requests.size(), 1u) << "a code is good for one use";

    authorisation->SetBrowser([](const std::string&) { return true; });
    authorisation->SetBrowserTimeout(50);
    ExpectFailure("AUTHORISATION_TIMED_OUT");
    authorisation->SetBrowserTimeout(60'000);
    authorisation->SetCancel([] { return true; });
    ResetRow();
    ExpectFailure("CANCELLED");
    authorisation->SetBrowser([](const std::string&) { return false; });
    ExpectFailure("BROWSER_NOT_OPENED");
    EXPECT_EQ(Stored("nAuthorisedStatus, dtGranted IS NULL"), "1|1") << "nobody was asked: what was given stays";
}

TEST_F(Dialogue, IsHeldUpByNobodyElsesConnections)
{
    const unsigned short port = FreePort();
    authorisation->SetRedirectPorts({port});
    std::unique_ptr<::Test::DrippingCallers> callers;
    authorisation->SetBrowser([&](const std::string& address) {
        callers = std::make_unique<::Test::DrippingCallers>(port, 64);
        return Visit("127.0.0.1", QueryOf(address, "redirect_uri"), "?code=c&state=" + QueryOf(address, "state")) ==
               200;
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(authorisation->RequestAuthCode(), "c");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4)) << "its end included";
}

TEST_F(Dialogue, TakesTheNextPortWhenOneIsBusy)
{
    Fakes::LocalServer busy;
    busy.Start();
    Answer("?code=c");
    const unsigned short free = FreePort();
    authorisation->SetRedirectPorts({busy.Port(), free});
    EXPECT_EQ(authorisation->RequestAuthCode(), "c");
    EXPECT_EQ(QueryOf(page, "redirect_uri"), "http://localhost:" + std::to_string(free) + "/callback");
    authorisation->SetRedirectPorts({busy.Port()});
    EXPECT_EQ(authorisation->RequestAuthCode(), "");
    EXPECT_EQ(Code(), "NO_REDIRECT_PORT");
}
