#pragma once

// An owner's enquiries of a year, carried into the next. Throws Cellar::DatabaseError and needs an open level.

#include "Cellar/Connection.h"
#include "MorvUt/enquiries/rules/TrackerOwner.h"
#include "MorvUt/enquiries/tracker/Carried.h"

namespace Tracker
{

/// Carries those that are marked for it and whose description the new year has not, and makes the tax return's source
/// unless one of them is linked to it. What an enquiry was linked to becomes the new year's source of that type and
/// name, of its type and the type's name, or one made from its type; and its task there, if the source has it. With as
/// many statements however many enquiries there are.
Carried CarryEnquiries(Cellar::CConnection& connection, short year, const TrackerOwner& owner);

} // namespace Tracker
