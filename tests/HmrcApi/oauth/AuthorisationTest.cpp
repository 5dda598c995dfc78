#include "HmrcApi/oauth/Authorisation.h"

#include <algorithm>
#include <csignal>
#include <stdexcept>

#include "Afx/text/TextFold.h"
#include "HmrcApi/Fakes.h"

using namespace HmrcApi;

namespace
{

constexpr char kBusy[] =
    R"({"error":"invalid_request","error_description":"Refresh operation is already in progress"})";

using Load = Fakes::Plumbing;

class Refresh : public Fakes::Plumbing
{
protected:
    Refresh() { Restart(); }

    void Restart()
    {
        ResetRow();
        slept = 0;
        EXPECT_TRUE(authorisation->LoadTokens());
    }
    bool Run() { return authorisation->RefreshTokens(&logger); }
    std::size_t Requests() const { return tokenEndpoint->requests.size(); }
};

} // namespace

TEST_F(Load, RefreshesBeforeTheLastMinuteOfTheAccessToken)
{
    // in: seconds
    const ::Test::Case<double, const char*> rows[] = {
        {14300, "access-1", "100 seconds left"},
        {14345, "access-2", "55 seconds left"},
        {20000, "access-2", "over"},
        {-3600, "access-1", "a clock that was set back"},
    };
    for (const auto& row : rows) {
        ResetRow();
        Sql("UPDATE MTDAuthorisation SET dtAuthenticated = %t",
            COleDateTime(COleDateTime::GetCurrentUtcTime().GetOleDate() - row.in / 86400));
        EXPECT_TRUE(authorisation->LoadTokens());
        EXPECT_EQ(AccessToken(), row.out) << row.why;
        EXPECT_FALSE(IsLocked());
    }
}

TEST_F(Load, SaysWhyThereAreNoTokensAndOverwritesNone)
{
    const ::Test::Row<const char*, std::function<void()>> rows[] = {
        {"NO_CREDENTIALS", [&] { Sql("DELETE FROM MTDAuthorisation"); }, "nobody has registered that gateway id"},
        {"REFRESH_BUSY", [&] { store->isBusy = true; }, "another program has the database"},
        {"NOT_AUTHORISED", [&] { Sql("UPDATE MTDAuthorisation SET nAuthorisedStatus = 0"); }, "no consent yet"},
        {"NOT_AUTHORISED", [&] { Sql("UPDATE MTDAuthorisation SET vbAccessToken = NULL"); }, "consent without tokens"},
        {"TOKENS_UNREADABLE", [&] { Sql("UPDATE MTDAuthorisation SET vbAccessToken = %b", Cellar::Bytes(40, 1)); },
         "damaged, or of another practice"},
        {"NO_CREDENTIALS_FILE", [&] { client->id.clear(); }, "even a bearer token must not leave the machine then"},
        {"NO_PRACTICE_KEY", [&] { Shellkit::SetPracticeKey({}); }, "the key file is gone"}, // the key stays away
        {"DATABASE_UNREADABLE", [&] { Sql("DROP TABLE MTDAuthorisation"); }, "nor is that no row"}, // the table too
    };
    for (const auto& [code, spoil, why] : rows) {
        SCOPED_TRACE(why);
        if (std::string_view(code) != "DATABASE_UNREADABLE") {
            ResetRow();
            store->isBusy = false;
            client->id = "the-client";
            EXPECT_TRUE(authorisation->LoadTokens());
        }
        spoil();
        EXPECT_FALSE(authorisation->LoadTokens());
        EXPECT_EQ(Code(), code);
        EXPECT_EQ(AccessToken(), "");
        EXPECT_FALSE(authorisation->UpdateTokens()) << "would overwrite a grant with nothing, or revive it";
    }
}

