#pragma once

// One service of HMRC, as one operation knows it from its beginning to its end.

#include <string>

#include "HmrcApi/Export.h"
#include "HmrcApi/Host.h"

namespace HmrcApi
{

/// Where the service is, and what this application is to it. An operation reads it once, because the settings behind
/// IClientData may change meanwhile, and nothing that is one service's may reach another. The secret is wiped.
struct HMRCAPI_API Service
{
    Service() = default;
    Service(const Service&) = default;
    Service& operator=(const Service&) = default;
    ~Service();

    std::string base;    // of sign-in and tokens
    std::string apiBase; // of data
    std::string name;    // as grants keep it
    std::string id;      // empty: this build has no credentials
    std::string secret;
};

/// All of it as of one moment. Throws WRONG_SERVICE while the settings do not keep still.
Service ReadService(IClientData& clientData);

/// Throws NO_CREDENTIALS_FILE in a build without credentials, from which nothing may leave the machine.
void NeedCredentials(const Service& service);

/// The service behind a base address, as grants keep it: without a slash at the end and without the scheme's own port.
std::string ServiceOf(const std::string& base);

} // namespace HmrcApi
