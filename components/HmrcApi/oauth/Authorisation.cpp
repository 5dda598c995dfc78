#include "HmrcApi/oauth/Authorisation.h"

#include "Afx/Clock.h"
#include "Afx/TextFold.h"
#include "Afx/WindowSystem.h"
#include "HmrcApi/answers/Mask.h"
#include "HmrcApi/oauth/TokenRequest.h"
#include "HmrcApi/redirect/RedirectListener.h"
#include "HmrcApi/transport/Uri.h"
#include "HmrcApi/transport/Waiting.h"
#include "Shellkit/Cipher.h"

namespace HmrcApi
{
namespace
{

constexpr int kAttempts = 10; // at the store's lock, and at a refresh that HMRC is still busy with
constexpr int kSaveAttempts = 3;
constexpr double kRefreshBefore = 60;         // seconds before the access token's end
constexpr std::size_t kSecretBytes = 32;      // of the state and of the verifier, before Base64
constexpr unsigned kBrowserTimeout = 300'000; // milliseconds
constexpr double kSecondsADay = 86'400;

void Wipe(std::string& secret) noexcept
{
    Shellkit::Wipe(secret.data(), secret.size());
    secret.clear();
}

std::string RandomText() { return Shellkit::Base64Url(Shellkit::RandomBytes(kSecretBytes)); }

bool OpenInBrowser(const std::string& address)
{
    Afx::WindowSystem* system = Afx::WindowSystem::Current();
    return system && system->OpenBrowser(address);
}

/// Gives the store's lock back on every way out.
class StoreLock
{
public:
    explicit StoreLock(IAuthorisationStore& store) : m_store(store) {}
    ~StoreLock()
    {
        if (m_isHeld)
            m_store.UnlockStore();
    }
    StoreLock(const StoreLock&) = delete;
    StoreLock& operator=(const StoreLock&) = delete;

    bool Take()
    {
        m_isHeld = m_store.LockStore();
        return m_isHeld;
    }

private:
    IAuthorisationStore& m_store;
    bool m_isHeld = false;
};

bool IsInProgress(const TokenAnswer& answer)
{
    return answer.error.code == "INVALID_REQUEST" &&
           Afx::FoldLower(answer.error.message).find("in progress") != std::string::npos;
}

std::string BusyText(IAuthorisationStore& store)
{
    std::string workstation, user;
    auto* holder = dynamic_cast<ILockHolder*>(&store);
    if (!holder || !holder->GetLockHolder(workstation, user))
        return "The authorisation is being refreshed at another workstation, or another program is writing to the "
               "practice";
    return "The authorisation is being refreshed at workstation " + workstation + " by " + user;
}

} // namespace

COAuth2Tokens::~COAuth2Tokens()
{
    Wipe(accessToken);
    Wipe(refreshToken);
}

struct CAuthorisation::State
{
    std::shared_ptr<IAuthorisationStore> store;
    std::shared_ptr<IScope> scope;
    std::shared_ptr<IClientData> clientData;

    COAuth2Tokens tokens;
    Error error;
    IChainLogger* logger = nullptr; // of the operation under way

    std::vector<unsigned short> ports{53681, 53682, 53683};
    unsigned browserTimeout = kBrowserTimeout;
    std::function<bool(const std::string&)> browser = &OpenInBrowser;
    std::function<bool()> cancelled = &WaitWindow::IsCancelled;
    std::shared_ptr<Channel> channel = std::make_shared<Channel>();

    // From the request for a code to the request for tokens.
    std::string redirectAddress;
    std::string verifier;

    bool Fail(std::string code, std::string text, std::string status = {})
    {
        error = {std::move(code), std::move(text), std::move(status)};
        Log("Failed", {}, error.code, error.text);
        return false;
    }

    bool Fail(const TokenAnswer& answer)
    {
        const AnswerRule& rule = RuleFor(answer.answer, answer.error.code);
        if (rule.verdict == Verdict::Success) // 200, but without tokens
            return Fail(answer.error.code, answer.error.message, "200");
        const HmrcApiErrorException problem = ErrorOf(answer.answer, rule, answer.error);
        return Fail(problem.GetCode(), problem.GetText(), problem.GetStatus());
    }

