#pragma once

// What the plumbing's host and HMRC are in a test.

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Afx/Clock.h"
#include "HmrcApi/HmrcApi.h"
#include "Shellkit/Cipher.h"
#include "support/TestSupport.h"

namespace Fakes
{

inline std::vector<unsigned char> Sealed(const std::string& token)
{
    return HmrcApi::CAuthorisation::EncryptToken(token).value_or(std::vector<unsigned char>());
}

/// The practice database's row and its lock, as all workstations see it; each workstation has a FakeStore.
struct FakeRow
{
    std::vector<unsigned char> access, refresh;
    std::int32_t expiresIn = 14400;
    std::string scope = "read:individual-paye", type = "bearer";
    COleDateTime authenticated = COleDateTime::GetCurrentUtcTime();
    HmrcApi::IAuthorisationStore::AuthorisationStatus status = HmrcApi::IAuthorisationStore::Authorised;
    bool isLocked = false;
    int failingUpdates = 0;
    std::vector<HmrcApi::IAuthorisationStore::AuthorisationStatus> written; // the status of each update
};

class FakeStore : public HmrcApi::IAuthorisationStore, public HmrcApi::ILockHolder
{
public:
    explicit FakeStore(FakeRow& row) : m_row(row) {}

    std::function<void(FakeRow&)> onLockRefused; // what other workstations do meanwhile
    bool isHolderKnown = true;
    int locks = 0, unlocks = 0;

    bool LoadTokens() override
    {
        m_copy = m_row;
        return true;
    }
    bool UpdateTokens() override
    {
        if (m_row.failingUpdates > 0)
            return m_row.failingUpdates-- < 0;
        const bool isLocked = m_row.isLocked;
        auto written = m_row.written;
        written.push_back(m_copy.status);
        m_row = m_copy;
        m_row.isLocked = isLocked;
        m_row.written = written;
        return true;
    }
    bool LockStore() override
    {
        if (m_row.isLocked && onLockRefused)
            onLockRefused(m_row);
        else if (!m_row.isLocked) {
            ++locks;
            return m_row.isLocked = true;
        }
        return false;
    }
    bool UnlockStore() override
    {
        ++unlocks;
        m_row.isLocked = false;
        return true;
    }
    bool HasAuthenticatedGatewayID() const override { return m_row.status == Authorised; }
    std::vector<unsigned char> GetAccessToken() override { return m_copy.access; }
    void SetAccessToken(const std::vector<unsigned char>& token) override { m_copy.access = token; }
    std::vector<unsigned char> GetRefreshToken() override { return m_copy.refresh; }
    void SetRefreshToken(const std::vector<unsigned char>& token) override { m_copy.refresh = token; }
    std::int32_t GetExpiresIn() const override { return m_copy.expiresIn; }
    void SetExpiresIn(std::int32_t seconds) override { m_copy.expiresIn = seconds; }
    std::string GetScope() override { return m_copy.scope; }
    void SetScope(const std::string& scope) override { m_copy.scope = scope; }
    std::string GetTokenType() override { return m_copy.type; }
    void SetTokenType(const std::string& type) override { m_copy.type = type; }
    COleDateTime GetAuthenticatedTimestamp() override { return m_copy.authenticated; }
    void SetAuthenticatedTimestamp(const COleDateTime& timestamp) override { m_copy.authenticated = timestamp; }
    void SetAuthorisationStatus(AuthorisationStatus status) override { m_copy.status = status; }
    AuthorisationStatus GetAuthorisationStatus() override { return m_copy.status; }
    std::uint32_t GetRetryDelay() const override { return 500; }
    void SetRetryDelay(std::uint32_t) override {}
    bool GetLockHolder(std::string& workstation, std::string& user) override
    {
        workstation = "DESK-7";
        user = "ANNE";
        return isHolderKnown;
    }

private:
    FakeRow& m_row;
    FakeRow m_copy;
};

class FakeScope : public HmrcApi::IScope
{
public:
    std::string GetScope() override { return "read:national-insurance read:individual-paye"; }
    void SetScope(const std::string&) override {}
};

class FakeClient : public HmrcApi::IClientData
{
public:
    std::string id = "the-client", base = "http://127.0.0.1:1/";
    std::string GetId() override { return id; }
    std::string GetSecret() override { return "the-client-secret"; }
    std::string GetAuthenticationEndpoint() override { return base; }
    std::string GetAPIEndpoint() override { return base; }
};

class FakeLogger : public HmrcApi::IChainLogger
{
public:
    bool isDebug = true;
    std::string text; // every line
    void SetChainId(const GUID& id) override { m_id = id; }
    const GUID& GetChainId() override { return m_id; }
    std::string GetChainIdString() override { return {}; }
    bool IsDebugLogging() override { return isDebug; }
    void Log(const std::string& a1, const std::string& a2, const std::string& a3, const std::string& a4,
             const std::string& a5) override
    {
        text += a1 + '|' + a2 + '|' + a3 + '|' + a4 + '|' + a5 + '\n';
    }

private:
    GUID m_id{};
};

/// Answers from a list, the last one for ever, and keeps the requests.
class FakeTransport : public HmrcApi::ITransport
{
public:
    std::deque<HmrcApi::HttpAnswer> answers;
    std::vector<HmrcApi::HttpRequest> requests;
    std::function<void()> onSend;

