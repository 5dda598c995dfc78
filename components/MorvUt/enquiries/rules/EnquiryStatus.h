#pragma once

// How far an enquiry is, and how that is shown.

#include <cstdint>

#include "Afx/text/CString.h"
#include "Kiln/CDate.h"
#include "MorvUt/Export.h"

/// The values are the places of the status images.
enum class EnquiryStatus : std::uint8_t
{
    Overdue,   // no answer, and the due date has passed
    Replied,   // received, whatever the dates
    Incomplete // no answer, and no due date or one that is today or later
};

/// By whole days; a date that is not valid counts as none.
MORVUT_API EnquiryStatus EnquiryStatusOf(const Kiln::CDate& received, const Kiln::CDate& due,
                                         const Kiln::CDate& today) noexcept;
/// "Overdue", "Replied", "Incomplete".
MORVUT_API CString TextOf(EnquiryStatus status);
