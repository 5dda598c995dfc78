#include "MorvUt/context/TrackerTypes.h"

#include "Brix/Records.h"
#include "MorvUt/mappings/TypeMappings.h"

namespace
{

using Brix::CSourceDefaultTask;
using Brix::CSourceTaskTypeRef;
using Brix::CSourceType;

constexpr int kTaskTypeTable = 99, kSourceTypeTable = 100; // of ppAllMappings
constexpr int kLastDefaultTask = 20;                       // the later ones are added by hand

void AddTaskType(const TypeMapping& task)
{
    CSourceTaskTypeRef row;
    if (row.Open({{CSourceTaskTypeRef::kTypeID, task.index}}))
        return;
    row.AddNew();
    row.SetTypeID(task.index);
    row.SetDefault(task.index <= kLastDefaultTask);
    row.SetDescription(task.longName);
    row.Update();
}

void AddDefaultTask(int type, int task, int order)
{
    CSourceDefaultTask row;
    if (row.Open({{CSourceDefaultTask::kSourceTypeID, type},
                  {CSourceDefaultTask::kTypeID, task},
                  {CSourceDefaultTask::kDefaultTrackerID, nullptr}}))
        return;
    row.AddNew();
    row.SetSourceTypeID(type);
    row.SetTypeID(task);
    row.SetListOrder(order);
    row.Update();
}

} // namespace

void AddSourceType(int type)
{
    CSourceType row;
    if (row.Open({{CSourceType::kSourceTypeID, type}}))
        return;
    const char* name = "";
    GetMapLongNameFromIndex(ppAllMappings[kSourceTypeTable], &name, type);
    row.AddNew();
    row.SetSourceTypeID(type);
    row.SetShowReminder(true);
    row.SetDescription(name);
    row.Update();
}

void SeedTrackerTypes()
{
    const TypeMapping* const tasks = ppAllMappings[kTaskTypeTable];
    for (const TypeMapping* task = tasks; task->shortName; ++task)
        AddTaskType(*task);
    for (const int type : {kTaxReturnSource, kPartnershipReturnSource}) {
        if (CSourceType().Open({{CSourceType::kSourceTypeID, type}}))
            continue;
        AddSourceType(type);
        int order = 0;
        for (const TypeMapping* task = tasks; task->shortName; ++task)
            if (task->index <= kLastDefaultTask)
                AddDefaultTask(type, task->index, ++order);
    }
}
