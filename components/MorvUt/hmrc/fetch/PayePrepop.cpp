#include "MorvUt/hmrc/fetch/PayePrepop.h"

#include <algorithm>

#include "MorvUt/hmrc/fetch/PayeMapping.h"
#include "MorvUt/hmrc/fetch/Retrieval.h"
#include "MorvUt/hmrc/schedules/NewSchedules.h"
#include "MorvUt/hmrc/schedules/PensionTypes.h"
#include "MorvUt/hmrc/schedules/Words.h"
#include "MorvUt/hmrc/staging/Identity.h"
#include "MorvUt/hmrc/staging/Pairing.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

/// Stands on the next row, from the one given on, that HMRC still sends.
bool MoveToLive(Brix::CMTD_EmploymentsCompanyBenefits& list, bool isThere)
{
    while (isThere && list.GetWithdrawn())
        isThere = list.MoveNext();
    return isThere;
}

bool IsSameBenefit(const Brix::CMTD_EmploymentsCompanyBenefits& row, const CompanyBenefit_t& benefit)
{
    const int number = benefit.benefitNumber;
    return (number != 0 && row.GetBenefitType() == number) || row.GetBenefitTypeName() == CString(benefit.benefitType);
}

} // namespace

IPrepopPAYE::~IPrepopPAYE() = default;

CPAYEPrepop::CPAYEPrepop(ClientId client, TaxYear taxYear, std::string identifier, IEndpointOverride::ResponseType type,
                         const CAuthorisationStore& store)
    : CSchedulePrepop(client, taxYear, std::move(identifier), type, store),
      m_schedules(client, taxYear.GetRealTaxYear())
{}

CPAYEPrepop::~CPAYEPrepop() = default;

std::shared_ptr<CPaye> CPAYEPrepop::GetPayeEndpoint(CAuthorisation& authorisation)
{
    return MakeEndpoint<CPaye, CPayeOverride>(authorisation);
}

void CPAYEPrepop::GetPAYEData(std::string nationalInsuranceNumber, std::shared_ptr<CAPIErrorHandler> errors,
                              Logger* logger)
{
    Retrieval retrieval = MakeRetrieval(std::move(errors), logger);
    Ask(retrieval, nationalInsuranceNumber);
    Stage(retrieval);
}

void CPAYEPrepop::Ask(Retrieval& retrieval, const std::string& nationalInsuranceNumber)
{
    m_answer.reset();
    m_isWhole = false;
    m_return.reset();
    AskGroup(retrieval, kGroup, [&](CAuthorisation& authorisation) {
        const CPayeResponse response =
            GetPayeEndpoint(authorisation)->GetPaye(nationalInsuranceNumber, GetYear(), retrieval.GetLogger());
        if (!response.IsNothingYet()) // else the records come later, or are gone since the return was processed
            MapPaye(GetClient(), GetTaxYear(), response);
    });
}

void CPAYEPrepop::Stage(Retrieval& retrieval)
{
    if (!HasAnswer())
        return;
    const StagedYear& answer = *m_answer;
    StageGroup(retrieval, kGroup, [&](StagingWriter& writer) {
        m_return = LoadReturn(); // first: what is written waits for the next statement
        writer.WritePensions(answer.pensions);
        writer.WriteEmployments(answer.employments);
        writer.WriteAllowances(answer.allowances);
        CompareWithReturn(writer, *m_return);
    });
}

void CPAYEPrepop::MapPaye(ClientId client, TaxYear taxYear, const CPayeResponse& response)
{
    BeginAnswer(client, taxYear);
    m_answer = MapPayeAnswer(response);
    m_isWhole = true;
    std::vector<StagedEmployment>& items = m_answer->employments;
    std::vector<StagedEmployment> noRows;
    SetKeys(items, noRows, std::vector<int>(items.size(), kNoRow)); // as they are known until they are written
}

