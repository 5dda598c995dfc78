#include "MorvUt/hmrc/fetch/SchedulePrepop.h"

#include "MorvUt/hmrc/access/ClientData.h"
#include "MorvUt/hmrc/access/Scope.h"
#include "Quarry/DataList.h"

namespace HmrcApi
{
namespace
{

/// What became of the user's tokens. A refresh that failed keeps its own reason, since each has a remedy of its own.
HmrcApiErrorException CredentialsError(const CAuthorisation::Error& error)
{
    const bool isNotThere = error.code.empty() || error.code == "NO_CREDENTIALS" || error.code == "NOT_AUTHORISED" ||
                            error.code == "TOKENS_UNREADABLE";
    if (isNotThere)
        return HmrcApiErrorException("NO_CREDENTIALS", "Unable to load user's HMRC credentials", {});
    return HmrcApiErrorException(error.code, error.text, {}, error.status);
}

} // namespace

CSchedulePrepop::CSchedulePrepop(ClientId client, TaxYear taxYear, std::string identifier,
                                 IEndpointOverride::ResponseType type, const CAuthorisationStore& store)
    : m_client(client), m_taxYear(taxYear), m_identifier(std::move(identifier)), m_type(type), m_store(store)
{}

CSchedulePrepop::~CSchedulePrepop() = default;

void CSchedulePrepop::RunGroup(const char* group, CAPIErrorHandler& errors, Logger* logger,
                               const std::function<void(CAuthorisation&)>& fetch)
{
    errors.AddGroup(group);
    try {
        const auto store = std::make_shared<CAuthorisationStore>(m_store);
        store->SetLogger(logger);
        CAuthorisation authorisation(store, std::make_shared<CScope>(), std::make_shared<CClientData>());
        if (IsLive() && !authorisation.LoadTokens(logger))
            throw CredentialsError(authorisation.GetLastError());
        fetch(authorisation);
    } catch (const HmrcApiErrorException& error) {
        errors.AddError(group, CAPIError(error.GetCode(), error.GetText(), error.GetThird(), error.GetStatus()));
    } catch (const Quarry::ChangedByAnotherUser& changed) {
        errors.AddError(group, CAPIError("CHANGED_BY_ANOTHER_USER", changed.what(), {}, {}));
    }
}

void CSchedulePrepop::Count(const StagedCounts& counts) noexcept
{
    m_counts += counts;
    m_hasNewData = m_hasNewData || counts.IsAny();
}

} // namespace HmrcApi
