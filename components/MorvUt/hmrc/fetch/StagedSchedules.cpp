#include "MorvUt/hmrc/fetch/StagedSchedules.h"

#include "Brix/Subjects.h"
#include "MorvUt/hmrc/schedules/PensionTypes.h"

namespace HmrcApi
{

StagedSchedules::Creation::Creation(ClientId client, short year)
    : transaction(Cellar::Intent::Write, Brix::SubjectOf(client)), staged(LoadForSchedules(client, year)),
      writer(client, year, LoadReturnYear(client, year))
{}

bool StagedSchedules::IsEmploymentNew() const
{
    return IsAnyEmploymentNew(LoadStagedYear(m_client, m_year), LoadReturnYear(m_client, m_year));
}

bool StagedSchedules::IsPensionNew() const
{
    return IsPensionNew([](long kind) { return ScheduleOf(static_cast<int>(kind)) != nullptr; });
}

bool StagedSchedules::IsPensionNew(bool (*isOfKind)(long kind)) const
{
    return IsAnyPensionNew(LoadStagedItems(m_client, m_year), LoadReturnYear(m_client, m_year), isOfKind);
}

void StagedSchedules::Create(const std::function<void(Creation&)>& work)
{
    Creation creation(m_client, m_year);
    work(creation);
    creation.transaction.Commit();
    const CreatedSchedules& made = creation.writer.GetCreated();
    m_created.employments += made.employments;
    m_created.pensionsAndBenefits += made.pensionsAndBenefits;
    m_created.notes.insert(m_created.notes.end(), made.notes.begin(), made.notes.end());
}

void StagedSchedules::CreatePensions(bool (*isOfKind)(long kind))
{
    Create([&](Creation& creation) { creation.writer.AddPensions(creation.staged, isOfKind); });
}

void StagedSchedules::CreateAll()
{
    m_created = {};
    Create([](Creation& creation) { creation.writer.AddAll(creation.staged); });
}

} // namespace HmrcApi