void CPAYEPrepop::BeginAnswer(ClientId client, TaxYear taxYear)
{
    m_answerClient = client;
    m_answerYear = taxYear.GetRealTaxYear();
    m_answer.emplace();
    m_isWhole = false;
}

void CPAYEPrepop::AddEmploymentDataToMap(ClientId client, TaxYear taxYear, std::string key,
                                         std::shared_ptr<const Employment_t> employment)
{
    if (!employment)
        return;
    if (!m_answer || m_answerClient != client || m_answerYear != taxYear.GetRealTaxYear())
        BeginAnswer(client, taxYear);
    StagedEmployment item = MapEmployment(*employment);
    item.key = std::move(key);
    std::vector<StagedEmployment>& items = m_answer->employments;
    const auto same =
        std::find_if(items.begin(), items.end(), [&](const StagedEmployment& other) { return other.key == item.key; });
    if (same != items.end())
        *same = std::move(item);
    else
        items.push_back(std::move(item));
}

void CPAYEPrepop::WriteAnswer(bool needsWhole, const std::function<void(StagingWriter&, const StagedYear&)>& write)
{
    if (m_answer && (m_isWhole || !needsWhole))
        Write(m_answerClient, m_answerYear, [&](StagingWriter& writer) { write(writer, *m_answer); });
}

void CPAYEPrepop::UpdateMTDPensionStateBenefits()
{
    UpdateMTDPensionStateBenefits_PrivatePensions();
    UpdateMTDPensionStateBenefits_TaxableSocialSecurityBenefits();
}

void CPAYEPrepop::UpdateMTDPensionStateBenefits_PrivatePensions()
{
    WriteAnswer(true,
                [](StagingWriter& writer, const StagedYear& answer) { writer.WritePrivatePensions(answer.pensions); });
}

void CPAYEPrepop::UpdateMTDPensionStateBenefits_TaxableSocialSecurityBenefits()
{
    WriteAnswer(true,
                [](StagingWriter& writer, const StagedYear& answer) { writer.WriteStateBenefits(answer.pensions); });
}

void CPAYEPrepop::UpdateMTDPensionsAndOther()
{
    WriteAnswer(true,
                [](StagingWriter& writer, const StagedYear& answer) { writer.WriteStatePensions(answer.pensions); });
}

void CPAYEPrepop::UpdateMTDEmployments()
{
    WriteAnswer(false,
                [](StagingWriter& writer, const StagedYear& answer) { writer.WriteEmployments(answer.employments); });
}

void CPAYEPrepop::UpdateMTDTaxFreeAllowances()
{
    WriteAnswer(true,
                [](StagingWriter& writer, const StagedYear& answer) { writer.WriteAllowances(answer.allowances); });
}

bool CPAYEPrepop::DoNewEmploymentsExist() { return m_schedules.IsEmploymentNew(); }

bool CPAYEPrepop::DoNewPensionStateBenefitsExist() { return m_schedules.IsPensionNew(); }

bool CPAYEPrepop::DoNewPensionStateBenefitsExist_Other() { return m_schedules.IsPensionNew(&IsStatePensionKind); }
bool CPAYEPrepop::DoNewPensionStateBenefitsExist_PrivatePensions()
{
    return m_schedules.IsPensionNew(&IsPrivatePension);
}
bool CPAYEPrepop::DoNewPensionStateBenefitsExist_TaxableSocialSecurityBenefits()
{
    return m_schedules.IsPensionNew(&IsTaxableSocialSecurityBenefit);
}

void CPAYEPrepop::CreateNewSchedules() { m_schedules.CreateAll(); }

void CPAYEPrepop::CreateNewEmploymentSchedules()
{
    m_schedules.Create([](StagedSchedules::Creation& creation) { creation.writer.AddEmployments(creation.staged); });
}

void CPAYEPrepop::CreateNewPensionStateBenefitSchedules_PrivatePensions()
{
    m_schedules.CreatePensions(&IsPrivatePension);
}
void CPAYEPrepop::CreateNewPensionStateBenefitSchedules_TaxableSocialSecurityBenefits()
{
    m_schedules.CreatePensions(&IsTaxableSocialSecurityBenefit);
}
void CPAYEPrepop::CreateNewPensionStateBenefitSchedules_Other() { m_schedules.CreatePensions(&IsStatePensionKind); }

