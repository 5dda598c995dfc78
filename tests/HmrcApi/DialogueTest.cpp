#include <algorithm>

#include "HmrcApi/Fakes.h"
#include "HmrcApi/LocalServer.h"

using namespace HmrcApi;

namespace
{

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
        practice.status = IAuthorisationStore::Authorised;
        authorisation->SetRedirectPorts({FreePort(), FreePort(), FreePort()});
        authorisation->SetBrowserTimeout(5000);
        authorisation->SetCancel({});
    }

    /// The browser takes the user to the redirect address with what `answer` makes of the state.
    void Answer(std::function<std::string(const std::string& state)> answer)
    {
        authorisation->SetBrowser([this, answer](const std::string& address) {
            page = address;
            visited = Visit("127.0.0.1", QueryOf(address, "redirect_uri"), answer(QueryOf(address, "state")));
            return true;
        });
    }
    const std::string& Code() const { return authorisation->GetLastError().code; }

    std::string page;
    int visited = 0;
};

} // namespace

TEST_F(Dialogue, TurnsTheUsersConsentIntoStoredTokens)
{
    tokenEndpoint->answers.clear();
    tokenEndpoint->Add(200, R"({"access_token":"new-a","refresh_token":"new-r","expires_in":"900","scope":"read:x"})");
    Answer([](const std::string& state) { return "?code=the-code&state=" + state; });
    ASSERT_TRUE(authorisation->DoAuthorisation(&logger)) << Code();
    EXPECT_EQ(visited, 200);

    EXPECT_EQ(page.substr(0, page.find('?')), "http://127.0.0.1:1/oauth/authorize");
    EXPECT_EQ(QueryOf(page, "response_type"), "code");
    EXPECT_EQ(QueryOf(page, "client_id"), "the-client");
    EXPECT_EQ(QueryOf(page, "scope"), "read:national-insurance read:individual-paye");
    EXPECT_EQ(QueryOf(page, "client_secret"), "");
    EXPECT_EQ(QueryOf(page, "code_challenge_method"), "S256");
    EXPECT_GE(QueryOf(page, "state").size(), 22u) << "128 bits";

    const std::string form = '?' + tokenEndpoint->requests.at(0).body;
    EXPECT_EQ(QueryOf(form, "grant_type"), "authorization_code");
    EXPECT_EQ(QueryOf(form, "code"), "the-code");
    EXPECT_EQ(QueryOf(form, "redirect_uri"), QueryOf(page, "redirect_uri"));
    EXPECT_EQ(QueryOf(form, "client_secret"), "the-client-secret");
    const std::string verifier = QueryOf(form, "code_verifier");
    EXPECT_GE(verifier.size(), 43u);
    EXPECT_EQ(Shellkit::Base64Url(Shellkit::Sha256(verifier)), QueryOf(page, "code_challenge"));

    EXPECT_EQ(StoredAccessToken(), "new-a");
    EXPECT_EQ(practice.scope, "read:x");
    EXPECT_EQ(practice.expiresIn, 900);
    EXPECT_EQ(practice.written, (std::vector{IAuthorisationStore::NotAuthorised, IAuthorisationStore::Authorised}));
    for (const char* secret : {"the-code", "new-a", "new-r", "the-client-secret"})
        EXPECT_EQ(logger.text.find(secret), std::string::npos) << logger.text;
    EXPECT_EQ(logger.text.find(verifier), std::string::npos);
}

TEST_F(Dialogue, UsesANewStateAndVerifierEachTime)
{
    Answer([](const std::string& state) { return "?code=c&state=" + state; });
    std::vector<std::string> states;
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(authorisation->DoAuthorisation(nullptr));
        states.push_back(QueryOf(page, "state") + QueryOf(page, "code_challenge"));
    }
    EXPECT_NE(states[0], states[1]);
}

