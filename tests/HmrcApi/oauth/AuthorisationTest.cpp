#include "HmrcApi/oauth/Authorisation.h"

#include <algorithm>
#include <csignal>
#include <stdexcept>

#include "Afx/text/TextFold.h"
#include "HmrcApi/Fakes.h"
#include "support/Case.h"

using namespace HmrcApi;

namespace
{

constexpr char kBusy[] =
    R"({"error":"invalid_request","error_description":"Refresh operation is already in progress"})";

class Load : public Fakes::Plumbing
{};

class Refresh : public Fakes::Plumbing
{
protected:
    Refresh() { Restart(); }

    void Restart()
    {
        practice = {};
        slept = 0;
        EXPECT_TRUE(authorisation->LoadTokens());
    }
    bool Run() { return authorisation->RefreshTokens(&logger); }
    std::size_t Requests() const { return tokenEndpoint->requests.size(); }
    void StoreElsewhere() { practice.access = Fakes::Sealed("access-elsewhere"); }
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
        practice = {};
        practice.authenticated = COleDateTime(COleDateTime::GetCurrentUtcTime().GetOleDate() - row.in / 86400);
        EXPECT_TRUE(authorisation->LoadTokens());
        EXPECT_EQ(AccessToken(), row.out) << row.why;
        EXPECT_FALSE(practice.isLocked);
    }
}

TEST_F(Load, SaysWhyThereAreNoTokensAndOverwritesNone)
{
    const struct
    {
        const char* code;
        std::function<void()> spoil;
        const char* why;
    } rows[] = {
        {"NO_CREDENTIALS", [&] { store->hasRow = false; }, "nobody has registered that gateway id"},
        {"REFRESH_BUSY", [&] { store->hasRow = !(practice.isBusy = true); }, "another program has the database"},
        {"DATABASE_UNREADABLE", [&] { store->hasRow = (practice.problem = "torn").empty(); }, "nor is that no row"},
        {"NOT_AUTHORISED", [&] { practice.status = IAuthorisationStore::NotAuthorised; }, "no consent yet"},
        {"NOT_AUTHORISED", [&] { practice.access.clear(); }, "consent without tokens"},
        {"TOKENS_UNREADABLE", [&] { practice.access[20] ^= 1; }, "damaged, or of another practice"},
        {"NO_CREDENTIALS_FILE", [&] { client->id.clear(); }, "even a bearer token must not leave the machine then"},
        {"NO_PRACTICE_KEY", [&] { Shellkit::SetPracticeKey({}); }, "the key file is gone"}, // last: the key stays away
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        practice = {};
        store->hasRow = true;
        client->id = "the-client";
        EXPECT_TRUE(authorisation->LoadTokens());
        row.spoil();
        EXPECT_FALSE(authorisation->LoadTokens());
        EXPECT_EQ(Code(), row.code);
        EXPECT_EQ(AccessToken(), "");
        EXPECT_FALSE(authorisation->UpdateTokens()) << "would overwrite a grant with nothing, or revive it";
        EXPECT_TRUE(practice.written.empty());
    }
}

