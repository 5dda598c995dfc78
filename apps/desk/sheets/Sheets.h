#pragma once

// The sheets of the schedules, each of one record or of a few that belong together. `id` 0: a new one. True when
// something was saved.

#include "Schedules.h"

namespace Desk
{

bool OpenEmployment(const ScheduleOwner& owner, long id);
bool OpenPension(const ScheduleOwner& owner, long id);
bool OpenInterest(const ScheduleOwner& owner, long id);
bool OpenForeignDividend(const ScheduleOwner& owner, long id);
/// All columns of the tax year; the id does not matter.
bool OpenChangeOfBasis(const ScheduleOwner& owner, long id);
bool OpenInvestmentIncome(const ScheduleOwner& owner, long id);

} // namespace Desk
