#pragma once

// A client's enquiries as a list shows them.

#include <optional>
#include <vector>

#include "MorvUt/enquiries/rules/EnquiryStatus.h"
#include "MorvUt/enquiries/rules/LinkedTasks.h"

namespace Brix
{
class CClientEnquiry;
}

/// Names and widths of the columns, and those of a list that shows image, description and status only.
inline constexpr char kEnquiryHeadings[] = "S,16;Date,50;Description,150;Due,50;Reminder,50;Task Status,60;Tax Year,50";
inline constexpr char kShortEnquiryHeadings[] = ",16;Description,140;Status,50";

struct EnquiryLine
{
    long id = 0;
    EnquiryStatus status = EnquiryStatus::Incomplete; // its image, too
    Kiln::CDate start;
    CString description;
    Kiln::CDate due, reminder;
    LinkedTask task; // state None: not linked, or to a task that is gone
    short year = 0;  // real

    /// "2017/18".
    MORVUT_API CString YearText() const;
};

struct EnquiryFilter
{
    short year = 0; // real
    bool allYears = false;
    bool hideCompleted = false; // those that were received
};

/// Linked to a task of a source.
MORVUT_API bool IsEnquiryLinked(const Brix::CClientEnquiry& enquiry);

// These throw Cellar::DatabaseError.

/// In the order in which they were made. Today is the clock's.
MORVUT_API std::vector<EnquiryLine> ListEnquiries(Cellar::CConnection& connection, const TrackerOwner& owner,
                                                  const EnquiryFilter& filter);
/// Of whatever owner; nothing when there is none of this id.
MORVUT_API std::optional<EnquiryLine> FindEnquiry(Cellar::CConnection& connection, long id);
