#include "HmrcApi/Authorisation.h"

#include "HmrcApi/Fakes.h"
#include "support/Case.h"

using namespace HmrcApi;
using Outcome = HttpAnswer::Outcome;

class Refresh : public Fakes::Plumbing
{
protected:
    void Answer(std::initializer_list<std::pair<int, const char*>> answers)
    {
        tokenEndpoint->answers.clear();
        for (const auto& [status, body] : answers)
            status == 0 ? tokenEndpoint->Add(Outcome::Incomplete) : tokenEndpoint->Add(status, body);
    }
    const std::string& Code() const { return authorisation->GetLastError().code; }
    std::size_t Requests() const { return tokenEndpoint->requests.size(); }
};

TEST_F(Refresh, HappensBeforeTheLastMinuteOfTheAccessToken)
{
    // in: seconds
    const ::Test::Case<double, bool> rows[] = {
        {14300, false, "100 seconds left"},
        {14345, true, "55 seconds left"},
        {20000, true, "over"},
        {-3600, false, "a clock that was set back"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        practice.access = Fakes::Sealed("access-1");
        practice.refresh = Fakes::Sealed("refresh-1");
        practice.authenticated = COleDateTime(COleDateTime::GetCurrentUtcTime().GetOleDate() - row.in / 86400);
        EXPECT_TRUE(authorisation->LoadTokens());
        EXPECT_EQ(AccessToken(), row.out ? "access-2" : "access-1");
        EXPECT_EQ(practice.isLocked, false);
    }
}

TEST_F(Refresh, StoresTheNewPairAndKeepsTheScope)
{
    ASSERT_TRUE(authorisation->LoadTokens());
    ASSERT_TRUE(authorisation->RefreshTokens(&logger));
    EXPECT_EQ(CAuthorisation::DecryptToken(practice.access), "access-2");
    EXPECT_EQ(CAuthorisation::DecryptToken(practice.refresh), "refresh-2");
    EXPECT_EQ(practice.scope, "read:individual-paye") << "the answer has none";
    EXPECT_EQ(tokenEndpoint->requests.at(0).body,
              "grant_type=refresh_token&refresh_token=refresh-1&client_id=the-client&client_secret=the-client-secret");
    EXPECT_EQ(tokenEndpoint->requests.at(0).address, "http://127.0.0.1:1/oauth/token");
    EXPECT_FALSE(tokenEndpoint->requests.at(0).cancelled) << "cancelling it would lose the token";
    EXPECT_EQ(store->locks, 1);
    EXPECT_EQ(store->unlocks, 1);
    for (const char* secret : {"access-1", "access-2", "refresh-1", "refresh-2", "the-client-secret"})
        EXPECT_EQ(logger.text.find(secret), std::string::npos) << logger.text;
}

TEST_F(Refresh, TakesTheTokensOfAQuickerWorkstation)
{
    ASSERT_TRUE(authorisation->LoadTokens());
    practice.access = Fakes::Sealed("access-elsewhere");
    EXPECT_TRUE(authorisation->RefreshTokens(nullptr));
    EXPECT_EQ(AccessToken(), "access-elsewhere");
    EXPECT_EQ(Requests(), 0u);
    EXPECT_FALSE(practice.isLocked);
}

TEST_F(Refresh, WaitsForTheLockAndTakesWhatItsHolderStored)
{
    ASSERT_TRUE(authorisation->LoadTokens());
    practice.isLocked = true;
    int refusals = 0;
    store->onLockRefused = [&](Fakes::FakeRow& shared) {
        if (++refusals == 3)
            shared.access = Fakes::Sealed("access-elsewhere");
    };
    EXPECT_TRUE(authorisation->RefreshTokens(nullptr));
    EXPECT_EQ(AccessToken(), "access-elsewhere");
    EXPECT_EQ(Requests(), 0u);
    EXPECT_EQ(slept, 1000u) << "twice the retry delay";
    EXPECT_EQ(store->unlocks, 0) << "another's lock stays";
}

TEST_F(Refresh, GivesUpAfterTenAttemptsAndNamesTheHolder)
{
    ASSERT_TRUE(authorisation->LoadTokens());
    practice.isLocked = true;
    EXPECT_FALSE(authorisation->RefreshTokens(nullptr));
    EXPECT_EQ(Code(), "REFRESH_BUSY");
    EXPECT_EQ(authorisation->GetLastError().text, "The authorisation is being refreshed at workstation DESK-7 by ANNE");
    EXPECT_EQ(slept, 4500u);
    EXPECT_TRUE(practice.isLocked);
    store->isHolderKnown = false;
    EXPECT_FALSE(authorisation->RefreshTokens(nullptr));
    EXPECT_EQ(authorisation->GetLastError().text, "The authorisation is being refreshed at another workstation, or "
                                                  "another program is writing to the practice");
}

TEST_F(Refresh, DecidesWhatTheTokenEndpointAnswers)
{
    constexpr char kBusy[] =
        R"({"error":"invalid_request","error_description":"Refresh operation is already in progress"})";
    constexpr char kGrant[] = R"({"error":"invalid_grant"})";
    const struct
    {
        std::vector<std::pair<int, const char*>> answers; // status 0: the answer is lost
        const char* code;                                 // empty: success
        std::size_t requests;
        const char* why;
    } rows[] = {
        {{{0, ""}, {200, Fakes::kFreshTokens}}, "", 2, "lost before HMRC had it: the same token is still good"},
        {{{0, ""}, {400, kGrant}}, "INVALID_GRANT", 2, "lost after HMRC had granted it"},
        {{{0, ""}, {0, ""}}, "ANSWER_INCOMPLETE", 2, "lost twice: not a third time"},
        {{{504, ""}, {200, Fakes::kFreshTokens}}, "", 2, "a gateway gave up waiting"},
        {{{400, kBusy}, {400, kBusy}, {200, Fakes::kFreshTokens}}, "", 3, "busy for a while"},
        {{{400, kBusy}}, "REFRESH_BUSY", 10, "busy for ever"},
        {{{400, kGrant}}, "INVALID_GRANT", 1, "used or revoked"},
        {{{500, R"({"error":"server_error"})"}}, "SERVER_ERROR", 1, "not repeated: single use"},
        {{{200, R"({"access_token":"a"})"}}, "ANSWER_MALFORMED", 1, "no refresh token"},
        {{{200, R"({"access_token":"a\r\nX: y","refresh_token":"r"})"}},
         "ANSWER_MALFORMED",
         1,
         "a line end in a token"},
        {{{200, R"({"access_token":"a","refresh_token":"r\u0000"})"}}, "ANSWER_MALFORMED", 1, "a zero in a token"},
    };
    for (const auto& test : rows) {
        SCOPED_TRACE(test.why);
        practice.access = Fakes::Sealed("access-1");
        practice.refresh = Fakes::Sealed("refresh-1");
        practice.status = IAuthorisationStore::Authorised;
        tokenEndpoint->requests.clear();
        tokenEndpoint->answers.clear();
        for (const auto& [status, body] : test.answers)
            status == 0 ? tokenEndpoint->Add(Outcome::Incomplete) : tokenEndpoint->Add(status, body);
        ASSERT_TRUE(authorisation->LoadTokens());
        EXPECT_EQ(authorisation->RefreshTokens(nullptr), *test.code == 0);
        EXPECT_EQ(Code(), test.code);
        EXPECT_EQ(Requests(), test.requests);
        for (const HttpRequest& request : tokenEndpoint->requests)
            EXPECT_NE(request.body.find("refresh_token=refresh-1&"), std::string::npos);
        EXPECT_EQ(practice.status == IAuthorisationStore::NotAuthorised, Code() == "INVALID_GRANT");
        EXPECT_FALSE(practice.isLocked) << "the lock is given back on every way out";
    }
}

TEST_F(Refresh, TakesWhatAnotherStoredWhileHmrcWasBusy)
{
    ASSERT_TRUE(authorisation->LoadTokens());
    Answer({{400, R"({"error":"invalid_request","error_description":"refresh operation is already in progress"})"}});
    tokenEndpoint->onSend = [this] { practice.access = Fakes::Sealed("access-elsewhere"); };
    EXPECT_TRUE(authorisation->RefreshTokens(nullptr));
    EXPECT_EQ(AccessToken(), "access-elsewhere");
    EXPECT_EQ(Requests(), 1u);
}

TEST_F(Refresh, TriesToSaveThreeTimesAndKeepsTheTokensInHand)
{
    const ::Test::Case<int, bool> rows[] = {{2, true}, {3, false}};
    for (const auto& test : rows) {
        SCOPED_TRACE(test.in);
        practice.access = Fakes::Sealed("access-1");
        ASSERT_TRUE(authorisation->LoadTokens());
        practice.failingUpdates = test.in;
        EXPECT_EQ(authorisation->RefreshTokens(nullptr), test.out);
        EXPECT_EQ(Code(), test.out ? "" : "TOKENS_NOT_SAVED");
        EXPECT_EQ(AccessToken(), "access-2");
    }
    EXPECT_TRUE(authorisation->UpdateTokens()) << "tried again later";
    EXPECT_EQ(StoredAccessToken(), "access-2");
}

TEST_F(Refresh, DoesNotOverwriteAGrantWithNothing)
{
    EXPECT_FALSE(authorisation->UpdateTokens());
    EXPECT_EQ(StoredAccessToken(), "access-1");
}

TEST_F(Refresh, AsksHmrcForNothingThatCouldNotBeKept)
{
    ASSERT_TRUE(authorisation->LoadTokens());
    Shellkit::SetPracticeKey({});
    EXPECT_FALSE(authorisation->RefreshTokens(nullptr));
    EXPECT_EQ(Code(), "NO_PRACTICE_KEY");
    client->id.clear();
    EXPECT_FALSE(authorisation->RefreshTokens(nullptr));
    EXPECT_EQ(Code(), "NO_CREDENTIALS_FILE");
    EXPECT_NE(authorisation->GetLastError().text.find("-DMORVUT_HMRC_CREDENTIALS=FILE"), std::string::npos);
    EXPECT_EQ(Requests(), 0u);
}

TEST_F(Refresh, DoesNotLoadWhatIsNotAuthorisedOrUnreadable)
{
    practice.status = IAuthorisationStore::NotAuthorised;
    EXPECT_FALSE(authorisation->LoadTokens());
    EXPECT_EQ(Code(), "NOT_AUTHORISED");
    practice.status = IAuthorisationStore::Authorised;
    practice.access[20] ^= 1;
    EXPECT_FALSE(authorisation->LoadTokens());
    EXPECT_EQ(Code(), "TOKENS_UNREADABLE");
    EXPECT_EQ(AccessToken(), "");
}
