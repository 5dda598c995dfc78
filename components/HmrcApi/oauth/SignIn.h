#pragma once

// The user's consent: HMRC's page in the browser, and the code that it sends back.

#include <functional>
#include <string>
#include <vector>

#include "HmrcApi/Host.h"
#include "HmrcApi/oauth/Service.h"
#include "HmrcApi/oauth/Tokens.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

/// The authorisation-code dialogue, with a verifier that ties the code to this program (PKCE, S256). Both steps throw
/// HmrcApiErrorException with the cause.
class SignIn
{
public:
    SignIn();
    ~SignIn();
    SignIn(const SignIn&) = delete;
    SignIn& operator=(const SignIn&) = delete;

    std::vector<unsigned short> ports{53681, 53682, 53683}; // of http://localhost:PORT/callback, tried in turn
    unsigned browserTimeout = 300'000;                      // milliseconds
    std::function<bool(const std::string&)> browser;        // false: it could not be opened

    /// Opens a redirect port, calls `begin` (which may be empty), opens the browser and waits for the code.
    std::string RequestCode(const Service& service, const std::string& scope, const std::function<void()>& begin,
                            const std::function<bool()>& cancelled);
    /// The tokens for a code of the last request, whose service it must be. Asked once: a code is good for one use, and
    /// a new one costs the user a sign-in only.
    COAuth2Tokens Exchange(const std::string& code, ITransport& transport, const Service& service,
                           const std::function<bool()>& cancelled, IChainLogger* logger);

private:
    std::string PageAddress(const Service& service, const std::string& scope, const std::string& state) const;

    // From one step to the other.
    std::string m_redirectAddress;
    std::string m_verifier;
};

} // namespace HmrcApi
