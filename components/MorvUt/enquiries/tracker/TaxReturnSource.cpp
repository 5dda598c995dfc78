#include "MorvUt/enquiries/tracker/TaxReturnSource.h"

#include "MorvUt/context/status/ClientStatus.h"
#include "MorvUt/enquiries/tracker/DefaultTasks.h"
#include "MorvUt/enquiries/tracker/TrackerRows.h"
#include "Quarry/NewId.h"

namespace Tracker
{
namespace
{

bool HasTaxReturnSource(Cellar::CConnection& connection, short year, const TrackerOwner& owner)
{
    Brix::CSource sources;
    return sources.Open(connection, {OwnedBy<Brix::CSource>(owner),
                                     {Brix::CSource::kYear, year},
                                     {Brix::CSource::kSourceTypeID, TaxReturnTypeOf(owner)}});
}

/// The row, from its source type; false when the practice has none.
bool InsertTaxReturnSource(Cellar::CConnection& connection, short year, const TrackerOwner& owner, long sourceId)
{
    const int carriesStaff = ReadCarriesStaff(connection) ? 1 : 0;
    const long type = TaxReturnTypeOf(owner);
    if (owner.isPartnership)
        return connection.ExecuteDirectf(
                   "INSERT INTO Source (clientid, pClientID, Year, SourceID, SourceTypeID, Status, ShowReminder, "
                   "Description, bUserCreated, strDefaultTrackerGUID, bCFStaff) Select NULL, %d, %d, %d, SourceTypeID, "
                   "'?', ShowReminder, Description, 0, NULL, %d FROM SourceType WHERE SourceTypeID = %d",
                   owner.id, year, sourceId, carriesStaff, type) > 0;
    return connection.ExecuteDirectf(
               "INSERT INTO Source (ClientID, Year, SourceID, SourceTypeID, Status, ShowReminder, Description, "
               "bUserCreated, strDefaultTrackerGUID, bCFStaff) Select %d, %d, %d, SourceTypeID, '?', ShowReminder, "
               "Description, 0, NULL, %d FROM SourceType WHERE SourceTypeID = %d",
               owner.id, year, sourceId, carriesStaff, type) > 0;
}

} // namespace

Carried MakeTaxReturnSource(Cellar::CConnection& connection, short year, const TrackerOwner& owner)
{
    Carried carried;
    if (HasTaxReturnSource(connection, year, owner))
        return carried;
    Brix::CClient client;
    Brix::CPartnership partnership;
    if (owner.isPartnership ? !partnership.Open(connection, {{0, owner.id}})
                            : !client.Open(connection, {{0, owner.id}}))
        return carried;
    if (!owner.isPartnership && client.GetNoTaxReturnSource()) {
        carried.notCarried.push_back({WhyNotCarried::NoReturnWanted, {}});
        return carried;
    }
    const long sourceId = Quarry::NewId(Brix::CSource::Declaration(), connection);
    const long type = TaxReturnTypeOf(owner);
    if (!InsertTaxReturnSource(connection, year, owner, sourceId)) {
        carried.notCarried.push_back({WhyNotCarried::NoSourceType, std::to_string(type).c_str()});
        return carried;
    }
    carried.sources = 1;
    carried.tasks = CopyDefaultTasks(connection, sourceId, 0, type, year);
    if (!owner.isPartnership && IsTrust(client, false))
        connection.ExecuteDirectf("UPDATE Source Set Description = 'Tax Return SA900' WHERE SourceID = %d", sourceId);
    return carried;
}

} // namespace Tracker
