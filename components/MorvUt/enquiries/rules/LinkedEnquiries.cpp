#include "MorvUt/enquiries/rules/LinkedEnquiries.h"

#include "Brix/Records.h"
#include "MorvUt/enquiries/rules/TrackerOwner.h"

namespace
{

using Brix::CClientEnquiry;

bool OwnerExists(const TrackerOwner& owner)
{
    return owner.isPartnership ? Brix::CPartnership().Open({{0, owner.id}}) : Brix::CClient().Open({{0, owner.id}});
}

/// The enquiries of the source's owner that are linked to the task; none when the source or its owner is not there.
CClientEnquiry EnquiriesLinkedTo(long sourceId, long taskId)
{
    CClientEnquiry linked;
    Brix::CSource source;
    if (sourceId == 0 || !source.Open({{Brix::CSource::kSourceID, sourceId}}))
        return linked;
    const TrackerOwner owner = OwnerOf(source.GetClientID(), source.GetPClientID());
    if (!OwnerExists(owner))
        return linked;
    linked.Open({OwnedBy<CClientEnquiry>(owner), {CClientEnquiry::kSourceID, sourceId}});
    while (!linked.IsEOL() && linked.GetTypeID() != taskId)
        linked.MoveNext();
    return linked;
}

} // namespace

int AllEnquiriesCompleted(long sourceId, long taskId)
{
    for (CClientEnquiry linked = EnquiriesLinkedTo(sourceId, taskId); !linked.IsEOL(); linked.MoveNext())
        if (linked.GetTypeID() == taskId && !linked.GetReceived().IsValid())
            return 0;
    return 1;
}

int HasLinkedEnquiries(long sourceId, long taskId) { return EnquiriesLinkedTo(sourceId, taskId).IsEOL() ? 0 : 1; }
