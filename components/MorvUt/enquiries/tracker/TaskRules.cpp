#include "MorvUt/enquiries/tracker/TaskRules.h"

#include <algorithm>

namespace Tracker
{
namespace
{

// Task types with rules of their own, as they are stored.
constexpr long kIssued = 1, kClaimMade = 19, kClaimAnswered = 20;

bool IsOfClaim(long taskType) noexcept { return taskType == kClaimMade || taskType == kClaimAnswered; }

} // namespace

const Task* FindTask(const std::vector<Task>& tasks, long type) noexcept
{
    const auto found = std::find_if(tasks.begin(), tasks.end(), [&](const Task& task) { return task.typeId == type; });
    return found == tasks.end() ? nullptr : &*found;
}

bool IsMadeIn(long taskType, short year) noexcept { return year > kLastYearWithoutClaims || !IsOfClaim(taskType); }

Kiln::CDate OneYearLater(const Kiln::CDate& date) noexcept
{
    if (!date.IsValid())
        return {};
    const Afx::CivilDate day = date.GetFields();
    const Kiln::CDate later(day.year + 1, day.month, day.day);
    if (later.IsValid() || day.month != 2)
        return later.IsValid() ? later : Kiln::CDate();
    return {day.year + 1, 2, 28};
}

void CarrySettings(Task& task, const Task& before, bool withStaff)
{
    task.isRequired = before.isRequired;
    if (task.typeId == kIssued || IsOfClaim(task.typeId))
        return;
    task.listOrder = before.listOrder;
    task.due = OneYearLater(before.due);
    task.reminder = OneYearLater(before.reminder);
    if (withStaff)
        task.assignedTo = before.assignedTo;
}

Task CarriedTask(const Source& source, const Task& before)
{
    Task task;
    task.sourceId = source.id;
    task.typeId = before.typeId;
    task.listOrder = before.listOrder;
    task.description = before.description;
    CarrySettings(task, before, source.carriesStaff);
    return task;
}

std::vector<Task> DefaultTasksOf(const Source& source, const std::vector<DefaultTask>& defaults)
{
    std::vector<Task> tasks;
    for (const DefaultTask& each : defaults)
        if (each.sourceTypeId == source.typeId && IsMadeIn(each.typeId, source.year) && !FindTask(tasks, each.typeId))
            tasks.push_back({source.id,
                             each.typeId,
                             each.listOrder,
                             each.due,
                             each.reminder,
                             !IsOfClaim(each.typeId),
                             false,
                             {},
                             {}});
    return tasks;
}

std::vector<Task> TasksOf(const Source& source, const std::vector<DefaultTask>& defaults,
                          const std::vector<Task>& before)
{
    std::vector<Task> tasks = DefaultTasksOf(source, defaults);
    for (Task& task : tasks)
        if (const Task* const same = FindTask(before, task.typeId))
            CarrySettings(task, *same, source.carriesStaff);
    if (source.isUserCreated)
        for (const Task& each : before)
            if (IsMadeIn(each.typeId, source.year) && !FindTask(tasks, each.typeId))
                tasks.push_back(CarriedTask(source, each));
    return tasks;
}

} // namespace Tracker
