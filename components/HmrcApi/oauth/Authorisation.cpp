#include "HmrcApi/oauth/Authorisation.h"

#include "Afx/SignalGuard.h"
#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/answers/Mask.h"
#include "HmrcApi/oauth/SignIn.h"
#include "HmrcApi/oauth/StoredGrant.h"
#include "HmrcApi/oauth/TokenRefresh.h"
#include "HmrcApi/transport/Waiting.h"

namespace HmrcApi
{
namespace
{

constexpr double kRefreshBefore = 60; // seconds before the access token's end

} // namespace

struct CAuthorisation::State
{
    State(std::shared_ptr<IAuthorisationStore> theStore, std::shared_ptr<IScope> theScope,
          std::shared_ptr<IClientData> theClientData)
        : store(std::move(theStore)), scope(std::move(theScope)), clientData(std::move(theClientData))
    {}

    const std::shared_ptr<IAuthorisationStore> store;
    const std::shared_ptr<IScope> scope;
    const std::shared_ptr<IClientData> clientData;

    const StoredGrant grant{*store, *clientData};
    COAuth2Tokens tokens;
    std::string service; // that the tokens are for
    SignIn signIn;
    std::function<bool()> cancelled = &WaitWindow::IsCancelled;
    std::shared_ptr<Channel> channel = std::make_shared<Channel>();
    Error error;

    /// Runs `work`; true when it went through, else the error says why.
    template<class Work>
    bool Attempt(IChainLogger* logger, Work work)
    {
        error = {};
        try {
            work();
            return true;
        } catch (const HmrcApiErrorException& problem) {
            error = {problem.GetCode(), problem.GetText(), problem.GetStatus()};
        }
        if (logger)
            logger->Log("Failed", "Authorisation", {}, error.code,
                        Mask(error.text, {tokens.accessToken, tokens.refreshToken}));
        return false;
    }

    std::string AskedService() const { return ServiceOf(clientData->GetAuthenticationEndpoint()); }
    ITransport& Transport() const { return *channel->GetTransport(); }

    void Refresh(IChainLogger* logger)
    {
        NeedCredentials(*clientData);
        grant.NeedKey();
        service = AskedService();
        TokenRefresh(grant, Transport(), *clientData, cancelled, logger).Run(tokens);
    }

    std::string RequestCode(IChainLogger* logger)
    {
        NeedCredentials(*clientData);
        const std::string code = signIn.RequestCode(*clientData, scope->GetScope(), cancelled);
        if (logger)
            logger->Log("Authorise", "Authorisation", "GET /oauth/authorize", "code received", {});
        return code;
    }

    void Exchange(const std::string& code, IChainLogger* logger)
    {
        NeedCredentials(*clientData);
        tokens = signIn.Exchange(code, Transport(), *clientData, cancelled, logger);
        service = AskedService();
        if (tokens.scope.empty())
            tokens.scope = scope->GetScope();
    }

    /// Nobody is to sign in for tokens that cannot be kept.
    void BeginDialogue()
    {
        NeedCredentials(*clientData);
        grant.NeedKey();
        store->LoadTokens(); // a row that is not there yet is made by the update
        store->SetAuthorisationStatus(IAuthorisationStore::NotAuthorised);
        if (!store->UpdateTokens()) {
            grant.FailForGood();
            throw HmrcApiErrorException("TOKENS_NOT_SAVED", "The practice's database cannot keep HMRC's tokens", {});
        }
        grant.Rehearse();
    }
};

CAuthorisation::CAuthorisation(std::shared_ptr<IAuthorisationStore> store, std::shared_ptr<IScope> scope,
                               std::shared_ptr<IClientData> clientData)
    : m_state(std::make_unique<State>(std::move(store), std::move(scope), std::move(clientData)))
{}

CAuthorisation::~CAuthorisation() = default;

bool CAuthorisation::DoAuthorisation(IChainLogger* logger)
{
    State& state = *m_state;
    return state.Attempt(logger, [&] {
        state.BeginDialogue();
        const std::string code = state.RequestCode(logger);
        const Afx::SignalGuard guard; // the code is spent, and the tokens are stored, or neither
        state.Exchange(code, logger);
        state.grant.Save(state.tokens);
    });
}

bool CAuthorisation::LoadTokens(IChainLogger* logger)
{
    State& state = *m_state;
    return state.Attempt(logger, [&] {
        const COAuth2Tokens stored = state.grant.Read();
        NeedCredentials(*state.clientData);
        state.tokens = stored;
        state.service = state.AskedService();
        if (state.grant.SecondsLeft() <= kRefreshBefore)
            state.Refresh(logger);
    });
}

bool CAuthorisation::RefreshTokens(IChainLogger* logger)
{
    return m_state->Attempt(logger, [&] { m_state->Refresh(logger); });
}

bool CAuthorisation::UpdateTokens()
{
    State& state = *m_state;
    try {
        return state.Attempt(nullptr, [&] {
            COAuth2Tokens tokens;
            if (!get_authtokens(tokens)) // would overwrite a grant with nothing, or with another service's
                throw HmrcApiErrorException("NOT_AUTHORISED", "There are no HMRC tokens to store", {});
            state.grant.Save(tokens);
        });
    } catch (...) { // of the store
        state.error = {"TOKENS_NOT_SAVED", "The practice's database cannot keep HMRC's tokens", {}};
        return false;
    }
}

std::string CAuthorisation::RequestAuthCode()
{
    std::string code;
    m_state->Attempt(nullptr, [&] { code = m_state->RequestCode(nullptr); });
    return code;
}

bool CAuthorisation::RequestAccessToken(const std::string& code)
{
    return m_state->Attempt(nullptr, [&] { m_state->Exchange(code, nullptr); });
}

bool CAuthorisation::get_authtokens(COAuth2Tokens& tokens) const
{
    const State& state = *m_state;
    if (state.tokens.accessToken.empty() || state.service != state.AskedService())
        return false;
    tokens = state.tokens;
    return true;
}

const CAuthorisation::Error& CAuthorisation::GetLastError() const noexcept { return m_state->error; }

IClientData& CAuthorisation::GetClientData() const noexcept { return *m_state->clientData; }

std::string CAuthorisation::DecryptToken(const std::vector<unsigned char>& token) { return OpenToken(token); }

std::optional<std::vector<unsigned char>> CAuthorisation::EncryptToken(std::string_view token)
{
    return SealToken(token);
}

void CAuthorisation::SetRedirectPorts(std::vector<unsigned short> ports) { m_state->signIn.ports = std::move(ports); }

void CAuthorisation::SetBrowserTimeout(unsigned milliseconds) { m_state->signIn.browserTimeout = milliseconds; }

void CAuthorisation::SetBrowser(std::function<bool(const std::string& address)> open)
{
    m_state->signIn.browser = std::move(open);
}

void CAuthorisation::SetCancel(std::function<bool()> cancelled) { m_state->cancelled = std::move(cancelled); }

void CAuthorisation::SetChannel(std::shared_ptr<Channel> channel) { m_state->channel = std::move(channel); }
Channel& CAuthorisation::GetChannel() { return *m_state->channel; }

} // namespace HmrcApi