/// The settings name another service in the midst of an operation.
TEST_F(Load, IsOfOneServiceFromBeginningToEnd)
{
    const std::function<void()> change = [&] { client->base = "https://other.example/"; };
    std::function<void()>* const moments[] = {&store->onRehearse, &tokenEndpoint->onSend, &client->onSecret};
    for (std::function<void()>* const moment : moments) {
        ResetRow();
        client->base = "http://127.0.0.1:1/";
        ASSERT_TRUE(authorisation->LoadTokens());
        tokenEndpoint->requests.clear();
        *moment = change;
        const bool isRefreshed = authorisation->RefreshTokens(nullptr);
        *moment = {};
        EXPECT_EQ(isRefreshed, moment != &client->onSecret) << "the id was the one's, the secret the other's";
        for (const HttpRequest& request : tokenEndpoint->requests)
            EXPECT_EQ(request.address, "http://127.0.0.1:1/oauth/token");
        EXPECT_EQ(Stored("strService"), "http://127.0.0.1:1");
        EXPECT_EQ(AccessToken(), "") << "nothing for the other";
    }
}

TEST_F(Load, KeepsTokensFromAServiceThatDidNotGiveThem)
{
    const std::string production = "https://api.service.hmrc.gov.uk", test = "https://test-api.service.hmrc.gov.uk";
    const std::tuple<std::string, std::string, bool, const char*> rows[] = {
        {production, production + '/', true, "the service that gave them"},
        {production, "HTTPS://API.service.hmrc.gov.uk:443", true, "the same, written otherwise"},
        {"", production + '/', true, "a grant from before services were kept"},
        {"", test + '/', false, "such a grant is production's only"},
        {production, test + '/', false, "test services"},
        {test, production + '/', false, "and the other way round"},
        {production, "http://127.0.0.1:1/", false, "a server on this machine"},
        {"http://127.0.0.1:2", "http://127.0.0.1:1/", false, "another server on this machine"},
    };
    for (const auto& [service, base, mayLoad, why] : rows) {
        SCOPED_TRACE(why);
        ResetRow();
        SetService(service);
        client->base = service.empty() ? production : service;
        ASSERT_TRUE(authorisation->LoadTokens());
        client->base = base;
        EXPECT_EQ(AccessToken(), mayLoad ? "access-1" : "") << "in hand";
        Sql("UPDATE MTDAuthorisation SET dtAuthenticated = NULL"); // over
        EXPECT_EQ(authorisation->LoadTokens(), mayLoad);
        EXPECT_EQ(authorisation->RefreshTokens(nullptr), mayLoad);
        EXPECT_EQ(Code(), mayLoad ? "" : "WRONG_SERVICE");
        EXPECT_EQ(tokenEndpoint->requests.empty(), !mayLoad) << "the refresh token and the secret";
        tokenEndpoint->requests.clear();
    }
    EXPECT_EQ(authorisation->GetLastError().text,
              "The authority of this Government Gateway user ID is for 127.0.0.1:2, not "
              "for 127.0.0.1:1: authorise for this service");
}

TEST_F(Refresh, StoresTheNewPairAndKeepsTheScope)
{
    tokenEndpoint->onSend = [] { EXPECT_TRUE(IsLocked()); };
    ASSERT_TRUE(Run());
    EXPECT_FALSE(IsLocked());
    EXPECT_EQ(StoredToken() + ' ' + StoredToken("vbRefreshToken"), "access-2 refresh-2");
    EXPECT_EQ(Stored("strScope"), "read:individual-paye") << "the answer has none";
    EXPECT_EQ(tokenEndpoint->requests.at(0).body,
              "grant_type=refresh_token&refresh_token=refresh-1&client_id=the-client&client_secret=the-client-secret");
    EXPECT_EQ(tokenEndpoint->requests.at(0).address, "http://127.0.0.1:1/oauth/token");
    EXPECT_FALSE(tokenEndpoint->requests.at(0).cancelled) << "cancelling it would lose the token";
    Fakes::ExpectNone(logger.text, {"access-1", "access-2", "refresh-1", "refresh-2", "the-client-secret"});
}

