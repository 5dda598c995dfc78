#include "MorvUt/hmrc/access/ClientData.h"

#include <array>

#include "HmrcApi/oauth/Authorisation.h"
#include "HmrcApi/transport/Transport.h"
#include "Shellkit/Registry.h"

namespace HmrcApi
{
namespace
{

// kProductionId, kProductionSecret, kTestId, kTestSecret: enciphered, empty in a build without credentials.
#include "HmrcCredentials.inc"

constexpr char kProductionBase[] = "https://api.service.hmrc.gov.uk/";
constexpr char kTestBase[] = "https://test-api.service.hmrc.gov.uk/";

std::string g_loopbackBase; // empty: HMRC's own

bool IsTest() { return CRegistry().GetInt("HMRCEndPoint", 1) == 2; }

template<std::size_t N>
std::string Decipher(const std::array<unsigned char, N>& blob)
{
    if constexpr (N == 0)
        return {};
    else
        return CAuthorisation::DecryptToken({blob.begin(), blob.end()});
}

} // namespace

CClientData::~CClientData() = default;

std::string CClientData::GetId()
{
    if (!g_loopbackBase.empty())
        return "morvut-sandbox";
    return IsTest() ? Decipher(kTestId) : Decipher(kProductionId);
}

std::string CClientData::GetSecret()
{
    if (!g_loopbackBase.empty())
        return "morvut-sandbox-secret"; // documented: it opens a sandbox on this machine and nothing else
    return IsTest() ? Decipher(kTestSecret) : Decipher(kProductionSecret);
}

std::string CClientData::GetAuthenticationEndpoint()
{
    if (!g_loopbackBase.empty())
        return g_loopbackBase;
    return IsTest() ? kTestBase : kProductionBase;
}

std::string CClientData::GetAPIEndpoint() { return GetAuthenticationEndpoint(); }

bool CClientData::SetLoopbackOverride(const std::string& base)
{
    if (!base.empty() && !IsLoopbackBase(base))
        return false;
    g_loopbackBase = base;
    if (!base.empty() && base.back() != '/')
        g_loopbackBase += '/';
    return true;
}

} // namespace HmrcApi
