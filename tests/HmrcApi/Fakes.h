#pragma once

// What the plumbing's host and HMRC are in a test.

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Afx/time/Clock.h"
#include "HmrcApi/HmrcApi.h"
#include "MorvUt/hmrc/access/AuthorisationStore.h"
#include "MorvUt/hmrc/access/Logger.h"
#include "MorvUt/hmrc/access/Scope.h"
#include "Shellkit/PracticeKey.h"
#include "support/Practice.h"

namespace HmrcApi::Fakes
{

inline std::vector<unsigned char> Sealed(const std::string& token)
{
    return CAuthorisation::EncryptToken(token).value_or(std::vector<unsigned char>());
}

/// The practice's key, its interface and a grant as a consent left it, and no lock.
class Granted : protected ::Test::Practice
{
protected:
    Granted()
    {
        Shellkit::SetPracticeKey(std::vector<std::uint8_t>(Shellkit::kKeySize, 7));
        Sql("INSERT INTO BRIXOptions (lID, nPAYEInterface) VALUES (1, 1)");
        ResetRow();
    }
    ~Granted() { Shellkit::SetPracticeKey({}); }

    static void ResetRow()
    {
        Sql("DELETE FROM MTDAuthorisationLock");
        Sql("DELETE FROM MTDAuthorisation");
        Sql("INSERT INTO MTDAuthorisation (lID, strGatewayID, nAuthorisedStatus, vbAccessToken, vbRefreshToken, "
            "nExpiresIn, strScope, strTokenType, dtAuthenticated, strService) VALUES (7, 'GATEWAY1', 1, %b, %b, 14400, "
            "'read:individual-paye', 'bearer', %t, 'http://127.0.0.1:1')",
            Sealed("access-1"), Sealed("refresh-1"), COleDateTime::GetCurrentUtcTime());
    }
    /// The access token that is stored, or another column's.
    static std::string StoredToken(const Cellar::SqlText& column = "vbAccessToken")
    {
        const auto rows = Quarry::GetConnection().Queryf("SELECT " + column + " FROM MTDAuthorisation").rows;
        const std::string bytes(rows.empty() ? std::string_view() : rows[0][0].View());
        return CAuthorisation::DecryptToken({bytes.begin(), bytes.end()});
    }
};

/// The practice's own store, and what befalls it.
struct Store : CAuthorisationStore
{
    Store() : CAuthorisationStore("GATEWAY1") {}

    std::function<void()> onRehearse, onLockRefused; // what happens meanwhile
    bool isBusy = false;                             // another program has the database
    std::string problem;                             // why nothing can be written
    int failingUpdates = 0;

    bool LoadTokens() override { return !isBusy && CAuthorisationStore::LoadTokens(); }
    bool IsBusy() override { return isBusy || CAuthorisationStore::IsBusy(); }
    std::string GetProblem() override { return problem.empty() ? CAuthorisationStore::GetProblem() : problem; }
    bool LockStore() override
    {
        const bool isTaken = problem.empty() && CAuthorisationStore::LockStore();
        if (!isTaken && onLockRefused)
            onLockRefused();
        return isTaken;
    }
    bool Rehearse() override
    {
        if (onRehearse)
            onRehearse();
        return problem.empty() && CAuthorisationStore::Rehearse();
    }
    Update UpdateLoaded() override
    {
        return failingUpdates-- > 0 ? Update::Failed : CAuthorisationStore::UpdateLoaded();
    }
};

struct FakeClient : IClientData
{
    std::string id = "the-client", base = "http://127.0.0.1:1/";
    std::string GetId() override { return id; }
    std::function<void()> onSecret;
    std::string GetSecret() override
    {
        if (onSecret)
            onSecret();
        return "the-client-secret";
    }
    std::string GetAuthenticationEndpoint() override { return base; }
    std::string GetAPIEndpoint() override { return base; }
};

struct FakeLogger : Logger
{
    std::function<void()> onLog;
    bool isDebug = true;
    std::string text; // every line
    bool IsDebugLogging() override { return isDebug; }
    void Log(const std::string& a1, const std::string& a2, const std::string& a3, const std::string& a4,
             const std::string& a5) override
    {
        if (onLog)
            onLog();
        text += a1 + '|' + a2 + '|' + a3 + '|' + a4 + '|' + a5 + '\n';
    }
};

/// Answers from a list, the last one for ever, and keeps the requests.
struct FakeTransport : ITransport
{
    std::deque<HttpAnswer> answers;
    std::vector<HttpRequest> requests;
    std::function<void()> onSend;

