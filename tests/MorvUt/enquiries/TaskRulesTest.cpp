#include "MorvUt/enquiries/tracker/TaskRules.h"

#include "MorvUt/taxyear/DateRules.h"
#include "support/Test.h"

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
    // type, due as a long date, staff too, what is carried
    for (const auto& [type, due, withStaff, expected, why] :
         ::Test::Table<long, long, bool, const char*>("MorvUt/enquiries/TaskRules.tsv")) {
        Task task = MakeTask(type, 1, CDate(2024, 7, 1), true, withStaff ? "new" : "");
        CarrySettings(task, MakeTask(type, 5, LongToCDate(due), false, "ann"), withStaff);
        EXPECT_EQ(ShownTask(task), expected) << why;
    }
}
