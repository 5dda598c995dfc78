#pragma once

// An owner's sources of a year, carried into the next. Throws Cellar::DatabaseError and needs an open level.

#include "Cellar/Connection.h"
#include "MorvUt/enquiries/rules/TrackerOwner.h"
#include "MorvUt/enquiries/tracker/Carried.h"

namespace Tracker
{

/// Makes what the new year lacks of the sources of the year before, with their tasks and the settings of these: as
/// CopyDefaultSourceToSource does it one by one, with as many statements however many there are. Nothing for an owner
/// who does not exist or has left by the yearly row of the new year; users' own jobs that are complete are left.
///
/// A source is there when one of its type and description (in any case) is; a tax return's, one that no user made,
/// whatever it is called.
Carried CarrySources(Cellar::CConnection& connection, short year, const TrackerOwner& owner);

} // namespace Tracker
