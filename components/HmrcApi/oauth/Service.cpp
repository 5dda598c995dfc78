#include "HmrcApi/oauth/Service.h"

#include <string_view>

#include "Afx/text/TextFold.h"
#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/oauth/Tokens.h"

namespace HmrcApi
{

Service::~Service() { Wipe(secret); }

Service ReadService(IClientData& clientData)
{
    constexpr int kAttempts = 5;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        Service service;
        service.base = clientData.GetAuthenticationEndpoint();
        service.apiBase = clientData.GetAPIEndpoint();
        service.name = ServiceOf(service.base);
        service.id = clientData.GetId();
        service.secret = clientData.GetSecret();
        if (clientData.GetAuthenticationEndpoint() == service.base && clientData.GetAPIEndpoint() == service.apiBase)
            return service; // one and the same from the first to the last
    }
    throw HmrcApiErrorException("WRONG_SERVICE", "The service of HMRC is being changed in the settings", {});
}

void NeedCredentials(const Service& service)
{
    if (service.id.empty())
        throw HmrcApiErrorException("NO_CREDENTIALS_FILE",
                                    "This program was delivered without HMRC's credentials (built without cmake "
                                    "-DMORVUT_HMRC_CREDENTIALS=FILE)",
                                    {});
}

std::string ServiceOf(const std::string& base)
{
    std::string service = Afx::FoldLower(base);
    while (service.ends_with('/'))
        service.pop_back();
    for (const std::string_view port : {"https:443", "http:80"}) {
        const std::size_t colon = port.find(':');
        if (service.starts_with(std::string(port.substr(0, colon)) + "://") && service.ends_with(port.substr(colon)))
            service.resize(service.size() - (port.size() - colon));
    }
    return service;
}

} // namespace HmrcApi
