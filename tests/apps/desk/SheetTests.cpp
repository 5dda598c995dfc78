// The sheets of the schedules, each on a practice of its own.

#include "apps/desk/DeskTest.h"

namespace
{

class ScheduleSheets : public DeskTest
{};

STORIES(ScheduleSheets, "apps/desk/Sheets.story");

} // namespace
