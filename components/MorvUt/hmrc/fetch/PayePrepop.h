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
#include "MorvUt/hmrc/fetch/FetchStates.h"
#include "MorvUt/hmrc/fetch/IPrepopPAYE.h"
#include "MorvUt/hmrc/fetch/SchedulePrepop.h"
#include "MorvUt/hmrc/fetch/StagedSchedules.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// Two stages. A fetch writes HMRC's figures into the year's staging rows (CMTD_Employments and its company benefits,
/// CMTD_PensionStateBenefits, CMTD_TaxFreeAllowances): new items are added, changed ones updated, those no longer sent
/// are kept and marked withdrawn. Then, when the user asks, schedules are made for staged items that the return lacks.
///
/// The operations are the published names of what the folders beside this one do: staging rows are written by
/// StagingWriter, schedules matched and made by plain functions over what was read once.
///
/// Years      real tax years: 2018 is 2017/18
/// Amounts    Kiln::CAmt; null is "not reported", never zero
/// Before     a practice is open, and its client exists
/// Writing    in a transaction of its own, or in a level of the open one; the lock is taken before anything is read.
///            Throws Cellar::DatabaseError (Busy when another program has the lock) and Quarry::ChangedByAnotherUser;
///            nothing of the operation is written then
/// Reading    throws Cellar::DatabaseError
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

    /// `identifier`: the National Insurance number, kept for GetIdentifier; the fetch is given it. `type`: Live asks
    /// HMRC, any other value takes one of its examples. `store`: whose tokens are used, by Government Gateway user ID;
    /// examples need none.
    CPAYEPrepop(ClientId client, TaxYear taxYear, std::string identifier, IEndpointOverride::ResponseType type,
                const CAuthorisationStore& store = CAuthorisationStore());
    ~CPAYEPrepop() override;

    /// Asks HMRC about the number and stages the answer, all or nothing; GetStagedCounts and HasDifferences tell what
    /// came of it. Errors go to the group "PAYE" of `errors` (never null), which is made in any case: HMRC's and the
    /// network's, UNSAVED_CHANGES within a transaction that has begun (nothing is asked then), and
    /// CHANGED_BY_ANOTHER_USER. After an error, and when HMRC has nothing, all rows stay as they were. `logger`: null
    /// for none.
    void GetPAYEData(std::string nationalInsuranceNumber, std::shared_ptr<CAPIErrorHandler> errors, Logger* logger);
    /// The two halves, for a retrieval that asks all groups before it stages any. Ask writes no staging row. Stage
    /// needs a transaction begun with the intent to write, takes a level of it, and does nothing when HMRC gave no
    /// answer.
    void Ask(Retrieval& retrieval, const std::string& nationalInsuranceNumber);
    void Stage(Retrieval& retrieval);
    /// HMRC answered with records, which are in hand: after Ask or MapPaye, until the next Ask.
    bool HasAnswer() const noexcept { return m_isWhole; }
    /// How many items HMRC sent: employments, their benefits, pensions, allowances.
    int CountSent() const { return HasAnswer() ? HmrcApi::CountSent(*m_answer) : 0; }
    /// What people must know of the answer itself: nothing, it is one.
    static std::vector<CString> GetNotes() { return {}; }
    /// The return that staged figures were compared with; nothing before Stage, or without an answer.
    const std::optional<ReturnYear>& GetReturn() const noexcept { return m_return; }

    // Staging, of an answer that was had in another way. The Update… functions bring the rows of one kind into line
    // with what MapPaye took in, each in a transaction, and count in GetStagedCounts; without it they do nothing.

    /// Takes a whole answer in, in place of the one before. Writes nothing.
    void MapPaye(ClientId client, TaxYear taxYear, const CPayeResponse& response);
    /// One employment more, or another record of the one with this key; a null one is nothing. Writes nothing. The key
    /// that its row gets is worked out when it is written, from what the rows have by then. The first for another
    /// client or year begins anew; without MapPaye only UpdateMTDEmployments writes, and takes these for all that there
    /// are.
    void AddEmploymentDataToMap(ClientId client, TaxYear taxYear, std::string key,
                                std::shared_ptr<const Employment_t> employment);
    void UpdateMTDPensionStateBenefits(); // the next two, a transaction each
    void UpdateMTDPensionStateBenefits_PrivatePensions();
    void UpdateMTDPensionStateBenefits_TaxableSocialSecurityBenefits();
    void UpdateMTDPensionsAndOther(); // the state pension and its lump sum
    void UpdateMTDEmployments();      // and their company benefits
    void UpdateMTDTaxFreeAllowances();

    // Schedules, from the stored staging rows of the constructor's client and year: see IPrepopPAYE. `…_Other` is the
    // state pension and its lump sum.

    bool DoNewEmploymentsExist() override;
    bool DoNewPensionStateBenefitsExist() override;
    bool DoNewPensionStateBenefitsExist_Other();
    bool DoNewPensionStateBenefitsExist_PrivatePensions();
    bool DoNewPensionStateBenefitsExist_TaxableSocialSecurityBenefits();
    void CreateNewSchedules() override;
    /// What was made and committed, and what people must know of it, since the last CreateNewSchedules; the functions
    /// below add to it.
    const CreatedSchedules& GetCreatedSchedules() const noexcept { return m_schedules.GetCreated(); }
    void CreateNewEmploymentSchedules();
    void CreateNewPensionStateBenefitSchedules_PrivatePensions();
    void CreateNewPensionStateBenefitSchedules_TaxableSocialSecurityBenefits();
    void CreateNewPensionStateBenefitSchedules_Other();
    /// Appends a row with a new GUID, the client and year, the ordering number `ordering`, which moves on by one, and
    /// the two texts: PAYE reference and name. Stands on the row; the caller fills in the figures and saves it
    /// (Update). A tax form that was missing is made and committed.
    void CreateNewEmploymentSchedule(Brix::CNewEmploy& schedules, int& ordering, const char* identifyingText,
                                     const char* employerName);
    /// Appends and saves a schedule of the year, ordered behind those that are there, whether or not it is there
    /// already. `section` and `type`: codes of mapPSBCategorys and mapPSBTypes (1090 Jobseeker's Allowance). Null
    /// amounts and dates stay empty. `estimate`: the figure is a forecast. `payerReference`: the PAYE reference.
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
    /// The current row's amount is there and not 0; false behind the last row.
    static bool MTD_TaxFreeAllowancesHasValue(const Brix::CMTD_TaxFreeAllowances& allowances);
    /// Positions the list on the employment with the lowest ordering number, the first of equal ones: allowances stand
    /// with it. False when there is none.
    static bool Match_MTD_TaxFreeAllowancesToEmployment(Brix::CNewEmploy& schedules);

    /// `benefitType`: of TaxableSocialSecurityBenefit_t. MTD_None for any other number.
    static MTD_PSBType MapTSSBBenefitTypeToMTD_PSBType(int benefitType) noexcept;
    // `mtdType`: of MTD_PSBType. Any other number, and MTD_Unknown, is neither.
    static bool IsPrivatePension(long mtdType) noexcept;
    static bool IsTaxableSocialSecurityBenefit(long mtdType) noexcept;
    /// A schedule of this type (a code of mapPSBTypes) may be an item of this kind: 1090 and MTD_JobseekersAllowance.
    /// Never of the state pension (MTD_None), which is known by its description.
    static bool DoPSBTypeAndMTD_PSBTypeMatch(long scheduleType, long mtdType) noexcept;

private:
    virtual std::shared_ptr<CPaye> GetPayeEndpoint(CAuthorisation& authorisation);
    void WriteAnswer(bool needsWhole, const std::function<void(StagingWriter&, const StagedYear&)>& write);
    void BeginAnswer(ClientId client, TaxYear taxYear);

    std::optional<StagedYear> m_answer; // HMRC's, in the terms of the staging rows
    bool m_isWhole = false;             // it is all that HMRC sent, not single employments
    std::optional<ReturnYear> m_return;
    ClientId m_answerClient;
    short m_answerYear = 0;
    StagedSchedules m_schedules;
};

} // namespace HmrcApi