    void Log(const char* event, const std::string& request, const std::string& response, const std::string& detail)
    {
        if (logger)
            logger->Log(event, "Authorisation", Mask(request),
                        Mask(response, {tokens.accessToken, tokens.refreshToken}),
                        Mask(detail, {tokens.accessToken, tokens.refreshToken}));
    }

    ITransport& Transport() const { return *channel->GetTransport(); }

    bool HasCredentials()
    {
        return !clientData->GetId().empty() ||
               Fail("NO_CREDENTIALS_FILE", "This program was built without HMRC credentials: build it with cmake "
                                           "-DMORVUT_HMRC_CREDENTIALS=FILE");
    }

    /// Asked before HMRC gives a pair of tokens that could not be kept.
    bool HasKey()
    {
        return EncryptToken("key").has_value() ||
               Fail("NO_PRACTICE_KEY", "The practice's key is missing, so HMRC's tokens cannot be stored");
    }

    /// Reads the row again and takes its tokens; false when it has none that can be read.
    bool TakeStored()
    {
        if (!store->LoadTokens())
            return Fail("NO_CREDENTIALS", "Unable to load user's HMRC credentials");
        if (store->GetAuthorisationStatus() != IAuthorisationStore::Authorised)
            return Fail("NOT_AUTHORISED", "HMRC has not been authorised for this Government Gateway ID");
        COAuth2Tokens stored;
        stored.accessToken = DecryptToken(store->GetAccessToken());
        stored.refreshToken = DecryptToken(store->GetRefreshToken());
        stored.tokenType = store->GetTokenType();
        stored.scope = store->GetScope();
        stored.expiresIn = store->GetExpiresIn();
        if (stored.accessToken.empty())
            return Fail("TOKENS_UNREADABLE", "The stored HMRC tokens cannot be read with this practice's key");
        tokens = stored;
        return true;
    }

    /// Seconds until the access token ends; nothing to go by counts as ended.
    double SecondsLeft() const
    {
        const COleDateTime since = store->GetAuthenticatedTimestamp();
        if (since.GetStatus() != COleDateTime::valid)
            return 0;
        const double age = COleDateTime::GetCurrentUtcTime().GetOleDate() - since.GetOleDate();
        return tokens.expiresIn - age * kSecondsADay;
    }

    bool Save()
    {
        const auto access = EncryptToken(tokens.accessToken);
        const auto refresh = EncryptToken(tokens.refreshToken);
        if (!access || !refresh)
            return Fail("NO_PRACTICE_KEY", "The practice's key is missing, so HMRC's tokens cannot be stored");
        store->SetAccessToken(*access);
        store->SetRefreshToken(*refresh);
        store->SetExpiresIn(tokens.expiresIn);
        store->SetScope(tokens.scope);
        store->SetTokenType(tokens.tokenType);
        store->SetAuthenticatedTimestamp(COleDateTime::GetCurrentUtcTime());
        store->SetAuthorisationStatus(IAuthorisationStore::Authorised);
        for (int attempt = 0; attempt < kSaveAttempts; ++attempt) {
            if (attempt > 0)
                Afx::Clock::Sleep(store->GetRetryDelay());
            if (store->UpdateTokens())
                return true;
        }
        return Fail("TOKENS_NOT_SAVED", "HMRC's new tokens could not be stored in the practice's database");
    }

    /// Waits for the lock; true with it, or when another workstation has put a new access token there meanwhile.
    bool WaitForLock(StoreLock& lock, const std::string& rejected)
    {
        for (int attempt = 1;; ++attempt) {
            if (lock.Take())
                return TakeStored();
            if (!TakeStored())
                return false;
            if (tokens.accessToken != rejected)
                return true;
            if (attempt >= kAttempts)
                return Fail("REFRESH_BUSY", BusyText(*store));
            if (!WaitUnless(cancelled, store->GetRetryDelay()))
                return Fail("CANCELLED", "The request was cancelled");
        }
    }

    TokenAnswer AskRefresh()
    {
        const FormFields fields{{"grant_type", "refresh_token"}, {"refresh_token", tokens.refreshToken}};
        TokenAnswer answer = RequestTokens(Transport(), *clientData, fields, {});
        Log("Refresh", "POST /oauth/token", DescribeAnswer(answer.answer, answer.error), {});
        return answer;
    }

