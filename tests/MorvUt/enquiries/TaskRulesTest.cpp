#include "MorvUt/enquiries/tracker/TaskRules.h"

#include <gtest/gtest.h>

#include "support/Case.h"

namespace
{

using Kiln::CDate;
using Tracker::Task;

Task MakeTask(long type, int order, const CDate& due, bool isRequired, const char* assignedTo)
{
    return {7, type, order, due, due, isRequired, true, assignedTo, {}};
}

/// "5|2025-02-28|2025-02-28|1|ann": place, due, reminder, required, assigned to.
std::string ShownTask(const Task& task)
{
    return Cellar::ToText(task.listOrder).Str() + '|' + task.due.FormatIso().Str() + '|' +
           task.reminder.FormatIso().Str() + '|' + (task.isRequired ? "1" : "0") + '|' +
           Cellar::ToText(task.assignedTo).Str();
}

} // namespace

TEST(CarrySettings, CarriesWhatTheTypeAllows)
{
    const CDate leapDay(2024, 2, 29), newDate(2024, 7, 1);
    const ::Test::Row<long, CDate, bool, const char*> rows[] = {
        {5, CDate(2023, 9, 30), false, "5|2024-09-30|2024-09-30|0|", "a year later"},
        {5, leapDay, true, "5|2025-02-28|2025-02-28|0|ann", "29 February, staff too"},
        {5, CDate(), true, "5|||0|ann", "a null date clears the default's"},
        {5, CDate(9999, 1, 1), false, "5|||0|", "no year after"},
        {1, leapDay, true, "1|2024-07-01|2024-07-01|0|new", "issued: whether it is required, no more"},
        {19, leapDay, true, "1|2024-07-01|2024-07-01|0|new", "claim made"},
        {20, leapDay, true, "1|2024-07-01|2024-07-01|0|new", "claim answered"},
    };
    for (const auto& [type, due, withStaff, expected, why] : rows) {
        Task task = MakeTask(type, 1, newDate, true, withStaff ? "new" : "");
        CarrySettings(task, MakeTask(type, 5, due, false, "ann"), withStaff);
        EXPECT_EQ(ShownTask(task), expected) << why;
    }
}