void CPAYEPrepop::CreateNewEmploymentSchedule(Brix::CNewEmploy& schedules, int& ordering, const char* identifyingText,
                                              const char* employerName)
{
    m_schedules.Create([&](StagedSchedules::Creation& creation) {
        creation.writer.Append(schedules, ordering, identifyingText, employerName);
    });
}

void CPAYEPrepop::CreateNewPensionStateBenefitSchedule(long section, long type, Kiln::CAmt amount, Kiln::CAmt tax,
                                                       bool estimate, const char* payerName, const char* payerReference,
                                                       Kiln::CDate date, const char* description)
{
    m_schedules.Create([&](StagedSchedules::Creation& creation) {
        creation.writer.Append({static_cast<int>(section),
                                static_cast<int>(type),
                                amount,
                                tax,
                                estimate,
                                payerName,
                                payerReference,
                                {},
                                date,
                                description});
    });
}

bool CPAYEPrepop::PSBMatchesMTDPSB(Brix::CPensionStateBenefits& schedule, Brix::CMTD_PensionStateBenefits& staged)
{
    const long type = schedule.GetType();
    if (!IsScheduleOfKind(type, staged.GetMTDType()))
        return false;
    return IsPrivatePensionType(type) ? schedule.GetReference() == staged.GetReference()
                                      : schedule.GetStart() == staged.GetStart();
}

bool CPAYEPrepop::CompanyBenefitsDiffers(Brix::CMTD_EmploymentsCompanyBenefits& stored,
                                         std::vector<CompanyBenefit_t> fromHmrc)
{
    std::size_t count = 0;
    for (bool isThere = MoveToLive(stored, stored.MoveFirst()); isThere;
         isThere = MoveToLive(stored, stored.MoveNext()))
        ++count;
    if (count != fromHmrc.size())
        return true;
    return std::any_of(fromHmrc.begin(), fromHmrc.end(), [&](const CompanyBenefit_t& benefit) {
        bool isFound = MoveToLive(stored, stored.MoveFirst());
        while (isFound && !IsSameBenefit(stored, benefit))
            isFound = MoveToLive(stored, stored.MoveNext());
        return !isFound || !(stored.GetAmount() == benefit.amount) || stored.GetForecast() != benefit.isForecastBenefit;
    });
}

bool CPAYEPrepop::MTD_TaxFreeAllowancesHasValue(const Brix::CMTD_TaxFreeAllowances& allowances)
{
    return !allowances.IsEOL() && IsSomething(allowances.GetAmount());
}

bool CPAYEPrepop::Match_MTD_TaxFreeAllowancesToEmployment(Brix::CNewEmploy& schedules)
{
    int first = -1, lowest = 0;
    for (int row = 0; schedules.MoveTo(row); ++row)
        if (first < 0 || schedules.GetOrdering() < lowest) {
            first = row;
            lowest = schedules.GetOrdering();
        }
    return schedules.MoveTo(first);
}

CPAYEPrepop::MTD_PSBType CPAYEPrepop::MapTSSBBenefitTypeToMTD_PSBType(int benefitType) noexcept
{
    return static_cast<MTD_PSBType>(StagedKindOf(benefitType));
}

bool CPAYEPrepop::IsPrivatePension(long mtdType) noexcept { return IsPrivatePensionKind(mtdType); }

bool CPAYEPrepop::IsTaxableSocialSecurityBenefit(long mtdType) noexcept { return IsStateBenefitKind(mtdType); }

bool CPAYEPrepop::DoPSBTypeAndMTD_PSBTypeMatch(long scheduleType, long mtdType) noexcept
{
    return IsScheduleOfKind(scheduleType, mtdType);
}

} // namespace HmrcApi
