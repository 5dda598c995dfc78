#include "ClientYear.h"

#include "common/Words.h"
#include "MorvUt/taxyear/YearTitles.h"
#include "Quarry/Session.h"

namespace Desk
{
namespace
{

CString HeadingOf(const ScheduleOwner& owner)
{
    const ClientView& client = owner.client;
    CString heading = client.code + " " + client.name + ", " + NameOf(client.kind) + ", tax year " +
                      FormatYearString42Digit(owner.year);
    if (!client.nationalInsuranceNumber.IsEmpty())
        heading += ", National Insurance number " + client.nationalInsuranceNumber;
    if (!client.utr.IsEmpty())
        heading += ", UTR " + client.utr;
    return heading;
}

CString StatusText(const ClientStatus& status)
{
    CString text = status.Word();
    for (const CString& reason : status.Because())
        text += "\n" + reason;
    return text;
}

} // namespace

ClientYear ReadClientYear(const ScheduleOwner& owner)
{
    const ClientView& client = owner.client;
    Cellar::CConnection& connection = Quarry::GetConnection();
    const TrackerOwner tracked{client.id, client.IsPartnership()};
    ClientYear view;
    view.heading = HeadingOf(owner);
    view.status = StatusText(StatusOf(client.id, client.IsPartnership(), owner.year));
    view.schedules = ListSchedules(owner);
    if (!client.IsPartnership())
        view.differences = HmrcApi::FindDifferences(ClientId(client.id), TaxYear(owner.year));
    view.enquiries = ListEnquiries(connection, tracked, {owner.year});
    view.tracker = ListTracker(connection, tracked, owner.year);
    return view;
}

} // namespace Desk
