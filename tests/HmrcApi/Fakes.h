#pragma once

// What the plumbing's host and HMRC are in a test.

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Afx/time/Clock.h"
#include "HmrcApi/HmrcApi.h"
#include "Shellkit/PracticeKey.h"
#include "support/TestSupport.h"

namespace HmrcApi::Fakes
{

inline std::vector<unsigned char> Sealed(const std::string& token)
{
    return CAuthorisation::EncryptToken(token).value_or(std::vector<unsigned char>());
}

/// The practice database's row and its lock, as all workstations see it; each workstation has a FakeStore.
struct FakeRow
{
    std::vector<unsigned char> access = Sealed("access-1"), refresh = Sealed("refresh-1");
    std::int32_t expiresIn = 14400;
    std::string scope = "read:individual-paye", type = "bearer";
    COleDateTime authenticated = COleDateTime::GetCurrentUtcTime();
    IAuthorisationStore::AuthorisationStatus status = IAuthorisationStore::Authorised;
    std::string service = "http://127.0.0.1:1";
    bool isLocked = false;
    int failingUpdates = 0;
    std::string problem;                                           // of what fails
    bool isBusy = false;                                           // why it fails
    std::vector<IAuthorisationStore::AuthorisationStatus> written; // the status of each update
};

struct FakeStore : IAuthorisationStore, IGrantStore
{
    explicit FakeStore(FakeRow& shared) : row(shared) {}

    std::function<void(FakeRow&)> onLockRefused; // what other workstations do meanwhile
    bool isHolderKnown = true, hasRow = true, hasRoom = true;
    int locks = 0, unlocks = 0;

    bool LoadTokens() override
    {
        copy = loaded = row;
        return hasRow;
    }
    bool UpdateTokens() override
    {
        isConsent = false;
        if (row.failingUpdates > 0)
            return row.failingUpdates-- < 0;
        copy.isLocked = row.isLocked;
        copy.written = row.written;
        copy.written.push_back(copy.status);
        row = loaded = copy;
        return true;
    }
    bool LockStore() override
    {
        if (row.isLocked && onLockRefused)
            onLockRefused(row);
        else if (!row.isLocked) {
            ++locks;
            return row.isLocked = true;
        }
        return false;
    }
    bool UnlockStore() override
    {
        ++unlocks;
        row.isLocked = false;
        return true;
    }
    bool HasAuthenticatedGatewayID() const override { return row.status == Authorised; }
    std::vector<unsigned char> GetAccessToken() override { return copy.access; }
    void SetAccessToken(const std::vector<unsigned char>& token) override { copy.access = token; }
    std::vector<unsigned char> GetRefreshToken() override { return copy.refresh; }
    void SetRefreshToken(const std::vector<unsigned char>& token) override { copy.refresh = token; }
    std::int32_t GetExpiresIn() const override { return copy.expiresIn; }
    void SetExpiresIn(std::int32_t seconds) override { copy.expiresIn = seconds; }
    std::string GetScope() override { return copy.scope; }
    void SetScope(const std::string& scope) override { copy.scope = scope; }
    std::string GetTokenType() override { return copy.type; }
    void SetTokenType(const std::string& type) override { copy.type = type; }
    COleDateTime GetAuthenticatedTimestamp() override { return copy.authenticated; }
    void SetAuthenticatedTimestamp(const COleDateTime& timestamp) override { copy.authenticated = timestamp; }
    void SetAuthorisationStatus(AuthorisationStatus status) override { copy.status = status; }
    AuthorisationStatus GetAuthorisationStatus() override { return copy.status; }
    std::uint32_t GetRetryDelay() const override { return 500; }
    void SetRetryDelay(std::uint32_t) override {}
    std::string GetService() override { return copy.service; }
    void SetService(const std::string& service) override { copy.service = service; }
    Update UpdateLoaded() override
    {
        // `copy` has the new tokens already, `loaded` has what they go over
        if (!hasRow || row.access != loaded.access || row.status != loaded.status)
            return Update::Replaced;
        return UpdateTokens() ? Update::Done : Update::Failed;
    }
    bool UpdateConsent() override
    {
        const bool isDone = UpdateTokens();
        hasRow = isConsent = isDone;
        return isDone;
    }
    bool Rehearse() override
    {
        if (onRehearse)
            onRehearse();
        return hasRoom;
    }
    std::string GetProblem() override { return row.problem; }
    bool IsBusy() override { return row.isBusy; }
    bool GetLockHolder(std::string& workstation, std::string& user) override
    {
        workstation = "DESK-7";
        user = "ANNE";
        return isHolderKnown;
    }
    FakeRow& row;
    FakeRow copy, loaded;
    bool isConsent = false; // the last update was one
    std::function<void()> onRehearse;
};

struct FakeScope : IScope
{
    std::string GetScope() override { return "read:national-insurance read:individual-paye"; }
    void SetScope(const std::string&) override {}
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

struct FakeLogger : IChainLogger
{
    std::function<void()> onLog;
    bool isDebug = true;
    std::string text; // every line
    void SetChainId(const GUID& id) override { m_id = id; }
    const GUID& GetChainId() override { return m_id; }
    std::string GetChainIdString() override { return {}; }
    bool IsDebugLogging() override { return isDebug; }
    void Log(const std::string& a1, const std::string& a2, const std::string& a3, const std::string& a4,
             const std::string& a5) override
    {
        if (onLog)
            onLog();
        text += a1 + '|' + a2 + '|' + a3 + '|' + a4 + '|' + a5 + '\n';
    }
    GUID m_id{};
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
    void Add(int status, std::string body)
    {
        answers.push_back({status < 0    ? HttpAnswer::Outcome::TimedOut
                           : status == 0 ? HttpAnswer::Outcome::Incomplete
                                         : HttpAnswer::Outcome::Answered,
                           std::max(status, 0),
                           "application/json",
                           {},
                           std::move(body),
                           {}});
    }
    /// Forgets what was, and answers these from now on; status 0: the answer is lost, -1: late.
    void Script(const std::vector<std::pair<int, std::string>>& script)
    {
        answers.clear();
        requests.clear();
        for (const auto& [status, body] : script)
            Add(status, body);
    }
};

inline constexpr char kFreshTokens[] =
    R"({"access_token":"access-2","token_type":"bearer","expires_in":14400,"refresh_token":"refresh-2"})";

/// One authorised gateway id, HMRC's token endpoint, and a clock whose waits take no time.
class Plumbing : public testing::Test
{
protected:
    Plumbing()
    {
        tokenEndpoint->Add(200, kFreshTokens);
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
        Shellkit::SetPracticeKey({});
    }

    std::string AccessToken() const
    {
        COAuth2Tokens tokens;
        return authorisation->get_authtokens(tokens) ? tokens.accessToken : std::string();
    }
    const std::string& Code() const { return authorisation->GetLastError().code; }
    std::string StoredAccessToken() const { return CAuthorisation::DecryptToken(practice.access); }

    const bool hasKey = Shellkit::SetPracticeKey(std::vector<std::uint8_t>(Shellkit::kKeySize, 7)); // before the row
    FakeRow practice; // in the practice's database
    std::shared_ptr<FakeStore> store = std::make_shared<FakeStore>(practice);
    std::shared_ptr<FakeClient> client = std::make_shared<FakeClient>();
    std::shared_ptr<FakeTransport> tokenEndpoint = std::make_shared<FakeTransport>();
    std::unique_ptr<CAuthorisation> authorisation =
        std::make_unique<CAuthorisation>(store, std::make_shared<FakeScope>(), client);
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
