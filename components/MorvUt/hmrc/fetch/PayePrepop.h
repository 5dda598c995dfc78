#pragma once

// HMRC's PAYE records of a client and year: fetched, staged, made into schedules.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Brix/Records.h"
#include "HmrcApi/interfaces/Endpoints.h"
#include "HmrcApi/records/Responses.h"
#include "MorvUt/hmrc/fetch/IPrepopPAYE.h"
#include "MorvUt/hmrc/fetch/SchedulePrepop.h"
#include "MorvUt/hmrc/schedules/NewSchedules.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// Two stages. A fetch writes HMRC's figures into the year's staging rows (CMTD_Employments and its company benefits,
/// CMTD_PensionStateBenefits, CMTD_TaxFreeAllowances): new items are added, changed ones updated, those no longer sent
/// are kept and marked withdrawn. Then, when the user asks, schedules are made for staged items that the return lacks.
///
/// The operations are the published names of what the folders beside this one do: staging rows are written by
/// StagingWriter, schedules matched and made by plain functions over what was read once. What writes works in a
/// transaction of its own, begun with the intent to write before anything is read.
class MORVUT_API CPAYEPrepop : public CSchedulePrepop, public IPrepopPAYE
{
public:
    /// Kinds of staged pensions and benefits; part of the database's format.
    enum MTD_PSBType : int
    {
        MTD_None = kStatePension, // the state pension and its lump sum
        MTD_PrivatePension = kPrivatePension,
        MTD_JobseekersAllowance = kJobseekersAllowance,
        MTD_IncapacityBenefit = kIncapacityBenefit,
        MTD_EmploymentAndSupportAllowance = kEmploymentAndSupportAllowance,
        MTD_Unknown = kUnknownBenefit // of a kind that HMRC has added: staged and told, matches and makes nothing
    };

    static constexpr char kGroup[] = "PAYE"; // in the error handler

    /// `identifier`: the National Insurance number.
    CPAYEPrepop(ClientId client, TaxYear taxYear, std::string identifier, IEndpointOverride::ResponseType type,
                const CAuthorisationStore& store = CAuthorisationStore());
    ~CPAYEPrepop() override;

    /// Asks HMRC and stages the answer, all or nothing. Errors of HMRC go to the group "PAYE" of the handler.
    void GetPAYEData(std::string nationalInsuranceNumber, std::shared_ptr<CAPIErrorHandler> errors, Logger* logger);
    /// The two halves, for a retrieval that asks all groups before it stages any. Staging needs a transaction with the
    /// intent to write and does nothing when HMRC gave no answer.
    void Ask(Retrieval& retrieval, const std::string& nationalInsuranceNumber);
    void Stage(Retrieval& retrieval);
    /// HMRC answered with records.
    bool HasAnswer() const noexcept { return m_isWhole; }
    /// The return that staged figures were compared with; nothing before Stage, or without an answer.
    const std::optional<ReturnYear>& GetReturn() const noexcept { return m_return; }

    // Staging. MapPaye takes the answer in; the others bring the staging rows of one kind into line with it.

    void MapPaye(ClientId client, TaxYear taxYear, const CPayeResponse& response);
    /// One employment more, or another record of the one with this key. The key that its row gets is worked out when it
    /// is written, from what the rows have by then. The first for another client or year begins anew; without MapPaye
    /// only UpdateMTDEmployments writes.
    void AddEmploymentDataToMap(ClientId client, TaxYear taxYear, std::string key,
                                std::shared_ptr<const Employment_t> employment);
    void UpdateMTDPensionStateBenefits();
    void UpdateMTDPensionStateBenefits_PrivatePensions();
    void UpdateMTDPensionStateBenefits_TaxableSocialSecurityBenefits();
    void UpdateMTDPensionsAndOther();
    void UpdateMTDEmployments();
    void UpdateMTDTaxFreeAllowances();

    // Schedules, from the stored staging rows.

    bool DoNewEmploymentsExist() override;
    bool DoNewPensionStateBenefitsExist() override;
    bool DoNewPensionStateBenefitsExist_Other();
    bool DoNewPensionStateBenefitsExist_PrivatePensions();
    bool DoNewPensionStateBenefitsExist_TaxableSocialSecurityBenefits();
    void CreateNewSchedules() override;
    const CreatedSchedules& GetCreatedSchedules() const noexcept { return m_created; }
    void CreateNewEmploymentSchedules();
    void CreateNewPensionStateBenefitSchedules_PrivatePensions();
    void CreateNewPensionStateBenefitSchedules_TaxableSocialSecurityBenefits();
    void CreateNewPensionStateBenefitSchedules_Other();
    /// Appends a row with a new GUID, the next ordering number (`ordering`, which moves on) and the two texts. The
    /// caller fills in the figures and saves it.
    void CreateNewEmploymentSchedule(Brix::CNewEmploy& schedules, int& ordering, const char* identifyingText,
                                     const char* employerName);
    /// Appends and saves a schedule of the year. `estimate`: the figure is a forecast.
    void CreateNewPensionStateBenefitSchedule(long section, long type, Kiln::CAmt amount, Kiln::CAmt tax, bool estimate,
                                              const char* payerName, const char* payerReference, Kiln::CDate date,
                                              const char* description);

    // Rules.

    /// Whether a schedule of the return is HMRC's item: pensions (1040, 1050) by the same reference, benefits (1090,
    /// 1140) by the same date. Two dates that are not valid are the same.
    static bool PSBMatchesMTDPSB(Brix::CPensionStateBenefits& schedule, Brix::CMTD_PensionStateBenefits& staged);
    /// Whether the stored benefits of an employment are not those that HMRC sends; their order does not matter.
    /// Withdrawn rows do not count. Moves the list.
    static bool CompanyBenefitsDiffers(Brix::CMTD_EmploymentsCompanyBenefits& stored,
                                       std::vector<CompanyBenefit_t> fromHmrc);
    /// The current row's amount is there and not 0.
    static bool MTD_TaxFreeAllowancesHasValue(const Brix::CMTD_TaxFreeAllowances& allowances);
    /// Positions the list on the employment with the lowest ordering number; false when there is none.
    static bool Match_MTD_TaxFreeAllowancesToEmployment(Brix::CNewEmploy& schedules);

    static MTD_PSBType MapTSSBBenefitTypeToMTD_PSBType(int benefitType) noexcept;
    static bool IsPrivatePension(long mtdType) noexcept;
    static bool IsTaxableSocialSecurityBenefit(long mtdType) noexcept;
    /// `scheduleType`: a code of mapPSBTypes.
    static bool DoPSBTypeAndMTD_PSBTypeMatch(long scheduleType, long mtdType) noexcept;

private:
    virtual std::shared_ptr<CPaye> GetPayeEndpoint(CAuthorisation& authorisation);
    void WriteAnswer(bool needsWhole, const std::function<void(StagingWriter&, const StagedYear&)>& write);
    bool IsPensionNew(bool (*isOfKind)(long kind)) const;
    struct Creation; // staged records and return, read once, with what is being made
    void InCreation(const std::function<void(Creation&)>& work);
    void CreatePensions(bool (*isOfKind)(long kind));

    void BeginAnswer(ClientId client, TaxYear taxYear);

    std::optional<StagedYear> m_answer; // HMRC's, in the terms of the staging rows
    bool m_isWhole = false;             // it is all that HMRC sent, not single employments
    std::optional<ReturnYear> m_return;
    ClientId m_answerClient;
    short m_answerYear = 0;
    CreatedSchedules m_created;
};

} // namespace HmrcApi