TEST_F(Refresh, TakesTheTokensOfAQuickerWorkstation)
{
    StoreElsewhere();
    EXPECT_TRUE(Run());
    EXPECT_EQ(AccessToken(), "access-elsewhere") << "stored before";
    EXPECT_FALSE(IsLocked());

    Restart();
    Lock();
    store->onLockRefused = [&, refusals = 0]() mutable {
        if (++refusals == 3)
            StoreElsewhere();
    };
    EXPECT_TRUE(Run());
    EXPECT_EQ(AccessToken(), "access-elsewhere") << "stored by the lock's holder";
    EXPECT_EQ(slept, 1000u) << "twice the retry delay";
    EXPECT_TRUE(IsLocked()) << "another's lock stays";
    EXPECT_EQ(Requests(), 0u);

    Restart();
    tokenEndpoint->Script({{400, kBusy}});
    tokenEndpoint->onSend = [] { StoreElsewhere(); };
    EXPECT_TRUE(Run());
    EXPECT_EQ(AccessToken(), "access-elsewhere") << "stored while HMRC was busy";
    EXPECT_EQ(Requests(), 1u);
}

TEST_F(Refresh, GivesUpAfterTenAttemptsAndNamesTheHolder)
{
    Lock();
    EXPECT_FALSE(Run());
    EXPECT_EQ(Code(), "REFRESH_BUSY");
    EXPECT_EQ(authorisation->GetLastError().text, "The authorisation is being refreshed at workstation DESK-7 by ANNE");
    EXPECT_EQ(slept, 4500u);
    EXPECT_TRUE(IsLocked());

    Restart();
    Quarry::GetConnection().SetBusyTimeout(1);
    const auto writer = Open();
    writer->Query("BEGIN IMMEDIATE", {});
    EXPECT_FALSE(Run());
    EXPECT_EQ(authorisation->GetLastError().text, "The authorisation is being refreshed at another workstation, or "
                                                  "another program is writing to the practice");
    EXPECT_EQ(slept, 0u) << "the store has waited";
    EXPECT_EQ(Requests(), 0u) << "a refresh token is good for one use";
}

