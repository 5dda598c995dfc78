#include "MorvUt/hmrc/fetch/EmploymentsPrepop.h"

#include <algorithm>

#include "MorvUt/hmrc/fetch/Retrieval.h"
#include "MorvUt/hmrc/schedules/PensionTypes.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

bool IsSummedKind(long kind) { return IsPrivatePensionKind(kind) || IsStateBenefitKind(kind); }

} // namespace

CEmploymentsPrepop::CEmploymentsPrepop(ClientId client, TaxYear taxYear, std::string identifier,
                                       IEndpointOverride::ResponseType type, const CAuthorisationStore& store)
    : CSchedulePrepop(client, taxYear, std::move(identifier), type, store),
      m_schedules(client, taxYear.GetRealTaxYear())
{}

CEmploymentsPrepop::~CEmploymentsPrepop() = default;

std::shared_ptr<CEmploymentHistory> CEmploymentsPrepop::GetEmploymentHistoryEndpoint(CAuthorisation& authorisation)
{
    return MakeEndpoint<CEmploymentHistory, CEmploymentHistoryOverride>(authorisation);
}

std::shared_ptr<CIncomeSummary> CEmploymentsPrepop::GetIncomeSummaryEndpoint(CAuthorisation& authorisation)
{
    return MakeEndpoint<CIncomeSummary, CIncomeSummaryOverride>(authorisation);
}

std::shared_ptr<CBenefitsSummary> CEmploymentsPrepop::GetBenefitsSummaryEndpoint(CAuthorisation& authorisation)
{
    return MakeEndpoint<CBenefitsSummary, CBenefitsSummaryOverride>(authorisation);
}

std::shared_ptr<CTaxSummary> CEmploymentsPrepop::GetTaxSummaryEndpoint(CAuthorisation& authorisation)
{
    return MakeEndpoint<CTaxSummary, CTaxSummaryOverride>(authorisation);
}

void CEmploymentsPrepop::GetEmploymentData(std::string utr, std::shared_ptr<CAPIErrorHandler> errors, Logger* logger)
{
    Retrieval retrieval = MakeRetrieval(std::move(errors), logger);
    Ask(retrieval, utr);
    Stage(retrieval);
}

void CEmploymentsPrepop::Ask(Retrieval& retrieval, const std::string& utr)
{
    BeginAnswer(GetClient(), GetTaxYear());
    m_return.reset();
    m_notes.clear();
    Logger* const logger = retrieval.GetLogger();
    AskGroup(retrieval, kGroup, [&](CAuthorisation& authorisation) {
        const short year = GetYear();
        const auto history = GetEmploymentHistoryEndpoint(authorisation)->GetEmploymentHistory(utr, year, logger);
        const auto income = GetIncomeSummaryEndpoint(authorisation)->GetAnnualIncome(utr, year, logger);
        const auto benefits = GetBenefitsSummaryEndpoint(authorisation)->GetBenefitsSummary(utr, year, logger);
        const auto tax = GetTaxSummaryEndpoint(authorisation)->GetTaxSummary(utr, year, logger);
        MapEmploymentHistory(GetClient(), GetTaxYear(), history);
        MapAnnualIncome(GetClient(), GetTaxYear(), income);
        MapBenefits(GetClient(), GetTaxYear(), benefits);
        MapTax(GetClient(), GetTaxYear(), tax);
    });
}

void CEmploymentsPrepop::Stage(Retrieval& retrieval)
{
    if (!HasAnswer())
        return;
    StageGroup(retrieval, kGroup, [&](StagingWriter& writer) {
        m_return = LoadReturn(); // first: what is written waits for the next statement
        const StagedYear stored = writer.GetYear();
        StagePensions(writer, stored);
        StageEmployments(writer, stored);
        CompareWithReturn(writer, *m_return);
        m_notes = NotesOfParts(m_answer, m_parts, m_counts, writer.GetYear());
    });
}

void CEmploymentsPrepop::StagePensions(StagingWriter& writer, const StagedYear& stored) const
{
    const std::vector<StagedPension> items = CompletedPensions(m_answer, m_parts, stored);
    writer.WritePrivatePensions(items);
    writer.WriteStateBenefits(items);
}

void CEmploymentsPrepop::StageEmployments(StagingWriter& writer, const StagedYear& stored) const
{
    writer.WriteEmployments(CompletedEmployments(m_answer, m_parts, stored));
}

