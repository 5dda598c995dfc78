#pragma once

// The source of an owner's tax return. Throws Cellar::DatabaseError and needs an open level.

#include "Cellar/Connection.h"
#include "MorvUt/enquiries/rules/TrackerOwner.h"
#include "MorvUt/enquiries/tracker/Carried.h"

namespace Tracker
{

/// What a trust's is called.
inline constexpr char kTrustReturn[] = "Tax Return SA900";

/// Makes it with its default tasks, unless the owner has one in the year, wants none, or does not exist.
Carried MakeTaxReturnSource(Cellar::CConnection& connection, short year, const TrackerOwner& owner);

} // namespace Tracker
