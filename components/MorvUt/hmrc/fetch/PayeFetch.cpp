#include "MorvUt/hmrc/detail/PayeAnswer.h"
#include "MorvUt/hmrc/Differences.h"
#include "Quarry/Session.h"

namespace HmrcApi
{

IPrepopPAYE::~IPrepopPAYE() = default;

CPAYEPrepop::CPAYEPrepop(ClientId client, TaxYear taxYear, std::string identifier, IEndpointOverride::ResponseType type,
                         const CAuthorisationStore& store)
    : CSchedulePrepop(client, taxYear, std::move(identifier), type, store)
{}

CPAYEPrepop::~CPAYEPrepop() = default;

std::shared_ptr<CPaye> CPAYEPrepop::GetPayeEndpoint(CAuthorisation& authorisation)
{
    if (IsLive())
        return std::make_shared<CPaye>(authorisation);
    return std::make_shared<CPayeOverride>(authorisation, GetResponseType());
}

void CPAYEPrepop::GetPAYEData(std::string nationalInsuranceNumber, std::shared_ptr<CAPIErrorHandler> errors,
                              Logger* logger)
{
    RunGroup("PAYE", *errors, logger, [&](CAuthorisation& authorisation) {
        Stage(GetPayeEndpoint(authorisation)->GetPaye(nationalInsuranceNumber, GetYear(), logger));
    });
}

/// All or nothing: the whole answer is mapped before the first row is written.
void CPAYEPrepop::Stage(const CPayeResponse& response)
{
    if (response.IsNothingYet()) // the year's records come later, or are gone since the return was processed
        return;
    MapPaye(GetClient(), GetTaxYear(), response);
    Quarry::CTransaction transaction;
    UpdateMTDPensionStateBenefits();
    UpdateMTDPensionsAndOther();
    UpdateMTDEmployments();
    UpdateMTDTaxFreeAllowances();
    StampStagedYear(GetClient(), GetYear());
    transaction.Commit();
    Count(m_answer->counts);
    SetHasDifferences(!FindDifferences(GetClient(), GetTaxYear()).empty());
}

} // namespace HmrcApi