void CEmploymentsPrepop::BeginAnswer(ClientId client, TaxYear taxYear)
{
    m_answerClient = client;
    m_answerYear = taxYear.GetRealTaxYear();
    m_answer = {};
    m_parts = {};
    m_counts.clear();
}

void CEmploymentsPrepop::AddEmploymentDataToMap(ClientId client, TaxYear taxYear, const std::string& key,
                                                std::shared_ptr<const Employment_t> employment)
{
    if (!employment)
        return;
    if (m_answerClient != client || m_answerYear != taxYear.GetRealTaxYear())
        BeginAnswer(client, taxYear);
    std::vector<StagedEmployment>& items = m_answer.employments;
    auto item =
        std::find_if(items.begin(), items.end(), [&](const StagedEmployment& other) { return other.key == key; });
    if (item == items.end()) {
        item = items.emplace(items.end());
        item->key = key;
    }
    AddPart(*item, *employment);
}

void CEmploymentsPrepop::AddEmployments(ClientId client, TaxYear taxYear, Part part,
                                        const CEmploymentsResponse& response)
{
    EachEmployment(response, [&](const std::string& key, const std::shared_ptr<const Employment_t>& employment) {
        AddEmploymentDataToMap(client, taxYear, key, employment);
        ++m_counts[employment->employerPayeReference][static_cast<std::size_t>(part)];
    });
}

void CEmploymentsPrepop::MapEmploymentHistory(ClientId client, TaxYear taxYear,
                                              const CEmploymentHistoryResponse& response)
{
    AddEmployments(client, taxYear, Part::History, response);
    m_parts.history = !response.IsNothingYet();
}

void CEmploymentsPrepop::MapAnnualIncome(ClientId client, TaxYear taxYear, const CIncomeSummaryResponse& response)
{
    AddEmployments(client, taxYear, Part::Income, response);
    AddIncome(m_answer, response);
    m_parts.income = !response.IsNothingYet();
}

void CEmploymentsPrepop::MapBenefits(ClientId client, TaxYear taxYear, const CBenefitsSummaryResponse& response)
{
    AddEmployments(client, taxYear, Part::Benefits, response);
    m_parts.benefits = !response.IsNothingYet();
}

void CEmploymentsPrepop::MapTax(ClientId client, TaxYear taxYear, const CTaxSummaryResponse& response)
{
    AddEmployments(client, taxYear, Part::Tax, response);
    AddTax(m_answer, response);
    m_parts.tax = !response.IsNothingYet();
}

void CEmploymentsPrepop::UpdateMTDPensionsAndOther()
{
    if (HasAnswer())
        Write(m_answerClient, m_answerYear, [&](StagingWriter& writer) { StagePensions(writer, writer.GetYear()); });
}

void CEmploymentsPrepop::UpdateMTDEmployments()
{
    if (!m_answer.employments.empty() || m_parts.history)
        Write(m_answerClient, m_answerYear, [&](StagingWriter& writer) { StageEmployments(writer, writer.GetYear()); });
}

bool CEmploymentsPrepop::DoNewEmploymentsExist() { return m_schedules.IsEmploymentNew(); }

bool CEmploymentsPrepop::DoNewPensionStateBenefitsExist() { return m_schedules.IsPensionNew(); }

void CEmploymentsPrepop::CreateNewSchedules() { m_schedules.CreateAll(); }

void CEmploymentsPrepop::CreateNewEmploymentSchedules()
{
    m_schedules.Create([](StagedSchedules::Creation& creation) { creation.writer.AddEmployments(creation.staged); });
}

void CEmploymentsPrepop::CreateNewPensionStateBenefitSchedules() { m_schedules.CreatePensions(&IsSummedKind); }

void CEmploymentsPrepop::CreateNewPensionStateBenefitSchedule(long section, long type, Kiln::CAmt amount,
                                                              Kiln::CAmt tax)
{
    m_schedules.Create([&](StagedSchedules::Creation& creation) {
        creation.writer.Append(
            {static_cast<int>(section), static_cast<int>(type), amount, tax, false, {}, {}, {}, {}, {}});
    });
}

bool CEmploymentsPrepop::DoesPSBTypeExist(Brix::CPensionStateBenefits& list, long type)
{
    for (bool isThere = list.MoveFirst(); isThere; isThere = list.MoveNext())
        if (list.GetType() == type)
            return true;
    return false;
}

} // namespace HmrcApi