/// The settings name another service in the midst of an operation.
TEST_F(Load, IsOfOneServiceFromBeginningToEnd)
{
    const std::function<void()> change = [&] { client->base = "https://other.example/"; };
    std::function<void()>* const moments[] = {&store->onRehearse, &tokenEndpoint->onSend, &client->onSecret};
    for (std::function<void()>* const moment : moments) {
        practice = {};
        client->base = "http://127.0.0.1:1/";
        ASSERT_TRUE(authorisation->LoadTokens());
        tokenEndpoint->requests.clear();
        *moment = change;
        const bool isRefreshed = authorisation->RefreshTokens(nullptr);
        *moment = {};
        EXPECT_EQ(isRefreshed, moment != &client->onSecret) << "the id was the one's, the secret the other's";
        for (const HttpRequest& request : tokenEndpoint->requests)
            EXPECT_EQ(request.address, "http://127.0.0.1:1/oauth/token");
        EXPECT_EQ(practice.service, "http://127.0.0.1:1");
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
        practice = {};
        practice.service = service;
        client->base = service.empty() ? production : service;
        ASSERT_TRUE(authorisation->LoadTokens());
        client->base = base;
        EXPECT_EQ(AccessToken(), mayLoad ? "access-1" : "") << "in hand";
        practice.authenticated = COleDateTime::Null(); // over
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
    ASSERT_TRUE(Run());
    EXPECT_EQ(StoredAccessToken(), "access-2");
    EXPECT_EQ(CAuthorisation::DecryptToken(practice.refresh), "refresh-2");
    EXPECT_EQ(practice.scope, "read:individual-paye") << "the answer has none";
    EXPECT_EQ(tokenEndpoint->requests.at(0).body,
              "grant_type=refresh_token&refresh_token=refresh-1&client_id=the-client&client_secret=the-client-secret");
    EXPECT_EQ(tokenEndpoint->requests.at(0).address, "http://127.0.0.1:1/oauth/token");
    EXPECT_FALSE(tokenEndpoint->requests.at(0).cancelled) << "cancelling it would lose the token";
    EXPECT_EQ(store->locks, 1);
    EXPECT_EQ(store->unlocks, 1);
    Fakes::ExpectNone(logger.text, {"access-1", "access-2", "refresh-1", "refresh-2", "the-client-secret"});
}

TEST_F(Refresh, TakesTheTokensOfAQuickerWorkstation)
{
    StoreElsewhere();
    EXPECT_TRUE(Run());
    EXPECT_EQ(AccessToken(), "access-elsewhere") << "stored before";
    EXPECT_FALSE(practice.isLocked);

    Restart();
    practice.isLocked = true;
    store->onLockRefused = [&, refusals = 0](Fakes::FakeRow&) mutable {
        if (++refusals == 3)
            StoreElsewhere();
    };
    EXPECT_TRUE(Run());
    EXPECT_EQ(AccessToken(), "access-elsewhere") << "stored by the lock's holder";
    EXPECT_EQ(slept, 1000u) << "twice the retry delay";
    EXPECT_TRUE(practice.isLocked) << "another's lock stays";
    EXPECT_EQ(Requests(), 0u);

    Restart();
    tokenEndpoint->Script({{400, kBusy}});
    tokenEndpoint->onSend = [this] { StoreElsewhere(); };
    EXPECT_TRUE(Run());
    EXPECT_EQ(AccessToken(), "access-elsewhere") << "stored while HMRC was busy";
    EXPECT_EQ(Requests(), 1u);
}

TEST_F(Refresh, GivesUpAfterTenAttemptsAndNamesTheHolder)
{
    practice.isLocked = true;
    EXPECT_FALSE(Run());
    EXPECT_EQ(Code(), "REFRESH_BUSY");
    EXPECT_EQ(authorisation->GetLastError().text, "The authorisation is being refreshed at workstation DESK-7 by ANNE");
    EXPECT_EQ(slept, 4500u);
    EXPECT_TRUE(practice.isLocked);
    store->isHolderKnown = false;
    EXPECT_FALSE(Run());
    EXPECT_EQ(authorisation->GetLastError().text, "The authorisation is being refreshed at another workstation, or "
                                                  "another program is writing to the practice");
}

TEST_F(Refresh, DecidesWhatTheTokenEndpointAnswers)
{
    constexpr char kGrant[] = R"({"error":"invalid_grant"})";
    // Status 0: the answer is lost, -1: late; an empty code: success.
    using Answers = std::vector<std::pair<int, std::string>>;
    const std::tuple<Answers, std::string, std::size_t, const char*> rows[] = {
        {{{0, ""}, {200, Fakes::kFreshTokens}}, "", 2, "lost before HMRC had it: the same token is still good"},
        {{{0, ""}, {400, kGrant}}, "INVALID_GRANT", 2, "lost after HMRC had granted it"},
        {{{0, ""}, {0, ""}}, "ANSWER_INCOMPLETE", 2, "lost twice: not a third time"},
        {{{-1, ""}, {200, Fakes::kFreshTokens}}, "", 2, "no answer in time"},
        {{{504, ""}, {200, Fakes::kFreshTokens}}, "", 2, "a gateway gave up waiting"},
        {{{400, kBusy}, {400, kBusy}, {200, Fakes::kFreshTokens}}, "", 3, "busy for a while"},
        {{{400, kBusy}}, "REFRESH_BUSY", 10, "busy for ever"},
        {{{400, kGrant}}, "INVALID_GRANT", 1, "used or revoked"},
        {{{500, R"({"error":"server_error"})"}}, "SERVER_ERROR", 1, "not repeated: single use"},
        {{{200, R"({"access_token":"a"})"}}, "ANSWER_MALFORMED", 1, "no refresh token"},
        {{{200, R"({"access_token":"a\r\nX: y","refresh_token":"r"})"}}, "ANSWER_MALFORMED", 1, "a line end"},
        {{{200, R"({"access_token":"a","refresh_token":"r\u0000"})"}}, "ANSWER_MALFORMED", 1, "a zero"},
    };
    for (const auto& [answers, code, requests, why] : rows) {
        SCOPED_TRACE(why);
        Restart();
        tokenEndpoint->Script(answers);
        EXPECT_EQ(Run(), code.empty());
        EXPECT_EQ(Code(), code);
        EXPECT_EQ(Requests(), requests);
        for (const HttpRequest& request : tokenEndpoint->requests)
            EXPECT_NE(request.body.find("refresh_token=refresh-1&"), std::string::npos);
        EXPECT_EQ(practice.status == IAuthorisationStore::NotAuthorised, code == "INVALID_GRANT");
        EXPECT_FALSE(practice.isLocked) << "the lock is given back on every way out";
    }
}

TEST_F(Refresh, TriesToSaveThreeTimesAndKeepsTheTokensInHand)
{
    for (const int failures : {2, 3}) {
        Restart();
        practice.failingUpdates = failures;
        EXPECT_EQ(Run(), failures == 2);
        EXPECT_EQ(Code(), failures == 2 ? "" : "TOKENS_NOT_SAVED");
        EXPECT_EQ(AccessToken(), "access-2");
    }
    EXPECT_TRUE(authorisation->UpdateTokens()) << "tried again later";
    EXPECT_EQ(StoredAccessToken(), "access-2");
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
        tokenEndpoint->onSend = [&] { passed += std::min(each, tokenEndpoint->requests.back().totalMilliseconds); };
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

TEST_F(Refresh, LeavesWhatAnotherWorkstationDidWhileThisOneSlept)
{
    constexpr char kGrant[] = R"({"error":"invalid_grant"})";
    const auto replace = [&] {
        StoreElsewhere();
        practice.refresh = Fakes::Sealed("refresh-elsewhere");
    };
    const auto again = [&] { practice.access = Fakes::Sealed("access-1"); };
    const auto end = [&] { practice.status = IAuthorisationStore::NotAuthorised; };
    const auto remove = [&] { store->hasRow = false; };
    const auto breakDown = [&] { practice.failingUpdates = 3; };
    const struct
    {
        std::pair<int, std::string> answer;
        std::function<void()> meanwhile;
        const char *access, *code, *why;
    } rows[] = {
        {{0, ""}, [] {}, "access-1", "ANSWER_INCOMPLETE", "not asked a second time"},
        {{400, kGrant}, replace, "access-elsewhere", "", "the other one used the token, the grant is alive"},
        {{400, kGrant}, [] {}, "access-1", "INVALID_GRANT", "nobody else did"},
        {{200, Fakes::kFreshTokens}, replace, "access-elsewhere", "", "a newer consent"},
        {{200, Fakes::kFreshTokens}, [] {}, "access-2", "", "late, and still the only pair"},
        {{200, Fakes::kFreshTokens}, again, "access-2", "", "the same pair, written anew"},
        {{200, Fakes::kFreshTokens}, end, "access-1", "NOT_AUTHORISED", "ended: it stays so"},
        {{200, Fakes::kFreshTokens}, remove, "access-1", "NO_CREDENTIALS", "deleted: it does not come back"},
        {{400, kGrant}, breakDown, "access-1", "INVALID_GRANT", "unreadable: the tokens are not erased"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        Restart();
        tokenEndpoint->Script({row.answer});
        tokenEndpoint->onSend = [&] {
            passed += 600'000;
            row.meanwhile();
        };
        EXPECT_EQ(Run(), !*row.code);
        EXPECT_EQ(Code(), row.code);
        EXPECT_EQ(Requests(), 1u);
        const auto status = practice.status;
        authorisation->UpdateTokens();
        EXPECT_EQ(StoredAccessToken(), row.access);
        EXPECT_EQ(practice.status, status) << "what has ended is not revived";
        store->hasRow = true;
        practice.failingUpdates = 0;
    }
}

TEST_F(Refresh, HoldsSignalsBackUntilThePairIsStored)
{
    static std::function<void()> arrived;
    int signals = 0;
    arrived = [&] {
        ++signals;
        EXPECT_EQ(StoredAccessToken(), "access-2");
        EXPECT_FALSE(practice.isLocked) << "the lock is given back first";
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
    EXPECT_FALSE(practice.isLocked);
    tokenEndpoint->onSend = {};
    logger.onLog = [] { throw std::runtime_error("no log"); };
    EXPECT_THROW(Run(), std::runtime_error);
    EXPECT_FALSE(practice.isLocked);
    EXPECT_EQ(StoredAccessToken(), "access-2") << "stored before anything else";
}

TEST_F(Refresh, SaysWhyTheStoreCannotKeepTokens)
{
    const std::tuple<bool, const char*, const char*, const char*> rows[] = {
        {true, "the disk is full", "TOKENS_NOT_SAVED", "no row for the lock"},
        {false, "the disk is full", "TOKENS_NOT_SAVED", "no room for new tokens"},
        {false, "", "REFRESH_BUSY", "another program writes"},
    };
    for (const auto& [isLocked, problem, code, why] : rows) {
        SCOPED_TRACE(why);
        Restart();
        practice.isLocked = isLocked;
        practice.problem = problem;
        store->hasRoom = isLocked;
        EXPECT_FALSE(Run());
        EXPECT_EQ(Code(), code);
        EXPECT_NE(authorisation->GetLastError().text.find(problem), std::string::npos);
        EXPECT_EQ(slept, 0u) << "waiting does not help";
        EXPECT_EQ(practice.isLocked, isLocked);
    }
    EXPECT_EQ(Requests(), 0u);
}

TEST_F(Refresh, AsksHmrcForNothingThatCouldNotBeKept)
{
    authorisation->SetBrowser([](const std::string& address) {
        ADD_FAILURE() << address;
        return false;
    });
    authorisation->SetRedirectPorts({});
    const std::tuple<const char*, std::function<void()>> begins[] = {
        {"REFRESH_BUSY", [&] { store->hasRoom = false; }},
        {"NO_REDIRECT_PORT", [&] { store->hasRoom = true; }},
        {"TOKENS_NOT_SAVED",
         [&] {
             practice.failingUpdates = 1, authorisation->SetRedirectPorts({53691, 53692});
         }},
        {"DATABASE_UNREADABLE", [&] { store->hasRow = (practice.problem = "torn").empty(); }},
    };
    for (const auto& [code, spoil] : begins) {
        spoil();
        EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
        EXPECT_EQ(Code(), code);
        EXPECT_EQ(practice.status, IAuthorisationStore::Authorised) << "the grant there is stays";
    }
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
