#include "MorvUt/enquiries/tracker/TrackerRows.h"

#include "MorvUt/context/TrackerTypes.h"
#include "Quarry/NewId.h"

namespace Tracker
{
namespace
{

using Brix::CSource;
using Brix::CSourceTask;
using Quarry::Where;

Source SourceOf(const CSource& row)
{
    Source source;
    source.id = row.GetSourceID();
    source.typeId = row.GetSourceTypeID();
    source.year = row.GetYear();
    source.description = row.GetDescription();
    source.showsReminder = row.GetShowReminder();
    source.isUserCreated = row.GetUserCreated();
    source.defaultTracker = row.Get(CSource::kDefaultTrackerGUID);
    source.carriesStaff = row.GetCFStaff();
    return source;
}

std::vector<Source> AllOf(CSource& rows)
{
    std::vector<Source> sources;
    for (; !rows.IsEOL(); rows.MoveNext())
        sources.push_back(SourceOf(rows));
    return sources;
}

/// NULL for nothing.
Cellar::Value Stored(const CString& text) { return text.IsEmpty() ? Cellar::Value() : Cellar::Value(text); }

} // namespace

long TaxReturnTypeOf(const TrackerOwner& owner) noexcept
{
    return owner.isPartnership ? kPartnershipReturnSource : kTaxReturnSource;
}

std::vector<Source> ReadSources(Cellar::CConnection& connection, const TrackerOwner& owner, short first, short last)
{
    CSource rows;
    rows.Open(connection, {OwnedBy<CSource>(owner), Where::Between(CSource::kYear, first, last)},
              {{CSource::kSourceID}});
    return AllOf(rows);
}

std::vector<Source> ReadSources(Cellar::CConnection& connection, const std::vector<long>& ids)
{
    std::vector<Source> sources;
    for (const std::vector<long>& piece : Where::InPieces(ids)) {
        CSource rows;
        rows.Open(connection, {Where::In(CSource::kSourceID, piece)}, {{CSource::kSourceID}});
        const std::vector<Source> more = AllOf(rows);
        sources.insert(sources.end(), more.begin(), more.end());
    }
    return sources;
}

std::vector<long> IdsOf(const std::vector<Source>& sources)
{
    std::vector<long> ids;
    ids.reserve(sources.size());
    for (const Source& source : sources)
        ids.push_back(source.id);
    return ids;
}

std::vector<Task> ReadTasks(Cellar::CConnection& connection, const std::vector<long>& sourceIds)
{
    std::vector<Task> tasks;
    for (const std::vector<long>& piece : Where::InPieces(sourceIds)) {
        CSourceTask rows;
        for (rows.Open(connection, {Where::In(CSourceTask::kSourceID, piece)}); !rows.IsEOL(); rows.MoveNext())
            tasks.push_back(TaskOf(rows));
    }
    return tasks;
}

std::vector<Task> TasksOfSource(const std::vector<Task>& tasks, long sourceId)
{
    std::vector<Task> own;
    for (const Task& task : tasks)
        if (task.sourceId == sourceId)
            own.push_back(task);
    return own;
}

Cellar::SqlText WhereOfTracker(long defaultTrackerId)
{
    return defaultTrackerId != 0 ? Cellar::SqlText(" AND DefaultTrackerID = %ld")
                                 : Cellar::SqlText(" AND DefaultTrackerID IS NULL");
}

std::vector<DefaultTask> ReadDefaultTasks(Cellar::CConnection& connection, long defaultTrackerId)
{
    const Cellar::SqlText statement =
        "SELECT SourceTypeID, SourceDefaultTask.TypeID, ListOrder, DueDate, ReminderDate FROM SourceDefaultTask, "
        "SourceTaskTypeRef WHERE SourceDefaultTask.TypeID = SourceTaskTypeRef.TypeID AND [default] <> 0" +
        WhereOfTracker(defaultTrackerId) + " ORDER BY SourceTypeID, ListOrder, SourceDefaultTask.TypeID";
    std::vector<Cellar::Value> values;
    if (defaultTrackerId != 0)
        values.emplace_back(defaultTrackerId);
    std::vector<DefaultTask> tasks;
    for (const auto& row : connection.Query(statement, values).rows)
        tasks.push_back(
            {Cellar::ToLong(row[0]), Cellar::ToLong(row[1]), row[2], Cellar::ToDate(row[3]), Cellar::ToDate(row[4])});
    return tasks;
}

bool ReadCarriesStaff(Cellar::CConnection& connection)
{
    Brix::COptions options;
    return options.Open(connection) && options.GetCFStaff();
}

void AddSources(Cellar::CConnection& connection, const TrackerOwner& owner, std::vector<Source>& sources)
{
    if (sources.empty())
        return;
    CSource rows;
    rows.Use(connection);
    Quarry::ReserveIds(rows.GetTable(), static_cast<long>(sources.size()), connection);
    for (Source& source : sources) {
        source.id = Quarry::NewId(rows.GetTable(), connection);
        rows.AddNew();
        rows.SetSourceID(source.id);
        SetOwner(rows, owner);
        rows.SetYear(source.year);
        rows.SetSourceTypeID(source.typeId);
        rows.SetStatus("?");
        rows.SetShowReminder(source.showsReminder);
        rows.Set(CSource::kDescription, Stored(source.description));
        rows.SetUserCreated(source.isUserCreated);
        rows.Set(CSource::kDefaultTrackerGUID, source.defaultTracker);
        rows.SetCFStaff(source.carriesStaff);
    }
    rows.UpdateAll();
}

void AddTasks(Cellar::CConnection& connection, const std::vector<Task>& tasks)
{
    CSourceTask rows;
    rows.Use(connection);
    for (const Task& task : tasks) {
        rows.AddNew();
        SetTask(rows, task);
    }
    rows.UpdateAll();
}

void SetTask(CSourceTask& row, const Task& task)
{
    row.SetSourceID(task.sourceId);
    row.SetTypeID(task.typeId);
    row.Set(CSourceTask::kListOrder, task.listOrder);
    row.SetDueDate(task.due);
    row.SetReminderDate(task.reminder);
    row.SetRequired(task.isRequired);
    row.SetComplete(task.isComplete);
    row.Set(CSourceTask::kAssignedTo, task.assignedTo);
    row.Set(CSourceTask::kDescription, task.description);
}

Task TaskOf(const CSourceTask& row)
{
    Task task;
    task.sourceId = row.GetSourceID();
    task.typeId = row.GetTypeID();
    task.listOrder = row.Get(CSourceTask::kListOrder);
    task.due = row.GetDueDate();
    task.reminder = row.GetReminderDate();
    task.isRequired = row.GetRequired();
    task.isComplete = row.GetComplete();
    task.assignedTo = row.Get(CSourceTask::kAssignedTo);
    task.description = row.Get(CSourceTask::kDescription);
    return task;
}

} // namespace Tracker
