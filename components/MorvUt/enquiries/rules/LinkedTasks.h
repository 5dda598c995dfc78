#pragma once

// Sources and tasks of the work tracker as enquiries name them.

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "Afx/text/CString.h"
#include "Cellar/Connection.h"
#include "Kiln/CDate.h"
#include "MorvUt/enquiries/rules/TrackerOwner.h"
#include "MorvUt/Export.h"

enum class TaskState : std::uint8_t
{
    None, // there is no such task
    Complete,
    Incomplete,
    NotRequired // and not complete
};
/// "Task complete", "Task incomplete", "Task not required"; empty for None.
MORVUT_API CString TextOf(TaskState state);

struct LinkedTask
{
    CString source, task; // their names
    TaskState state = TaskState::None;

    /// "Linked to %1, %2 which is complete", else "... outstanding"; empty for a task that there is not.
    MORVUT_API CString TipText() const;
};

/// What can be chosen for a link.
struct SourceChoice
{
    long id = 0;
    CString name;
    short year = 0; // real
};
struct TaskChoice
{
    long typeId = 0;
    CString name;
};

// These throw Cellar::DatabaseError.

/// The owner's sources of all years, the latest year first.
MORVUT_API std::vector<SourceChoice> ListSources(Cellar::CConnection& connection, const TrackerOwner& owner);
/// The tasks of a source, in list order.
MORVUT_API std::vector<TaskChoice> ListTasks(Cellar::CConnection& connection, long sourceId);

/// A task of a source, or a source without any.
struct TrackerLine
{
    long sourceId = 0;
    CString source, task; // their names
    Kiln::CDate due;
    CString assignedTo;                // a user's id
    TaskState state = TaskState::None; // of a source without tasks
};
/// The owner's sources of the real tax year with their tasks in list order: three statements, more for thousands.
MORVUT_API std::vector<TrackerLine> ListTracker(Cellar::CConnection& connection, const TrackerOwner& owner, short year);

/// A source and the type of one of its tasks.
using TaskKey = std::pair<long, long>;
/// The tasks of these that there are, with four statements, more for thousands.
MORVUT_API std::map<TaskKey, LinkedTask> ReadLinkedTasks(Cellar::CConnection& connection,
                                                         const std::vector<TaskKey>& keys);
