#pragma once

// The tasks of one new source, by statements. Both throw Cellar::DatabaseError and need an open level.

#include "Cellar/Connection.h"

namespace Tracker
{

/// Gives the source the default tasks of its type, standard ones or a tracker's; those of claims as the year has them.
/// Answers how many were made. A task that stands twice, or that the source has already, is made once.
int CopyDefaultTasks(Cellar::CConnection& connection, long sourceId, long defaultTrackerId, long sourceTypeId,
                     short year);

/// Gives the source's tasks the settings of the same owner's source of the year before that has its type and
/// description, and a user's own job the tasks that are no defaults. Nothing where there is no such source.
void CarryFromYearBefore(Cellar::CConnection& connection, long sourceId, short year);

} // namespace Tracker
