#include "MorvUt/enquiries/rules/EnquiryList.h"

#include "Brix/Records.h"
#include "MorvUt/taxyear/TaxYear.h"

using Brix::CClientEnquiry;

namespace
{

TaskKey LinkOf(const CClientEnquiry& enquiry) { return {enquiry.GetSourceID(), enquiry.GetTypeID()}; }

EnquiryLine EnquiryLineOf(const CClientEnquiry& enquiry, const Kiln::CDate& today)
{
    return {enquiry.GetID(),
            EnquiryStatusOf(enquiry.GetReceived(), enquiry.GetDue(), today),
            enquiry.GetStart(),
            enquiry.GetDescription(),
            enquiry.GetDue(),
            enquiry.GetReminder(),
            {},
            enquiry.GetYear()};
}

/// Lines of the rows that the filter lets through, with the tasks that they are linked to.
std::vector<EnquiryLine> EnquiryLinesOf(CClientEnquiry& enquiries, const EnquiryFilter& filter)
{
    const Kiln::CDate today = Kiln::CDate::Today();
    std::vector<EnquiryLine> lines;
    std::vector<TaskKey> links; // of each line
    for (; !enquiries.IsEOL(); enquiries.MoveNext()) {
        EnquiryLine line = EnquiryLineOf(enquiries, today);
        if ((!filter.allYears && line.year != filter.year) ||
            (filter.hideCompleted && line.status == EnquiryStatus::Replied))
            continue;
        links.push_back(IsEnquiryLinked(enquiries) ? LinkOf(enquiries) : TaskKey());
        lines.push_back(std::move(line));
    }
    std::vector<TaskKey> linked = links;
    std::erase(linked, TaskKey());
    const auto tasks = ReadLinkedTasks(enquiries.Connection(), linked);
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (const auto found = tasks.find(links[i]); found != tasks.end())
            lines[i].task = found->second;
    return lines;
}

} // namespace

CString EnquiryLine::YearText() const { return TaxYear(year).Format(); }

bool IsEnquiryLinked(const CClientEnquiry& enquiry) { return enquiry.GetSourceID() != 0 && enquiry.GetTypeID() != 0; }

std::vector<EnquiryLine> ListEnquiries(Cellar::CConnection& connection, const TrackerOwner& owner,
                                       const EnquiryFilter& filter)
{
    CClientEnquiry enquiries;
    enquiries.Open(connection, {OwnedBy<CClientEnquiry>(owner)});
    return EnquiryLinesOf(enquiries, filter);
}

std::optional<EnquiryLine> FindEnquiry(Cellar::CConnection& connection, long id)
{
    CClientEnquiry enquiry;
    if (!enquiry.Open(connection, {{0, id}}))
        return std::nullopt;
    return EnquiryLinesOf(enquiry, {.allYears = true}).front();
}
