#pragma once

// Reading and writing rows of the work tracker, all of a kind at once. All of it throws Cellar::DatabaseError.

#include <optional>
#include <vector>

#include "Brix/Records.h"
#include "MorvUt/enquiries/rules/TrackerOwner.h"
#include "MorvUt/enquiries/tracker/TaskRules.h"

namespace Tracker
{

/// The type of source of the owner's tax return, as it is stored.
long TaxReturnTypeOf(const TrackerOwner& owner) noexcept;

/// In the order in which they were made.
std::vector<Source> ReadSources(Cellar::CConnection& connection, const TrackerOwner& owner, short first, short last);
std::vector<Source> ReadSources(Cellar::CConnection& connection, const std::vector<long>& ids);
std::vector<long> IdsOf(const std::vector<Source>& sources);
/// The tasks of these sources.
std::vector<Task> ReadTasks(Cellar::CConnection& connection, const std::vector<long>& sourceIds);
/// Those of one source.
std::vector<Task> TasksOfSource(const std::vector<Task>& tasks, long sourceId);

/// The default tasks of all types of source, or those of a tracker, in list order. Tracker 0: the standard ones.
std::vector<DefaultTask> ReadDefaultTasks(Cellar::CConnection& connection, long defaultTrackerId = 0);
/// What narrows a statement on default tasks to a tracker; its argument (%ld) is there for one other than 0.
Cellar::SqlText WhereOfTracker(long defaultTrackerId);
/// The practice's option: staff are carried forward.
bool ReadCarriesStaff(Cellar::CConnection& connection);

/// Adds the sources, as new ones, and gives them their ids.
void AddSources(Cellar::CConnection& connection, const TrackerOwner& owner, std::vector<Source>& sources);
void AddTasks(Cellar::CConnection& connection, const std::vector<Task>& tasks);
/// Puts the values of a task into the current row.
void SetTask(Brix::CSourceTask& row, const Task& task);
/// The current row.
Task TaskOf(const Brix::CSourceTask& row);

} // namespace Tracker
