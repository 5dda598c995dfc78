#include "MorvUt/hmrc/fetch/NicPrepop.h"

#include "MorvUt/hmrc/detail/YearRecords.h"
#include "Quarry/Session.h"

namespace HmrcApi
{

CNICPrepop::~CNICPrepop() = default;

std::shared_ptr<CNationalInsurance> CNICPrepop::GetNationalInsuranceEndpoint(CAuthorisation& authorisation)
{
    if (IsLive())
        return std::make_shared<CNationalInsurance>(authorisation);
    return std::make_shared<CNationalInsuranceOverride>(authorisation, GetResponseType());
}

void CNICPrepop::GetNICData(std::string utr, std::shared_ptr<CAPIErrorHandler> errors, Logger* logger)
{
    RunGroup("National Insurance", *errors, logger, [&](CAuthorisation& authorisation) {
        Stage(GetNationalInsuranceEndpoint(authorisation)->GetNationalInsurance(utr, GetYear(), logger));
    });
}

void CNICPrepop::Stage(const CNationalInsuranceResponse& response)
{
    using List = Brix::CMTD_NIC;
    StagedCounts counts;
    Quarry::CTransaction transaction;
    RowsUnder<List> rows(EnsureStagedYear(GetClient(), GetYear()), List::kMTD_TaxYearID);
    const bool hasFigures = response.class1NicableEarnings.IsValid() || response.class2Due.IsValid();
    if (hasFigures) {
        const bool isNew = rows.GetCount() == 0;
        List& list = isNew ? rows.AddNew() : rows[0];
        Assign(list, &List::GetClass1Earnings, &List::SetClass1Earnings, response.class1NicableEarnings);
        Assign(list, &List::GetClass2Due, &List::SetClass2Due, response.class2Due);
        if (list.IsDirty()) {
            list.SetUpdated(COleDateTime::GetCurrentTime());
            list.Update();
            ++(isNew ? counts.added : counts.changed);
        }
    }
    StampStagedYear(GetClient(), GetYear());
    transaction.Commit();
    Count(counts);
}

} // namespace HmrcApi