TEST_F(Refresh, DecidesByTheAnswerAndByWhatOthersDidMeanwhile)
{
    constexpr char kGrant[] = R"({"error":"invalid_grant"})";
    const std::pair<int, std::string> fresh{200, Fakes::kFreshTokens}, lost{0, ""}, late{-1, ""}, busy{400, kBusy},
        ended{400, kGrant};
    const auto sleep = [] {};
    const auto replace = [] { StoreElsewhere("access-elsewhere", "refresh-elsewhere"); };
    const auto again = [] { StoreElsewhere("access-1"); };
    const auto end = [] { Sql("UPDATE MTDAuthorisation SET nAuthorisedStatus = 0"); };
    const auto remove = [] { Sql("DELETE FROM MTDAuthorisation"); };
    const auto breakDown = [&] { store->failingUpdates = 3; };
    const struct
    {
        std::vector<std::pair<int, std::string>> answers; // status 0: the answer is lost, -1: late
        std::string code;                                 // empty: success
        std::size_t requests;
        const char *stored, *why; // access token and status afterwards
        std::function<void()> meanwhile = {};
    } rows[] = {
        {{lost, fresh}, "", 2, "access-2 1", "lost before HMRC had it: the same token is still good"},
        {{lost, ended}, "INVALID_GRANT", 2, "access-1 0", "lost after HMRC had granted it"},
        {{lost, lost}, "ANSWER_INCOMPLETE", 2, "access-1 1", "lost twice: not a third time"},
        {{late, fresh}, "", 2, "access-2 1", "no answer in time"},
        {{{504, ""}, fresh}, "", 2, "access-2 1", "a gateway gave up waiting"},
        {{busy, busy, fresh}, "", 3, "access-2 1", "busy for a while"},
        {{busy}, "REFRESH_BUSY", 10, "access-1 1", "busy for ever"},
        {{ended}, "INVALID_GRANT", 1, "access-1 0", "used or revoked"},
        {{{500, R"({"error":"server_error"})"}}, "SERVER_ERROR", 1, "access-1 1", "not repeated: single use"},
        {{{200, R"({"access_token":"a"})"}}, "ANSWER_MALFORMED", 1, "access-1 1", "no refresh token"},
        {{{200, R"({"access_token":"a\r\nX","refresh_token":"r"})"}}, "ANSWER_MALFORMED", 1, "access-1 1", "a line"},
        {{{200, R"({"access_token":"a","refresh_token":"r\u0000"})"}}, "ANSWER_MALFORMED", 1, "access-1 1", "a zero"},
        // The computer sleeps within the request.
        {{lost}, "ANSWER_INCOMPLETE", 1, "access-1 1", "not asked a second time", sleep},
        {{ended}, "", 1, "access-elsewhere 1", "the other one used the token, the grant is alive", replace},
        {{ended}, "INVALID_GRANT", 1, "access-1 0", "nobody else did", sleep},
        {{fresh}, "", 1, "access-elsewhere 1", "a newer consent", replace},
        {{fresh}, "", 1, "access-2 1", "late, and still the only pair", sleep},
        {{fresh}, "", 1, "access-2 1", "the same pair, written anew", again},
        {{fresh}, "NOT_AUTHORISED", 1, "access-1 0", "ended: it stays so", end},
        {{fresh}, "NO_CREDENTIALS", 1, " ", "deleted: it does not come back", remove},
        {{ended}, "INVALID_GRANT", 1, "access-1 1", "unreadable: the tokens are not erased", breakDown},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        Restart();
        store->failingUpdates = 0;
        tokenEndpoint->Script(row.answers);
        tokenEndpoint->onSend = [&] {
            passed += row.meanwhile ? 600'000 : 0;
            if (row.meanwhile)
                row.meanwhile();
        };
        EXPECT_EQ(Run(), row.code.empty());
        EXPECT_EQ(Code(), row.code);
        EXPECT_EQ(Requests(), row.requests);
        for (const HttpRequest& request : tokenEndpoint->requests)
            EXPECT_NE(request.body.find("refresh_token=refresh-1&"), std::string::npos);
        EXPECT_FALSE(IsLocked()) << "the lock is given back on every way out";
        authorisation->UpdateTokens();
        EXPECT_EQ(StoredToken() + ' ' + Stored("nAuthorisedStatus"), row.stored) << "what has ended is not revived";
    }
}

TEST_F(Refresh, TriesToSaveThreeTimesAndKeepsTheTokensInHand)
{
    for (const int failures : {2, 3}) {
        Restart();
        store->failingUpdates = failures;
        EXPECT_EQ(Run(), failures == 2);
        EXPECT_EQ(Code(), failures == 2 ? "" : "TOKENS_NOT_SAVED");
        EXPECT_EQ(AccessToken(), "access-2");
    }
    EXPECT_TRUE(authorisation->UpdateTokens()) << "tried again later";
    EXPECT_EQ(StoredToken(), "access-2");
}

