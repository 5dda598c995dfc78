#pragma once

// OAuth 2.0 with HMRC: the authorisation-code dialogue in the user's browser, and the refreshing of tokens.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HmrcApi/Export.h"
#include "HmrcApi/Host.h"
#include "HmrcApi/oauth/Service.h"
#include "HmrcApi/oauth/Tokens.h"
#include "HmrcApi/transport/Channel.h"

namespace HmrcApi
{

/// One authorisation with HMRC, on behalf of the user whose tokens the store holds: the face of signing in (SignIn),
/// refreshing (TokenRefresh) and what is stored (StoredGrant). Tokens go to the service that gave them and to no other:
/// each operation takes the client data as they are when it begins, sign-in from the browser to the tokens included.
class HMRCAPI_API CAuthorisation
{
public:
    CAuthorisation(std::shared_ptr<IAuthorisationStore> store, std::shared_ptr<IScope> scope,
                   std::shared_ptr<IClientData> clientData);
    ~CAuthorisation();

    /// The whole dialogue: when everything is there that it needs the store's status becomes 0, the browser opens
    /// HMRC's page, the loopback listener waits for the code, the code becomes tokens, the store keeps them with
    /// status 1. True when authority was given; otherwise GetLastError() says why. Where no browser was opened
    /// (BROWSER_NOT_OPENED), and where the wait for it was cancelled, the grant before is good again.
    bool DoAuthorisation(IChainLogger* logger);
    /// Reads the tokens from the store; within 60 seconds of their end refreshes them first. False when there are none
    /// for this service or they cannot be refreshed (GetLastError()), and in a build without credentials; only tokens
    /// that could not be stored are in hand then.
    bool LoadTokens(IChainLogger* logger = nullptr);
    /// Refreshes now, under the store's lock. When the store holds another access token than the one in hand by now,
    /// that one is taken and HMRC is not asked. False also when HMRC gave new tokens and the store could not keep them
    /// (TOKENS_NOT_SAVED): they are in hand then, and stored by the next operation that can.
    bool RefreshTokens(IChainLogger* logger);
    bool RefreshTokens(IChainLogger* logger, const Service& service); // at this one, as read before
    /// Stores the tokens in hand, with status 1, the time and the service, unless the store has them or newer ones,
    /// which are in hand then; tries up to three times. False also when the grant was ended or deleted meanwhile.
    bool UpdateTokens();

    /// Opens the browser and waits for the code (empty: none came, GetLastError()).
    std::string RequestAuthCode();
    /// Turns a code into tokens.
    bool RequestAccessToken(const std::string& code);

    /// The tokens in hand; false when there are none, or the base address is another service's by now.
    bool get_authtokens(COAuth2Tokens& tokens) const;
    bool get_authtokens(COAuth2Tokens& tokens, const Service& service) const; // those for this one

    /// The service by the client data. Throws HmrcApiErrorException.
    Service GetService() const;

    struct Error
    {
        std::string code; // HMRC's or ours, e.g. INVALID_GRANT, NO_CONNECTION, WRONG_SERVICE
        std::string text;
        std::string status; // HTTP status; empty when there was no answer
    };
    const Error& GetLastError() const noexcept;

    /// The plain text of an enciphered token or credential; empty when it cannot be read.
    static std::string DecryptToken(const std::vector<unsigned char>& token);
    /// Enciphers with the practice's key; nothing when there is no key.
    static std::optional<std::vector<unsigned char>> EncryptToken(std::string_view token);

    /// Ports of http://localhost:PORT/callback, tried in turn; the default is 53681, 53682, 53683.
    void SetRedirectPorts(std::vector<unsigned short> ports);
    /// How long to wait for the browser; default 5 minutes.
    void SetBrowserTimeout(unsigned milliseconds);
    /// Opens the address; default Afx::WindowSystem::OpenBrowser. False: it could not.
    void SetBrowser(std::function<bool(const std::string& address)> open);
    /// Asked while waiting; true ends the wait. Default: the window system's Cancel. A refresh under way is not ended:
    /// its token would be lost.
    void SetCancel(std::function<bool()> cancelled);
    /// What this authorisation's requests, and those of the endpoints made from it, go through; default one of its own.
    void SetChannel(std::shared_ptr<Channel> channel);
    Channel& GetChannel();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace HmrcApi
