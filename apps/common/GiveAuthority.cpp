#include "common/GiveAuthority.h"

#include "Brix/Subjects.h"
#include "MorvUt/hmrc/access/AuthorisationStore.h"
#include "MorvUt/hmrc/access/ClientData.h"
#include "MorvUt/hmrc/access/Logger.h"
#include "MorvUt/hmrc/access/Scope.h"
#include "Quarry/Session.h"

namespace Morv
{

std::string WhyNotGateway(const std::string& gateway)
{
    return gateway.find('\'') == std::string::npos ? "" : "a Government Gateway user ID holds no quotes";
}

std::optional<HmrcApi::CAuthorisation::Error> GiveAuthority(const std::string& gateway,
                                                            const std::function<bool(const std::string& address)>& open)
{
    Quarry::CTransaction(Cellar::Intent::Write, Brix::kAuthorisations).Commit();
    HmrcApi::CAuthorisationStore::CreateGatewayID(gateway); // false: it is registered already
    HmrcApi::Logger logger;
    HmrcApi::CAuthorisation authorisation(std::make_shared<HmrcApi::CAuthorisationStore>(gateway),
                                          std::make_shared<HmrcApi::CScope>(),
                                          std::make_shared<HmrcApi::CClientData>());
    if (open)
        authorisation.SetBrowser(open);
    if (authorisation.DoAuthorisation(&logger))
        return std::nullopt;
    return authorisation.GetLastError();
}

} // namespace Morv
