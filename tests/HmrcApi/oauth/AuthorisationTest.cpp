#include "HmrcApi/oauth/Authorisation.h"

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

TEST_F(Load, RefusesWhatIsNotAuthorisedOrUnreadableAndDoesNotOverwriteIt)
{
    practice.status = IAuthorisationStore::NotAuthorised;
    EXPECT_FALSE(authorisation->LoadTokens());
    EXPECT_EQ(Code(), "NOT_AUTHORISED");
    practice.status = IAuthorisationStore::Authorised;
    EXPECT_FALSE(authorisation->UpdateTokens()) << "would overwrite a grant with nothing";
    EXPECT_EQ(StoredAccessToken(), "access-1");
    practice.access[20] ^= 1;
    EXPECT_FALSE(authorisation->LoadTokens());
    EXPECT_EQ(Code(), "TOKENS_UNREADABLE");
    EXPECT_EQ(AccessToken(), "");
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
    // Status 0: the answer is lost; an empty code: success.
    using Answers = std::vector<std::pair<int, std::string>>;
    const std::tuple<Answers, std::string, std::size_t, const char*> rows[] = {
        {{{0, ""}, {200, Fakes::kFreshTokens}}, "", 2, "lost before HMRC had it: the same token is still good"},
        {{{0, ""}, {400, kGrant}}, "INVALID_GRANT", 2, "lost after HMRC had granted it"},
        {{{0, ""}, {0, ""}}, "ANSWER_INCOMPLETE", 2, "lost twice: not a third time"},
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

TEST_F(Refresh, AsksHmrcForNothingThatCouldNotBeKept)
{
    authorisation->SetBrowser([](const std::string& address) {
        ADD_FAILURE() << address;
        return false;
    });
    practice.failingUpdates = 1;
    EXPECT_FALSE(authorisation->DoAuthorisation(nullptr));
    EXPECT_EQ(Code(), "TOKENS_NOT_SAVED");
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