    /// Asks HMRC, with the lock held and the stored tokens in hand.
    bool Refresh(const std::string& rejected)
    {
        bool mayRepeat = true;
        for (int busy = 0;;) {
            TokenAnswer answer = AskRefresh();
            if (answer.tokens)
                return Keep(*answer.tokens);
            if (answer.IsLost() && mayRepeat) {
                mayRepeat = false; // once, with the same token: if HMRC had granted the first, it now says so
                continue;
            }
            if (answer.error.code == "INVALID_GRANT")
                return EndGrant(answer);
            if (!IsInProgress(answer))
                return Fail(answer);
            if (++busy >= kAttempts)
                return Fail("REFRESH_BUSY", "HMRC is still busy with another refresh of this authorisation");
            Afx::Clock::Sleep(store->GetRetryDelay());
            if (!TakeStored())
                return false;
            if (tokens.accessToken != rejected)
                return true;
        }
    }

    bool Keep(COAuth2Tokens& fresh)
    {
        if (fresh.scope.empty())
            fresh.scope = tokens.scope; // a refresh's answer leaves it out
        tokens = fresh;
        return Save();
    }

    /// The refresh token is used, revoked or too old: nothing but a new dialogue helps.
    bool EndGrant(const TokenAnswer& answer)
    {
        store->SetAuthorisationStatus(IAuthorisationStore::NotAuthorised);
        store->UpdateTokens();
        tokens = {};
        return Fail("INVALID_GRANT", "HMRC's authorisation has ended and must be given again",
                    std::to_string(answer.answer.status));
    }

    std::string PageAddress(const std::string& state) const
    {
        const std::string id = clientData->GetId();
        const std::string wanted = scope->GetScope();
        const std::string challenge = Shellkit::Base64Url(Shellkit::Sha256(verifier));
        return AuthoriseAddress(clientData->GetAuthenticationEndpoint()) + '?' +
               EncodeForm({{"response_type", "code"},
                           {"client_id", id},
                           {"scope", wanted},
                           {"redirect_uri", redirectAddress},
                           {"state", state},
                           {"code_challenge", challenge},
                           {"code_challenge_method", "S256"}});
    }