    HttpAnswer Send(const HttpRequest& request) override
    {
        requests.push_back(request);
        if (onSend)
            onSend();
        const HttpAnswer answer = answers.front();
        if (answers.size() > 1)
            answers.pop_front();
        return answer;
    }
    /// Forgets what was, and answers these from now on; status 0: the answer is lost, -1: late.
    void Script(const std::vector<std::pair<int, std::string>>& script)
    {
        using enum HttpAnswer::Outcome;
        answers.clear();
        requests.clear();
        for (const auto& [status, body] : script)
            answers.push_back({status < 0    ? TimedOut
                               : status == 0 ? Incomplete
                                             : Answered,
                               std::max(status, 0),
                               "application/json",
                               {},
                               body,
                               {}});
    }
};

/// An endpoint of the interface, by the test's own transport.
template<class Endpoint>
struct Through : Endpoint
{
    Through(CAuthorisation& authorisation, std::shared_ptr<ITransport> transport)
        : Endpoint(authorisation), to(std::move(transport))
    {}
    std::shared_ptr<ITransport> RestFactory() override { return to; }
    std::shared_ptr<ITransport> to;
};

inline constexpr char kFreshTokens[] =
    R"({"access_token":"access-2","token_type":"bearer","expires_in":14400,"refresh_token":"refresh-2"})";

/// One authorised gateway id, HMRC's token endpoint, and a clock whose waits take no time.
class Plumbing : public testing::Test, protected Granted
{
protected:
    Plumbing()
    {
        tokenEndpoint->Script({{200, kFreshTokens}});
        authorisation = MakeAuthorisation();
        authorisation->SetChannel(std::make_shared<Channel>(tokenEndpoint));
        Afx::Clock::Set([this] { return begun + passed; });
        Afx::Clock::SetSleep([this](unsigned milliseconds) {
            slept += milliseconds;
            passed += milliseconds;
        });
    }
    ~Plumbing() override
    {
        Afx::Clock::SetSleep({});
        Afx::Clock::Set({});
    }

    /// What another workstation stores.
    static void StoreElsewhere(const char* access = "access-elsewhere", const char* refresh = "refresh-1")
    {
        Sql("UPDATE MTDAuthorisation SET vbAccessToken = %b, vbRefreshToken = %b", Sealed(access), Sealed(refresh));
    }
    static void SetService(const std::string& service) { Sql("UPDATE MTDAuthorisation SET strService = %s", service); }
    static std::string Stored(const Cellar::SqlText& column)
    {
        return Query("SELECT " + column + " FROM MTDAuthorisation");
    }
    static bool IsLocked() { return Query("SELECT COUNT(*) FROM MTDAuthorisationLock") != "0"; }
    static void Lock() // at another workstation
    {
        Sql("INSERT INTO MTDAuthorisationLock (lMTDAuthorisationID, strUserID, strWorkstation) VALUES (7, 'ANNE', "
            "'DESK-7')");
    }

    std::unique_ptr<CAuthorisation> MakeAuthorisation() const
    {
        return std::make_unique<CAuthorisation>(store, std::make_shared<CScope>(), client);
    }
    std::string AccessToken() const
    {
        COAuth2Tokens tokens;
        return authorisation->get_authtokens(tokens) ? tokens.accessToken : std::string();
    }
    const std::string& Code() const { return authorisation->GetLastError().code; }

    std::shared_ptr<Store> store = std::make_shared<Store>();
    std::shared_ptr<FakeClient> client = std::make_shared<FakeClient>();
    std::shared_ptr<FakeTransport> tokenEndpoint = std::make_shared<FakeTransport>();
    std::unique_ptr<CAuthorisation> authorisation;
    FakeLogger logger;
    unsigned slept = 0; // milliseconds
    const std::int64_t begun = Afx::Clock::UnixMilliseconds();
    std::int64_t passed = 0; // milliseconds, by the wall clock
};

/// Fails for each secret that the text holds.
inline void ExpectNone(const std::string& text, std::initializer_list<std::string> secrets)
{
    for (const std::string& secret : secrets)
        EXPECT_EQ(text.find(secret), std::string::npos) << text;
}

} // namespace HmrcApi::Fakes
