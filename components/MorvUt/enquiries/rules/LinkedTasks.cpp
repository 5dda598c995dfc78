#include "MorvUt/enquiries/rules/LinkedTasks.h"

#include <set>

#include "Brix/Records.h"
#include "MorvUt/mappings/TypeMappings.h"
#include "MorvUt/res/Strings.h"

namespace
{

using Brix::CSource;
using Brix::CSourceTask;
using Brix::CSourceTaskTypeRef;

constexpr int kTaskTypesTable = 99; // of ppAllMappings

/// What the practice calls its types of tasks.
class TaskNames
{
public:
    explicit TaskNames(Cellar::CConnection& connection)
    {
        CSourceTaskTypeRef types;
        for (types.Open(connection); !types.IsEOL(); types.MoveNext())
            m_names[types.GetTypeID()] = types.GetDescription();
    }

    /// The task's own name, else its type's.
    CString NameOf(const CSourceTask& task) const
    {
        if (CString own = task.GetDescription(); !own.IsEmpty())
            return own;
        const auto found = m_names.find(task.GetTypeID());
        if (found != m_names.end() && !found->second.IsEmpty())
            return found->second;
        const char* name = "";
        GetMapLongNameFromIndex(ppAllMappings[kTaskTypesTable], &name, static_cast<int>(task.GetTypeID()));
        return name;
    }

private:
    std::map<long, CString> m_names;
};

TaskState TaskStateOf(const CSourceTask& task)
{
    if (task.GetComplete())
        return TaskState::Complete;
    return task.GetRequired() ? TaskState::Incomplete : TaskState::NotRequired;
}

} // namespace

CString TextOf(TaskState state)
{
    constexpr unsigned kTexts[] = {0, IDS_TASK_COMPLETE, IDS_TASK_INCOMPLETE, IDS_TASK_NOT_REQUIRED};
    return state == TaskState::None ? CString() : LibraryText(kTexts[static_cast<int>(state)]);
}

CString LinkedTask::TipText() const
{
    if (state == TaskState::None)
        return {};
    const CString pattern =
        LibraryText(state == TaskState::Complete ? IDS_TASK_TIP_COMPLETE : IDS_TASK_TIP_OUTSTANDING);
    return Afx::FillPlaces(pattern.View(), {source.View(), task.View()});
}

std::vector<SourceChoice> ListSources(Cellar::CConnection& connection, const TrackerOwner& owner)
{
    std::vector<SourceChoice> choices;
    CSource sources;
    for (sources.Open(connection, {OwnedBy<CSource>(owner)}, {{CSource::kYear, true}, {CSource::kSourceID}});
         !sources.IsEOL(); sources.MoveNext())
        choices.push_back({sources.GetSourceID(), sources.GetDescription(), sources.GetYear()});
    return choices;
}

std::vector<TaskChoice> ListTasks(Cellar::CConnection& connection, long sourceId)
{
    std::vector<TaskChoice> choices;
    const TaskNames names(connection);
    CSourceTask tasks;
    for (tasks.Open(connection, {{CSourceTask::kSourceID, sourceId}}, {{CSourceTask::kListOrder}}); !tasks.IsEOL();
         tasks.MoveNext())
        choices.push_back({tasks.GetTypeID(), names.NameOf(tasks)});
    return choices;
}

std::vector<TrackerLine> ListTracker(Cellar::CConnection& connection, const TrackerOwner& owner, short year)
{
    CSource sources;
    sources.Open(connection, {OwnedBy<CSource>(owner), {CSource::kYear, Cellar::Value(year)}}, {{CSource::kSourceID}});
    std::vector<long> ids;
    for (; !sources.IsEOL(); sources.MoveNext())
        ids.push_back(sources.GetSourceID());
    std::multimap<long, TrackerLine> tasks;
    const TaskNames names(connection);
    for (const std::vector<long>& piece : Quarry::Where::InPieces(ids)) {
        CSourceTask task;
        for (task.Open(connection, {Quarry::Where::In(CSourceTask::kSourceID, piece)}, {{CSourceTask::kListOrder}});
             !task.IsEOL(); task.MoveNext())
            tasks.emplace(task.GetSourceID(), TrackerLine{task.GetSourceID(),
                                                          {},
                                                          names.NameOf(task),
                                                          task.GetDueDate(),
                                                          task.GetAssignedTo(),
                                                          TaskStateOf(task)});
    }
    std::vector<TrackerLine> lines;
    for (bool isRow = sources.MoveFirst(); isRow; isRow = sources.MoveNext()) {
        const std::size_t before = lines.size();
        const auto [first, last] = tasks.equal_range(sources.GetSourceID());
        for (auto task = first; task != last; ++task)
            lines.push_back(task->second);
        if (first == last)
            lines.push_back({sources.GetSourceID(), {}, {}, {}, {}, TaskState::None});
        for (std::size_t i = before; i < lines.size(); ++i)
            lines[i].source = sources.GetDescription();
    }
    return lines;
}

std::map<TaskKey, LinkedTask> ReadLinkedTasks(Cellar::CConnection& connection, const std::vector<TaskKey>& keys)
{
    std::map<TaskKey, LinkedTask> linked;
    const std::set<TaskKey> wanted(keys.begin(), keys.end());
    std::set<long> ids;
    for (const TaskKey& key : wanted)
        ids.insert(key.first);
    if (ids.empty())
        return linked;
    const TaskNames names(connection);
    for (const std::vector<long>& piece : Quarry::Where::InPieces({ids.begin(), ids.end()})) {
        std::map<long, CString> sourceNames;
        CSource sources;
        for (sources.Open(connection, {Quarry::Where::In(CSource::kSourceID, piece)}); !sources.IsEOL();
             sources.MoveNext())
            sourceNames[sources.GetSourceID()] = sources.GetDescription();
        CSourceTask tasks;
        for (tasks.Open(connection, {Quarry::Where::In(CSourceTask::kSourceID, piece)}); !tasks.IsEOL();
             tasks.MoveNext()) {
            const TaskKey key(tasks.GetSourceID(), tasks.GetTypeID());
            if (wanted.contains(key))
                linked[key] = {sourceNames[key.first], names.NameOf(tasks), TaskStateOf(tasks)};
        }
    }
    return linked;
}
