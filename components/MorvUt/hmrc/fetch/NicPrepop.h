#pragma once

// HMRC's National Insurance figures of a client and year.

#include <memory>
#include <optional>
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
    static constexpr char kGroup[] = "National Insurance"; // in the error handler

    using CSchedulePrepop::CSchedulePrepop;
    ~CNICPrepop() override;

    /// Asks HMRC and stages the answer. Errors of HMRC go to the group "National Insurance" of the handler. A figure
    /// that HMRC does not send leaves the stored one as it is.
    void GetNICData(std::string utr, std::shared_ptr<CAPIErrorHandler> errors, Logger* logger);
    /// The two halves, for a retrieval that asks all groups before it stages any. Staging needs a transaction with the
    /// intent to write and does nothing when HMRC gave no answer.
    void Ask(Retrieval& retrieval, const std::string& utr);
    bool IsAnswered() const noexcept { return m_isAnswered; }
    void Stage(Retrieval& retrieval);
    /// HMRC answered with records.
    bool HasAnswer() const noexcept { return m_isAnswered && m_answer.has_value(); }

    virtual std::shared_ptr<CNationalInsurance> GetNationalInsuranceEndpoint(CAuthorisation& authorisation);

private:
    std::optional<StagedNationalInsurance> m_answer; // nothing: HMRC has nothing
    bool m_isAnswered = false;
};

} // namespace HmrcApi
