#include "MorvUt/enquiries/tracker/DefaultTasks.h"

#include "MorvUt/enquiries/tracker/TrackerRows.h"

namespace Tracker
{
namespace
{

using Brix::CSource;
using Brix::CSourceTask;
using Cellar::SqlText;
using Cellar::Value;

/// Row by row, where one statement met a task that is there already.
int AddMissingTasks(Cellar::CConnection& connection, const Source& source, long defaultTrackerId)
{
    std::vector<Task> tasks = DefaultTasksOf(source, ReadDefaultTasks(connection, defaultTrackerId));
    const std::vector<Task> there = ReadTasks(connection, {source.id});
    std::erase_if(tasks, [&](const Task& task) { return FindTask(there, task.typeId) != nullptr; });
    AddTasks(connection, tasks);
    return static_cast<int>(tasks.size());
}

/// The client, or partnership, as a condition; its argument (%ld) is there unless it is null.
SqlText IsOwner(const Value& id) { return id.IsNull() ? SqlText("IS NULL") : SqlText("= %ld"); }

/// The first source of the year before that has the source's owner, type and description; 0: none.
long FindYearBefore(Cellar::CConnection& connection, long sourceId, short year)
{
    const Cellar::RowSet own = connection.Queryf(
        "SELECT clientid, pclientid, SourceTypeID, [Description] FROM Source WHERE SourceID = %ld", sourceId);
    if (own.rows.empty())
        return 0;
    const Value &client = own.rows[0][0], &partnership = own.rows[0][1];
    std::vector<Value> values;
    for (const Value& id : {client, partnership})
        if (!id.IsNull())
            values.push_back(id);
    values.insert(values.end(), {year - 1, own.rows[0][2], own.rows[0][3]});
    const SqlText statement = "SELECT SourceID FROM Source WHERE clientid " + IsOwner(client) + " AND pclientid " +
                              IsOwner(partnership) +
                              " AND source.Year = %d AND SourceTypeID = %d AND [Description] = '%s'";
    long first = 0;
    for (const auto& row : connection.Query(statement, values).rows)
        if (const long id = Cellar::ToLong(row[0]); first == 0 || id < first)
            first = id;
    return first;
}

} // namespace

int CopyDefaultTasks(Cellar::CConnection& connection, long sourceId, long defaultTrackerId, long sourceTypeId,
                     short year)
{
    SqlText statement =
        "INSERT INTO SourceTask ( SourceID, TypeID, ListOrder, DueDate, ReminderDate ) SELECT %ld, "
        "SourceDefaultTask.TypeID, ListOrder, DueDate, ReminderDate FROM SourceDefaultTask, SourceTaskTypeRef WHERE "
        "SourceDefaultTask.TypeID = SourceTaskTypeRef.TypeID AND SourceTypeID = %ld AND [default] <> 0" +
        WhereOfTracker(defaultTrackerId);
    std::vector<Value> values{sourceId, sourceTypeId};
    if (defaultTrackerId != 0)
        values.emplace_back(defaultTrackerId);
    if (year <= kLastYearWithoutClaims)
        statement += " AND SourceDefaultTask.TypeID NOT IN ( 19, 20 )";
    long made = 0;
    try {
        made = connection.Execute(statement, values);
    } catch (const Cellar::DatabaseError& error) {
        if (error.GetCategory() != Cellar::DatabaseError::Category::DuplicateKey)
            throw;
        Source source;
        source.id = sourceId;
        source.typeId = sourceTypeId;
        source.year = year;
        made = AddMissingTasks(connection, source, defaultTrackerId);
    }
    if (year > kLastYearWithoutClaims)
        connection.ExecuteDirectf("UPDATE SourceTask SET bRequired = 0 WHERE SourceID = %ld AND TypeID IN ( 19, 20 )",
                                  sourceId);
    return static_cast<int>(made);
}

void CarryFromYearBefore(Cellar::CConnection& connection, long sourceId, short year)
{
    const long yearBefore = FindYearBefore(connection, sourceId, year);
    const std::vector<Source> found = ReadSources(connection, std::vector<long>{sourceId});
    if (yearBefore == 0 || found.empty())
        return;
    Source source = found.front();
    source.year = year;
    const std::vector<Task> before = ReadTasks(connection, {yearBefore});
    CSourceTask rows;
    std::vector<Task> own;
    for (rows.Open(connection, {{CSourceTask::kSourceID, sourceId}}); !rows.IsEOL(); rows.MoveNext()) {
        own.push_back(TaskOf(rows));
        if (const Task* const same = FindTask(before, own.back().typeId)) {
            CarrySettings(own.back(), *same, source.carriesStaff);
            SetTask(rows, own.back());
        }
    }
    for (const Task& each : before)
        if (source.isUserCreated && IsMadeIn(each.typeId, year) && !FindTask(own, each.typeId)) {
            rows.AddNew();
            SetTask(rows, CarriedTask(source, each));
        }
    rows.UpdateAll();
}

} // namespace Tracker
