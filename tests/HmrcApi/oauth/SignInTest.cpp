// Signing in, as the browser sees it.

#include <csignal>
#include <thread>

#include "HmrcApi/oauth/Dialogue.h"
#include "Shellkit/Base64Url.h"
#include "Shellkit/Digest.h"
#include "support/DrippingCallers.h"

using namespace HmrcApi;
using Fakes::Dialogue, Fakes::FreePort, Fakes::QueryOf, Fakes::Visit;

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

    const auto valuesOf = [](const std::string& query, std::initializer_list<const char*> names) {
        std::string values;
        for (const char* name : names)
            values += QueryOf(query, name) + '|';
        return values;
    };
    EXPECT_TRUE(page.starts_with("http://127.0.0.1:1/oauth/authorize?")) << page;
    EXPECT_EQ(valuesOf(page, {"response_type", "client_id", "scope", "client_secret", "code_challenge_method"}),
              "code|the-client|" + CScope().GetScope() + "||S256|");
    EXPECT_GE(QueryOf(page, "state").size(), 22u) << "128 bits";
    const std::string form = '?' + tokenEndpoint->requests.at(0).body;
    EXPECT_EQ(valuesOf(form, {"grant_type", "code", "redirect_uri", "client_secret"}),
              "authorization_code|the-code|" + QueryOf(page, "redirect_uri") + "|the-client-secret|");
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
