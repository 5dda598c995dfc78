#pragma once

// HMRC's National Insurance figures of a client and year.

#include <memory>
#include <string>

#include "HmrcApi/interfaces/Endpoints.h"
#include "MorvUt/hmrc/fetch/SchedulePrepop.h"

namespace HmrcApi
{

/// Fetches the Class 1 earnings and the Class 2 amount due into the year's CMTD_NIC row. Before 1 September after the
/// year HMRC answers Class 1 earnings of 0.00, which cannot be told from a real zero: it is stored as it comes.
class MORVUT_API CNICPrepop : public CSchedulePrepop
{
public:
    using CSchedulePrepop::CSchedulePrepop;
    ~CNICPrepop() override;

    /// Errors of HMRC go to the group "National Insurance" of the handler. An answer without figures writes nothing.
    void GetNICData(std::string utr, std::shared_ptr<CAPIErrorHandler> errors, Logger* logger);
    virtual std::shared_ptr<CNationalInsurance> GetNationalInsuranceEndpoint(CAuthorisation& authorisation);

private:
    void Stage(const CNationalInsuranceResponse& response);
};

} // namespace HmrcApi