    std::string CodeOf(const RedirectAnswer& answer)
    {
        using Kind = RedirectAnswer::Kind;
        switch (answer.kind) {
        case Kind::Code:
            Log("Authorise", "GET /oauth/authorize", "code received", {});
            return answer.code;
        case Kind::Denied:
            Fail("ACCESS_DENIED", answer.description.empty() ? "Authority was not given"
                                                             : "Authority was not given: " + Mask(answer.description));
            break;
        case Kind::TimedOut:
            Fail("AUTHORISATION_TIMED_OUT", "Nobody completed the sign-in on HMRC's page in time");
            break;
        case Kind::Cancelled:
            Fail("CANCELLED", "The authorisation was cancelled");
            break;
        }
        return {};
    }
};

/// An operation begins without an error; its logger may not outlive it.
class CAuthorisation::Operation
{
public:
    Operation(State& state, IChainLogger* logger) noexcept : m_state(state)
    {
        m_state.logger = logger;
        m_state.error = {};
    }
    ~Operation() { m_state.logger = nullptr; }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

private:
    State& m_state;
};

CAuthorisation::CAuthorisation(std::shared_ptr<IAuthorisationStore> store, std::shared_ptr<IScope> scope,
                               std::shared_ptr<IClientData> clientData)
    : m_state(std::make_unique<State>())
{
    m_state->store = std::move(store);
    m_state->scope = std::move(scope);
    m_state->clientData = std::move(clientData);
}

CAuthorisation::~CAuthorisation() { Wipe(m_state->verifier); }

bool CAuthorisation::DoAuthorisation(IChainLogger* logger)
{
    State& state = *m_state;
    const Operation operation(state, logger);
    if (!state.HasCredentials() || !state.HasKey())
        return false;
    state.store->LoadTokens(); // a row that is not there yet is made by the update
    state.store->SetAuthorisationStatus(IAuthorisationStore::NotAuthorised);
    if (!state.store->UpdateTokens())
        return state.Fail("TOKENS_NOT_SAVED", "The practice's database cannot keep HMRC's tokens");
    const std::string code = RequestAuthCode();
    return !code.empty() && RequestAccessToken(code) && state.Save();
}

bool CAuthorisation::LoadTokens(IChainLogger* logger)
{
    State& state = *m_state;
    const Operation operation(state, logger);
    if (!state.TakeStored())
        return false;
    return state.SecondsLeft() > kRefreshBefore || RefreshTokens(logger);
}

bool CAuthorisation::RefreshTokens(IChainLogger* logger)
{
    State& state = *m_state;
    const Operation operation(state, logger);
    if (!state.HasCredentials() || !state.HasKey())
        return false;
    const std::string rejected = state.tokens.accessToken;
    StoreLock lock(*state.store);
    if (!state.WaitForLock(lock, rejected))
        return false;
    if (state.tokens.accessToken != rejected)
        return true; // another workstation was quicker
    if (state.tokens.refreshToken.empty())
        return state.Fail("NOT_AUTHORISED", "HMRC's authorisation cannot be refreshed and must be given again");
    return state.Refresh(rejected);
}

bool CAuthorisation::UpdateTokens()
{
    if (m_state->tokens.accessToken.empty()) // would overwrite a grant with nothing
        return m_state->Fail("NOT_AUTHORISED", "There are no HMRC tokens to store");
    return m_state->Save();
}

std::string CAuthorisation::RequestAuthCode()
{
    State& state = *m_state;
    if (!state.HasCredentials())
        return {};
    const std::string secret = RandomText();
    const std::unique_ptr<IRedirectListener> listener = OpenRedirectListener(state.ports, secret);
    if (!listener) {
        state.Fail("NO_REDIRECT_PORT", "No port is free on which HMRC's answer could arrive");
        return {};
    }
    state.redirectAddress = "http://localhost:" + std::to_string(listener->Port()) + "/callback";
    state.verifier = RandomText();
    const WaitWindow window("Waiting for you to sign in on HMRC's page in the browser");
    if (!state.browser || !state.browser(state.PageAddress(secret))) {
        state.Fail("BROWSER_NOT_OPENED", "HMRC's page could not be opened in a browser");
        return {};
    }
    return state.CodeOf(listener->Wait(state.browserTimeout, state.cancelled));
}

bool CAuthorisation::RequestAccessToken(const std::string& code)
{
    State& state = *m_state;
    const FormFields fields{{"grant_type", "authorization_code"},
                            {"code", code},
                            {"redirect_uri", state.redirectAddress},
                            {"code_verifier", state.verifier}};
    // Sent once: the code is good for one use, and a new one costs the user a sign-in only.
    TokenAnswer answer = RequestTokens(state.Transport(), *state.clientData, fields, state.cancelled);
    Wipe(state.verifier);
    state.Log("Token", "POST /oauth/token", DescribeAnswer(answer.answer, answer.error), {});
    if (!answer.tokens)
        return state.Fail(answer);
    if (answer.tokens->scope.empty())
        answer.tokens->scope = state.scope->GetScope();
    state.tokens = *answer.tokens;
    return true;
}

bool CAuthorisation::get_authtokens(COAuth2Tokens& tokens) const
{
    if (m_state->tokens.accessToken.empty())
        return false;
    tokens = m_state->tokens;
    return true;
}

const CAuthorisation::Error& CAuthorisation::GetLastError() const noexcept { return m_state->error; }

IClientData& CAuthorisation::GetClientData() const noexcept { return *m_state->clientData; }

std::string CAuthorisation::DecryptToken(const std::vector<unsigned char>& token)
{
    return Shellkit::OpenText(token).value_or(std::string());
}

std::optional<std::vector<unsigned char>> CAuthorisation::EncryptToken(std::string_view token)
{
    return Shellkit::Seal(Shellkit::KeyId::Practice, token);
}

void CAuthorisation::SetRedirectPorts(std::vector<unsigned short> ports) { m_state->ports = std::move(ports); }

void CAuthorisation::SetBrowserTimeout(unsigned milliseconds) { m_state->browserTimeout = milliseconds; }

void CAuthorisation::SetBrowser(std::function<bool(const std::string& address)> open)
{
    m_state->browser = std::move(open);
}

void CAuthorisation::SetCancel(std::function<bool()> cancelled) { m_state->cancelled = std::move(cancelled); }

void CAuthorisation::SetChannel(std::shared_ptr<Channel> channel) { m_state->channel = std::move(channel); }
Channel& CAuthorisation::GetChannel() { return *m_state->channel; }

} // namespace HmrcApi