TEST_F(Dialogue, IgnoresAnswersThatAreNotItsOwn)
{
    authorisation->SetBrowser([](const std::string& address) {
        const std::string redirect = QueryOf(address, "redirect_uri");
        const std::string state = QueryOf(address, "state");
        EXPECT_EQ(Visit("127.0.0.1", redirect, "?code=forged&state=guess"), 400);
        EXPECT_EQ(Visit("127.0.0.1", redirect, "?code=forged"), 400);
        EXPECT_EQ(Visit("127.0.0.1", redirect, "?error=access_denied"), 400) << "nobody else can end it";
        EXPECT_EQ(Visit("127.0.0.1", redirect, "?state=" + state), 400) << "neither code nor error";
        EXPECT_EQ(Visit("127.0.0.1", redirect + "/other", "?code=forged&state=" + state), 404);
        EXPECT_EQ(Visit("127.0.0.1", redirect, "?code=genuine&state=" + state), 200);
        return true;
    });
    EXPECT_EQ(authorisation->RequestAuthCode(), "genuine");
}

TEST_F(Dialogue, ListensOnBothFamiliesOfAddresses)
{
    Fakes::LocalServer probe("::1");
    if (probe.Port() == 0)
        GTEST_SKIP() << "this machine has no IPv6";
    probe.Start();
    authorisation->SetBrowser([](const std::string& address) {
        EXPECT_EQ(Visit("::1", QueryOf(address, "redirect_uri"), "?code=six&state=" + QueryOf(address, "state")), 200);
        return true;
    });
    EXPECT_EQ(authorisation->RequestAuthCode(), "six");
}

TEST_F(Dialogue, SaysWhyNoAuthorityCame)
{
    Answer([](const std::string& state) {
        return "?error=access_denied&error_description=user%20said%20no&state=" + state;
    });
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "ACCESS_DENIED");
    EXPECT_NE(authorisation->GetLastError().text.find("user said no"), std::string::npos);
    EXPECT_EQ(practice.status, IAuthorisationStore::NotAuthorised);
    EXPECT_TRUE(tokenEndpoint->requests.empty());

    authorisation->SetBrowser([](const std::string&) { return true; });
    authorisation->SetBrowserTimeout(50);
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "AUTHORISATION_TIMED_OUT");

    authorisation->SetBrowserTimeout(60'000);
    authorisation->SetCancel([] { return true; });
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "CANCELLED");

    authorisation->SetBrowser([](const std::string&) { return false; });
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "BROWSER_NOT_OPENED");
}

TEST_F(Dialogue, DoesNotRepeatTheCode)
{
    tokenEndpoint->answers.clear();
    tokenEndpoint->Add(HttpAnswer::Outcome::Incomplete);
    Answer([](const std::string& state) { return "?code=c&state=" + state; });
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "ANSWER_INCOMPLETE");
    EXPECT_EQ(tokenEndpoint->requests.size(), 1u);
}

TEST_F(Dialogue, TakesTheNextPortWhenOneIsBusy)
{
    Fakes::LocalServer busy;
    busy.Start();
    const unsigned short taken = busy.Port();
    Answer([](const std::string& state) { return "?code=c&state=" + state; });
    const unsigned short free = FreePort();
    authorisation->SetRedirectPorts({taken, free});
    EXPECT_EQ(authorisation->RequestAuthCode(), "c");
    EXPECT_EQ(QueryOf(page, "redirect_uri"), "http://localhost:" + std::to_string(free) + "/callback");
    authorisation->SetRedirectPorts({taken});
    EXPECT_EQ(authorisation->RequestAuthCode(), "");
    EXPECT_EQ(Code(), "NO_REDIRECT_PORT");
}

TEST_F(Dialogue, StopsBeforeTheBrowserWhenTokensCouldNotBeKept)
{
    bool isOpened = false;
    authorisation->SetBrowser([&](const std::string&) { return isOpened = true; });
    practice.failingUpdates = 1;
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "TOKENS_NOT_SAVED");
    Shellkit::SetPracticeKey({});
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "NO_PRACTICE_KEY");
    client->id.clear();
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "NO_CREDENTIALS_FILE");
    EXPECT_FALSE(isOpened);
}
