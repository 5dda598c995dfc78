#include "MorvUt/enquiries/tracker/CarryForward.h"

#include "Cellar/Transaction.h"
#include "MorvUt/enquiries/rules/SourceCreation.h"
#include "MorvUt/enquiries/tracker/CarryEnquiries.h"
#include "MorvUt/enquiries/tracker/CarrySources.h"
#include "MorvUt/enquiries/tracker/DefaultTasks.h"
#include "MorvUt/enquiries/tracker/TaxReturnSource.h"

namespace
{

/// Carries in a level of its own.
template<class Carry>
Tracker::Carried CarryAlone(Cellar::CConnection& connection, short year, const TrackerOwner& owner, Carry carry)
{
    Cellar::CTransaction transaction(connection, Cellar::Intent::Write, SubjectOf(owner));
    const Tracker::Carried carried = carry(connection, year, owner);
    transaction.Commit();
    return carried;
}

} // namespace

void CarryForwardClientEnquiresAndTrackerSources(Cellar::CConnection& connection, long id, short year,
                                                 bool isPartnership)
{
    if (IsTrackerSourceCreationEnabled())
        CarryAlone(connection, year, {id, isPartnership}, Tracker::CarryEnquiries);
}

void CarryForwardSources(Cellar::CConnection& connection, int& created, short year, long id, bool isPartnership)
{
    created = 0;
    created = CarryAlone(connection, year, {id, isPartnership}, Tracker::CarrySources).sources;
}

int CopyDefaultSourceToSource(Cellar::CConnection& connection, long sourceId, long defaultTrackerId, long sourceTypeId,
                              bool copyFromPrevious, short year, bool copyStates)
{
    Cellar::CTransaction transaction(connection);
    Tracker::CopyDefaultTasks(connection, sourceId, defaultTrackerId, sourceTypeId, year);
    if (copyFromPrevious || copyStates)
        Tracker::CarryFromYearBefore(connection, sourceId, year);
    transaction.Commit();
    return 1;
}

int CreateTaxformSource(Cellar::CConnection& connection, short year, long id, bool isPartnership)
{
    CarryAlone(connection, year, {id, isPartnership}, Tracker::MakeTaxReturnSource);
    return 1;
}
