#pragma once

// All that the program shows of a client, or a partnership, in a tax year, read once.

#include <vector>

#include "MorvUt/context/ClientView.h"
#include "MorvUt/enquiries/rules/EnquiryList.h"
#include "MorvUt/enquiries/rules/LinkedTasks.h"
#include "MorvUt/hmrc/review/Differences.h"
#include "Schedules.h"

namespace Desk
{

struct ClientYear
{
    CString heading; // code, name, kind, year, identifiers
    CString status;  // a line for the word, and one for each reason
    std::vector<ScheduleLine> schedules;
    std::vector<HmrcApi::Difference> differences; // none of a partnership
    std::vector<EnquiryLine> enquiries;
    std::vector<TrackerLine> tracker;
};

/// Reads the current connection; throws Cellar::DatabaseError.
ClientYear ReadClientYear(const ScheduleOwner& owner);

} // namespace Desk
