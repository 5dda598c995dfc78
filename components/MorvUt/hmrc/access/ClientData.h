#pragma once

// What this application is to HMRC, and which of HMRC's services it talks to.

#include <string>

#include "HmrcApi/Host.h"
#include "MorvUt/Export.h"

namespace HmrcApi
{

/// Base address and credentials. Registry value "HMRCEndPoint": 2 selects HMRC's test services, anything else
/// production. The credentials are built in, enciphered (cmake -DMORVUT_HMRC_CREDENTIALS=FILE); without that file both
/// are empty.
class MORVUT_API CClientData : public IClientData
{
public:
    CClientData() = default;
    CClientData(const CClientData&) = default;
    CClientData& operator=(const CClientData&) = default;
    CClientData(CClientData&&) noexcept = default;
    CClientData& operator=(CClientData&&) noexcept = default;
    ~CClientData() override;

    std::string GetId() override;
    std::string GetSecret() override;
    /// Absolute, ends in '/'.
    std::string GetAuthenticationEndpoint() override;
    /// Whatever GetAuthenticationEndpoint answers, so that both kinds of call go to the same services.
    std::string GetAPIEndpoint() override;

    /// Sends every call of this process to a server on this machine instead, with the sandbox's credentials
    /// ("morvut-sandbox", "morvut-sandbox-secret"). For a program's start-up and for tests; no stored value gets here.
    /// False, and nothing changes, for an address that is not a loopback one. An empty text takes the override away.
    static bool SetLoopbackOverride(const std::string& base);
};

} // namespace HmrcApi