TEST_F(Refresh, EndsWithinTwoMinutesWhateverHappens)
{
    const std::tuple<unsigned, std::size_t, const char*> rows[] = {
        {30'000, 4, "the last one gets what is left"},
        {54'000, 3, "eleven seconds are left for the third"},
        {55'000, 2, "nine are too few"},
    };
    for (const auto& [each, requests, why] : rows) {
        Restart();
        passed = 0;
        tokenEndpoint->Script({{400, kBusy}});
        tokenEndpoint->onSend = [&, most = each] {
            passed += std::min(most, tokenEndpoint->requests.back().totalMilliseconds);
        };
        EXPECT_FALSE(Run());
        EXPECT_EQ(Code(), "REFRESH_BUSY");
        EXPECT_LE(passed, 120'000);
        EXPECT_EQ(Requests(), requests) << why;
    }
}

TEST_F(Refresh, TellsNobodyTheSecretsThatAnAnswerRepeats)
{
    for (const std::string secret : {"refresh-1", "the-client-secret"}) {
        tokenEndpoint->Script({{401, R"({"error":")" + secret + R"(","error_description":"odd )" + secret + R"("})"}});
        EXPECT_FALSE(Run());
        Fakes::ExpectNone(authorisation->GetLastError().text + Code() + logger.text, {secret, Afx::FoldUpper(secret)});
    }
}

TEST_F(Refresh, HoldsSignalsBackUntilThePairIsStored)
{
    static std::function<void()> arrived;
    int signals = 0;
    arrived = [&] {
        ++signals;
        EXPECT_EQ(StoredToken(), "access-2");
        EXPECT_FALSE(IsLocked()) << "the lock is given back first";
    };
    const auto before = std::signal(SIGTERM, [](int) { arrived(); });
    tokenEndpoint->onSend = [] { std::raise(SIGTERM); };
    EXPECT_TRUE(Run());
    EXPECT_EQ(signals, 1);

    Restart();
    tokenEndpoint->Script({{400, kBusy}});
    arrived = [&] { ++signals; };
    EXPECT_FALSE(Run());
    EXPECT_EQ(Code(), "CANCELLED") << "nothing is lost while HMRC is busy";
    EXPECT_EQ(Requests(), 1u);
    EXPECT_EQ(signals, 2);
    std::signal(SIGTERM, before);
}

TEST_F(Refresh, GivesTheLockBackAfterAnException)
{
    tokenEndpoint->onSend = [] { throw std::runtime_error("no memory"); };
    EXPECT_THROW(Run(), std::runtime_error);
    EXPECT_FALSE(IsLocked());
    tokenEndpoint->onSend = {};
    logger.onLog = [] { throw std::runtime_error("no log"); };
    EXPECT_THROW(Run(), std::runtime_error);
    EXPECT_FALSE(IsLocked());
    EXPECT_EQ(StoredToken(), "access-2") << "stored before anything else";
}

TEST_F(Refresh, AsksHmrcForNothingThatCouldNotBeKept)
{
    authorisation->SetBrowser([](const std::string& address) {
        ADD_FAILURE() << address;
        return false;
    });
    authorisation->SetRedirectPorts({});
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "NO_REDIRECT_PORT");
    authorisation->SetRedirectPorts({53691, 53692});
    store->failingUpdates = 1;
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "TOKENS_NOT_SAVED");
    store->problem = "the disk is full";
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "TOKENS_NOT_SAVED");
    EXPECT_EQ(Stored("nAuthorisedStatus"), "1") << "the grant there is stays";
    EXPECT_FALSE(Run());
    EXPECT_EQ(Code(), "TOKENS_NOT_SAVED");
    EXPECT_NE(authorisation->GetLastError().text.find("the disk is full"), std::string::npos);
    EXPECT_EQ(slept, 0u) << "waiting does not help";
    EXPECT_FALSE(IsLocked());
    store->problem.clear();
    Shellkit::SetPracticeKey({});
    for (const char* code : {"NO_PRACTICE_KEY", "NO_CREDENTIALS_FILE"}) {
        EXPECT_FALSE(Run());
        EXPECT_EQ(Code(), code);
        EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
        EXPECT_EQ(Code(), code);
        client->id.clear();
    }
    EXPECT_NE(authorisation->GetLastError().text.find("-DMORVUT_HMRC_CREDENTIALS=FILE"), std::string::npos);
    EXPECT_EQ(Requests(), 0u);
}
