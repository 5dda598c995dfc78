#include "HmrcApi/oauth/Authorisation.h"

#include "Afx/system/SignalGuard.h"
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

    HeldTokens held;
    std::optional<Service> dialogue; // the last one's
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
                        Mask(error.text, {held.tokens.accessToken, held.tokens.refreshToken}));
        return false;
    }

    ITransport& Transport() const { return *channel->GetTransport(); }

    /// A new pair that is not stored must not give way to the one that it replaces.
    void SaveUnsaved()
    {
        if (!held.isSaved)
            StoredGrant(*store, held.service).Save(held);
    }

    void Refresh(const Service& service, IChainLogger* logger)
    {
        StoredGrant grant(*store, service.name);
        NeedCredentials(service);
        grant.NeedKey();
        TokenRefresh(grant, Transport(), service, cancelled, logger).Run(held);
    }

    /// Ends the grant before HMRC's page is opened; it is good again when nobody saw that page to its end.
    std::string RequestCode(StoredGrant& grant, IChainLogger* logger)
    {
        try {
            return RequestCode([&] { grant.Reset(); },
                               [this] { return Afx::SignalGuard::IsSignalWaiting() || (cancelled && cancelled()); },
                               logger);
        } catch (const HmrcApiErrorException& problem) {
            if (problem.GetCode() == "BROWSER_NOT_OPENED" || problem.GetCode() == "CANCELLED")
                grant.Restore();
            throw;
        }
    }

    std::string RequestCode(const std::function<void()>& begin, const std::function<bool()>& isCancelled,
                            IChainLogger* logger)
    {
        NeedCredentials(*dialogue);
        std::string code = signIn.RequestCode(*dialogue, scope->GetScope(), begin, isCancelled);
        if (logger)
            logger->Log("Authorise", "Authorisation", "GET /oauth/authorize", "code received", {});
        return code;
    }

    void Exchange(const std::string& code, IChainLogger* logger)
    {
        if (!dialogue)
            dialogue = ReadService(*clientData);
        NeedCredentials(*dialogue);
        held = {signIn.Exchange(code, Transport(), *dialogue, cancelled, logger), dialogue->name, {}, false};
        if (held.tokens.scope.empty())
            held.tokens.scope = scope->GetScope();
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
        state.dialogue = GetService();
        StoredGrant grant(*state.store, state.dialogue->name);
        // Nobody is to lose a grant, or to sign in, for tokens that cannot be had or kept.
        NeedCredentials(*state.dialogue);
        grant.Rehearse();
        // A signal while the user signs in cancels, so that the grant is as before; once the code is there it is spent
        // and the tokens are stored, or neither.
        const Afx::SignalGuard guard;
        std::string code = state.RequestCode(grant, logger);
        state.Exchange(code, logger);
        Wipe(code);
        grant.Save(state.held);
    });
}

bool CAuthorisation::LoadTokens(IChainLogger* logger)
{
    State& state = *m_state;
    const bool isLoaded = state.Attempt(logger, [&] {
        state.SaveUnsaved();
        const Service service = GetService();
        StoredGrant grant(*state.store, service.name);
        state.held = grant.Read();
        NeedCredentials(service);
        if (grant.SecondsLeft() <= kRefreshBefore)
            state.Refresh(service, logger);
    });
    if (!isLoaded && state.held.isSaved)
        state.held = {};
    return isLoaded;
}

bool CAuthorisation::RefreshTokens(IChainLogger* logger)
{
    return m_state->Attempt(logger, [&] {
        m_state->SaveUnsaved();
        m_state->Refresh(GetService(), logger);
    });
}

bool CAuthorisation::RefreshTokens(IChainLogger* logger, const Service& service)
{
    return m_state->Attempt(logger, [&] {
        m_state->SaveUnsaved();
        m_state->Refresh(service, logger);
    });
}

bool CAuthorisation::UpdateTokens()
{
    State& state = *m_state;
    try {
        return state.Attempt(nullptr, [&] {
            if (state.held.tokens.accessToken.empty()) // would overwrite a grant with nothing
                throw HmrcApiErrorException("NOT_AUTHORISED", "There are no HMRC tokens to store", {});
            if (!state.held.isSaved)
                state.SaveUnsaved();
            else
                state.held = StoredGrant(*state.store, state.held.service).Read();
        });
    } catch (...) { // of the store
        state.error = {"TOKENS_NOT_SAVED", kNotSaved, {}};
        return false;
    }
}

std::string CAuthorisation::RequestAuthCode()
{
    std::string code;
    m_state->Attempt(nullptr, [&] {
        m_state->dialogue = GetService();
        code = m_state->RequestCode({}, m_state->cancelled, nullptr);
    });
    return code;
}

bool CAuthorisation::RequestAccessToken(const std::string& code)
{
    return m_state->Attempt(nullptr, [&] { m_state->Exchange(code, nullptr); });
}

bool CAuthorisation::get_authtokens(COAuth2Tokens& tokens) const
{
    Service service;
    service.name = ServiceOf(m_state->clientData->GetAuthenticationEndpoint());
    return get_authtokens(tokens, service);
}

bool CAuthorisation::get_authtokens(COAuth2Tokens& tokens, const Service& service) const
{
    const HeldTokens& held = m_state->held;
    if (held.tokens.accessToken.empty() || held.service != service.name)
        return false;
    tokens = held.tokens;
    return true;
}

Service CAuthorisation::GetService() const { return ReadService(*m_state->clientData); }

const CAuthorisation::Error& CAuthorisation::GetLastError() const noexcept { return m_state->error; }

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
