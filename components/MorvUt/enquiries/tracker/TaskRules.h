#pragma once

// What tasks a new source has, from the default tasks of its type and from the source of the year before: the rules, on
// values that were read once. Years are real tax years.

#include <vector>

#include "Afx/text/CString.h"
#include "Cellar/Value.h"
#include "Kiln/CDate.h"
#include "MorvUt/Export.h"

namespace Tracker
{

struct Source
{
    long id = 0;
    long typeId = 0;
    short year = 0;
    CString description;
    bool showsReminder = false;
    bool isUserCreated = false; // a user's own job
    Cellar::Value defaultTracker;
    bool carriesStaff = false; // whoever is assigned to a task is carried forward
};

struct Task
{
    long sourceId = 0;
    long typeId = 0;
    Cellar::Value listOrder;
    Kiln::CDate due, reminder;
    bool isRequired = true;
    bool isComplete = false;
    Cellar::Value assignedTo, description;
};

struct DefaultTask
{
    long sourceTypeId = 0;
    long typeId = 0;
    Cellar::Value listOrder;
    Kiln::CDate due, reminder;
};

/// The task of the type; null when there is none.
MORVUT_API const Task* FindTask(const std::vector<Task>& tasks, long type) noexcept;

/// The last year in which sources have no tasks for repayment claims, types 19 and 20. Later ones have them, at first
/// not required.
inline constexpr short kLastYearWithoutClaims = 2004;
/// Whether tasks of the type are made in the year.
MORVUT_API bool IsMadeIn(long taskType, short year) noexcept;

/// The same day of the next year, 28 February for 29 February; null for a date that is not valid.
MORVUT_API Kiln::CDate OneYearLater(const Kiln::CDate& date) noexcept;

/// Gives a task the settings of the task of its type a year before: whether it is required, and but for types 1, 19 and
/// 20 its place and its dates a year later, also none, and with `withStaff` whoever is assigned to it.
MORVUT_API void CarrySettings(Task& task, const Task& before, bool withStaff);
/// A task of a user's own job that is no default: the same for the new source, not complete.
MORVUT_API Task CarriedTask(const Source& source, const Task& before);

/// All of them. `defaults` may hold those of other types of source; of two of one task the first counts.
MORVUT_API std::vector<Task> DefaultTasksOf(const Source& source, const std::vector<DefaultTask>& defaults);
/// The same with the settings of those before.
MORVUT_API std::vector<Task> TasksOf(const Source& source, const std::vector<DefaultTask>& defaults,
                                     const std::vector<Task>& before);

} // namespace Tracker