    HmrcApi::HttpAnswer Send(const HmrcApi::HttpRequest& request) override
    {
        requests.push_back(request);
        if (onSend)
            onSend();
        HmrcApi::HttpAnswer answer = answers.empty() ? HmrcApi::HttpAnswer() : answers.front();
        if (answers.size() > 1)
            answers.pop_front();
        return answer;
    }
    void Add(int status, std::string body)
    {
        HmrcApi::HttpAnswer answer;
        answer.outcome = HmrcApi::HttpAnswer::Outcome::Answered;
        answer.status = status;
        answer.contentType = "application/json";
        answer.body = std::move(body);
        answers.push_back(answer);
    }
    void Add(HmrcApi::HttpAnswer::Outcome outcome)
    {
        HmrcApi::HttpAnswer answer;
        answer.outcome = outcome;
        answers.push_back(answer);
    }
};

/// Passes requests on to a transport that the test keeps.
class BorrowedTransport : public HmrcApi::ITransport
{
public:
    explicit BorrowedTransport(ITransport& transport) : m_transport(transport) {}
    HmrcApi::HttpAnswer Send(const HmrcApi::HttpRequest& request) override { return m_transport.Send(request); }

private:
    ITransport& m_transport;
};

inline constexpr char kFreshTokens[] =
    R"({"access_token":"access-2","token_type":"bearer","expires_in":14400,"refresh_token":"refresh-2"})";

/// One authorised gateway id, HMRC's token endpoint, and a clock whose waits take no time.
class Plumbing : public testing::Test
{
protected:
    Plumbing()
    {
        Shellkit::SetPracticeKey(std::vector<std::uint8_t>(Shellkit::kKeySize, 7));
        practice.access = Sealed("access-1");
        practice.refresh = Sealed("refresh-1");
        store = std::make_shared<FakeStore>(practice);
        client = std::make_shared<FakeClient>();
        tokenEndpoint = std::make_shared<FakeTransport>();
        tokenEndpoint->Add(200, kFreshTokens);
        authorisation = std::make_unique<HmrcApi::CAuthorisation>(store, std::make_shared<FakeScope>(), client);
        authorisation->SetTransport(tokenEndpoint);
        Afx::Clock::SetSleep([this](unsigned milliseconds) { slept += milliseconds; });
    }
    ~Plumbing() override
    {
        Afx::Clock::SetSleep({});
        Shellkit::SetPracticeKey({});
    }

    std::string AccessToken() const
    {
        HmrcApi::COAuth2Tokens tokens;
        return authorisation->get_authtokens(tokens) ? tokens.accessToken : std::string();
    }
    std::string StoredAccessToken() const { return HmrcApi::CAuthorisation::DecryptToken(practice.access); }

    FakeRow practice; // the row in the practice's database
    std::shared_ptr<FakeStore> store;
    std::shared_ptr<FakeClient> client;
    std::shared_ptr<FakeTransport> tokenEndpoint;
    std::unique_ptr<HmrcApi::CAuthorisation> authorisation;
    FakeLogger logger;
    unsigned slept = 0; // milliseconds
};

} // namespace Fakes
