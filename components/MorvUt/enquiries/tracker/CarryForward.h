#pragma once

// Carrying an owner's work into a new tax year. An owner is a client, or with `isPartnership` a partnership; years are
// real tax years, the new one. All of these work on the connection that they are given, in a level of their own that
// takes the owner's lock before it reads, and throw Cellar::DatabaseError; nothing is written then. Many owners, with
// what came of it: RollForward.h.

#include "Cellar/Connection.h"
#include "MorvUt/Export.h"

/// Carries the enquiries of the year before that are marked for it, with the sources that they were linked to, and
/// makes the source of the tax return. An enquiry whose description the new year has is not carried again. Nothing
/// while EnableTrackerSourceCreation is off.
MORVUT_API void CarryForwardClientEnquiresAndTrackerSources(Cellar::CConnection& connection, long id, short year,
                                                            bool isPartnership);

/// Makes what the new year lacks of the sources of the year before, with their tasks; `created`: how many. None for an
/// owner who has left by the new year's yearly row, nor of users' own jobs that are complete. Called before the one
/// above, it keeps last year's settings of the tax return's tasks.
MORVUT_API void CarryForwardSources(Cellar::CConnection& connection, int& created, short year, long id,
                                    bool isPartnership);

/// Gives a source the default tasks of its type: those of a tracker, or with 0 the standard ones. Up to 2004 without
/// the tasks of claims, types 19 and 20; from 2005 on they are there and not required. With either flag the tasks then
/// get the settings of the source of the year before that has the same owner, type and description: dates move on by a
/// year (29 February to 28 February) and stay as they are for types 1, 19 and 20, of which only whether they are
/// required is carried; whoever is assigned where the source says so. Always 1.
MORVUT_API int CopyDefaultSourceToSource(Cellar::CConnection& connection, long sourceId, long defaultTrackerId,
                                         long sourceTypeId, bool copyFromPrevious, short year, bool copyStates);

/// Makes the source of the tax return with its default tasks, unless the owner has one in the year or the client's
/// record wants none. A trust's is called "Tax Return SA900". Always 1.
MORVUT_API int CreateTaxformSource(Cellar::CConnection& connection, short year, long id, bool isPartnership);
