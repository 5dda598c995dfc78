#pragma once

// Rolling clients and partnerships into a new tax year, overnight and with somebody looking beforehand.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "Cellar/Connection.h"
#include "MorvUt/enquiries/rules/TrackerOwner.h"
#include "MorvUt/enquiries/tracker/Carried.h"

namespace Tracker
{

struct RolledOwner
{
    TrackerOwner owner;
    Carried carried;
    CString problem; // why nothing was made for this owner; empty: nothing was wrong
};

/// How a run over many owners ended.
enum class RollEnd : std::uint8_t
{
    Whole,
    Cancelled,
    Refused,  // the user may not change the work tracker
    Busy,     // another program was writing for three owners in a row
    Unusable, // the practice cannot be read or written
};

struct Rolled
{
    RollEnd end = RollEnd::Whole;
    std::size_t done = 0;            // of the owners, the first so many
    Carried total;                   // without reasons
    std::vector<RolledOwner> owners; // those done of whom there is something to tell
    CString message;                 // why the run was refused or given up
};

struct RollOptions
{
    /// The very same statements, and then each owner's are rolled back.
    bool isPreview = false;
    /// Told of each owner that is done: how many are, of how many, and what came of it. False ends the run.
    std::function<bool(std::size_t done, std::size_t all, const RolledOwner& owner)> each;
};

/// One owner: sources first, then enquiries and the tax return's source, in one transaction that takes the owner's lock
/// before it reads, so that two at once make everything once. Nothing at all for an owner who has left. Throws
/// Cellar::DatabaseError, and std::logic_error within levels that have begun: nothing would be saved.
MORVUT_API Carried RollForwardOne(Cellar::CConnection& connection, short year, const TrackerOwner& owner,
                                  bool isPreview);

/// These, one after the other, `year` being the new real tax year. What was done stays when the run is cut short, and
/// the next run makes what is missing. An owner who cannot be rolled forward, since another program was writing, does
/// not stop the others. Refused without the right to save in the work tracker, and in read-only mode; the user is told.
MORVUT_API Rolled RollForward(Cellar::CConnection& connection, short year, const std::vector<TrackerOwner>& owners,
                              const RollOptions& options = {});

} // namespace Tracker
