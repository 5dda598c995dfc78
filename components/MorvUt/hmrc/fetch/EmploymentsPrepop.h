#pragma once

// HMRC's records of a client's employments and pensions by the four individual interfaces: the other route to what
// CPAYEPrepop fetches, for a practice whose option nPAYEInterface is off.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Brix/Records.h"
#include "HmrcApi/interfaces/Endpoints.h"
#include "MorvUt/hmrc/fetch/EmploymentsMapping.h"
#include "MorvUt/hmrc/fetch/FetchStates.h"
#include "MorvUt/hmrc/fetch/IPrepopPAYE.h"
#include "MorvUt/hmrc/fetch/SchedulePrepop.h"
#include "MorvUt/hmrc/fetch/StagedSchedules.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// By UTR HMRC gives the employments of a year in four answers that only the PAYE reference joins (history: the names;
/// income: the pay; benefits: a sum for each of eight kinds; tax: the tax taken off), and of pensions and benefits of
/// the state one sum for each kind, without payers or dates. They go to the same staging rows as the PAYE interface's
/// and make the same schedules.
///
/// Employments  Those of one reference are joined by their order in each answer, as many as the answer that has most of
///              them: no figure is dropped. Works numbers, dates and student loans stay as the other route left them.
/// Sums         One staging row a kind. It answers to the one schedule of its types (1040 and 1050; 1140; 1090), to
///              several by their sum, and is new when the return has none of them. The other route's pensions and
///              benefits are withdrawn; its state pension and allowances, which this one cannot send, stay.
/// No records   An interface that has nothing yet (404) leaves what is its own as it was. One that fails leaves the
///              whole group as it was.
///
/// Years, amounts, writing and reading as in CPAYEPrepop.
class MORVUT_API CEmploymentsPrepop : public CSchedulePrepop, public IPrepopPAYE
{
public:
    static constexpr char kGroup[] = "Employments"; // in the error handler

    /// `identifier`: the UTR. The rest as in CPAYEPrepop.
    CEmploymentsPrepop(ClientId client, TaxYear taxYear, std::string identifier, IEndpointOverride::ResponseType type,
                       const CAuthorisationStore& store = CAuthorisationStore());
    ~CEmploymentsPrepop() override;

    /// Asks HMRC four times (history, income, benefits, tax) and stages the answers, all or nothing. Errors go to the
    /// group "Employments" of `errors` (never null), as in CPAYEPrepop::GetPAYEData.
    void GetEmploymentData(std::string utr, std::shared_ptr<CAPIErrorHandler> errors, Logger* logger);
    // The two halves, and what is in hand between them, as in CPAYEPrepop.
    void Ask(Retrieval& retrieval, const std::string& utr);
    void Stage(Retrieval& retrieval);
    bool HasAnswer() const noexcept { return m_parts.IsAny(); }
    int CountSent() const { return HmrcApi::CountSent(m_answer); }
    const std::optional<ReturnYear>& GetReturn() const noexcept { return m_return; }
    /// What people must know of how the four answers fit together; after Stage.
    const std::vector<CString>& GetNotes() const noexcept { return m_notes; }

    // Staging, of answers that were had in another way. The Update… functions write what has been taken in, each in a
    // transaction.

    /// What one answer knows of an employment: joined to what the others have told under this key, which is the PAYE
    /// reference or, for the second of one, KeyOf. A null one is nothing. Writes nothing. The first for another client
    /// or year begins anew.
    void AddEmploymentDataToMap(ClientId client, TaxYear taxYear, const std::string& key,
                                std::shared_ptr<const Employment_t> employment);
    void UpdateMTDPensionsAndOther(); // the sums
    void UpdateMTDEmployments();      // and their benefits

    // Schedules: see IPrepopPAYE.

    bool DoNewEmploymentsExist() override;
    bool DoNewPensionStateBenefitsExist() override;
    void CreateNewSchedules() override;
    /// What was made and committed since the last CreateNewSchedules, and what people must know of it.
    const CreatedSchedules& GetCreatedSchedules() const noexcept { return m_schedules.GetCreated(); }
    void CreateNewEmploymentSchedules();
    void CreateNewPensionStateBenefitSchedules();
    /// Appends and saves a schedule of the year with an amount and the tax taken off it, whether or not it is there
    /// already. `section` and `type`: codes of mapPSBCategorys and mapPSBTypes.
    void CreateNewPensionStateBenefitSchedule(long section, long type, Kiln::CAmt amount, Kiln::CAmt tax);

    /// The return has a schedule of this type (a code of mapPSBTypes). Moves the list.
    static bool DoesPSBTypeExist(Brix::CPensionStateBenefits& list, long type);

private:
    virtual std::shared_ptr<CEmploymentHistory> GetEmploymentHistoryEndpoint(CAuthorisation& authorisation);
    virtual std::shared_ptr<CIncomeSummary> GetIncomeSummaryEndpoint(CAuthorisation& authorisation);
    virtual std::shared_ptr<CBenefitsSummary> GetBenefitsSummaryEndpoint(CAuthorisation& authorisation);
    virtual std::shared_ptr<CTaxSummary> GetTaxSummaryEndpoint(CAuthorisation& authorisation);

    // An answer that has nothing yet is none.
    void MapEmploymentHistory(ClientId client, TaxYear taxYear, const CEmploymentHistoryResponse& response);
    void MapAnnualIncome(ClientId client, TaxYear taxYear, const CIncomeSummaryResponse& response);
    void MapBenefits(ClientId client, TaxYear taxYear, const CBenefitsSummaryResponse& response);
    void MapTax(ClientId client, TaxYear taxYear, const CTaxSummaryResponse& response);
    void AddEmployments(ClientId client, TaxYear taxYear, Part part, const CEmploymentsResponse& response);

    void BeginAnswer(ClientId client, TaxYear taxYear);
    // `stored`: what the rows held before.
    void StagePensions(StagingWriter& writer, const StagedYear& stored) const;
    void StageEmployments(StagingWriter& writer, const StagedYear& stored) const;

    StagedYear m_answer; // joined, in the terms of the staging rows
    AnsweredParts m_parts;
    PartCounts m_counts; // by reference
    std::vector<CString> m_notes;
    ClientId m_answerClient;
    short m_answerYear = 0;
    std::optional<ReturnYear> m_return;
    StagedSchedules m_schedules;
};

} // namespace HmrcApi
